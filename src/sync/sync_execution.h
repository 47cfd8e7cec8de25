#pragma once

#include <vector>

#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"
#include "sync/sync_plan.h"

namespace vantrel {

// What became of one planned action.
struct ActionOutcome {
    const PlannedAction* action = nullptr;  // of the plan that was carried out
    ItemOutcome outcome = ItemOutcome::NotReached;
    Error error;  // of a failed one
};

struct SyncReport {
    std::vector<ActionOutcome> actions;  // every action of the plan, in the order of execution
    // The cancel flag: something was cancelled, skipped or failed. The record then says "Cancelled".
    bool cancelled = false;
    std::size_t done = 0;
    std::size_t notDone = 0;
};

// Carries out `plan` as it stands, asking the disk nothing in between: deletes before copies, left before
// right, each of these four phases as one operation of the shell; then the sub-folders, file by file. A phase
// that was aborted or failed stops the main phases and the sub-folders; within the sub-folders nothing stops
// the passes but the user's cancel.
//
// Rows of the panes are deleted to the trash, files inside sub-folders for good, as the plan's confirmation
// says.
SyncReport CarryOutSync(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers);

}  // namespace vantrel
