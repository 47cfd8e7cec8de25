#include "shell/rename_journal.h"

#include <fcntl.h>
#include <sys/file.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <optional>

#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/shell_run.h"

namespace vantrel::shell {
namespace {

constexpr std::string_view kHead = "Vantrel rename journal 1";
constexpr std::string_view kEnd = "end";
constexpr std::size_t kLargest = std::size_t{1} << 30;
constexpr int kMostTries = 100;

// A line for each object; fields are parted by tabs, which no name holds.
std::string Write(const RenameBatch& batch) {
    std::string text(kHead);
    text.append("\n").append(batch.folder.path);
    text.append("\t").append(std::to_string(batch.folder.id.inode));
    text.append("\t").append(std::to_string(batch.folder.made.ticks)).append("\n");
    for (const RenameStep& step : batch.steps) {
        text.append(std::to_string(static_cast<int>(step.kind))).append("\t");
        text.append(std::to_string(step.inode)).append("\t");
        text.append(std::to_string(step.made.ticks)).append("\t");
        text.append(step.from).append("\t").append(step.to).append("\t").append(step.temporary).append("\n");
    }
    return text.append(kEnd).append("\n");
}

template <std::size_t count>
std::optional<std::array<std::string_view, count>> Fields(std::string_view line) {
    std::array<std::string_view, count> fields;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t end = line.find('\t');
        if ((end == std::string_view::npos) != (i + 1 == count)) return std::nullopt;
        fields[i] = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    }
    return fields;
}

template <typename Number>
bool Read(std::string_view text, Number& out) {
    const auto read = std::from_chars(text.data(), text.data() + text.size(), out);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

bool IsOneName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

bool ParseStep(std::string_view line, RenameStep& step) {
    const auto fields = Fields<6>(line);
    int kind = 0;
    if (!fields || !Read((*fields)[0], kind) || kind < 0 || kind > static_cast<int>(Sighting::Kind::Special))
        return false;
    step.kind = static_cast<Sighting::Kind>(kind);
    step.from = (*fields)[3];
    step.to = (*fields)[4];
    step.temporary = (*fields)[5];
    return Read((*fields)[1], step.inode) && Read((*fields)[2], step.made.ticks) && IsOneName(step.from) &&
           IsOneName(step.to) && IsOneName(step.temporary);
}

// False unless it is whole.
bool Parse(std::string_view text, RenameBatch& batch) {
    const auto nextLine = [&text](std::string_view& line) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) return false;
        line = text.substr(0, end);
        text.remove_prefix(end + 1);
        return true;
    };
    std::string_view line;
    if (!nextLine(line) || line != kHead || !nextLine(line)) return false;
    const auto folder = Fields<3>(line);
    if (!folder || !(*folder)[0].starts_with('/')) return false;
    batch.folder.path = (*folder)[0];
    if (!Read((*folder)[1], batch.folder.id.inode) || !Read((*folder)[2], batch.folder.made.ticks))
        return false;
    while (nextLine(line)) {
        if (line == kEnd) return text.empty();
        if (!ParseStep(line, batch.steps.emplace_back())) return false;
    }
    return false;
}

int WriteAll(SystemCalls& calls, int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = calls.Write(fd, text.data(), text.size());
        if (written < 0) return static_cast<int>(written);
        if (written == 0) return -EIO;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

// Locks the file. -EEXIST: somebody removed it before it was locked.
int Lock(SystemCalls& calls, int fd) {
    if (const int locked = calls.Lock(fd, LOCK_EX | LOCK_NB); locked < 0) return locked;
    Statx stat{};
    if (const int looked = LookAtOpen(calls, fd, stat); looked < 0) return looked;
    return stat.stx_nlink == 0 ? -EEXIST : 0;
}

int MakeSafe(SystemCalls& calls, int file, int folder, std::string_view text) {
    int result = WriteAll(calls, file, text);
    if (result == 0) result = calls.Fsync(file);
    if (result == 0) result = calls.Fsync(folder);
    return result;
}

}  // namespace

Error RenameJournal::Create(const FileSystem& files, const std::string& folder, const std::string& token,
                            RenameBatch& batch, RenameJournal& out) {
    SystemCalls& calls = files.Calls();
    Folder opened;
    if (Error error = OpenExistingFolder(files, folder, opened); !error.IsOk()) return error;
    int result = -EEXIST;
    std::string unique;
    for (int tries = 0; tries < kMostTries && result == -EEXIST; ++tries) {
        unique = token + (tries == 0 ? "" : "-" + std::to_string(tries));
        out.name_ = std::string(kNameStem).append(unique).append(kNameEnd);
        result =
            calls.OpenAt(opened.fd.Get(), out.name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (result < 0) continue;
        out.file_ = Descriptor(calls, result);
        result = Lock(calls, out.file_.Get());
    }
    out.path_ = JoinPath(folder, out.name_);
    if (!out.file_.IsOpen()) return Error::FromErrno(-result, out.path_);
    for (std::size_t i = 0; i < batch.steps.size(); ++i)
        batch.steps[i].temporary = "vt_tempname-" + unique + "-" + std::to_string(i);
    if (result == 0) result = MakeSafe(calls, out.file_.Get(), opened.fd.Get(), Write(batch));
    if (result < 0) {
        calls.UnlinkAt(opened.fd.Get(), out.name_.c_str(), 0);
        out.file_.Close();
        return Error::FromErrno(-result, out.path_);
    }
    out.folder_ = std::move(opened.fd);
    out.calls_ = &calls;
    return {};
}

Error RenameJournal::OpenLeft(const FileSystem& files, const std::string& path, RenameBatch& batch,
                              RenameJournal& out, bool& isLeft) {
    SystemCalls& calls = files.Calls();
    isLeft = false;
    Folder holder;
    if (Error error = OpenHolder(files, path, holder, out.name_); !error.IsOk()) return error;
    int result =
        calls.OpenAt(holder.fd.Get(), out.name_.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0);
    if (result == -ENOENT) return {};
    if (result < 0) return Error::FromErrno(-result, path);
    out.file_ = Descriptor(calls, result);
    result = Lock(calls, out.file_.Get());
    if (result == -EWOULDBLOCK || result == -EEXIST) {
        out.file_.Close();
        return {};
    }
    if (result < 0) return Error::FromErrno(-result, path);
    out.folder_ = std::move(holder.fd);
    out.path_ = path;
    out.calls_ = &calls;
    std::string text;
    if (Error error = files.ReadWholeFile(path, kLargest, text); !error.IsOk()) return error;
    if (!Parse(text, batch)) return out.Remove();
    isLeft = true;
    return {};
}

Error RenameJournal::Remove() {
    const int removed = calls_->UnlinkAt(folder_.Get(), name_.c_str(), 0);
    file_.Close();
    return removed == 0 || removed == -ENOENT ? Error() : Error::FromErrno(-removed, path_);
}

}  // namespace vantrel::shell
