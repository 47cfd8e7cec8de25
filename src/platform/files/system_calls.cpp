#include "platform/files/system_calls.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/files/small_file_ring.h"

namespace vantrel {

namespace {

// Makes a call until no signal interrupts it, and turns its failure into minus the errno value.
template <typename Call>
auto Retried(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result < 0 ? static_cast<decltype(result)>(-errno) : result;
}

}  // namespace

int SystemCalls::OpenAt(int folder, const char* path, int flags, mode_t mode) {
    return Retried([=] { return openat(folder, path, flags, mode); });
}

int SystemCalls::Close(int fd) {
    // An interrupted close has closed: doing it again could hit a descriptor opened since.
    return close(fd) == 0 || errno == EINTR ? 0 : -errno;
}

int SystemCalls::CloseRange(int first, int last) {
#ifdef __SANITIZE_THREAD__
    // ThreadSanitizer does not see this call, and would take the next use of a number for a race.
    static_cast<void>(first + last);
    return -ENOSYS;
#else
    return close_range(static_cast<unsigned>(first), static_cast<unsigned>(last), 0) == 0 ? 0 : -errno;
#endif
}

ssize_t SystemCalls::Read(int fd, void* buffer, std::size_t size) {
    return Retried([=] { return read(fd, buffer, size); });
}

ssize_t SystemCalls::PRead(int fd, void* buffer, std::size_t size, off_t offset) {
    return Retried([=] { return pread(fd, buffer, size, offset); });
}

ssize_t SystemCalls::Write(int fd, const void* buffer, std::size_t size) {
    return Retried([=] { return write(fd, buffer, size); });
}

off_t SystemCalls::Seek(int fd, off_t offset, int whence) {
    return Retried([=] { return lseek(fd, offset, whence); });
}

ssize_t SystemCalls::GetDents(int fd, void* buffer, std::size_t size) {
    return Retried([=] { return getdents64(fd, buffer, size); });
}

int SystemCalls::StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) {
    return Retried([=, &out] { return statx(folder, path, flags, mask, &out); });
}

int SystemCalls::Fsync(int fd) {
    return Retried([=] { return fsync(fd); });
}

int SystemCalls::Fdatasync(int fd) {
    return Retried([=] { return fdatasync(fd); });
}

int SystemCalls::Syncfs(int fd) {
    return Retried([=] { return syncfs(fd); });
}

int SystemCalls::Truncate(int fd, off_t size) {
    return Retried([=] { return ftruncate(fd, size); });
}

int SystemCalls::Advise(int fd, off_t offset, off_t length, int advice) {
    return -posix_fadvise(fd, offset, length, advice);
}

ssize_t SystemCalls::CopyFileRange(int from, int to, std::size_t size) {
    return Retried([=] { return copy_file_range(from, nullptr, to, nullptr, size, 0); });
}

int SystemCalls::Clone(int from, int to) {
    return Retried([=] { return ioctl(to, FICLONE, from); });
}

int SystemCalls::RenameAt(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    return Retried([=] { return renameat2(fromFolder, from, toFolder, to, flags); });
}

int SystemCalls::LinkAt(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    return Retried([=] { return linkat(fromFolder, from, toFolder, to, flags); });
}

int SystemCalls::UnlinkAt(int folder, const char* path, int flags) {
    return Retried([=] { return unlinkat(folder, path, flags); });
}

int SystemCalls::MkdirAt(int folder, const char* path, mode_t mode) {
    return Retried([=] { return mkdirat(folder, path, mode); });
}

int SystemCalls::SymlinkAt(const char* target, int folder, const char* path) {
    return Retried([=] { return symlinkat(target, folder, path); });
}

ssize_t SystemCalls::ReadlinkAt(int folder, const char* path, char* buffer, std::size_t size) {
    return Retried([=] { return readlinkat(folder, path, buffer, size); });
}

int SystemCalls::Fchmod(int fd, mode_t mode) {
    return Retried([=] { return fchmod(fd, mode); });
}

int SystemCalls::FchmodAt(int folder, const char* path, mode_t mode) {
    return Retried([=] { return fchmodat(folder, path, mode, 0); });
}

int SystemCalls::FchownAt(int folder, const char* path, uid_t owner, gid_t group, int flags) {
    return Retried([=] { return fchownat(folder, path, owner, group, flags); });
}

int SystemCalls::UtimensAt(int folder, const char* path, const timespec times[2], int flags) {
    return Retried([=] { return utimensat(folder, path, times, flags); });
}

int SystemCalls::Futimens(int fd, const timespec times[2]) {
    return Retried([=] { return futimens(fd, times); });
}

ssize_t SystemCalls::ListXattr(int fd, char* buffer, std::size_t size) {
    return Retried([=] { return flistxattr(fd, buffer, size); });
}

ssize_t SystemCalls::GetXattr(int fd, const char* name, void* buffer, std::size_t size) {
    return Retried([=] { return fgetxattr(fd, name, buffer, size); });
}

int SystemCalls::SetXattr(int fd, const char* name, const void* value, std::size_t size) {
    return Retried([=] { return fsetxattr(fd, name, value, size, 0); });
}

int SystemCalls::Ioctl(int fd, unsigned long request, void* argument) {
    return Retried([=] { return ioctl(fd, request, argument); });
}

int SystemCalls::StatVfs(const char* path, struct statvfs& out) {
    return Retried([=, &out] { return statvfs(path, &out); });
}

int SystemCalls::FstatFs(int fd, struct statfs& out) {
    return Retried([=, &out] { return fstatfs(fd, &out); });
}

int SystemCalls::Access(const char* path, int mode) {
    return Retried([=] { return faccessat(AT_FDCWD, path, mode, AT_EACCESS); });
}

bool SystemCalls::ReadSmallFiles(SmallFile*, std::size_t) {
    return false;
}

namespace {

class RealCalls : public SystemCalls {
  public:
    bool ReadSmallFiles(SmallFile* files, std::size_t count) override {
        SmallFileRing* const ring = SmallFileRing::OfThisThread();
        return ring && ring->Read(files, count);
    }
};

}  // namespace

SystemCalls& SystemCallsOfProcess() {
    static SystemCalls* const calls = new RealCalls;
    return *calls;
}

}  // namespace vantrel
