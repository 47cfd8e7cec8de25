#include "platform/files/mount_table.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr std::array<std::string_view, 24> kRemoteTypes = {"nfs",
                                                           "nfs4",
                                                           "cifs",
                                                           "smb3",
                                                           "smbfs",
                                                           "ncpfs",
                                                           "afs",
                                                           "9p",
                                                           "ceph",
                                                           "glusterfs",
                                                           "lustre",
                                                           "gfs2",
                                                           "orangefs",
                                                           "davfs",
                                                           "fuse.sshfs",
                                                           "fuse.davfs",
                                                           "fuse.davfs2",
                                                           "fuse.rclone",
                                                           "fuse.glusterfs",
                                                           "fuse.s3fs",
                                                           "fuse.curlftpfs",
                                                           "fuse.gvfsd-fuse",
                                                           "fuse.kio-fuse",
                                                           "coda"};

constexpr std::array<std::string_view, 12> kSystemTypes = {"proc",    "sysfs",   "devpts",  "cgroup",
                                                           "cgroup2", "debugfs", "tracefs", "securityfs",
                                                           "bpf",     "mqueue",  "pstore",  "autofs"};

template <std::size_t N>
bool Contains(const std::array<std::string_view, N>& list, std::string_view text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool IsOctal(char digit) {
    return digit >= '0' && digit <= '7';
}

// Blanks, tabs, line ends and backslashes stand as "\" and three octal digits.
std::string WithoutOctalEscapes(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && text.size() - at > 3 && IsOctal(text[at + 1]) && IsOctal(text[at + 2]) &&
            IsOctal(text[at + 3])) {
            plain.push_back(static_cast<char>((text[at + 1] - '0') * 64 + (text[at + 2] - '0') * 8 +
                                              (text[at + 3] - '0')));
            at += 3;
        } else {
            plain.push_back(text[at]);
        }
    }
    return plain;
}

std::string_view TakeUntil(std::string_view& text, char end) {
    const std::size_t at = text.find(end);
    const std::string_view taken = text.substr(0, at);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
    return taken;
}

// id parent device root point options [optional fields] - type source options
bool ParseLine(std::string_view line, Mount& mount) {
    const std::string_view id = TakeUntil(line, ' ');
    if (std::from_chars(id.data(), id.data() + id.size(), mount.id).ec != std::errc()) return false;
    TakeUntil(line, ' ');
    mount.device = TakeUntil(line, ' ');
    mount.root = NameFromSystem(WithoutOctalEscapes(TakeUntil(line, ' ')));
    mount.point = NameFromSystem(WithoutOctalEscapes(TakeUntil(line, ' ')));
    const std::size_t separator = line.find(" - ");
    if (separator == std::string_view::npos || mount.point.empty()) return false;
    line.remove_prefix(separator + 3);
    mount.type = WithoutOctalEscapes(TakeUntil(line, ' '));
    mount.source = WithoutOctalEscapes(TakeUntil(line, ' '));
    return true;
}

}  // namespace

std::vector<Mount> ParseMountTable(std::string_view text) {
    std::vector<Mount> mounts;
    while (!text.empty()) {
        Mount mount;
        if (ParseLine(TakeUntil(text, '\n'), mount)) mounts.push_back(std::move(mount));
    }
    return mounts;
}

std::vector<Mount> ReadMounts(const FileSystem& files) {
    constexpr std::size_t kMostOfATable = std::size_t{16} << 20;
    std::string text;
    if (!files.ReadWholeFile("/proc/self/mountinfo", kMostOfATable, text).IsOk()) return {};
    return ParseMountTable(text);
}

const Mount* FindMountAt(const std::vector<Mount>& mounts, std::string_view drive) {
    while (drive.size() > 1 && drive.ends_with('/')) drive.remove_suffix(1);
    const auto found = std::find_if(mounts.rbegin(), mounts.rend(),
                                    [&](const Mount& mount) { return mount.point == drive; });
    return found == mounts.rend() ? nullptr : &*found;
}

DriveKind KindOfFileSystemType(std::string_view type) {
    if (Contains(kRemoteTypes, type)) return DriveKind::Remote;
    if (type == "iso9660" || type == "udf") return DriveKind::CdRom;
    if (type == "tmpfs" || type == "ramfs") return DriveKind::RamDisk;
    if (Contains(kSystemTypes, type)) return DriveKind::Unknown;
    return DriveKind::Fixed;
}

std::string_view UdevProperty(std::string_view record, std::string_view key) {
    while (!record.empty()) {
        std::string_view line = TakeUntil(record, '\n');
        if (!line.starts_with("E:")) continue;
        line.remove_prefix(2);
        if (TakeUntil(line, '=') == key) return line;
    }
    return {};
}

std::string FileSystemNameOf(std::string_view type, std::string_view version) {
    if (type == "ntfs" || type == "ntfs3" || type == "fuse.ntfs" || type == "fuse.ntfs-3g") return "NTFS";
    if (type == "vfat") return version == "FAT12" || version == "FAT16" ? "FAT" : "FAT32";
    if (type == "msdos" || type == "fuse.fusefat") return "FAT";
    if (type == "fuse.exfat") return "exfat";
    return std::string(type);
}

}  // namespace vantrel
