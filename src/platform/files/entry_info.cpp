#include "platform/files/entry_info.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>

#include <array>
#include <cerrno>
#include <cstdlib>

namespace vantrel {

namespace {

// Not in linux/magic.h of every system.
constexpr std::uint32_t kNtfs3Magic = 0x7366746E;
constexpr std::uint32_t kExfatMagic = 0x2011BAB0;
constexpr std::uint32_t kCifsMagic = 0xFF534D42;
constexpr std::uint32_t kSmb2Magic = 0xFE534D42;
constexpr std::uint32_t kFuseMagic = 0x65735546;

constexpr const char* kNtfsXattr = "system.ntfs_attrib";
constexpr const char* kNtfsBigEndianXattr = "system.ntfs_attrib_be";
constexpr const char* kCifsXattr = "user.cifs.dosattrib";

std::uint8_t FromDosBits(std::uint32_t bits) {
    constexpr std::uint32_t kDosHidden = 2, kDosSystem = 4;
    return static_cast<std::uint8_t>((bits & kDosHidden ? kHidden : 0) | (bits & kDosSystem ? kSystem : 0));
}

// The four bytes of an attribute; 0 where the file has none.
std::array<unsigned char, 4> ReadFour(SystemCalls& calls, int fd, const char* name) {
    std::array<unsigned char, 4> bytes{};
    if (calls.GetXattr(fd, name, bytes.data(), bytes.size()) < 0) bytes = {};
    return bytes;
}

// The lowest byte holds all the bits wanted.
std::uint32_t LowestByte(SystemCalls& calls, DosAttributeSource source, int fd) {
    switch (source) {
        case DosAttributeSource::FatIoctl: {
            std::uint32_t bits = 0;
            return calls.Ioctl(fd, FAT_IOCTL_GET_ATTRIBUTES, &bits) == 0 ? bits : 0;
        }
        case DosAttributeSource::NtfsXattr:
            return ReadFour(calls, fd, kNtfsXattr)[0];
        case DosAttributeSource::NtfsBigEndianXattr:
            return ReadFour(calls, fd, kNtfsBigEndianXattr)[3];
        case DosAttributeSource::CifsXattr: {
            char text[16] = {};  // as in "0x22"
            const ssize_t size = calls.GetXattr(fd, kCifsXattr, text, sizeof text - 1);
            return size > 0 ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 16)) : 0;
        }
        case DosAttributeSource::None:
            break;
    }
    return 0;
}

DosAttributeSource FindDosAttributes(SystemCalls& calls, int fd, std::uint32_t magic) {
    switch (magic) {
        case MSDOS_SUPER_MAGIC:
        case kExfatMagic:
            return DosAttributeSource::FatIoctl;
        case kNtfs3Magic:
            return DosAttributeSource::NtfsXattr;
        case kCifsMagic:
        case kSmb2Magic:
            return DosAttributeSource::CifsXattr;
        case kFuseMagic: {
            // Every file system in user space shows this number: only asking tells which has them.
            unsigned char bytes[4];
            return calls.GetXattr(fd, kNtfsBigEndianXattr, bytes, sizeof bytes) == sizeof bytes
                       ? DosAttributeSource::NtfsBigEndianXattr
                       : DosAttributeSource::None;
        }
        default:
            return DosAttributeSource::None;
    }
}

// Those whose files are read through the page cache, which holds a page whole or not at all. Of others
// nothing is promised: one in user space may give less than it has.
bool ReadsWholePages(std::uint32_t magic) {
    switch (magic) {
        case EXT4_SUPER_MAGIC:  // and its forerunners
        case XFS_SUPER_MAGIC:
        case BTRFS_SUPER_MAGIC:
        case F2FS_SUPER_MAGIC:
        case TMPFS_MAGIC:
            return true;
        default:
            return false;
    }
}

}  // namespace

FileId IdOf(const struct statx& found) {
    return {makedev(found.stx_dev_major, found.stx_dev_minor), found.stx_ino};
}

Seen SeenOf(const struct statx& found) {
    return {IdOf(found), found.stx_size, TimeOf(found.stx_mtime),
            S_ISDIR(found.stx_mode) ? MadeAt(found) : TimeOf(found.stx_ctime)};
}

FileTime MadeAt(const struct statx& found) {
    return (found.stx_mask & STATX_BTIME) != 0 ? TimeOf(found.stx_btime) : FileTime();
}

EntryKind KindOf(const struct statx& found) {
    if (S_ISREG(found.stx_mode)) return EntryKind::File;
    return S_ISDIR(found.stx_mode) ? EntryKind::Folder : EntryKind::Other;
}

FileTime TimeOf(const struct statx_timestamp& time) {
    return FileTime::FromUnix(time.tv_sec, time.tv_nsec);
}

std::uint8_t AttributesOf(const struct statx& found, bool nameStartsWithDot, std::uint8_t dos) {
    unsigned bits = dos;
    if (nameStartsWithDot) bits |= kHidden;
    if ((found.stx_mode & S_IWUSR) == 0) bits |= kReadOnly;
    if (S_ISDIR(found.stx_mode)) bits |= kDirectory;
    return static_cast<std::uint8_t>(bits);
}

bool LeadsNowhere(int code) {
    return code == ENOENT || code == ENOTDIR || code == ELOOP || code == ENAMETOOLONG;
}

FileSystemTraits FindFileSystemTraits(SystemCalls& calls, int fd) {
    struct statfs system {};
    if (calls.FstatFs(fd, system) != 0) return {};
    const auto magic = static_cast<std::uint32_t>(system.f_type);
    return {FindDosAttributes(calls, fd, magic), ReadsWholePages(magic), magic != OVERLAYFS_SUPER_MAGIC};
}

std::uint8_t ReadDosAttributes(SystemCalls& calls, DosAttributeSource source, int folder, const char* name) {
    if (source == DosAttributeSource::None) return 0;
    const int fd = calls.OpenAt(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0);
    if (fd < 0) return 0;
    const std::uint32_t bits = LowestByte(calls, source, fd);
    calls.Close(fd);
    return FromDosBits(bits);
}

}  // namespace vantrel
