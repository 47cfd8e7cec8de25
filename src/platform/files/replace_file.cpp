#include "platform/files/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>

#include "platform/files/descriptor.h"
#include "platform/files/located_path.h"

namespace vantrel {

namespace {

constexpr int kMostLinks = 40;  // as many as the system itself follows in one path
constexpr int kMostTries = 100;

int WriteAll(SystemCalls& calls, int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = calls.Write(fd, content.data(), content.size());
        if (written < 0) return static_cast<int>(written);
        if (written == 0) return -EIO;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

// The place where the file is that `path` means, behind all links: an open folder and a name in it.
class Target {
  public:
    Target(SystemCalls& calls, std::string_view path) : calls_(calls) {
        const int fd = LocatedPath(calls, path).OpenParent(name_);
        folder_ = Descriptor(calls_, fd);
        failure_ = fd < 0 ? fd : 0;
        for (int links = 0; failure_ == 0 && FollowLink(); ++links)
            if (links == kMostLinks) failure_ = -ELOOP;
    }
    int Failure() const { return failure_; }
    int Folder() const { return folder_.Get(); }
    const char* Name() const { return name_.c_str(); }

  private:
    bool FollowLink() {
        std::string link(PATH_MAX, '\0');
        const ssize_t size = calls_.ReadlinkAt(Folder(), Name(), link.data(), link.size());
        if (size <= 0) {
            // No link, or nothing there yet.
            if (size != -EINVAL && size != -ENOENT) failure_ = size == 0 ? -ENOENT : static_cast<int>(size);
            return false;
        }
        link.resize(static_cast<std::size_t>(size));
        const int fd = LocatedPath(calls_, Folder(), std::move(link)).OpenParent(name_);
        folder_ = Descriptor(calls_, fd);
        if (fd < 0) failure_ = fd;
        return failure_ == 0;
    }

    SystemCalls& calls_;
    Descriptor folder_;
    std::string name_;
    int failure_ = 0;
};

struct Existing {
    bool exists = false;
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;
};

// What stands at the target. Refuses what is no regular file, and what this user may not write: a rename
// alone would not ask.
int LookAtExisting(SystemCalls& calls, const Target& target, Existing& existing) {
    struct statx found;
    int result = calls.StatxAt(target.Folder(), target.Name(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS, found);
    if (result == -ENOENT) return 0;
    if (result != 0) return result;
    if (!S_ISREG(found.stx_mode)) return S_ISDIR(found.stx_mode) ? -EISDIR : -ENXIO;
    // Said here too because root may write everything.
    if ((found.stx_mode & S_IWUSR) == 0) return -EACCES;
    const int fd = calls.OpenAt(target.Folder(), target.Name(),
                                O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0);
    if (fd < 0) return fd;
    calls.Close(fd);
    existing = {true, static_cast<mode_t>(found.stx_mode & 07777U), found.stx_uid, found.stx_gid};
    return 0;
}

// Owner first: changing it clears bits of the mode. A user who may not give files away keeps his own name on
// it, which no system would let him change.
int KeepOwnerAndMode(SystemCalls& calls, int fd, const Existing& existing) {
    struct statx made;
    int result = calls.StatxAt(fd, "", AT_EMPTY_PATH, STATX_BASIC_STATS, made);
    if (result != 0) return result;
    if (made.stx_uid != existing.owner || made.stx_gid != existing.group) {
        result = calls.FchownAt(fd, "", existing.owner, existing.group, AT_EMPTY_PATH);
        if (result == -EPERM)
            result = calls.FchownAt(fd, "", static_cast<uid_t>(-1), existing.group, AT_EMPTY_PATH);
        if (result != 0 && result != -EPERM) return result;
    }
    return calls.Fchmod(fd, existing.mode);
}

// An exclusive temporary file in the folder of the target. Gives its descriptor or minus an errno value.
int MakeTemporary(SystemCalls& calls, int folder, const Existing& existing, std::string& name) {
    static unsigned counter = 0;
    for (int tries = 0; tries < kMostTries; ++tries) {
        name = ".vantrel-" + std::to_string(getpid()) + "-" + std::to_string(counter++) + ".tmp";
        const int fd = calls.OpenAt(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                    existing.exists ? 0600 : 0666);
        if (fd != -EEXIST) return fd;
    }
    return -EEXIST;
}

// The temporary file that takes the target's place when it is whole; it goes where it does not come to that.
class Replacement {
  public:
    Replacement(SystemCalls& calls, const Target& target) : calls_(calls), target_(target) {}
    ~Replacement() {
        if (stands_) calls_.UnlinkAt(target_.Folder(), name_.c_str(), 0);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    // All give 0 or minus an errno value.
    int Create() {
        if (const int result = LookAtExisting(calls_, target_, existing_); result != 0) return result;
        file_ = Descriptor(calls_, MakeTemporary(calls_, target_.Folder(), existing_, name_));
        stands_ = file_.Get() >= 0;
        return stands_ ? 0 : file_.Get();
    }
    int Write(std::string_view piece) { return WriteAll(calls_, file_.Get(), piece); }
    int Publish() {
        int result = existing_.exists ? KeepOwnerAndMode(calls_, file_.Get(), existing_) : 0;
        if (result == 0) result = calls_.Fsync(file_.Get());
        const int closed = file_.Close();
        if (result == 0) result = closed;
        if (result == 0)
            result = calls_.RenameAt(target_.Folder(), name_.c_str(), target_.Folder(), target_.Name(), 0);
        if (result == 0) stands_ = false;
        return result;
    }

  private:
    SystemCalls& calls_;
    const Target& target_;
    Existing existing_;
    std::string name_;
    Descriptor file_;
    bool stands_ = false;
};

int Append(SystemCalls& calls, const LocatedPath& path, std::string_view content) {
    if (path.Failure() != 0) return path.Failure();
    struct statx found;
    int result = calls.StatxAt(path.Folder(), path.Rest(), 0, STATX_TYPE, found);
    if (result == 0 && !S_ISREG(found.stx_mode)) return S_ISDIR(found.stx_mode) ? -EISDIR : -ENXIO;
    if (result != 0 && result != -ENOENT) return result;
    Descriptor file(calls,
                    calls.OpenAt(path.Folder(), path.Rest(),
                                 O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
    if (file.Get() < 0) return file.Get();
    result = calls.StatxAt(file.Get(), "", AT_EMPTY_PATH, STATX_TYPE | STATX_SIZE, found);
    if (result != 0) return result;
    result = WriteAll(calls, file.Get(), content);
    // Half a record would put all that follows it out of step.
    if (result != 0) calls.Truncate(file.Get(), static_cast<off_t>(found.stx_size));
    const int closed = file.Close();
    return result != 0 ? result : closed;
}

}  // namespace

Error ReplaceFileInPieces(const FileSystem& files, std::string_view path,
                          const std::function<void(const PieceSink& sink)>& make) {
    const Target target(files.Calls(), path);
    // Behind a failure there is a folder that is missing.
    if (target.Failure() != 0) return Error::FromErrnoOfFolder(-target.Failure(), path);
    Replacement replacement(files.Calls(), target);
    if (const int result = replacement.Create(); result != 0) return Error::FromErrno(-result, path);
    try {
        make([&](std::string_view piece) {
            if (const int result = replacement.Write(piece); result != 0)
                throw ErrorException(Error::FromErrno(-result, path));
        });
    } catch (const ErrorException& failure) {
        return failure.Get();
    }
    return Error::FromErrno(-replacement.Publish(), path);
}

Error FileSystem::ReplaceFile(std::string_view path, std::string_view content) const {
    return ReplaceFileInPieces(*this, path, [&](const PieceSink& sink) { sink(content); });
}

Error FileSystem::AppendToFile(std::string_view path, std::string_view content) const {
    return Error::FromErrno(-Append(calls_, LocatedPath(calls_, path), content), path);
}

}  // namespace vantrel
