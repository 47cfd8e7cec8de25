#include "fileops/expectations.h"

#include "platform/names/paths.h"

namespace vantrel {
namespace {

Sighting Present(Sighting::Kind kind, bool isLink, const Seen& seen) {
    return {Sighting::State::Present, isLink ? Sighting::Kind::Link : kind, seen};
}

// Enters no link: what it leads to does not lie below the folder. `name` is empty or ends in "/".
Error WalkInto(const FileSystem& files, const std::string& path, const std::string& name,
               const VisitBelow& visit) {
    OpenFolder folder;
    if (Error error = files.Open(path, folder); !error.IsOk()) return error;
    std::vector<std::string> folders;
    Error error = folder.ForEach([&](const FolderEntry& entry) {
        visit(name + std::string(entry.name), entry);
        if (entry.kind == EntryKind::Folder && !entry.isLink) folders.emplace_back(entry.name);
        return true;
    });
    for (const std::string& sub : folders) {
        Error inner = WalkInto(files, JoinPath(path, sub), name + sub + "/", visit);
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
            roots.push_back({results.folders[side], results.folderIds[side], results.foldersMade[side]});
    }
    return roots;
}

Error WalkBelow(const FileSystem& files, const std::string& path, const VisitBelow& visit) {
    return WalkInto(files, path, {}, visit);
}

Error LookBelow(const FileSystem& files, const std::string& path, std::shared_ptr<const SeenBelow>& below) {
    auto seen = std::make_shared<SeenBelow>();
    Error error = WalkBelow(files, path, [&](const std::string& name, const FolderEntry& entry) {
        seen->emplace(name, SightingOf(entry));
    });
    below = std::move(seen);
    return error;
}

}  // namespace vantrel
