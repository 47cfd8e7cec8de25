#include "shell/copy_file.h"

#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include "platform/workers.h"
#include "shell/temporary_files.h"
#include "shell/verify_copy.h"

namespace vantrel::shell {
namespace {

constexpr std::size_t kSlice = std::size_t{8} << 20;
constexpr int kTries = 3;

bool CannotHold(int result) {
    return result == -EPERM || result == -EACCES || result == -EOPNOTSUPP || result == -ENOSYS ||
           result == -EINVAL;
}

// Brings the content of one open file into another, empty one.
class Content {
  public:
    Content(Shared& shared, const CopyFileOptions& options, int from, int to)
        : shared_(shared), calls_(shared.calls), options_(options), from_(from), to_(to) {}

    // Whether the last failure was the target's.
    bool FailedAtTarget() const { return failedAtTarget_; }
    // `done` is how many bytes there were.
    int Copy(const Statx& source, const Statx& target, std::uint64_t& done) {
        done = 0;
        // Files of the kernel say 0 and have content all the same.
        if (source.stx_size == 0) return ReadAndWrite(UINT64_MAX, done);
        if (Clone(source, target)) {
            done = source.stx_size;
            return Tell(done);
        }
        constexpr std::uint64_t kBlock = 512;
        if (source.stx_blocks * kBlock < source.stx_size) return CopySparse(source.stx_size, done);
        return CopyRange(source.stx_size, done);
    }

  private:
    bool Clone(const Statx& source, const Statx& target) {
        const std::pair devices{IdOf(source).device, IdOf(target).device};
        if (shared_.noClone.contains(devices)) return false;
        const int result = calls_.Clone(to_, from_);
        if (result == -EOPNOTSUPP || result == -EXDEV || result == -ENOTTY || result == -ENOSYS)
            shared_.noClone.insert(devices);
        return result == 0;
    }

    int Tell(std::uint64_t bytes) { return options_.onSlice && !options_.onSlice(bytes) ? -ECANCELED : 0; }

    // Up to `length` bytes from where both files stand.
    int CopyRange(std::uint64_t length, std::uint64_t& done) {
        while (length > 0) {
            const std::size_t slice = std::min<std::uint64_t>(length, kSlice);
            const ssize_t got = inKernel_ ? calls_.CopyFileRange(from_, to_, slice) : -EOPNOTSUPP;
            // Nothing, or a refusal: reading tells whether this is the end or a real error.
            if (got <= 0) {
                inKernel_ = false;
                return ReadAndWrite(length, done);
            }
            if (length > slice) calls_.StartWriting(to_, static_cast<off_t>(done), got);
            done += static_cast<std::uint64_t>(got);
            length -= static_cast<std::uint64_t>(got);
            if (const int told = Tell(static_cast<std::uint64_t>(got)); told < 0) return told;
        }
        return 0;
    }

    int ReadAndWrite(std::uint64_t length, std::uint64_t& done) {
        char* buffer = shared_.Buffer();
        while (length > 0) {
            const ssize_t got =
                calls_.Read(from_, buffer, std::min<std::uint64_t>(length, Shared::kBufferSize));
            if (got <= 0) return static_cast<int>(got);
            for (ssize_t written = 0; written < got;) {
                const ssize_t wrote =
                    calls_.Write(to_, buffer + written, static_cast<std::size_t>(got - written));
                failedAtTarget_ = wrote <= 0;
                if (wrote <= 0) return wrote < 0 ? static_cast<int>(wrote) : -EIO;
                written += wrote;
            }
            done += static_cast<std::uint64_t>(got);
            length -= static_cast<std::uint64_t>(got);
            if (const int told = Tell(static_cast<std::uint64_t>(got)); told < 0) return told;
        }
        return 0;
    }

