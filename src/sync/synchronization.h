#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "core/comparison_results.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"
#include "platform/busy_state.h"
#include "sync/csync_settings.h"
#include "sync/emptying.h"
#include "sync/sync_execution.h"
#include "sync/sync_plan.h"

namespace vantrel {

// Who decides on a plan.
class SyncConfirmation {
  public:
    virtual ~SyncConfirmation() = default;
    // Shows what is going to be done, and asks whether it shall be: the proceed flag.
    virtual bool ShowConfirmSync(const SyncPlan& plan) = 0;
    // Whether a run that bears such a risk is meant. Asked before the plan is shown, and always.
    virtual bool MayEmpty(const EmptyingRisk& risk) = 0;
};

// The message box that asks it, with No as the default.
bool AskMayEmpty(MessagePort& messages, const EmptyingRisk& risk);

// What is to be brought into line, and how.
struct SyncOrder {
    const ComparisonResults& results;
    const CSyncSettings& settings;
    SelectedTexts selected;               // restricts the run to these objects
    std::int32_t numSyncLogEntries = 20;  // how long the history may grow
    bool confirm = true;                  // whether the plan is shown and asked about
    EmptyingPermits permits{};
    std::int32_t jobs = 1;  // workers, as WorkerCount takes them
};

// The plan of `order`, looked into as far as a plan needs it. `onYield`: see LookAtWholeFolders.
SyncPlan MakeSyncPlan(const Toolbox& tools, const SyncOrder& order,
                      const TrashPlaces& trash = TrashPlaces::OfThisUser(),
                      const std::function<void()>& onYield = nullptr);

// A whole synchronisation of two compared folders: plan, confirmation, space check, execution, history. What
// comes before (the choice of the method) and after it (sound, showing the outcome) is its caller's.
class Synchronization {
  public:
    // All must outlive the object.
    Synchronization(const Toolbox& tools, ShellWrappers& wrappers, BusyState& busy,
                    TrashPlaces trash = TrashPlaces::OfThisUser())
        : tools_(tools), wrappers_(wrappers), busy_(busy), trash_(std::move(trash)) {}

    // What the run did; nothing when it ended before anything was done (declined, cancelled, no space). The
    // report is good until the next run. Errors are reported under "frmMain.AutoSync()".
    std::optional<SyncReport> AutoSync(const SyncOrder& order, SyncConfirmation& confirmation);

  private:
    bool MakePlan(const SyncOrder& order);
    std::optional<SyncReport> Run(const SyncOrder& order, SyncConfirmation& confirmation);
    void Record(const SyncOrder& order, const SyncReport& report);

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    BusyState& busy_;
    TrashPlaces trash_;
    SyncPlan plan_;  // of the last run; the report points into it
};

}  // namespace vantrel
