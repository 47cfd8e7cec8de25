#include "platform/files/volumes.h"

#include <fcntl.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/files/block_device.h"
#include "platform/files/entry_info.h"
#include "platform/files/located_path.h"
#include "platform/files/mount_table.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

// What the system tells of `path` or of its nearest existing ancestor, which `path` then is. False where
// nothing can be told.
bool StatNearest(SystemCalls& calls, std::string_view& path, unsigned mask, struct statx& found) {
    while (!path.empty()) {
        const LocatedPath at(calls, path);
        int result = at.Failure();
        if (result == 0)
            result = calls.StatxAt(at.Folder(), at.Rest(), AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, mask, found);
        if (result == 0) return true;
        if (!LeadsNowhere(-result) || path == "/") return false;
        while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
        const std::size_t slash = path.rfind('/');
        if (slash == std::string_view::npos) return false;
        path = path.substr(0, std::max<std::size_t>(slash, 1));
    }
    return false;
}

const Mount* FindMountOf(SystemCalls& calls, const std::vector<Mount>& mounts, std::string_view path) {
    struct statx told;
    if (!StatNearest(calls, path, STATX_MNT_ID, told) || (told.stx_mask & STATX_MNT_ID) == 0) return nullptr;
    const auto found = std::find_if(mounts.begin(), mounts.end(),
                                    [&](const Mount& mount) { return mount.id == told.stx_mnt_id; });
    return found == mounts.end() ? nullptr : &*found;
}

// Without a mount table, or with one that does not name the mount of a path (a chroot, a sandbox without
// /proc), what the file system says of itself has to do.

// "major:minor" of the file system that holds `path`; empty where it cannot be told.
std::string DeviceBelow(SystemCalls& calls, std::string_view path) {
    struct statx found;
    if (!StatNearest(calls, path, STATX_TYPE, found)) return {};
    return std::to_string(found.stx_dev_major) + ":" + std::to_string(found.stx_dev_minor);
}

std::string DeviceOf(SystemCalls& calls, const std::vector<Mount>& mounts, std::string_view path) {
    const Mount* const mount = FindMountOf(calls, mounts, path);
    return mount != nullptr ? mount->device : DeviceBelow(calls, path);
}

// The uppermost folder above `path` on the same file system; empty where it cannot be told.
std::string TopOfFileSystem(SystemCalls& calls, std::string_view path) {
    struct statx found;
    if (!path.starts_with('/') || !StatNearest(calls, path, STATX_TYPE, found)) return {};
    const std::string device = DeviceBelow(calls, path);
    while (true) {
        while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
        if (path == "/") break;
        const std::string_view parent = path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
        if (DeviceBelow(calls, parent) != device) break;
        path = parent;
    }
    return std::string(path);
}

// Whether `drive` is a drive of which the mount table says nothing.
bool IsUnlistedDrive(SystemCalls& calls, const std::vector<Mount>& mounts, std::string_view drive) {
    while (drive.size() > 1 && drive.ends_with('/')) drive.remove_suffix(1);
    return FindMountOf(calls, mounts, drive) == nullptr && !drive.empty() &&
           TopOfFileSystem(calls, drive) == drive;
}

// The type of the file system of `drive` by its own number, in the words of a mount table; empty for an
// unknown one.
std::string_view TypeByNumber(SystemCalls& calls, std::string_view drive) {
    constexpr std::pair<std::uint32_t, std::string_view> kTypes[] = {
        {0xEF53, "ext4"},        {0x58465342, "xfs"}, {0x9123683E, "btrfs"}, {0x01021994, "tmpfs"},
        {0x794C7630, "overlay"}, {0x4D44, "vfat"},    {0x2011BAB0, "exfat"}, {0x5346544E, "ntfs"},
        {0x7366746E, "ntfs3"},   {0x6969, "nfs"},     {0xFF534D42, "cifs"},  {0xFE534D42, "smb3"},
        {0x01021997, "9p"},      {0x9660, "iso9660"}, {0x15013346, "udf"},   {0xF2F52010, "f2fs"},
        {0x2FC12FC1, "zfs"},     {0x9FA0, "proc"},
    };
    const LocatedPath path(calls, drive);
    if (path.Failure() != 0) return {};
    const int fd = calls.OpenAt(path.Folder(), path.Rest(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (fd < 0) return {};
    struct statfs system {};
    const bool told = calls.FstatFs(fd, system) == 0;
    calls.Close(fd);
    for (const auto& [number, type] : kTypes)
        if (told && static_cast<std::uint32_t>(system.f_type) == number) return type;
    return {};
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

// Where the kernel tells of the block device that holds the file system.
std::string DeviceFolderOf(SystemCalls& calls, const Mount& mount) {
    return "/sys/dev/block/" + BlockDeviceOf(calls, mount);
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
    return mount != nullptr ? mount->point : TopOfFileSystem(files_.Calls(), path);
}

bool SystemVolumes::DriveExists(std::string_view drive) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    return FindMountAt(mounts, drive) != nullptr || IsUnlistedDrive(files_.Calls(), mounts, drive);
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
    if (mount == nullptr)
        return IsUnlistedDrive(files_.Calls(), mounts, drive)
                   ? FileSystemNameOf(TypeByNumber(files_.Calls(), drive), {})
                   : std::string();
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
    if (mount == nullptr) {
        const std::string_view type = IsUnlistedDrive(files_.Calls(), mounts, drive)
                                          ? TypeByNumber(files_.Calls(), drive)
                                          : std::string_view();
        return type.empty() ? DriveKind::Unknown : KindOfFileSystemType(type);
    }
    const DriveKind kind = KindOfFileSystemType(mount->type);
    const bool removable =
        kind == DriveKind::Fixed && IsRemovableDevice(files_, DeviceFolderOf(files_.Calls(), *mount));
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
    const std::string first = DeviceOf(files_.Calls(), mounts, a);
    return !first.empty() && first == DeviceOf(files_.Calls(), mounts, b);
}

bool SystemVolumes::IsOnRotatingDisk(std::string_view path) {
    const std::vector<Mount> mounts = ReadMounts(files_);
    const Mount* const mount = FindMountOf(files_.Calls(), mounts, path);
    if (mount == nullptr) return false;
    return IsRotatingDevice(files_, DeviceFolderOf(files_.Calls(), *mount));
}

}  // namespace vantrel
