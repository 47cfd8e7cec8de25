#include "support/faulty_system_calls.h"

#include <algorithm>
#include <array>

namespace vantrel::testing {

namespace {

std::size_t Limited(std::size_t size, std::size_t limit) {
    return limit == 0 ? size : std::min(size, limit);
}

}  // namespace

void FaultySystemCalls::ClearFaults() {
    faults_.clear();
    faultsOfKind_.clear();
    always_.clear();
}

void FaultySystemCalls::ResetCount() {
    counts_.clear();
    sequence_.clear();
}

std::size_t FaultySystemCalls::Count(Call call) const {
    const auto found = counts_.find(call);
    return found == counts_.end() ? 0 : found->second;
}

bool FaultySystemCalls::HasFailed(Call call) const {
    return std::ranges::any_of(faults_, [&](const auto& fault) {
        return fault.first <= sequence_.size() && sequence_[fault.first - 1].call == call;
    });
}

int FaultySystemCalls::Next(Call call, const char* path) {
    if (hold) hold({call, path != nullptr ? path : ""});
    const std::lock_guard lock(mutex_);
    sequence_.push_back({call, path != nullptr ? path : ""});
    const std::size_t ofKind = ++counts_[call];
    if (const auto fault = faults_.find(sequence_.size()); fault != faults_.end()) return -fault->second;
    if (const auto fault = faultsOfKind_.find({call, ofKind}); fault != faultsOfKind_.end())
        return -fault->second;
    if (const auto fault = always_.find(call); fault != always_.end() && fault->second != 0)
        return -fault->second;
    if (before) before(Record(sequence_.back()));
    return 0;
}

int FaultySystemCalls::OpenAt(int folder, const char* path, int flags, mode_t mode) {
    const int failure = Next(Call::Open, path);
    return failure != 0 ? failure : SystemCalls::OpenAt(folder, path, flags, mode);
}

int FaultySystemCalls::Close(int fd) {
    const int failure = Next(Call::Close, nullptr);
    const int result = SystemCalls::Close(fd);
    return failure != 0 ? failure : result;
}

int FaultySystemCalls::CloseRange(int first, int last) {
    const int failure = Next(Call::CloseRange, nullptr);
    return failure != 0 ? failure : SystemCalls::CloseRange(first, last);
}

ssize_t FaultySystemCalls::Read(int fd, void* buffer, std::size_t size) {
    const int failure = Next(Call::Read, nullptr);
    return failure != 0 ? failure : SystemCalls::Read(fd, buffer, Limited(size, readLimit));
}

ssize_t FaultySystemCalls::PRead(int fd, void* buffer, std::size_t size, off_t offset) {
    const int failure = Next(Call::PRead, nullptr);
    return failure != 0 ? failure : SystemCalls::PRead(fd, buffer, Limited(size, readLimit), offset);
}

ssize_t FaultySystemCalls::Write(int fd, const void* buffer, std::size_t size) {
    const int failure = Next(Call::Write, nullptr);
    return failure != 0 ? failure : SystemCalls::Write(fd, buffer, Limited(size, writeLimit));
}

off_t FaultySystemCalls::Seek(int fd, off_t offset, int whence) {
    const int failure = Next(Call::Seek, nullptr);
    return failure != 0 ? failure : SystemCalls::Seek(fd, offset, whence);
}

ssize_t FaultySystemCalls::GetDents(int fd, void* buffer, std::size_t size) {
    const int failure = Next(Call::GetDents, nullptr);
    return failure != 0 ? failure : SystemCalls::GetDents(fd, buffer, size);
}

int FaultySystemCalls::StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) {
    const int failure = Next(Call::Statx, path);
    return failure != 0 ? failure : SystemCalls::StatxAt(folder, path, flags, mask, out);
}

int FaultySystemCalls::Fsync(int fd) {
    const int failure = Next(Call::Fsync, nullptr);
    return failure != 0 ? failure : SystemCalls::Fsync(fd);
}

int FaultySystemCalls::Fdatasync(int fd) {
    const int failure = Next(Call::Fdatasync, nullptr);
    return failure != 0 ? failure : SystemCalls::Fdatasync(fd);
}

int FaultySystemCalls::Syncfs(int fd) {
    const int failure = Next(Call::Syncfs, nullptr);
    return failure != 0 ? failure : SystemCalls::Syncfs(fd);
}

int FaultySystemCalls::Truncate(int fd, off_t size) {
    const int failure = Next(Call::Truncate, nullptr);
    return failure != 0 ? failure : SystemCalls::Truncate(fd, size);
}

int FaultySystemCalls::Advise(int fd, off_t offset, off_t length, int advice) {
    const int failure = Next(Call::Advise, nullptr);
    return failure != 0 ? failure : SystemCalls::Advise(fd, offset, length, advice);
}

ssize_t FaultySystemCalls::CopyFileRange(int from, int to, std::size_t size) {
    const int failure = Next(Call::CopyFileRange, nullptr);
    return failure != 0 ? failure : SystemCalls::CopyFileRange(from, to, size);
}

int FaultySystemCalls::Clone(int from, int to) {
    const int failure = Next(Call::Clone, nullptr);
    return failure != 0 ? failure : SystemCalls::Clone(from, to);
}

int FaultySystemCalls::RenameAt(int fromFolder, const char* from, int toFolder, const char* to,
                                unsigned flags) {
    const int failure = Next(Call::Rename, from);
    return failure != 0 ? failure : SystemCalls::RenameAt(fromFolder, from, toFolder, to, flags);
}

int FaultySystemCalls::LinkAt(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    const int failure = Next(Call::Link, from);
    return failure != 0 ? failure : SystemCalls::LinkAt(fromFolder, from, toFolder, to, flags);
}

