#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "fileops/operation_summary.h"
#include "fileops/shell_wrappers.h"
#include "sync/sync_plan.h"

namespace vantrel {

// What became of one planned action.
struct ActionOutcome {
    const PlannedAction* action = nullptr;  // of the plan that was carried out
    ItemOutcome outcome = ItemOutcome::NotReached;
    Error error;  // of a failed one
};

// An object, at any depth, that failed or was passed over.
struct SyncTrouble {
    const PlannedAction* action = nullptr;  // that it belongs to; nullptr where that cannot be told
    std::string path;                       // full
    Error error;                            // of one that was passed over it can be none
    bool told = true;                       // to the user at the shell's error box, in that moment
};

struct SyncReport {
    std::vector<ActionOutcome> actions;  // every action of the plan, in the order of execution
    // The cancel flag: something was cancelled, skipped or failed. The record then says "Cancelled".
    bool cancelled = false;
    bool leftOut = false;  // the plan left something out
    std::size_t done = 0;
    std::size_t notDone = 0;
    std::vector<SyncTrouble> troubles;
    NotKept notKept;
    OperationSummary summary;  // of all of it

    bool IsWhole() const { return !cancelled && !leftOut; }
};

// What is told of a run when it is over, since nobody could be told before: copies that failed in the moment
// when they were to get their names, times and attributes that could not be kept. Empty where there is
// nothing.
std::string DescribeEnd(const SyncReport& report);

// What a failed object does to the phases that follow.
enum class AfterFailure : bool { Ends, GoesOn };

// Carries out `plan` as it stands, asking the disk nothing in between: deletes before copies, left before
// right, each of these four phases as one operation of the shell; then the sub-folders, file by file. A phase
// that was aborted or failed stops the main phases and the sub-folders, unless the run goes on after a
// failure; within the sub-folders nothing stops the passes but the user's cancel. That, and a root that is
// gone, always ends the run.
//
// Rows of the panes are deleted to the trash, files inside sub-folders for good, as the plan's confirmation
// says.
SyncReport CarryOutSync(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers,
                        AfterFailure afterFailure = AfterFailure::Ends);

}  // namespace vantrel
