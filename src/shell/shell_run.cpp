#include "shell/shell_run.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/files/entry_info.h"
#include "platform/files/raw_listing.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/copy_batch.h"

namespace vantrel::shell {
namespace {

constexpr unsigned kStatMask = STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID;
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

std::size_t Mix(std::size_t a, std::size_t b) {
    return a ^ (b + 0x9E3779B97F4A7C15ULL + (a << 6) + (a >> 2));
}

Error Identify(SystemCalls& calls, Folder& folder) {
    Statx stat{};
    if (const int failed = LookAtOpen(calls, folder.fd.Get(), stat); failed < 0)
        return Error::FromErrno(-failed, folder.path);
    folder.id = IdOf(stat);
    folder.made = MadeAt(stat);
    folder.mount = MountOf(stat);
    folder.hasDefaultAcl = calls.GetXattr(folder.fd.Get(), "system.posix_acl_default", nullptr, 0) > 0;
    return {};
}

}  // namespace

std::string Place::Path() const {
    return JoinPath(folder->path, NameFromSystem(name));
}

FileId IdOf(const Statx& stat) {
    return {makedev(stat.stx_dev_major, stat.stx_dev_minor), stat.stx_ino};
}

std::size_t HashOf(const FileId& id) {
    return Mix(id.device, id.inode);
}

std::uint64_t MountOf(const Statx& stat) {
    return stat.stx_mask & STATX_MNT_ID ? stat.stx_mnt_id : makedev(stat.stx_dev_major, stat.stx_dev_minor);
}

bool IsFolder(const Statx& stat) {
    return S_ISDIR(stat.stx_mode);
}
bool IsFile(const Statx& stat) {
    return S_ISREG(stat.stx_mode);
}
bool IsLink(const Statx& stat) {
    return S_ISLNK(stat.stx_mode);
}

FileTime LastWriteOf(const Statx& stat) {
    return FileTime::FromUnix(stat.stx_mtime.tv_sec, stat.stx_mtime.tv_nsec);
}

bool SameSizeAndTime(const Statx& a, const Statx& b) {
    return a.stx_size == b.stx_size && a.stx_mtime.tv_sec == b.stx_mtime.tv_sec &&
           a.stx_mtime.tv_nsec == b.stx_mtime.tv_nsec;
}

int Look(SystemCalls& calls, const Place& place, LinkPolicy links, Statx& out) {
    const int flags = AT_NO_AUTOMOUNT | (links == LinkPolicy::Follow ? 0 : AT_SYMLINK_NOFOLLOW);
    return calls.StatxAt(place.Fd(), place.name.c_str(), flags, kStatMask, out);
}

int LookAtOpen(SystemCalls& calls, int fd, Statx& out) {
    return calls.StatxAt(fd, "", AT_EMPTY_PATH, kStatMask, out);
}

Error OpenFolderAt(SystemCalls& calls, const Place& place, LinkPolicy links, Folder& out) {
    const int flags = kOpenFolder | (links == LinkPolicy::Follow ? 0 : O_NOFOLLOW);
    const int fd = calls.OpenAt(place.Fd(), place.name.c_str(), flags, 0);
    out.path = place.Path();
    if (fd < 0) return Error::FromErrno(-fd, out.path);
    out.fd = Descriptor(calls, fd);
    return Identify(calls, out);
}

Error OpenFolderOnTheWay(SystemCalls& calls, const Place& place, Folder& out) {
    Error error = OpenFolderAt(calls, place, LinkPolicy::DoNotFollow, out);
    if (error.SystemNumber() != EACCES) return error;
    const int fd =
        calls.OpenAt(place.Fd(), place.name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC, 0);
    if (fd < 0) return error;
    out.fd = Descriptor(calls, fd);
    return Identify(calls, out);
}

Error OpenExistingFolder(const FileSystem& files, std::string_view path, Folder& out) {
    const std::string plain = WithoutTrailingSlash(path);
    if (plain == "/") {
        const int fd = files.Calls().OpenAt(AT_FDCWD, "/", kOpenFolder, 0);
        out.path = plain;
        if (fd < 0) return Error::FromErrno(-fd, out.path);
        out.fd = Descriptor(files.Calls(), fd);
        return Identify(files.Calls(), out);
    }
    Folder holder;
    Place place{&holder, {}};
    if (Error error = OpenHolder(files, plain, holder, place.name); !error.IsOk()) return error;
    return OpenFolderAt(files.Calls(), place, LinkPolicy::Follow, out);
}

Error OpenHolder(const FileSystem& files, std::string_view path, Folder& holder, std::string& name) {
    const std::string_view last = GetLastItemInPath(path);
    if (path.empty() || path.front() != '/' || last.empty() || last == "." || last == "..")
        return {ErrorNumber::PathNotFound, "\"" + std::string(path) + "\" is no path of an object"};
    int fd = -1;
    if (Error error = files.OpenParent(path, fd, name); !error.IsOk()) return error;
    holder.fd = Descriptor(files.Calls(), fd);
    holder.path = GetParentFolderName(path);
    return Identify(files.Calls(), holder);
}

Error OpenOrMakeFolder(const FileSystem& files, std::string_view path, Folder& out) {
    if (WithoutTrailingSlash(path) == "/") return OpenExistingFolder(files, path, out);
    Folder holder;
    Place place{&holder, {}};
    const std::string plain = WithoutTrailingSlash(path);
    Error error = OpenHolder(files, plain, holder, place.name);
    if (!error.IsOk() && error.SystemNumber() == ENOENT) {
        error = OpenOrMakeFolder(files, GetParentFolderName(plain), holder);
        if (error.IsOk()) place.name = NameToSystem(GetLastItemInPath(plain));
    }
    if (!error.IsOk()) return error;
    error = OpenFolderAt(files.Calls(), place, LinkPolicy::Follow, out);
    if (error.SystemNumber() != ENOENT) return error;
    const int made = files.Calls().MkdirAt(place.Fd(), place.name.c_str(), 0777);
    if (made < 0 && made != -EEXIST) return Error::FromErrno(-made, plain);
    return OpenFolderAt(files.Calls(), place, LinkPolicy::Follow, out);
}

int ListNames(SystemCalls& calls, const Folder& folder, std::vector<std::string>& names) {
    // A rewind first, so that a folder can be listed again through the same descriptor.
    if (const off_t at = calls.Seek(folder.fd.Get(), 0, SEEK_SET); at < 0) return static_cast<int>(at);
    alignas(dirent64) std::byte buffer[32 << 10];
    return ForEachRawEntry(calls, folder.fd.Get(), buffer, sizeof buffer, [&names](const dirent64& entry) {
        names.emplace_back(entry.d_name);
        return true;
    });
}

int LearnNames(SystemCalls& calls, Folder& folder) {
    std::vector<std::string> names;
    if (const int listed = ListNames(calls, folder, names); listed < 0) return listed;
    std::ranges::sort(names);  // of several the first one serves, whatever the order of the listing
    for (std::string& name : names)
        folder.namesByFold.try_emplace(FoldCase(NameFromSystem(name)), std::move(name));
    return 0;
}

Place TargetPlace(SystemCalls& calls, const Folder& folder, const std::string& name) {
    Place place{&folder, name};
    if (folder.namesByFold.empty()) return place;
    const auto known = folder.namesByFold.find(FoldCase(NameFromSystem(name)));
    if (known == folder.namesByFold.end() || known->second == name) return place;
    Statx stat{};
    if (Look(calls, place, LinkPolicy::DoNotFollow, stat) == -ENOENT) place.name = known->second;
    return place;
}

int RenameWithoutReplacing(SystemCalls& calls, const Place& from, const Place& to) {
    const int result =
        calls.RenameAt(from.Fd(), from.name.c_str(), to.Fd(), to.name.c_str(), RENAME_NOREPLACE);
    if (result != -EINVAL && result != -ENOSYS && result != -EOPNOTSUPP) return result;
    Statx stat{};
    const int looked = Look(calls, to, LinkPolicy::DoNotFollow, stat);
    if (looked == 0) return -EEXIST;
    if (looked != -ENOENT) return looked;
    return calls.RenameAt(from.Fd(), from.name.c_str(), to.Fd(), to.name.c_str(), 0);
}

Error RefuseChanged(SystemCalls& calls, const Place& place, const Sighting& seen, const Statx* now,
                    const std::set<FileId>& renamed) {
    SightingTolerance tolerance;
    tolerance.changed = now && renamed.contains(IdOf(*now));
    if (IsStill(seen, now, tolerance)) return {};
    // In user space many file systems number what they are asked about anew.
    constexpr long kFuse = 0x65735546;
    tolerance.inode = true;
    struct statfs system {};
    if (IsStill(seen, now, tolerance) && calls.FstatFs(place.Fd(), system) == 0 && system.f_type == kFuse)
        return {};
    return ChangedSinceSeen(place.Path());
}

Error RefusedName(SystemCalls& calls, const Place& from, const Place& to, int result) {
    // Some file systems say "no such file" or "not permitted" of a name that they cannot hold: where the name
    // cannot even be looked up while the object is there, it is the name.
    Statx stat{};
    const bool stands = Look(calls, from, LinkPolicy::DoNotFollow, stat) == 0;
    const int looked = Look(calls, to, LinkPolicy::DoNotFollow, stat);
    const bool ofTheName = result == -EINVAL || result == -EILSEQ || result == -ENAMETOOLONG ||
                           looked == -EINVAL || looked == -EILSEQ ||
                           (result == -ENOENT && stands && looked == -ENOENT);
    Error error = Error::FromErrno(-result, to.Path());
    if (!ofTheName) return error;
    return {ErrorNumber::BadFileNameOrNumber,
            "The file system does not take the name \"" + to.Path() + "\" (" + GetErrorText(-result) + ")"};
}

void Shared::NoteRenamed(const Statx& stat) {
    if (!IsFolder(stat) && stat.stx_nlink > 1) renamed.insert(IdOf(stat));
}

Shared::Shared(const SystemShellOperations::Parts& given)
    : parts(given),
      files(given.files),
      calls(given.files.Calls()),
      batch(std::make_unique<CopyBatch>(*this)) {
}

Shared::~Shared() = default;

int Shared::NoteWritten(const Folder& folder) {
    if (unsynced.contains(folder.id.device)) return 0;
    const int fd = calls.OpenAt(folder.fd.Get(), ".", kOpenFolder, 0);
    if (fd < 0) return fd;
    unsynced.emplace(folder.id.device, Written{Descriptor(calls, fd), folder.path});
    return 0;
}

Error Shared::Sync() {
    int failed = 0;
    std::string about;
    for (const auto& [device, written] : unsynced) {
        const int result = calls.Syncfs(written.fd.Get());
        if (result >= 0 || failed != 0) continue;
        failed = result;
        about = written.path;
    }
    unsynced.clear();
    return failed == 0 ? Error() : Error::FromErrno(-failed, about);
}

const Expectation ShellRun::kNothingExpected;

ManyOpenFiles::ManyOpenFiles() {
    constexpr rlim_t kWanted = rlim_t{4} * ShellRun::kMostLevels;  // of two trees, and as many again
    if (getrlimit(RLIMIT_NOFILE, &before_) != 0 || before_.rlim_cur >= kWanted) return;
    const rlimit wanted{std::min(kWanted, before_.rlim_max), before_.rlim_max};
    raised_ = setrlimit(RLIMIT_NOFILE, &wanted) == 0;
}

ManyOpenFiles::~ManyOpenFiles() {
    if (raised_) setrlimit(RLIMIT_NOFILE, &before_);
}

Error ShellRun::RefuseTooDeep(const Place& place) const {
    if (levels_ <= kMostLevels) return {};
    return {ErrorNumber::PathFileAccess, "\"" + place.Path() +
                                             "\" lies in more folders, one in the other, than " +
                                             std::to_string(kMostLevels)};
}

char* Shared::Buffer() {
    if (!buffer_) buffer_ = std::make_unique<char[]>(kBufferSize);
    return buffer_.get();
}

bool ShellRun::CancelAsked() {
    shared.parts.loop.Yield();
    if (!result.cancelled && shared.parts.progress.CancelAsked()) Cancel();
    return result.cancelled;
}

void ShellRun::Cancel() {
    result.cancelled = true;
    result.anyOperationsAborted = true;
}

void ShellRun::ShowItem(const Place& from, const Place* to) {
    if (!request.silent) shared.parts.progress.Item(from.Path(), to ? to->Path() : std::string());
}

void ShellRun::CountObject() {
    ++result.objectsDone;
    ShowDone();
}

void ShellRun::CountBytes(std::uint64_t bytes) {
    result.bytesDone += bytes;
    ShowDone();
}

void ShellRun::ShowDone() {
    if (request.silent) return;
    const ShellProgress::Totals before = shared.series ? shared.series->done : ShellProgress::Totals();
    shared.parts.progress.Advance({before.objects + result.objectsDone, before.bytes + result.bytesDone});
}

ErrorAnswer ShellRun::AnswerTrouble(const std::string& path, const Error& error) {
    ErrorAnswer answer = ErrorAnswer::Skip;
    if (!request.noErrorUi && !Answered().skip) {
        answer = shared.parts.questions.AskAboutError({request.operation, path, error});
        Answered().skip = answer == ErrorAnswer::SkipAll;
    }
    if (answer == ErrorAnswer::Retry) return answer;
    RecordFailure(path, error);
    if (!request.noErrorUi) result.anyOperationsAborted = true;
    if (answer == ErrorAnswer::Cancel) Cancel();
    return answer;
}

void ShellRun::RecordFailure(const std::string& path, const Error& error) {
    if (result.code == 0) {
        result.lastSystemError = error.SystemNumber();
        result.code = error.SystemNumber() != 0 ? error.SystemNumber() : static_cast<int>(error.Number());
    }
    result.troubles.push_back({path, ItemOutcome::Failed, error});
}

ItemOutcome ShellRun::AskToOverwrite(const Place& from, const Statx& fromStat, const Place& to,
                                     const Statx& toStat) {
    if (request.noConfirmation || Answered().overwrite) return ItemOutcome::Done;
    const ShellQuestions::Overwrite question{request.operation,  from.Path(),     to.Path(),
                                             fromStat.stx_size,  toStat.stx_size, LastWriteOf(fromStat),
                                             LastWriteOf(toStat)};
    switch (Answered().keep ? OverwriteAnswer::No : shared.parts.questions.AskOverwrite(question)) {
        case OverwriteAnswer::YesToAll:
            Answered().overwrite = true;
            return ItemOutcome::Done;
        case OverwriteAnswer::Yes:
            return ItemOutcome::Done;
        case OverwriteAnswer::NoToAll:
            Answered().keep = true;
            [[fallthrough]];
        case OverwriteAnswer::No:
            result.anyOperationsAborted = true;
            result.troubles.push_back({from.Path(), ItemOutcome::Skipped, {}});
            return ItemOutcome::Skipped;
        case OverwriteAnswer::Cancel:
            break;
    }
    Cancel();
    return ItemOutcome::NotReached;
}

namespace {

std::size_t HashOfPlace(const Place& at) {
    return Mix(HashOf(at.folder->id), std::hash<std::string>()(at.name));
}

}  // namespace

void ShellRun::NotePlaced(const FileId& id, const Place& at) {
    placed_.insert(HashOf(id));
    placed_.insert(HashOfPlace(at));
    names->Note(at);
}

bool ShellRun::WasPlaced(const FileId& id, const Place& at) const {
    return placed_.contains(HashOf(id)) || placed_.contains(HashOfPlace(at));
}

}  // namespace vantrel::shell
