#include "sync/trash_folders.h"

#include <algorithm>

#include "platform/names/paths.h"

namespace vantrel {
namespace {

// The name that the folder `child` bears in `folder`.
std::string NameIn(const FileSystem& files, const std::string& folder, const FileId& child) {
    OpenFolder opened;
    std::string name;
    if (!files.Open(folder, opened).IsOk()) return {};
    const Error listed = opened.ForEach([&](const FolderEntry& entry) {
        const bool found = entry.kind == EntryKind::Folder && !entry.isLink && entry.id == child;
        if (found) name = entry.name;
        return !found;
    });
    return listed.IsOk() ? name : std::string();
}

// Where the folder `path` lies below the folder `root`, by what the folders above it are and by the names
// that they bear there, whatever `path` calls them; empty where it does not.
std::string PathBelow(const FileSystem& files, const std::string& path, const FileId& root) {
    std::vector<FileId> ids;
    std::vector<std::string> paths;
    for (std::string at = path;; at += "/..") {
        FileInfo info;
        if (!files.Stat(at, LinkPolicy::Follow, info).IsOk()) return {};
        if (!ids.empty() && ids.back() == info.id) return {};  // "/" is its own parent
        ids.push_back(info.id);
        paths.push_back(at);
        if (info.id == root) break;
    }
    std::string below;
    for (std::size_t level = 1; level < ids.size(); ++level) {
        const std::string name = NameIn(files, paths[level], ids[level - 1]);
        if (name.empty()) return {};
        below = JoinPath(name, below);
    }
    return below;
}

bool LiesIn(std::string_view path, std::string_view folder) {
    return path == folder ||
           (path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/');
}

}  // namespace

bool TrashFolders::Touches(Side side, std::string_view path) const {
    return around[side] || std::ranges::any_of(below[side], [&](const std::string& trash) {
               return LiesIn(path, trash) || LiesIn(trash, path);
           });
}

TrashFolders TrashFolders::Under(const PerSide<std::string>& subFolders) const {
    TrashFolders under{ids, {}, around};
    for (const Side side : kBothSides) {
        const std::string& folder = subFolders[side];
        for (const std::string& trash : below[side]) {
            if (LiesIn(folder, trash))
                under.around[side] = true;
            else if (LiesIn(trash, folder))
                under.below[side].push_back(trash.substr(folder.size() + 1));
        }
    }
    return under;
}

TrashFolders FindTrashFolders(const Toolbox& tools, const TrashPlaces& places,
                              const ComparisonResults& results) {
    const std::string user = std::to_string(places.user);
    std::set<std::string> paths;
    if (!places.homeTrash.empty()) paths.insert(places.homeTrash);
    for (const Side side : kBothSides) {
        const std::string top = tools.volumes.GetDriveName(results.folders[side]);
        if (top.empty()) continue;
        for (const std::string& name : {".Trash-" + user, ".Trash/" + user})
            paths.insert(JoinPath(top, name));
    }
    TrashFolders found;
    for (const std::string& path : paths) {
        FileInfo info;
        if (!tools.files.Stat(path, LinkPolicy::Follow, info).IsOk() || info.kind != EntryKind::Folder)
            continue;
        found.ids.insert(info.id);
        for (const Side side : kBothSides) {
            if (results.folderIds[side] == FileId()) continue;
            std::string below = PathBelow(tools.files, path, results.folderIds[side]);
            if (!below.empty()) found.below[side].push_back(std::move(below));
        }
    }
    return found;
}

}  // namespace vantrel
