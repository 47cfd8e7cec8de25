#pragma once

#include <sys/resource.h>
#include <sys/stat.h>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/files/descriptor.h"
#include "shell/shell_operations.h"
#include "shell/twins.h"

// What the engines of the shell operations share. Not for use outside of them.
namespace vantrel::shell {

using Statx = struct statx;

// A folder held open: what is done in it is done in this folder, whatever becomes of its path meanwhile.
struct Folder : std::enable_shared_from_this<Folder> {
    Descriptor fd;
    std::string path;  // in the engine's form
    FileId id;
    FileTime made;            // 0 where that is not told
    std::uint64_t mount = 0;  // mount id; the device number where the kernel gives none
    bool hasDefaultAcl = false;
    // Its names by their folded forms, where letter case is to be ignored.
    std::unordered_map<std::string, std::string> namesByFold;
};

// An object by its place. It need not exist.
struct Place {
    const Folder* folder = nullptr;
    std::string name;  // in the system's bytes, never empty

    int Fd() const { return folder->fd.Get(); }
    std::string Path() const;  // for the user
};

FileId IdOf(const Statx& stat);
std::size_t HashOf(const FileId& id);
std::uint64_t MountOf(const Statx& stat);
bool IsFolder(const Statx& stat);
bool IsFile(const Statx& stat);
bool IsLink(const Statx& stat);
FileTime LastWriteOf(const Statx& stat);
bool SameSizeAndTime(const Statx& a, const Statx& b);

int Look(SystemCalls& calls, const Place& place, LinkPolicy links, Statx& out);
int LookAtOpen(SystemCalls& calls, int fd, Statx& out);
// The folder at `place`; a link there is followed only when told so.
Error OpenFolderAt(SystemCalls& calls, const Place& place, LinkPolicy links, Folder& out);
// The same without following a link; one that may be entered and not listed is opened all the same.
Error OpenFolderOnTheWay(SystemCalls& calls, const Place& place, Folder& out);
// The folder `path`, following links.
Error OpenExistingFolder(const FileSystem& files, std::string_view path, Folder& out);
// The folder that holds the last part of `path`, and that part. Refuses a path without a name at its end.
Error OpenHolder(const FileSystem& files, std::string_view path, Folder& holder, std::string& name);
// The folder `path`, which is made with its parents where it is missing.
Error OpenOrMakeFolder(const FileSystem& files, std::string_view path, Folder& out);
// Every name of a folder but "." and "..". An error in the middle is an error of the whole.
int ListNames(SystemCalls& calls, const Folder& folder, std::vector<std::string>& names);
int LearnNames(SystemCalls& calls, Folder& folder);
// Where an object called `name` goes in `folder`: the same name in another letter case, where that one is
// known and this one does not exist.
Place TargetPlace(SystemCalls& calls, const Folder& folder, const std::string& name);
// Also where the file system knows no renaming without replacing. -EEXIST: `to` exists.
int RenameWithoutReplacing(SystemCalls& calls, const Place& from, const Place& to);

// Holds what stands at `place` now, null for nothing, against what was seen there. `renamed` are the files
// whose time of change is this program's own doing.
Error RefuseChanged(SystemCalls& calls, const Place& place, const Sighting& seen, const Statx* now,
                    const std::set<FileId>& renamed);

// Why the object at `from`, which stands, could not get the name `to`.
Error RefusedName(SystemCalls& calls, const Place& from, const Place& to, int result);

class CopyBatch;
class CopyOwner;

// What the user has said to all that follows.
struct ToAll {
    bool overwrite = false;
    bool keep = false;  // overwrite nothing
    bool skip = false;  // pass over what fails
};

// What outlives one request.
struct Shared {
    explicit Shared(const SystemShellOperations::Parts& given);
    ~Shared();

    SystemShellOperations::Parts parts;
    const FileSystem& files;
    SystemCalls& calls;

    std::uint64_t nextTemporary = 0;
    // Files with several names that got or lost one here: the time of their last change is no stranger's.
    std::set<FileId> renamed;
    void NoteRenamed(const Statx& stat);
    std::set<FileId> sweptFolders;  // cleared of what a kill has left
    // By device: one folder of those that were written to since the last sync.
    struct Written {
        Descriptor fd;
        std::string path;
    };
    std::map<std::uint64_t, Written> unsynced;
    std::set<std::pair<std::uint64_t, std::uint64_t>> noClone;  // pairs of devices that cannot share data

    // To be called before something is put into `folder`; Sync makes it safe. 0 or minus errno.
    int NoteWritten(const Folder& folder);
    Error Sync();
    std::unique_ptr<CopyBatch> batch;  // never null
    // The user's trash folders (trash_guard.h), known for the mounts named.
    struct {
        std::set<std::uint64_t> mounts;
        std::set<FileId> ids;
        std::vector<std::string> paths;
    } trashes;
    std::map<FileId, bool> takesTwinsForOne;  // folders that were asked about, by this request
    NotKept notKept;                          // since that was last told

