#include "platform/files/file_system.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/files/entry_info.h"
#include "platform/files/located_path.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

bool NameStartsWithDot(const LocatedPath& path) {
    const char* slash = std::strrchr(path.Rest(), '/');
    return (slash != nullptr ? slash + 1 : path.Rest())[0] == '.';
}

// DOS attributes of what stands at `path`: there, and only there, it is worth asking what file system it is
// on.
std::uint8_t DosAttributesAt(SystemCalls& calls, const LocatedPath& path) {
    const int fd = calls.OpenAt(path.Folder(), path.Rest(), O_PATH | O_CLOEXEC, 0);
    if (fd < 0) return 0;
    const FileSystemTraits traits = FindFileSystemTraits(calls, fd);
    calls.Close(fd);
    return ReadDosAttributes(calls, traits.dosAttributes, path.Folder(), path.Rest());
}

void Fill(const struct statx& found, FileInfo& out) {
    out.kind = KindOf(found);
    out.mode = found.stx_mode & 07777U;
    out.size = found.stx_size;
    out.created = MadeAt(found);
    out.accessed = TimeOf(found.stx_atime);
    out.lastWrite = TimeOf(found.stx_mtime);
    out.id = IdOf(found);
    out.linkCount = found.stx_nlink;
    out.owner = found.stx_uid;
    out.group = found.stx_gid;
}

int StatAt(SystemCalls& calls, const LocatedPath& path, LinkPolicy links, FileInfo& out) {
    if (path.Failure() != 0) return path.Failure();
    out = FileInfo();
    struct statx found;
    int result =
        calls.StatxAt(path.Folder(), path.Rest(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, kInfoMask, found);
    if (result != 0) return result;
    out.isLink = S_ISLNK(found.stx_mode);
    if (out.isLink && links == LinkPolicy::Follow) {
        struct statx target;
        result = calls.StatxAt(path.Folder(), path.Rest(), AT_NO_AUTOMOUNT, kInfoMask, target);
        if (result == 0)
            found = target;
        else if (!LeadsNowhere(-result))
            return result;
    }
    Fill(found, out);
    const std::uint8_t dos = out.kind == EntryKind::Other ? std::uint8_t{0} : DosAttributesAt(calls, path);
    out.attributes = AttributesOf(found, NameStartsWithDot(path), dos);
    return 0;
}

// The kind alone, following links; Other where there is nothing.
EntryKind KindAt(SystemCalls& calls, std::string_view name) {
    const LocatedPath path(calls, name);
    struct statx found;
    if (path.Failure() != 0 || calls.StatxAt(path.Folder(), path.Rest(), 0, STATX_TYPE, found) != 0)
        return EntryKind::Other;
    return KindOf(found);
}

// Renames where the system cannot refuse an existing target by itself. A second name first, and then the old
// one removed, still lets nothing be lost; only where there are no second names is it looked up beforehand.
int RenameByHand(SystemCalls& calls, const LocatedPath& from, const LocatedPath& to) {
    int result = calls.LinkAt(from.Folder(), from.Rest(), to.Folder(), to.Rest(), 0);
    if (result == 0) return calls.UnlinkAt(from.Folder(), from.Rest(), 0);
    if (result == -EEXIST) return result;
    struct statx found;
    result = calls.StatxAt(to.Folder(), to.Rest(), AT_SYMLINK_NOFOLLOW, STATX_TYPE, found);
    if (result == 0) return -EEXIST;
    if (result != -ENOENT) return result;
    return calls.RenameAt(from.Folder(), from.Rest(), to.Folder(), to.Rest(), 0);
}

// Whether the two paths are one object whose names differ in letter case only, on a file system that takes
// them for one name.
bool IsSameNameInOtherCase(SystemCalls& calls, std::string_view from, std::string_view to) {
    FileInfo a, b;
    if (StatAt(calls, LocatedPath(calls, from), LinkPolicy::DoNotFollow, a) != 0) return false;
    if (StatAt(calls, LocatedPath(calls, to), LinkPolicy::DoNotFollow, b) != 0) return false;
    return a.id == b.id && (a.kind == EntryKind::Folder || a.linkCount == 1) && EqualIgnoringCase(from, to);
}

}  // namespace

Error FileSystem::Open(std::string_view folder, OpenFolder& out) const {
    const LocatedPath path(calls_, folder);
    if (path.Failure() != 0) return Error::FromErrnoOfFolder(-path.Failure(), folder);
    return Error::FromErrnoOfFolder(-OpenFolder::OpenAt(calls_, path.Folder(), path.Rest(), nullptr, out),
                                    folder);
}

Error FileSystem::Stat(std::string_view path, LinkPolicy links, FileInfo& out) const {
    return Error::FromErrno(-StatAt(calls_, LocatedPath(calls_, path), links, out), path);
}

bool FileSystem::FolderExists(std::string_view path) const {
    return KindAt(calls_, path) == EntryKind::Folder;
}

bool FileSystem::FileExists(std::string_view path) const {
    return KindAt(calls_, path) == EntryKind::File;
}

bool FileSystem::Exists(std::string_view name) const {
    const LocatedPath path(calls_, name);
    struct statx found;
    return path.Failure() == 0 &&
           calls_.StatxAt(path.Folder(), path.Rest(), AT_SYMLINK_NOFOLLOW, STATX_TYPE, found) == 0;
}

Error FileSystem::CreateFolder(std::string_view path) const {
    const LocatedPath at(calls_, path);
    int result = at.Failure();
    if (result == 0) result = calls_.MkdirAt(at.Folder(), at.Rest(), 0777);
    return Error::FromErrnoOfFolder(-result, path);
}

Error FileSystem::RemoveFile(std::string_view path) const {
    const LocatedPath at(calls_, path);
    int result = at.Failure();
    if (result == 0) result = calls_.UnlinkAt(at.Folder(), at.Rest(), 0);
    return Error::FromErrno(-result, path);
}

Error FileSystem::Rename(std::string_view from, std::string_view to, bool replace) const {
    const LocatedPath source(calls_, from);
    const LocatedPath target(calls_, to);
    int result = source.Failure() != 0 ? source.Failure() : target.Failure();
    if (result != 0) return Error::FromErrno(-result, source.Failure() != 0 ? from : to);
    const auto rename = [&](unsigned flags) {
        return calls_.RenameAt(source.Folder(), source.Rest(), target.Folder(), target.Rest(), flags);
    };
    if (replace) {
        result = rename(0);
    } else {
        result = rename(RENAME_NOREPLACE);
        if (result == -EINVAL || result == -ENOSYS) result = RenameByHand(calls_, source, target);
        if (result == -EEXIST && IsSameNameInOtherCase(calls_, from, to)) result = rename(0);
    }
    return Error::FromErrno(-result, result == -EEXIST ? to : from);
}

Error FileSystem::OpenParent(std::string_view path, int& fd, std::string& lastPart) const {
    fd = LocatedPath(calls_, path).OpenParent(lastPart);
    return Error::FromErrnoOfFolder(fd < 0 ? -fd : 0, path);
}

}  // namespace vantrel
