#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/files/sighting.h"
#include "platform/files/volumes.h"
#include "platform/locale/file_time.h"
#include "platform/ports.h"

namespace vantrel {

// Copy, move, delete, recycle and rename over lists of objects, as one service.

// Recycle is a delete that can be undone.
enum class ShellOperation { Move = 1, Copy = 2, Delete = 3, Rename = 4, Recycle = 5 };

// A folder that was compared. All that lies below `path` is reached through it and without following links.
// Where it is gone, or is another folder than that one, nothing is done any more, and it is never made anew.
struct ShellRoot {
    std::string path;
    FileId id;
    FileTime made{};  // 0 where nobody knows
};

// What was seen below a folder, by paths relative to it ("deep/file").
using SeenBelow = std::unordered_map<std::string, Sighting>;

// What the objects of one source were when the request was thought of. Each is looked at again in the moment
// before it is removed or replaced: what has changed, appeared, vanished or become a link is left alone and
// fails with the number kChangedSinceSeen.
struct Expectation {
    Sighting source;
    Sighting target;  // under the name that the source gets
    // Delete, Recycle and Move of a folder: null is whatever there is. A delete leaves what was not seen, and
    // the folders above it; what goes as a whole stays as a whole.
    std::shared_ptr<const SeenBelow> below;
};

struct ShellRequest {
    ShellOperation operation = ShellOperation::Copy;
    // Full paths in the engine's form: absolute, with a name at the end. A path that ends in "/", "." or ".."
    // is refused as a failed item, so that an empty name can never stand for the folder that holds it.
    std::vector<std::string> sources;
    // Copy and Move: the folder that the sources go into; it is made, with its parents, where it is missing.
    // Rename: the new full path of the one source. Unused by Delete and Recycle.
    std::string target;
    // Copy and Move of one source: `target` is the full path that it gets, not the folder it goes into. The
    // folders above it are made where they are missing.
    bool targetIsFullPath = false;
    // Copy and Move: an object in an existing target folder, at any depth, whose name differs in letter case
    // alone stands for the one of the same name, and keeps its own.
    bool ignoreLetterCase = false;
    // Copy: special files below a folder that is copied are left where they are, and are no failure.
    bool passesOverSpecial = false;
    bool noConfirmation = false;  // overwrite without a question
    bool silent = false;          // no progress is shown; a cancel still counts
    bool noErrorUi = false;       // no error box: what fails is passed over and told in the result
    // One for each source; empty: nothing is expected of any.
    std::vector<Expectation> expected;
    std::vector<ShellRoot> roots;
};

// One file or link, without questions, boxes or progress.
struct OneFile {
    std::string path;    // full
    std::string target;  // full, where there is one
    Expectation expected = {};
    std::vector<ShellRoot> roots = {};
    bool makesFolders = false;  // a copy makes the folders above its target where they are missing
};

enum class ItemOutcome : std::uint8_t {
    NotReached,  // the operation was cancelled before it was wholly done, perhaps before it was begun
    Done,        // wholly: with everything below it, and safe on the disk
    Skipped,     // the user said so (No to overwriting) for it or something below it
    Failed,      // it, or something below it, failed; the rest below it was done
};

struct ShellItem {
    std::string path;
    ItemOutcome outcome = ItemOutcome::NotReached;
    Error error;  // of its first failure
};

// What copies, at any depth, came without, since the target could not hold it. They are whole all the same.
struct NotKept {
    std::uint64_t times = 0;       // files, links and folders without their times
    std::uint64_t attributes = 0;  // files and folders without one or more of their extended attributes

    NotKept& operator+=(const NotKept& other) {
        times += other.times;
        attributes += other.attributes;
        return *this;
    }
};

struct ShellResult {
    ShellOperation operation = ShellOperation::Copy;
    // 0: nothing failed. Otherwise the system's error number (errno) of the first failure, or the ErrorNumber
    // where the system was not asked.
    int code = 0;
    // The system's own number of the first failure, 0 where there is none.
    int lastSystemError = 0;
    // The user had a hand in it: Cancel, No to an overwriting, or Skip at an error box.
    bool anyOperationsAborted = false;
    bool cancelled = false;           // the user cancelled the whole operation
    bool rootLost = false;            // it ended because one of the roots is not there any more
    std::vector<ShellItem> items;     // one for each source, in the order of the request
    std::vector<ShellItem> troubles;  // every object, at any depth, that failed or was skipped
    std::uint64_t objectsDone = 0;    // files, links and folders, at any depth
    std::uint64_t bytesDone = 0;      // bytes copied
    NotKept notKept;

    bool AllDone() const { return code == 0 && !anyOperationsAborted; }
};

// What a running operation shows. An implementation with a window makes it visible after half a second.
class ShellProgress {
  public:
    struct Totals {
        std::uint64_t objects = 0;  // 0: not known
        std::uint64_t bytes = 0;
    };
    virtual ~ShellProgress() = default;
    virtual void Begin(ShellOperation operation) = 0;
    // Follows Begin where what is done has a name of its own.
    virtual void SetTitle(std::string_view) {}
    // Follows once what is to be done has been counted.
    virtual void SetTotals(Totals totals) = 0;
    // The object that comes next; `target` is empty where there is none.
    virtual void Item(std::string_view path, std::string_view target) = 0;
    // What is done of the totals. Called for each object and each slice: it must cost nothing.
    virtual void Advance(Totals done) = 0;
    // Whether the user asked to cancel this operation. Asked for each object and each slice, also where
    // nothing is shown.
    virtual bool CancelAsked() = 0;
    // Always called after Begin.
    virtual void End() = 0;
};

// No progress at all; a cancel is what the event loop says.
class NoShellProgress : public ShellProgress {
  public:
    explicit NoShellProgress(EventLoopPort& loop) : loop_(loop) {}
    void Begin(ShellOperation) override {}
    void SetTotals(Totals) override {}
    void Item(std::string_view, std::string_view) override {}
    void Advance(Totals) override {}
    bool CancelAsked() override { return loop_.CancelRequested(); }
    void End() override {}

