#include "platform/files/volumes.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cerrno>

#include "platform/files/entry_info.h"
#include "platform/files/located_path.h"
#include "platform/files/mount_table.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr std::size_t kMostOfATable = std::size_t{16} << 20;

std::vector<Mount> ReadMounts(const FileSystem& files) {
    std::string text;
    if (!files.ReadWholeFile("/proc/self/mountinfo", kMostOfATable, text).IsOk()) return {};
    return ParseMountTable(text);
}

// The mount id of `path` or of its nearest existing ancestor. False where it cannot be told.
bool FindMountId(SystemCalls& calls, std::string_view path, std::uint64_t& id) {
    while (!path.empty()) {
        const LocatedPath at(calls, path);
        struct statx found;
        int result = at.Failure();
        if (result == 0)
            result = calls.StatxAt(at.Folder(), at.Rest(), AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, STATX_MNT_ID,
                                   found);
        if (result == 0) {
            id = found.stx_mnt_id;
            return (found.stx_mask & STATX_MNT_ID) != 0;
        }
        if (!LeadsNowhere(-result) || path == "/") return false;
        while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
        const std::size_t slash = path.rfind('/');
        if (slash == std::string_view::npos) return false;
        path = path.substr(0, std::max<std::size_t>(slash, 1));
    }
    return false;
}

const Mount* FindMountOf(SystemCalls& calls, const std::vector<Mount>& mounts, std::string_view path) {
    std::uint64_t id = 0;
    if (!FindMountId(calls, path, id)) return nullptr;
    const auto found =
        std::find_if(mounts.begin(), mounts.end(), [=](const Mount& mount) { return mount.id == id; });
    return found == mounts.end() ? nullptr : &*found;
}

// "major:minor" of the block device that holds the file system. A file system over several devices, such as
// btrfs, has a number of its own, and only its source names the device.
std::string BlockDeviceOf(SystemCalls& calls, const Mount& mount) {
    if (!mount.device.starts_with("0:") || !mount.source.starts_with('/')) return mount.device;
    struct statx found;
    if (calls.StatxAt(AT_FDCWD, mount.source.c_str(), 0, STATX_TYPE, found) != 0 || !S_ISBLK(found.stx_mode))
        return mount.device;
    return std::to_string(found.stx_rdev_major) + ":" + std::to_string(found.stx_rdev_minor);
}

std::string ReadSmall(const FileSystem& files, const std::string& path) {
    std::string text;
    return files.ReadWholeFile(path, std::size_t{64} << 10, text).IsOk() ? text : std::string();
}

bool IsRemovable(const FileSystem& files, const std::string& blockDevice) {
    const std::string folder = "/sys/dev/block/" + blockDevice;
    std::string flag = ReadSmall(files, folder + "/removable");
    if (flag.empty()) flag = ReadSmall(files, folder + "/../removable");  // of a partition
    return flag.starts_with('1');
}

// NTFS in user space can carry any name; it shows itself by what it can tell of a file.
bool TellsNtfsAttributes(SystemCalls& calls, const Mount& mount) {
    const LocatedPath path(calls, mount.point);
    if (path.Failure() != 0) return false;
    const int fd = calls.OpenAt(path.Folder(), path.Rest(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (fd < 0) return false;
    const FileSystemTraits traits = FindFileSystemTraits(calls, fd);
    calls.Close(fd);
    return traits.dosAttributes == DosAttributeSource::NtfsBigEndianXattr;
}

}  // namespace

std::string SystemVolumes::GetDriveName(std::string_view path) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    const Mount* mount = FindMountOf(files_.Calls(), mounts, path);
    return mount != nullptr ? mount->point : std::string();
}

bool SystemVolumes::DriveExists(std::string_view drive) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    return FindMountAt(mounts, drive) != nullptr;
}

bool SystemVolumes::IsReady(std::string_view drive) {
    if (!DriveExists(drive)) return false;
    const LocatedPath path(files_.Calls(), drive);
    struct statx found;
    return path.Failure() == 0 &&
           files_.Calls().StatxAt(path.Folder(), path.Rest(), AT_STATX_DONT_SYNC, STATX_TYPE, found) == 0;
}

std::string SystemVolumes::GetFileSystemName(std::string_view drive) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    const Mount* mount = FindMountAt(mounts, drive);
    if (mount == nullptr) return {};
    const bool inUserSpace = mount->type == "fuseblk" || mount->type == "fuse";
    if (!inUserSpace && mount->type != "vfat") return FileSystemNameOf(mount->type, {});
    const std::string record = ReadSmall(files_, "/run/udev/data/b" + BlockDeviceOf(files_.Calls(), *mount));
    const std::string_view type = UdevProperty(record, "ID_FS_TYPE");
    if (!type.empty()) return FileSystemNameOf(type, UdevProperty(record, "ID_FS_VERSION"));
    if (inUserSpace && TellsNtfsAttributes(files_.Calls(), *mount)) return "NTFS";
    return FileSystemNameOf(mount->type, {});
}

DriveKind SystemVolumes::GetDriveKind(std::string_view drive) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    const Mount* mount = FindMountAt(mounts, drive);
    if (mount == nullptr) return DriveKind::Unknown;
    const DriveKind kind = KindOfFileSystemType(mount->type);
    const bool removable =
        kind == DriveKind::Fixed && IsRemovable(files_, BlockDeviceOf(files_.Calls(), *mount));
    return removable ? DriveKind::Removable : kind;
}

Currency SystemVolumes::GetAvailableDriveSpace(std::string_view drive) {
    // Asking the file system can wait for a server, so it is asked for mounts only.
    if (!DriveExists(drive)) return kUnknownSpace;
    struct statvfs space {};
    if (files_.Calls().StatVfs(NameToSystem(drive).c_str(), space) != 0) return kUnknownSpace;
    // Some file systems do not count at all.
    if (space.f_blocks == 0) return kUnknownSpace;
    std::int64_t bytes = 0;
    if (__builtin_mul_overflow(space.f_bavail, space.f_frsize, &bytes)) return kUnknownSpace;
    return std::min(Currency::FromWhole(bytes), kUnknownSpace);
}

bool SystemVolumes::OnSameDrive(std::string_view a, std::string_view b) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    const Mount* first = FindMountOf(files_.Calls(), mounts, a);
    const Mount* second = FindMountOf(files_.Calls(), mounts, b);
    return first != nullptr && second != nullptr && first->device == second->device;
}

}  // namespace vantrel