    // A file with holes keeps them, so that it takes no more room than before.
    int CopySparse(std::uint64_t size, std::uint64_t& done) {
        const auto end = static_cast<off_t>(size);
        off_t at = 0;
        while (at < end) {
            off_t data = calls_.Seek(from_, at, SEEK_DATA);
            if (data == -ENXIO) data = end;
            if (data < 0 && at == 0) return StartAgain(size, done);
            if (data < 0) return static_cast<int>(data);
            off_t hole = data < end ? calls_.Seek(from_, data, SEEK_HOLE) : end;
            if (hole < 0) return static_cast<int>(hole);
            hole = std::min(hole, end);
            if (data > at) {
                done += static_cast<std::uint64_t>(data - at);
                if (const int told = Tell(static_cast<std::uint64_t>(data - at)); told < 0) return told;
            }
            for (const int fd : {from_, to_}) {
                const off_t sought = calls_.Seek(fd, data, SEEK_SET);
                failedAtTarget_ = sought < 0 && fd == to_;
                if (sought < 0) return static_cast<int>(sought);
            }
            const auto wanted = static_cast<std::uint64_t>(std::max<off_t>(hole - data, 0));
            const std::uint64_t before = done;
            if (const int copied = CopyRange(wanted, done); copied < 0) return copied;
            if (done - before < wanted) return 0;  // it has shrunk, which the caller sees
            at = hole;
        }
        const int result = calls_.Truncate(to_, end);
        failedAtTarget_ = result < 0;
        return result;
    }

    int StartAgain(std::uint64_t size, std::uint64_t& done) {
        if (const off_t sought = calls_.Seek(from_, 0, SEEK_SET); sought < 0) return static_cast<int>(sought);
        return CopyRange(size, done);
    }