  private:
    EventLoopPort& loop_;
};

// What is said to all holds for the rest of the operation, or of the series.
enum class OverwriteAnswer { Yes, YesToAll, No, NoToAll, Cancel };
enum class ErrorAnswer { Retry, Skip, SkipAll, Cancel };

class ShellQuestions {
  public:
    struct Overwrite {
        ShellOperation operation = ShellOperation::Copy;
        std::string source, target;  // full paths
        std::uint64_t sourceSize = 0, targetSize = 0;
        FileTime sourceTime, targetTime;  // UTC
    };
    struct Trouble {
        ShellOperation operation = ShellOperation::Copy;
        std::string path;  // the object it is about
        Error error;
    };
    virtual ~ShellQuestions() = default;
    virtual OverwriteAnswer AskOverwrite(const Overwrite& question) = 0;
    virtual ErrorAnswer AskAboutError(const Trouble& trouble) = 0;
};

// Rules that hold for every operation:
// - A target file is wholly old or wholly new at every instant, also after a kill.
// - Links are copied, moved and deleted as links. FIFOs, sockets and devices are refused by a copy, unopened.
// - A folder onto an existing folder (or a link to one) merges; a file where a folder is, or a folder where a
//   file is, fails. So do a file onto itself and a folder into itself or below itself, by whatever name.
// - Nothing overwrites what the same request has put there, by an equal name or one that the target's file
//   system takes for equal.
// - What could not be put into the trash stays where it is. A delete enters no link and no other mount.
// - A copied object counts as done once it is safe on the disk; the source of a move across file systems is
//   removed after that, and only where it is still what was copied.
// - What a kill left behind of our own (temporary_files.h) is cleared from the folders that are written to.
class ShellOperations {
  public:
    virtual ~ShellOperations() = default;

    // Never throws but for lack of memory; everything that went wrong is in the result.
    virtual ShellResult Run(const ShellRequest& request) = 0;

    // Copies to the full path `target`, replacing a file there. What goes well here may get its name only in
    // the next FinishCopies and may still fail there: it must follow before anything counts as done, or reads
    // the target.
    virtual Error CopyOneFile(const OneFile& file) = 0;
    struct FailedCopy {
        std::string path, target;
        Error error;
    };
    struct FinishedCopies {
        std::vector<FailedCopy> failed;  // of those that CopyOneFile has taken since the last time
        NotKept notKept;

        Error First() const { return failed.empty() ? Error() : failed.front().error; }
    };
    virtual FinishedCopies FinishCopies() = 0;
    // For good. Never a folder.
    virtual Error DeleteOneFile(const OneFile& file) = 0;

    // Single files, and whole runs between them, that are shown as one operation: from BeginSeries to
    // EndSeries they share one progress window and its Cancel, and what the user answers to all.
    struct Series {
        ShellOperation operation = ShellOperation::Copy;
        std::string title;
        ShellProgress::Totals totals;
    };
    virtual void BeginSeries(const Series&) {}
    virtual void EndSeries() {}
    // Whether the user has cancelled the series; false outside of one.
    virtual bool SeriesCancelled() { return false; }

    Error CopyOneFile(std::string_view from, std::string_view to) {
        return CopyOneFile(OneFile{std::string(from), std::string(to)});
    }
    Error DeleteOneFile(std::string_view path) { return DeleteOneFile(OneFile{std::string(path), {}}); }
};

// A series, from the object's making to its end.
class ShellSeries {
  public:
    ShellSeries(ShellOperations& shell, const ShellOperations::Series& series) : shell_(shell) {
        shell_.BeginSeries(series);
    }
    ~ShellSeries() { shell_.EndSeries(); }
    ShellSeries(const ShellSeries&) = delete;
    ShellSeries& operator=(const ShellSeries&) = delete;

  private:
    ShellOperations& shell_;
};

// Where the trash of this user is.
struct TrashPlaces {
    std::string homeTrash;   // full path, as in "/home/anna/.local/share/Trash"; empty: there is none
    std::uint32_t user = 0;  // effective user id
    // From the environment: $XDG_DATA_HOME/Trash, else $HOME/.local/share/Trash.
    static TrashPlaces OfThisUser();
};

class SystemShellOperations : public ShellOperations {
  public:
    struct Parts {
        const FileSystem& files;
        Volumes& volumes;
        Clock& clock;
        EventLoopPort& loop;
        ShellProgress& progress;
        ShellQuestions& questions;
        TrashPlaces trash = TrashPlaces::OfThisUser();
        // What the user asked for, as Options::jobs; null: no workers.
        const std::int32_t* jobs = nullptr;
    };
    explicit SystemShellOperations(const Parts& parts);
    ~SystemShellOperations() override;

    using ShellOperations::CopyOneFile;
    using ShellOperations::DeleteOneFile;
    ShellResult Run(const ShellRequest& request) override;
    Error CopyOneFile(const OneFile& file) override;
    FinishedCopies FinishCopies() override;
    Error DeleteOneFile(const OneFile& file) override;
    void BeginSeries(const Series& series) override;
    void EndSeries() override;
    bool SeriesCancelled() override;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace vantrel
