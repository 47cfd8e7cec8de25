#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "shell/rename_journal.h"
#include "shell/shell_operations.h"

namespace vantrel {

namespace shell {
struct Folder;
}

// The order in which the steps of a batch can be carried out: whoever takes a name comes after the one who
// gives it up. A ring is a group of steps of which each takes the name of the next one, the last that of
// the first; it needs a temporary name. Letter case is ignored, as file systems may.
struct RenameUnit {
    std::vector<std::size_t> steps;  // by their index; a ring begins with the one that steps aside
    bool isRing = false;
};
std::vector<RenameUnit> OrderRenames(const std::vector<RenameStep>& steps);

struct RenamedObject {
    ItemOutcome outcome = ItemOutcome::NotReached;
    Error error;
    std::string standsAs;     // its name at the end
    std::uint64_t inode = 0;  // 0 where it was not found
    FileTime made{};          // 0 where that is not told
};

struct RenameResult {
    Error notBegun;                      // nothing was renamed: no such folder any more, or no journal
    std::vector<RenamedObject> objects;  // one for each step
    bool cancelled = false;              // some were not reached
    // The names are right and could not be made safe, or the journal not removed; it is looked at once more
    // at the next start.
    Error notClosed;

    bool AllDone() const;
    bool AnyDone() const;
};

// What a killed process left behind, as it stands now.
struct LeftRename {
    std::string journal;  // full path
    std::string folder;
    std::size_t objects = 0;
    std::size_t renamed = 0;      // have their new names
    std::size_t temporaries = 0;  // stand under a temporary name
    std::size_t untouched = 0;    // have their old names
    // What is none of these is not to be found any more, and is left alone.
    bool IsDone() const { return temporaries == 0 && (renamed == 0 || untouched == 0); }
};
enum class RepairWay { Finish, PutBack };

// Renames many objects of one folder, each to a name of its own in that folder. The folder is held open: what
// takes its path meanwhile is not touched. Nothing is ever replaced. A step that fails leaves its object
// under its old name, and a ring is put back as a whole; only where that fails too an object keeps the
// temporary name, which is told and which the journal knows. Steps with impossible names fail.
class BatchRenames {
  public:
    // `journals` is the folder that journals stand in.
    BatchRenames(const FileSystem& files, Clock& clock, EventLoopPort& loop, std::string journals)
        : files_(files), clock_(clock), loop_(loop), journals_(std::move(journals)) {}

    // Called before each unit with the number of steps that have come to their end. The loop's cancel ends
    // the batch between two units.
    using Progress = std::function<void(std::size_t done)>;
    RenameResult Run(RenameBatch batch, const Progress& progress = {});

    // What is to be offered for repair. Journals of batches that are whole are removed on the way; one whose
    // folder is not there, or cannot be read, stays for later without a word.
    std::vector<LeftRename> FindLeft();
    // Gives all objects their new names, or their old ones. The journal goes when none stands under a
    // temporary name.
    RenameResult Repair(const LeftRename& left, RepairWay way);

  private:
    RenameResult Work(const shell::Folder& folder, RenameBatch batch, shell::RenameJournal& journal,
                      const Progress& progress);

    const FileSystem& files_;
    Clock& clock_;
    EventLoopPort& loop_;
    const std::string journals_;
};

}  // namespace vantrel
