#include "fileops/expectations.h"

#include "platform/names/paths.h"

namespace vantrel {
namespace {

Sighting Present(Sighting::Kind kind, bool isLink, const Seen& seen) {
    return {Sighting::State::Present, isLink ? Sighting::Kind::Link : kind, seen};
}

// Enters no link: what it leads to does not lie below the folder.
Error LookInto(const FileSystem& files, const std::string& path, const std::string& name, SeenBelow& below) {
    OpenFolder folder;
    if (Error error = files.Open(path, folder); !error.IsOk()) return error;
    std::vector<std::string> folders;
    Error error = folder.ForEach([&](const FolderEntry& entry) {
        const std::string entryName = name + std::string(entry.name);
        const Sighting sighting = SightingOf(entry);
        below.emplace(entryName, sighting);
        if (sighting.state == Sighting::State::Present && sighting.kind == Sighting::Kind::Folder)
            folders.emplace_back(entry.name);
        return true;
    });
    for (const std::string& sub : folders) {
        Error inner = LookInto(files, JoinPath(path, sub), name + sub + "/", below);
        if (error.IsOk()) error = std::move(inner);
    }
    return error;
}

}  // namespace

Sighting SightingOf(const ResultRow& row) {
    if (row.kind == RowKind::Placeholder) return Sighting::Nothing();
    if (!row.IsReal() || !row.seen) return {};
    return Present(row.kind == RowKind::Folder ? Sighting::Kind::Folder : Sighting::Kind::File, row.isLink,
                   *row.seen);
}

Sighting SightingOf(const SubFolderRecord& record) {
    if (record.IsBlank()) return Sighting::Nothing();
    if (record.unknown || !record.seen) return {};
    return Present(Sighting::Kind::File, record.isLink, *record.seen);
}

std::vector<ShellRoot> RootsOf(const ComparisonResults& results) {
    std::vector<ShellRoot> roots;
    for (const Side side : kBothSides) {
        if (!results.folders[side].empty() && results.folderIds[side] != FileId())
            roots.push_back({results.folders[side], results.folderIds[side]});
    }
    return roots;
}

Error LookBelow(const FileSystem& files, const std::string& path, std::shared_ptr<const SeenBelow>& below) {
    auto seen = std::make_shared<SeenBelow>();
    Error error = LookInto(files, path, {}, *seen);
    below = std::move(seen);
    return error;
}

}  // namespace vantrel
