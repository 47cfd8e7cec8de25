#include "fileops/tree_size.h"

#include <string>
#include <vector>

#include "platform/names/paths.h"

namespace vantrel {
namespace {

Error CountFolder(const Toolbox& tools, OpenFolder& folder, TreeSize& size, const bool* cancel) {
    std::vector<std::string> subFolders;
    Error error = folder.ForEach([&](const FolderEntry& entry) {
        tools.loop.Yield();
        if (entry.isLink) {
            size.bytes += Currency::FromWhole(static_cast<std::int64_t>(entry.seen.size));
        } else if (entry.kind == EntryKind::Folder) {
            ++size.folders;
            subFolders.emplace_back(entry.name);
        } else if (entry.kind == EntryKind::File) {
            ++size.files;
            size.bytes += Currency::FromWhole(static_cast<std::int64_t>(entry.size));
        }
        return !(cancel && *cancel);
    });
    for (const std::string& name : subFolders) {
        if (cancel && *cancel) break;
        OpenFolder sub;
        Error failed = folder.OpenSub(name, sub);
        if (failed.IsOk()) failed = CountFolder(tools, sub, size, cancel);
        if (error.IsOk()) error = failed;
    }
    return error;
}

}  // namespace

Error CountTreeSize(const Toolbox& tools, std::string_view path, TreeSize& size, const bool* cancel) {
    size = {};
    FileInfo info;
    if (Error error = tools.files.Stat(path, LinkPolicy::DoNotFollow, info); !error.IsOk()) return error;
    if (info.isLink || info.kind == EntryKind::File) {
        size.files = info.isLink ? 0 : 1;
        size.bytes = Currency::FromWhole(static_cast<std::int64_t>(info.size));
    }
    if (info.kind != EntryKind::Folder) return {};
    OpenFolder folder;
    if (Error error = tools.files.Open(path, folder); !error.IsOk()) return error;
    return CountFolder(tools, folder, size, cancel);
}

}  // namespace vantrel