    // The series that is under way, and what of it is done.
    struct InSeries {
        ShellProgress::Totals done;
        ToAll toAll;
    };
    std::optional<InSeries> series;
    // Of kBufferSize; for whoever copies at the moment.
    static constexpr std::size_t kBufferSize = std::size_t{256} << 10;
    char* Buffer();

  private:
    std::unique_ptr<char[]> buffer_;
};

// Lets this process open as many files as a request may need, until the end of the scope: what the process
// starts otherwise is to find the limit that the user has set.
class ManyOpenFiles {
  public:
    ManyOpenFiles();
    ~ManyOpenFiles();
    ManyOpenFiles(const ManyOpenFiles&) = delete;
    ManyOpenFiles& operator=(const ManyOpenFiles&) = delete;

  private:
    rlimit before_{};
    bool raised_ = false;
};

class Roots;

// One request on its way.
class ShellRun {
  public:
    ShellRun(Shared& given, const ShellRequest& toDo, ShellResult& becameOfIt)
        : shared(given), calls(given.calls), request(toDo), result(becameOfIt) {}

    Shared& shared;
    SystemCalls& calls;
    const ShellRequest& request;
    ShellResult& result;
    const Roots* roots = nullptr;  // never null while items are worked on
    CopyOwner* copies = nullptr;   // who is told of this run's copies; never null while items are worked on
    std::size_t item = 0;          // that is being worked on
    // Items with copies that did not come to their names: outcome and error of the first one.
    std::map<std::size_t, std::pair<ItemOutcome, Error>> lostItems;
    GivenNames ownNames;
    GivenNames* names = &ownNames;  // where single copies follow each other, theirs
    static const Expectation kNothingExpected;
    // What is expected of the source that is being worked on; never null.
    const Expectation* expected = &kNothingExpected;
    Error RefuseChanged(const Place& place, const Sighting& seen, const Statx* now) const {
        return shell::RefuseChanged(calls, place, seen, now, shared.renamed);
    }
    // Folders that this run has written to. None of them is ever taken as a source: it would never end.
    std::set<FileId> targetFolders;

    // Each level of a tree takes room on the stack and holds folders open.
    static constexpr int kMostLevels = 1'000;
    class Level {
      public:
        explicit Level(ShellRun& run) : run_(run) { ++run_.levels_; }
        ~Level() { --run_.levels_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

      private:
        ShellRun& run_;
    };
    Error RefuseTooDeep(const Place& place) const;

    // Lets events through and asks. Once true it stays true.
    bool CancelAsked();
    void Cancel();

    void ShowItem(const Place& from, const Place* to);
    void CountObject();
    void CountBytes(std::uint64_t bytes);
    // Of a copy that had been counted.
    void TakeBack(std::uint64_t objects, std::uint64_t bytes) {
        result.objectsDone -= objects, result.bytesDone -= bytes;
    }
    void TakeBackBytes(std::uint64_t bytesDone) { result.bytesDone = bytesDone; }
    void ShowDone();

    // Runs `step(outcome)`, which gives an error or leaves in `outcome` what it came to, until it goes well
    // or the user (or noErrorUi) says to pass it over.
    template <typename Step>
    ItemOutcome Attempt(const Place& place, Step&& step) {
        for (;;) {
            if (CancelAsked()) return ItemOutcome::NotReached;
            ItemOutcome outcome = ItemOutcome::Done;
            const Error error = step(outcome);
            if (error.IsOk()) return outcome;
            switch (AnswerTrouble(place.Path(), error)) {
                case ErrorAnswer::Retry:
                    continue;
                case ErrorAnswer::Skip:
                case ErrorAnswer::SkipAll:
                case ErrorAnswer::Cancel:
                    return ItemOutcome::Failed;
            }
        }
    }
    // Asks where that is wanted and records what is not tried again.
    ErrorAnswer AnswerTrouble(const std::string& path, const Error& error);
    void RecordFailure(const std::string& path, const Error& error);

    // Whether the object at `to` may be replaced: Done is yes. Asks at most once for each call.
    ItemOutcome AskToOverwrite(const Place& from, const Statx& fromStat, const Place& to,
                               const Statx& toStat);

    // Remembers that this run has put an object there, and knows it again by its identity (the target's file
    // system can hold two names for equal) and by its name.
    void NotePlaced(const FileId& id, const Place& at);
    void NoteFolder(const Place& at) { names->Note(at); }
    bool WasPlaced(const FileId& id, const Place& at) const;

  private:
    ToAll& Answered() { return shared.series ? shared.series->toAll : toAll_; }

    ToAll toAll_;
    int levels_ = 0;
    std::unordered_set<std::size_t> placed_;
};

// The worse of two: a folder is no better than what is in it.
inline ItemOutcome Worse(ItemOutcome a, ItemOutcome b) {
    if (a == ItemOutcome::Done) return b;
    if (b == ItemOutcome::Done) return a;
    if (a == ItemOutcome::Failed || b == ItemOutcome::Failed) return ItemOutcome::Failed;
    return a == ItemOutcome::NotReached ? a : b;
}

}  // namespace vantrel::shell
