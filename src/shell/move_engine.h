#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/copy_engine.h"
#include "shell/shell_run.h"

namespace vantrel::shell {

// Moves by renaming; where that would lead to another file system it copies, makes the copies safe, and
// removes the sources, many with one sync.
class MoveEngine {
  public:
    explicit MoveEngine(ShellRun& run) : run_(run), calls_(run.calls) {}

    // Moves the source of item number `item` of the request. Where it comes back Done and pending, the source
    // still stands and FinishPending decides.
    ItemOutcome Move(std::size_t item, const Place& from, const Place& to);
    bool BatchIsFull() const;
    // Makes the pending copies safe, removes their sources, and puts what became of them into `items`.
    void FinishPending(std::vector<ShellItem>& items);

  private:
    enum class Way { Renamed, Merge, Copy };
    ItemOutcome RenameOrTellWay(const Place& from, const Place& to, Way& way);
    Error TryRename(const Place& from, const Place& to, bool& mayReplace, Way& way, ItemOutcome& outcome);
    ItemOutcome MoveInside(const Place& from, const Place& to);
    ItemOutcome MergeFolder(const Place& from, const Place& to);

    struct Pending {
        std::size_t item;
        std::string path;
    };
    ShellRun& run_;
    SystemCalls& calls_;
    CopyRecord record_;
    std::vector<Pending> pending_;
    std::uint64_t bytesAtLastSync_ = 0;
    int depth_ = 0;
};

// Gives an object a new full name, in its folder or elsewhere on its file system. Never replaces anything; a
// change of letter case alone is possible where the file system takes both names for one.
ItemOutcome RenameObject(ShellRun& run, const Place& from, const Place& to);

}  // namespace vantrel::shell