int FaultySystemCalls::UnlinkAt(int folder, const char* path, int flags) {
    const int failure = Next(Call::Unlink, path);
    return failure != 0 ? failure : SystemCalls::UnlinkAt(folder, path, flags);
}

int FaultySystemCalls::MkdirAt(int folder, const char* path, mode_t mode) {
    const int failure = Next(Call::Mkdir, path);
    return failure != 0 ? failure : SystemCalls::MkdirAt(folder, path, mode);
}

int FaultySystemCalls::SymlinkAt(const char* target, int folder, const char* path) {
    const int failure = Next(Call::Symlink, path);
    return failure != 0 ? failure : SystemCalls::SymlinkAt(target, folder, path);
}

ssize_t FaultySystemCalls::ReadlinkAt(int folder, const char* path, char* buffer, std::size_t size) {
    const int failure = Next(Call::Readlink, path);
    return failure != 0 ? failure : SystemCalls::ReadlinkAt(folder, path, buffer, size);
}

int FaultySystemCalls::Fchmod(int fd, mode_t mode) {
    const int failure = Next(Call::Fchmod, nullptr);
    return failure != 0 ? failure : SystemCalls::Fchmod(fd, mode);
}

int FaultySystemCalls::FchmodAt(int folder, const char* path, mode_t mode) {
    const int failure = Next(Call::FchmodAt, path);
    return failure != 0 ? failure : SystemCalls::FchmodAt(folder, path, mode);
}

int FaultySystemCalls::FchownAt(int folder, const char* path, uid_t owner, gid_t group, int flags) {
    const int failure = Next(Call::Chown, path);
    return failure != 0 ? failure : SystemCalls::FchownAt(folder, path, owner, group, flags);
}

int FaultySystemCalls::UtimensAt(int folder, const char* path, const timespec times[2], int flags) {
    const int failure = Next(Call::Utimens, path);
    return failure != 0 ? failure : SystemCalls::UtimensAt(folder, path, times, flags);
}

int FaultySystemCalls::Futimens(int fd, const timespec times[2]) {
    const int failure = Next(Call::Futimens, nullptr);
    return failure != 0 ? failure : SystemCalls::Futimens(fd, times);
}

ssize_t FaultySystemCalls::ListXattr(int fd, char* buffer, std::size_t size) {
    const int failure = Next(Call::ListXattr, nullptr);
    return failure != 0 ? failure : SystemCalls::ListXattr(fd, buffer, size);
}

ssize_t FaultySystemCalls::GetXattr(int fd, const char* name, void* buffer, std::size_t size) {
    const int failure = Next(Call::GetXattr, name);
    return failure != 0 ? failure : SystemCalls::GetXattr(fd, name, buffer, size);
}

int FaultySystemCalls::SetXattr(int fd, const char* name, const void* value, std::size_t size) {
    const int failure = Next(Call::SetXattr, name);
    return failure != 0 ? failure : SystemCalls::SetXattr(fd, name, value, size);
}

int FaultySystemCalls::RemoveXattr(int fd, const char* name) {
    const int failure = Next(Call::RemoveXattr, name);
    return failure != 0 ? failure : SystemCalls::RemoveXattr(fd, name);
}

int FaultySystemCalls::Lock(int fd, int operation) {
    const int failure = Next(Call::Lock, nullptr);
    return failure != 0 ? failure : SystemCalls::Lock(fd, operation);
}

int FaultySystemCalls::StartWriting(int fd, off_t offset, off_t length) {
    const int failure = Next(Call::StartWriting, nullptr);
    return failure != 0 ? failure : SystemCalls::StartWriting(fd, offset, length);
}

int FaultySystemCalls::ProcessExists(pid_t process) {
    const int failure = Next(Call::ProcessExists, nullptr);
    return failure != 0 ? failure : SystemCalls::ProcessExists(process);
}

int FaultySystemCalls::Ioctl(int fd, unsigned long request, void* argument) {
    const int failure = Next(Call::Ioctl, nullptr);
    return failure != 0 ? failure : SystemCalls::Ioctl(fd, request, argument);
}

int FaultySystemCalls::StatVfs(const char* path, struct statvfs& out) {
    const int failure = Next(Call::StatVfs, path);
    return failure != 0 ? failure : SystemCalls::StatVfs(path, out);
}

int FaultySystemCalls::FstatFs(int fd, struct statfs& out) {
    const int failure = Next(Call::FstatFs, nullptr);
    return failure != 0 ? failure : SystemCalls::FstatFs(fd, out);
}

int FaultySystemCalls::Access(const char* path, int mode) {
    const int failure = Next(Call::Access, path);
    return failure != 0 ? failure : SystemCalls::Access(path, mode);
}

bool FaultySystemCalls::ReadSmallFiles(SmallFile* files, std::size_t count) {
    if (!readsSmallFiles) return false;
    static thread_local std::array<char[SmallFile::kBytes], SmallFile::kMost> contents;
    for (std::size_t i = 0; i < count; ++i) {
        SmallFile& file = files[i];
        file.bytes = nullptr;
        const int fd = OpenAt(file.folder, file.path, file.flags, 0);
        if (fd < 0) continue;
        const ssize_t got = PRead(fd, contents[i], SmallFile::kBytes, 0);
        char more = 0;
        if (got > 0 && static_cast<std::size_t>(got) < SmallFile::kBytes && PRead(fd, &more, 1, got) == 0) {
            file.bytes = contents[i];
            file.size = static_cast<std::size_t>(got);
        }
        Close(fd);
    }
    return true;
}

}  // namespace vantrel::testing