    Shared& shared_;
    SystemCalls& calls_;
    const CopyFileOptions& options_;
    int from_, to_;
    bool inKernel_ = true;
    bool failedAtTarget_ = false;
};

// The names of the extended attributes of `from`, each ended by NUL; empty where there are none.
int ListExtendedAttributes(SystemCalls& calls, int from, std::string& names) {
    char list[1024];
    ssize_t length = calls.ListXattr(from, list, sizeof list);
    if (length > 0) names.assign(list, static_cast<std::size_t>(length));
    if (length == -ERANGE) {
        names.resize(std::size_t{64} << 10);  // the kernel's own limit
        length = calls.ListXattr(from, names.data(), names.size());
        names.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    return length >= 0 || CannotHold(static_cast<int>(length)) ? 0 : static_cast<int>(length);
}

enum class Which { Acls, AllElse };

// Sets `lost` where the target has no room for one; that is no error.
int CopyExtendedAttributes(SystemCalls& calls, int from, int to, const std::string& names, Which which,
                           bool& lost) {
    std::vector<char> value;
    for (std::size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
        const char* name = names.c_str() + at;
        const bool isAcl = std::string_view(name).starts_with("system.posix_acl_");
        // A security label is given by the place, not by the file.
        if (isAcl != (which == Which::Acls) || std::strcmp(name, "security.selinux") == 0) continue;
        value.resize(std::size_t{64} << 10);
        const ssize_t size = calls.GetXattr(from, name, value.data(), value.size());
        if (size < 0) continue;  // gone meanwhile, or not for this user
        const int set = calls.SetXattr(to, name, value.data(), static_cast<std::size_t>(size));
        const bool noRoom = set == -ENOSPC || set == -E2BIG || set == -ERANGE || set == -EDQUOT;
        lost |= noRoom;
        if (set < 0 && !CannotHold(set) && !noRoom) return set;
    }
    return 0;
}

// A disk that rotates is slower where two read.
std::size_t ThreadsToVerify(const Shared& shared, const Place& from, const Place& to, std::uint64_t bytes) {
    if (bytes <= kReadAtOnce) return 0;
    Volumes& volumes = shared.parts.volumes;
    const bool rotates =
        volumes.IsOnRotatingDisk(from.folder->path) || volumes.IsOnRotatingDisk(to.folder->path);
    return rotates ? 0 : WorkerCount(shared.parts.jobs);
}

Error Changed(const Place& from) {
    return {ErrorNumber::PathFileAccess, "\"" + from.Path() + "\" changed while it was copied"};
}

// One try. Sets `again` when the source changed under it.
Error TryCopy(Shared& shared, const Place& from, const Place& to, const CopyFileOptions& options,
              CopiedFile& copied, bool& again) {
    SystemCalls& calls = shared.calls;
    const auto ofSource = [&](int failed) { return Error::FromErrno(-failed, from.Path()); };
    const auto ofTarget = [&](int failed) { return Error::FromErrno(-failed, to.Path()); };
    const int opened = calls.OpenAt(from.Fd(), from.name.c_str(),
                                    O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0);
    if (opened < 0) return ofSource(opened);
    const Descriptor source(calls, opened);
    if (const int failed = LookAtOpen(calls, opened, copied.source); failed < 0) return ofSource(failed);
    if (!IsFile(copied.source) || IdOf(copied.source) != IdOf(*options.found))
        return ChangedSinceSeen(from.Path());

    if (const int failed = shared.NoteWritten(*to.folder); failed < 0) return ofTarget(failed);
    copied.written = std::make_unique<TemporaryFile>(shared, *to.folder);
    const TemporaryFile& target = *copied.written;
    if (const int failed = copied.written->Create(); failed < 0) return ofTarget(failed);
    Statx targetStat{};
    if (const int failed = LookAtOpen(calls, target.Fd(), targetStat); failed < 0) return ofTarget(failed);
    copied.target = IdOf(targetStat);

    std::uint64_t bytes = 0;
    Content content(shared, options, opened, target.Fd());
    if (const int failed = content.Copy(copied.source, targetStat, bytes); failed < 0)
        return content.FailedAtTarget() ? ofTarget(failed) : ofSource(failed);
    Statx after{};
    if (const int failed = LookAtOpen(calls, opened, after); failed < 0) return ofSource(failed);
    again = !SameSizeAndTime(copied.source, after) || (after.stx_size != 0 && after.stx_size != bytes);
    if (again) return {};

    if (options.verify) {
        const int different =
            VerifyCopy(calls, {opened, target.Fd(), bytes}, ThreadsToVerify(shared, from, to, bytes),
                       [&options] { return !options.onSlice || options.onSlice(0); });
        if (different != 0) return ofTarget(different < 0 ? different : -EIO);
    }
    int failed = CopyRights(shared, opened, copied.source, target.Fd(), targetStat, to.folder->hasDefaultAcl);
    if (failed >= 0) failed = KeepTimes(shared, copied.source, target.Fd());
    if (failed >= 0) failed = copied.written->Close();
    return failed < 0 ? ofTarget(failed) : Error();
}

}  // namespace

int CopyRights(Shared& shared, int from, const Statx& fromStat, int to, const Statx& toStat,
               bool targetInheritsAcl) {
    SystemCalls& calls = shared.calls;
    int result = 0;
    mode_t mode = fromStat.stx_mode & 07777;
    if (fromStat.stx_uid != toStat.stx_uid || fromStat.stx_gid != toStat.stx_gid) {
        result = calls.FchownAt(to, "", fromStat.stx_uid, fromStat.stx_gid, AT_EMPTY_PATH);
        if (result < 0 && !CannotHold(result)) return result;
        if (result < 0) {
            // The rights of another owner are not given to this one's file.
            mode &= ~mode_t{S_ISUID | S_ISGID};
            result = calls.FchownAt(to, "", static_cast<uid_t>(-1), fromStat.stx_gid, AT_EMPTY_PATH);
            if (result < 0 && !CannotHold(result)) return result;
        }
    }
    if (targetInheritsAcl) {
        // What the folder hands down to new files would give rights that the source does not give.
        calls.RemoveXattr(to, "system.posix_acl_access");
        if (IsFolder(fromStat)) calls.RemoveXattr(to, "system.posix_acl_default");
    }
    // A mode without the right to write would keep the user's own attributes out; ACLs are part of the mode.
    std::string names;
    bool lost = false;
    result = ListExtendedAttributes(calls, from, names);
    if (result >= 0) result = CopyExtendedAttributes(calls, from, to, names, Which::AllElse, lost);
    if (result < 0) return result;
    result = calls.Fchmod(to, mode);
    if (result < 0 && !CannotHold(result)) return result;
    result = CopyExtendedAttributes(calls, from, to, names, Which::Acls, lost);
    if (result < 0) return result;
    if (lost) ++shared.notKept.attributes;
    return 0;
}

int KeepTimes(Shared& shared, const Statx& fromStat, int to) {
    const timespec times[2] = {
        {fromStat.stx_atime.tv_sec, fromStat.stx_atime.tv_nsec},
        {fromStat.stx_mtime.tv_sec, fromStat.stx_mtime.tv_nsec},
    };
    const int result = shared.calls.Futimens(to, times);
    if (result >= 0 || !CannotHold(result)) return result;
    ++shared.notKept.times;
    return 0;
}

Error MakeFolderLike(Shared& shared, const Folder& source, const Statx& sourceStat, const Place& to,
                     NameComes nameComes, MadeFolder& made) {
    SystemCalls& calls = shared.calls;
    const auto ofTarget = [&](int failed) { return Error::FromErrno(-failed, to.Path()); };
    if (const int failed = shared.NoteWritten(*to.folder); failed < 0) return ofTarget(failed);
    auto written = std::make_unique<TemporaryFile>(shared, *to.folder);
    if (const int failed = written->CreateFolder(); failed < 0) return ofTarget(failed);
    auto folder = std::make_shared<Folder>();
    if (Error error = OpenFolderAt(calls, written->Where(), LinkPolicy::DoNotFollow, *folder); !error.IsOk())
        return error;
    folder->path = to.Path();
    const int fd = folder->fd.Get();
    Statx stat{};
    if (const int failed = LookAtOpen(calls, fd, stat); failed < 0) return ofTarget(failed);
    int failed = CopyRights(shared, source.fd.Get(), sourceStat, fd, stat, to.folder->hasDefaultAcl);
    if (failed < 0) return ofTarget(failed);
    folder->hasDefaultAcl = calls.GetXattr(fd, "system.posix_acl_default", nullptr, 0) > 0;
    made = {folder, to.folder->shared_from_this(), to.name, {}, {}};
    if (geteuid() == 0) return written->Publish(to, nullptr);

    // Without the right to enter and to write nothing could be put into it.
    if (failed = LookAtOpen(calls, fd, stat); failed < 0) return ofTarget(failed);
    if ((stat.stx_mode & 0700) == 0700) return written->Publish(to, nullptr);
    made.finalMode = stat.stx_mode & 07777;
    if (failed = calls.Fchmod(fd, *made.finalMode | 0700); failed < 0) return ofTarget(failed);
    if (nameComes == NameComes::AtOnce) return written->Publish(to, nullptr);
    made.unnamed = std::move(written);
    return {};
}

Error CopyRegularFile(Shared& shared, const Place& from, const Place& to, const CopyFileOptions& options,
                      CopiedFile& copied) {
    for (int i = 0; i < kTries; ++i) {
        bool again = false;
        Error error = TryCopy(shared, from, to, options, copied, again);
        if (!again) return error;
        if (options.onRestart) options.onRestart();
    }
    return Changed(from);
}

Error CopyLink(Shared& shared, const Place& from, const Statx& found, const Place& to, CopiedFile& copied) {
    SystemCalls& calls = shared.calls;
    const auto ofSource = [&](int failed) { return Error::FromErrno(-failed, from.Path()); };
    const auto ofTarget = [&](int failed) { return Error::FromErrno(-failed, to.Path()); };
    std::string leadsTo(PATH_MAX, '\0');
    const ssize_t length = calls.ReadlinkAt(from.Fd(), from.name.c_str(), leadsTo.data(), leadsTo.size());
    if (length < 0) return ofSource(static_cast<int>(length));
    leadsTo.resize(static_cast<std::size_t>(length));
    if (const int failed = Look(calls, from, LinkPolicy::DoNotFollow, copied.source); failed < 0)
        return ofSource(failed);
    if (IdOf(copied.source) != IdOf(found)) return ChangedSinceSeen(from.Path());

    if (const int failed = shared.NoteWritten(*to.folder); failed < 0) return ofTarget(failed);
    copied.written = std::make_unique<TemporaryFile>(shared, *to.folder);
    if (const int failed = copied.written->CreateLink(leadsTo.c_str()); failed < 0) return ofTarget(failed);
    const Place& made = copied.written->Where();
    Statx stat{};
    if (const int failed = Look(calls, made, LinkPolicy::DoNotFollow, stat); failed < 0)
        return ofTarget(failed);
    copied.target = IdOf(stat);
    if (stat.stx_uid != copied.source.stx_uid || stat.stx_gid != copied.source.stx_gid) {
        const int failed = calls.FchownAt(made.Fd(), made.name.c_str(), copied.source.stx_uid,
                                          copied.source.stx_gid, AT_SYMLINK_NOFOLLOW);
        if (failed < 0 && !CannotHold(failed)) return ofTarget(failed);
    }
    const timespec times[2] = {
        {copied.source.stx_atime.tv_sec, copied.source.stx_atime.tv_nsec},
        {copied.source.stx_mtime.tv_sec, copied.source.stx_mtime.tv_nsec},
    };
    const int timed = calls.UtimensAt(made.Fd(), made.name.c_str(), times, AT_SYMLINK_NOFOLLOW);
    if (timed < 0 && !CannotHold(timed)) return ofTarget(timed);
    if (timed < 0) ++shared.notKept.times;
    return {};
}

}  // namespace vantrel::shell
