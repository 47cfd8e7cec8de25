#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/files/system_calls.h"

namespace vantrel::testing {

enum class Call {
    Open,
    Close,
    CloseRange,
    Read,
    PRead,
    Write,
    Seek,
    GetDents,
    Statx,
    Fsync,
    Fdatasync,
    Syncfs,
    Truncate,
    Advise,
    CopyFileRange,
    Clone,
    Rename,
    Link,
    Unlink,
    Mkdir,
    Symlink,
    Readlink,
    Fchmod,
    FchmodAt,
    Chown,
    Utimens,
    Futimens,
    ListXattr,
    GetXattr,
    SetXattr,
    RemoveXattr,
    Lock,
    StartWriting,
    ProcessExists,
    Ioctl,
    StatVfs,
    FstatFs,
    Access,
};

// The real system, where single calls fail as told. A call that is to fail does nothing, except that a close
// does close. Any thread may make calls; what else there is belongs to the test, while no other thread makes
// any, except that `before` may change faults.
class FaultySystemCalls : public SystemCalls {
  public:
    struct Record {
        Call call;
        std::string path;  // as given to the call; empty where it takes a descriptor alone
    };

    // The call of this number, counted from 1 over all kinds, or over those of one kind, fails with `code`.
    void FailAt(std::size_t number, int code) { faults_[number] = code; }
    void FailAt(Call call, std::size_t number, int code) { faultsOfKind_[{call, number}] = code; }
    // Every call of one kind from now on; 0 ends it.
    void FailAll(Call call, int code) { always_[call] = code; }
    void ClearFaults();
    // Forgets what was counted and recorded; the faults stay.
    void ResetCount();

    std::size_t Count() const { return sequence_.size(); }
    std::size_t Count(Call call) const;
    const std::vector<Record>& Sequence() const { return sequence_; }
    // A call of this kind was one of those that FailAt names by their number over all kinds.
    bool HasFailed(Call call) const;

    // The most that one read or write gives; 0: no limit.
    std::size_t readLimit = 0;
    std::size_t writeLimit = 0;
    // Whether small files can be read at once; each is then opened, read and closed by calls of these kinds.
    bool readsSmallFiles = false;
    // Called before each call that does not fail, of one thread at a time: the place to change the disk in
    // between.
    std::function<void(const Record&)> before;
    // Called before every call by the thread that makes it, with nothing locked: the place to hold one up.
    // Set while no other thread makes calls.
    std::function<void(const Record&)> hold;

    int OpenAt(int folder, const char* path, int flags, mode_t mode) override;
    int Close(int fd) override;
    int CloseRange(int first, int last) override;
    ssize_t Read(int fd, void* buffer, std::size_t size) override;
    ssize_t PRead(int fd, void* buffer, std::size_t size, off_t offset) override;
    ssize_t Write(int fd, const void* buffer, std::size_t size) override;
    off_t Seek(int fd, off_t offset, int whence) override;
    ssize_t GetDents(int fd, void* buffer, std::size_t size) override;
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override;
    int Fsync(int fd) override;
    int Fdatasync(int fd) override;
    int Syncfs(int fd) override;
    int Truncate(int fd, off_t size) override;
    int Advise(int fd, off_t offset, off_t length, int advice) override;
    ssize_t CopyFileRange(int from, int to, std::size_t size) override;
    int Clone(int from, int to) override;
    int RenameAt(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) override;
    int LinkAt(int fromFolder, const char* from, int toFolder, const char* to, int flags) override;
    int UnlinkAt(int folder, const char* path, int flags) override;
    int MkdirAt(int folder, const char* path, mode_t mode) override;
    int SymlinkAt(const char* target, int folder, const char* path) override;
    ssize_t ReadlinkAt(int folder, const char* path, char* buffer, std::size_t size) override;
    int Fchmod(int fd, mode_t mode) override;
    int FchmodAt(int folder, const char* path, mode_t mode) override;
    int FchownAt(int folder, const char* path, uid_t owner, gid_t group, int flags) override;
    int UtimensAt(int folder, const char* path, const timespec times[2], int flags) override;
    int Futimens(int fd, const timespec times[2]) override;
    ssize_t ListXattr(int fd, char* buffer, std::size_t size) override;
    ssize_t GetXattr(int fd, const char* name, void* buffer, std::size_t size) override;
    int SetXattr(int fd, const char* name, const void* value, std::size_t size) override;
    int RemoveXattr(int fd, const char* name) override;
    int Lock(int fd, int operation) override;
    int StartWriting(int fd, off_t offset, off_t length) override;
    int ProcessExists(pid_t process) override;
    int Ioctl(int fd, unsigned long request, void* argument) override;
    int StatVfs(const char* path, struct statvfs& out) override;
    int FstatFs(int fd, struct statfs& out) override;
    int Access(const char* path, int mode) override;
    bool ReadSmallFiles(SmallFile* files, std::size_t count) override;

  private:
    // 0, or minus the errno value that the call being made must give.
    int Next(Call call, const char* path);
    std::recursive_mutex mutex_;  // `before` may make calls of its own

    std::map<std::size_t, int> faults_;
    std::map<std::pair<Call, std::size_t>, int> faultsOfKind_;
    std::map<Call, int> always_;
    std::map<Call, std::size_t> counts_;
    std::vector<Record> sequence_;
};

}  // namespace vantrel::testing
