#include "platform/files/file_times.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdlib>

#include "platform/files/descriptor.h"
#include "platform/files/entry_info.h"
#include "platform/files/located_path.h"

namespace vantrel {
namespace {

constexpr unsigned kMask = STATX_BASIC_STATS | STATX_BTIME;
constexpr std::int64_t kCoarsest = 2;  // seconds; of FAT

timespec TimespecOf(const statx_timestamp& time) {
    return {time.tv_sec, static_cast<long>(time.tv_nsec)};
}

int RefuseAllButFiles(const struct statx& found) {
    if (S_ISREG(found.stx_mode)) return 0;
    return S_ISDIR(found.stx_mode) ? -EISDIR : -EINVAL;
}

// Without following a link; a file that may not be read can perhaps be written.
int OpenItself(SystemCalls& calls, const LocatedPath& at) {
    constexpr int kFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    if (at.Failure() != 0) return at.Failure();
    struct statx found {};
    int result = calls.StatxAt(at.Folder(), at.Rest(), AT_SYMLINK_NOFOLLOW, kMask, found);
    // What is no regular file is never opened.
    if (result == 0 && S_ISLNK(found.stx_mode)) result = -ELOOP;
    if (result == 0) result = RefuseAllButFiles(found);
    if (result != 0) return result;
    result = calls.OpenAt(at.Folder(), at.Rest(), O_RDONLY | kFlags, 0);
    return result == -EACCES ? calls.OpenAt(at.Folder(), at.Rest(), O_WRONLY | kFlags, 0) : result;
}

bool IsHeld(const timespec& wanted, const statx_timestamp& now) {
    return std::abs(static_cast<std::int64_t>(wanted.tv_sec) - now.tv_sec) <= kCoarsest;
}

}  // namespace

FileTime FileTimeOf(const timespec& time) {
    return FileTime::FromUnix(time.tv_sec, static_cast<std::uint32_t>(time.tv_nsec));
}

timespec TimespecOf(FileTime utc) {
    std::int64_t seconds = 0;
    std::uint32_t nanoseconds = 0;
    utc.ToUnix(seconds, nanoseconds);
    return {seconds, static_cast<long>(nanoseconds)};
}

Error ReadExactTimes(const FileSystem& files, std::string_view path, ExactTimes& out) {
    const LocatedPath at(files.Calls(), path);
    struct statx found {};
    int result = at.Failure();
    if (result == 0) result = files.Calls().StatxAt(at.Folder(), at.Rest(), 0, kMask, found);
    if (result == 0) result = RefuseAllButFiles(found);
    if (result != 0) return Error::FromErrno(-result, path);
    out.accessed = TimespecOf(found.stx_atime);
    out.lastWrite = TimespecOf(found.stx_mtime);
    out.created = {};
    if ((found.stx_mask & STATX_BTIME) != 0) out.created = FileTimeOf(TimespecOf(found.stx_btime));
    return {};
}

Error SetExactTimes(const FileSystem& files, std::string_view path, const Sighting& seen, TimesToSet times) {
    SystemCalls& calls = files.Calls();
    const int opened = OpenItself(calls, LocatedPath(calls, path));
    if (opened == -ELOOP)
        return {ErrorNumber::PathFileAccess,
                "\"" + std::string(path) + "\" is a link, and what it leads to is left alone"};
    if (opened < 0) return Error::FromErrno(-opened, path);
    const Descriptor file(calls, opened);
    struct statx now {};
    int result = calls.StatxAt(file.Get(), "", AT_EMPTY_PATH, kMask, now);
    if (result == 0) result = RefuseAllButFiles(now);
    if (result != 0) return Error::FromErrno(-result, path);
    if (seen.state == Sighting::State::Present && SightingOf(now).seen.id != seen.seen.id)
        return ChangedSinceSeen(std::string(path));
    const timespec stays{0, UTIME_OMIT};
    const timespec stamps[2] = {times.accessed ? *times.accessed : stays,
                                times.lastWrite ? *times.lastWrite : stays};
    result = calls.Futimens(file.Get(), stamps);
    if (result == 0) result = calls.StatxAt(file.Get(), "", AT_EMPTY_PATH, kMask, now);
    if (result != 0) return Error::FromErrno(-result, path);
    if (times.lastWrite && !IsHeld(*times.lastWrite, now.stx_mtime))
        return {ErrorNumber::InvalidPropertyValue,
                "The file system of \"" + std::string(path) + "\" cannot hold this date"};
    return {};
}

}  // namespace vantrel
