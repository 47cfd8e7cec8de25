#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/files/entry_info.h"
#include "platform/files/entry_name.h"
#include "platform/files/file_system.h"
#include "platform/files/located_path.h"

namespace vantrel {

namespace {

// 0 for a regular file, minus an errno value for what must not be read from.
int RefuseUnlessRegular(const struct statx& found) {
    if (S_ISREG(found.stx_mode)) return 0;
    return S_ISDIR(found.stx_mode) ? -EISDIR : -ENXIO;
}

// The smallest page that the kernel knows.
constexpr std::size_t kLeastPage = 4'096;

}  // namespace

const int ReadFile::kOpenFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

ReadFile::ReadFile(ReadFile&& other) noexcept {
    *this = std::move(other);
}

ReadFile& ReadFile::operator=(ReadFile&& other) noexcept {
    std::swap(calls_, other.calls_);
    std::swap(fd_, other.fd_);
    std::swap(readsWholePages_, other.readsWholePages_);
    std::swap(seen_, other.seen_);
    return *this;
}

ReadFile::~ReadFile() {
    if (fd_ >= 0) calls_->Close(fd_);
}

Error ReadFile::ReadAt(std::uint64_t offset, void* buffer, std::size_t size, std::size_t& got) {
    got = 0;
    while (got < size) {
        const ssize_t result = calls_->PRead(fd_, static_cast<char*>(buffer) + got, size - got,
                                             static_cast<off_t>(offset + got));
        if (result < 0) return Error::FromErrno(static_cast<int>(-result));
        if (result == 0) break;
        got += static_cast<std::size_t>(result);
    }
    return {};
}

void ReadFile::Prefetch(std::uint64_t length, std::uint64_t offset) {
    // A file system that cannot be told is no error: the file is read all the same.
    if (fd_ >= 0)
        calls_->Advise(fd_, static_cast<off_t>(offset), static_cast<off_t>(length), POSIX_FADV_WILLNEED);
}

bool UnstatedFile::ReadWhole(void* buffer, std::size_t size, std::size_t& got) {
    const ssize_t result = file_.calls_->PRead(file_.fd_, buffer, size, 0);
    if (result <= 0 || static_cast<std::size_t>(result) >= size) return false;
    got = static_cast<std::size_t>(result);
    return (file_.readsWholePages_ && got < kLeastPage) ||
           file_.calls_->Seek(file_.fd_, 0, SEEK_END) == result;
}

Error UnstatedFile::Stat(ReadFile& out) && {
    const int result = file_.LookAtHandle();
    if (result == 0) out = std::move(file_);
    return Error::FromErrno(-result);
}

int ReadFile::LookAtHandle() {
    struct statx found;
    int result = calls_->StatxAt(fd_, "", AT_EMPTY_PATH, STATX_TYPE | kSeenMask, found);
    if (result == 0) result = RefuseUnlessRegular(found);
    if (result == 0) seen_ = SeenOf(found);
    return result;
}

int ReadFile::OpenAt(SystemCalls& calls, int base, const char* path, bool lookFirst, ReadFile& out) {
    // Looked at before it is opened, since opening a device can set it to work, and again after, since
    // another object may have taken the name in between.
    int result = 0;
    if (lookFirst) {
        struct statx found;
        result = calls.StatxAt(base, path, 0, STATX_TYPE, found);
        if (result == 0) result = RefuseUnlessRegular(found);
        if (result != 0) return result;
    }
    ReadFile opened;
    opened.calls_ = &calls;
    opened.fd_ = calls.OpenAt(base, path, kOpenFlags, 0);
    if (opened.fd_ < 0) return opened.fd_;
    result = opened.LookAtHandle();
    if (result == 0) out = std::move(opened);
    return result;
}

int ReadFile::OpenIn(const OpenFolder& folder, const char* name, int flags) {
    calls_ = folder.calls_;
    readsWholePages_ = folder.traits_.readsWholePages;
    flags |= kOpenFlags;
    // The system lets the owner of a file have this, and no other user: in a folder of somebody else's files
    // it is asked for once.
    if (folder.keepsAccessTimes_.load(std::memory_order_relaxed)) {
        fd_ = calls_->OpenAt(folder.fd_, name, flags | O_NOATIME, 0);
        if (fd_ != -EPERM) return std::min(fd_, 0);
        folder.keepsAccessTimes_.store(false, std::memory_order_relaxed);
    }
    fd_ = calls_->OpenAt(folder.fd_, name, flags, 0);
    return std::min(fd_, 0);
}

void FileCloser::Take(ReadFile file) {
    if (!file.IsOpen()) return;
    calls_ = file.calls_;
    fds_.reserve(enough_);
    fds_.push_back(std::exchange(file.fd_, -1));
    if (fds_.size() >= enough_) CloseAll();
}

void FileCloser::CloseAll() {
    std::sort(fds_.begin(), fds_.end());
    for (auto first = fds_.begin(); first != fds_.end();) {
        // Numbers without a gap: between them nothing else can be open.
        auto last = first;
        while (last + 1 != fds_.end() && *(last + 1) == *last + 1) ++last;
        const bool single = first == last;
        if (single || calls_->CloseRange(*first, *last) != 0)
            for (auto fd = first; fd <= last; ++fd) calls_->Close(*fd);
        first = last + 1;
    }
    fds_.clear();
}

Error FileSystem::OpenForReading(std::string_view file, ReadFile& out) const {
    return OpenFile(file, true, out);
}

Error FileSystem::OpenScannedFile(std::string_view file, ReadFile& out) const {
    return OpenFile(file, false, out);
}

Error OpenFolder::OpenScannedFile(std::string_view name, ReadFile& out) const {
    const EntryName entry(name);
    if (!entry.IsWhole()) return Error::FromErrno(EINVAL, name);
    ReadFile opened;
    int result = opened.OpenIn(*this, entry.Bytes(), 0);
    if (result == 0) result = opened.LookAtHandle();
    if (result == 0) out = std::move(opened);
    return Error::FromErrno(-result, name);
}

Error OpenFolder::OpenUnstatedFile(std::string_view name, UnstatedFile& out) const {
    const EntryName entry(name);
    if (!entry.IsWhole()) return Error::FromErrno(EINVAL, name);
    UnstatedFile opened;
    const int result = opened.file_.OpenIn(*this, entry.Bytes(), O_NOFOLLOW);
    if (result == 0) out = std::move(opened);
    return Error::FromErrno(-result, name);
}

Error FileSystem::OpenFile(std::string_view file, bool lookFirst, ReadFile& out) const {
    const LocatedPath path(calls_, file);
    if (path.Failure() != 0) return Error::FromErrno(-path.Failure(), file);
    return Error::FromErrno(-ReadFile::OpenAt(calls_, path.Folder(), path.Rest(), lookFirst, out), file);
}

Error FileSystem::ReadWholeFile(std::string_view path, std::size_t limit, std::string& out) const {
    ReadFile file;
    if (Error error = OpenForReading(path, file); !error.IsOk()) return error;
    // Some files, as those of /proc, say that they are empty: what counts is where the reading ends.
    std::string content;
    limit = std::min(limit, content.max_size() - 1);
    std::size_t step = file.Size() < limit ? static_cast<std::size_t>(file.Size()) + 1 : limit + 1;
    while (true) {
        const std::size_t before = content.size();
        content.resize(before + step);
        std::size_t got = 0;
        const Error error = file.ReadAt(before, content.data() + before, step, got);
        if (!error.IsOk()) return Error::FromErrno(error.SystemNumber(), path);
        content.resize(before + got);
        if (content.size() > limit) return Error::FromErrno(ENOMEM, path);
        if (got < step) break;
        step = std::min<std::size_t>(std::size_t{64} << 10, limit + 1 - content.size());
    }
    out = std::move(content);
    return {};
}

}  // namespace vantrel
