#pragma once

#include <dirent.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>

namespace vantrel {

// A file that is read whole together with others.
struct SmallFile {
    static constexpr std::size_t kMost = 16;  // together
    // One of this many bytes or more is not small.
    static constexpr std::size_t kBytes = std::size_t{16} << 10;

    int folder = -1;
    const char* path = nullptr;
    int flags = 0;  // for opening it
    // The answer: null unless all of it was read for certain. It stands until the same thread reads others.
    const char* bytes = nullptr;
    std::size_t size = 0;
};

// The calls that the platform layer makes on files, one virtual function each, so that a test can let any
// single one fail. Each returns 0 or a count, or minus the errno value. Paths are NUL-ended bytes as on disk.
// EINTR is retried here. Any thread may call it, those that derive from it included.
class SystemCalls {
  public:
    virtual ~SystemCalls() = default;

    virtual int OpenAt(int folder, const char* path, int flags, mode_t mode);
    virtual int Close(int fd);
    // All descriptors from `first` to `last`. Where it fails none has been closed.
    virtual int CloseRange(int first, int last);
    virtual ssize_t Read(int fd, void* buffer, std::size_t size);
    virtual ssize_t PRead(int fd, void* buffer, std::size_t size, off_t offset);
    virtual ssize_t Write(int fd, const void* buffer, std::size_t size);
    virtual off_t Seek(int fd, off_t offset, int whence);
    virtual ssize_t GetDents(int fd, void* buffer, std::size_t size);
    virtual int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out);
    virtual int Fsync(int fd);
    virtual int Fdatasync(int fd);
    virtual int Syncfs(int fd);
    virtual int Truncate(int fd, off_t size);
    virtual int Advise(int fd, off_t offset, off_t length, int advice);
    virtual ssize_t CopyFileRange(int from, int to, std::size_t size);
    virtual int Clone(int from, int to);  // FICLONE
    virtual int RenameAt(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags);
    virtual int LinkAt(int fromFolder, const char* from, int toFolder, const char* to, int flags);
    virtual int UnlinkAt(int folder, const char* path, int flags);
    virtual int MkdirAt(int folder, const char* path, mode_t mode);
    virtual int SymlinkAt(const char* target, int folder, const char* path);
    virtual ssize_t ReadlinkAt(int folder, const char* path, char* buffer, std::size_t size);
    virtual int Fchmod(int fd, mode_t mode);
    virtual int FchmodAt(int folder, const char* path, mode_t mode);
    virtual int FchownAt(int folder, const char* path, uid_t owner, gid_t group, int flags);
    virtual int UtimensAt(int folder, const char* path, const timespec times[2], int flags);
    virtual int Futimens(int fd, const timespec times[2]);
    virtual ssize_t ListXattr(int fd, char* buffer, std::size_t size);
    virtual ssize_t GetXattr(int fd, const char* name, void* buffer, std::size_t size);
    virtual int SetXattr(int fd, const char* name, const void* value, std::size_t size);
    virtual int RemoveXattr(int fd, const char* name);
    virtual int Lock(int fd, int operation);  // flock
    // Asks the kernel to begin writing these bytes out, without waiting for it.
    virtual int StartWriting(int fd, off_t offset, off_t length);
    virtual int ProcessExists(pid_t process);  // -ESRCH: there is none of this number
    virtual int Ioctl(int fd, unsigned long request, void* argument);
    virtual int StatVfs(const char* path, struct statvfs& out);
    virtual int FstatFs(int fd, struct statfs& out);
    virtual int Access(const char* path, int mode);  // for the effective user
    // Opens, reads and closes all of these at once. False, and nothing was done, where there is no way to:
    // only the real calls of the process have one, so that nothing goes by the calls of a test.
    virtual bool ReadSmallFiles(SmallFile* files, std::size_t count);
};

// The real ones of this process. Never destroyed: a thread that hangs in one of them may come back at any
// time.
SystemCalls& SystemCallsOfProcess();

// From now on a write into a broken pipe, or beyond the greatest size that the user's limits leave to a file,
// fails with an error instead of ending the process in the middle of its work. What the process starts is not
// touched by it.
void TakeWriteErrorsAsValues();

}  // namespace vantrel
