#pragma once

#include <optional>

#include "core/comparison_results.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"
#include "platform/busy_state.h"
#include "sync/csync_settings.h"
#include "sync/sync_execution.h"
#include "sync/sync_plan.h"

namespace vantrel {

// Shows what is going to be done, and asks whether it shall be.
class SyncConfirmation {
  public:
    virtual ~SyncConfirmation() = default;
    virtual bool ShowConfirmSync(const SyncPlan& plan) = 0;  // the proceed flag
};

// What is to be brought into line, and how.
struct SyncOrder {
    const ComparisonResults& results;
    const CSyncSettings& settings;
    SelectedTexts selected;               // restricts the run to these objects
    std::int32_t numSyncLogEntries = 20;  // how long the history may grow
};

// A whole synchronisation of two compared folders: plan, confirmation, space check, execution, history. What
// comes before (the choice of the method) and after it (sound, showing the outcome) is its caller's.
class Synchronization {
  public:
    // All must outlive the object.
    Synchronization(const Toolbox& tools, ShellWrappers& wrappers, BusyState& busy)
        : tools_(tools), wrappers_(wrappers), busy_(busy) {}

    // What the run did; nothing when it ended before anything was done (declined, no space). Without a
    // `confirmation` it does not ask. The report is good until the next run. Errors are reported under
    // "frmMain.AutoSync()".
    std::optional<SyncReport> AutoSync(const SyncOrder& order, SyncConfirmation* confirmation);

  private:
    std::optional<SyncReport> Run(const SyncOrder& order, SyncConfirmation* confirmation);

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    BusyState& busy_;
    SyncPlan plan_;  // of the last run; the report points into it
};

}  // namespace vantrel
