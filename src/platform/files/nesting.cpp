#include "platform/files/nesting.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/files/mount_table.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::size_t kMostLevels = 4'096;

bool FindId(const FileSystem& files, const std::string& folder, FileId& id) {
    FileInfo info;
    if (!files.Stat(folder, LinkPolicy::Follow, info).IsOk() || info.kind != EntryKind::Folder) return false;
    id = info.id;
    return true;
}

// The folder and those that hold it, up to the root as far as they can be looked at.
std::vector<FileId> Ancestry(const FileSystem& files, std::string folder) {
    std::vector<FileId> ids;
    FileId id;
    while (ids.size() < kMostLevels && FindId(files, folder, id) && (ids.empty() || ids.back() != id)) {
        ids.push_back(id);
        folder = JoinPath(folder, "..");
    }
    return ids;
}

bool Contains(const std::vector<FileId>& ids, const FileId& id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

// Where `mount` shows what `other` shows at its point: empty where it does not show that at all.
std::string PlaceIn(const Mount& mount, const Mount& other) {
    std::string_view below = other.root;
    if (mount.device != other.device || !below.starts_with(mount.root)) return {};
    below.remove_prefix(mount.root.size());
    // "/" as a root ends in what every other one is followed by.
    if (!below.empty() && mount.root != "/" && !below.starts_with('/')) return {};
    while (below.starts_with('/')) below.remove_prefix(1);
    return below.empty() ? mount.point : JoinPath(mount.point, below);
}

// Those whose file system stands in the table more than once. Asking what lies on another machine can take
// long.
std::vector<Mount> RepeatedMounts(const FileSystem& files) {
    const std::vector<Mount> all = ReadMounts(files);
    std::unordered_map<std::string_view, std::size_t> times;
    for (const Mount& mount : all) ++times[mount.device];
    std::vector<Mount> repeated;
    std::copy_if(all.begin(), all.end(), std::back_inserter(repeated), [&](const Mount& mount) {
        return times[mount.device] > 1 && KindOfFileSystemType(mount.type) != DriveKind::Remote;
    });
    return repeated;
}

}  // namespace

bool LiesInside(const FileSystem& files, std::string_view inner, std::string_view outer) {
    FileId outerId;
    if (!FindId(files, std::string(outer), outerId)) return false;
    const std::vector<FileId> ancestry = Ancestry(files, std::string(inner));
    if (ancestry.empty() || ancestry.front() == outerId) return false;
    if (Contains(ancestry, outerId)) return true;
    const std::vector<Mount> mounts = RepeatedMounts(files);
    for (const Mount& mount : mounts) {
        FileId id;
        if (!FindId(files, mount.point, id) || !Contains(ancestry, id)) continue;
        for (const Mount& other : mounts) {
            const std::string place = PlaceIn(other, mount);
            if (place.empty()) continue;
            const std::vector<FileId> way = Ancestry(files, place);
            if (!way.empty() && way.front() == id && Contains(way, outerId)) return true;
        }
    }
    return false;
}

}  // namespace vantrel
