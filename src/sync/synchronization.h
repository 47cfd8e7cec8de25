#pragma once

#include <functional>

#include "core/comparison_results.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"
#include "platform/busy_state.h"
#include "sync/csync_settings.h"
#include "sync/sync_execution.h"
#include "sync/sync_plan.h"

namespace vantrel {

// What a synchronisation needs of the main window, or of the console in its place.
class SyncHost {
  public:
    virtual ~SyncHost() = default;
    virtual const ComparisonResults& Results() const = 0;
    virtual bool NoResults() const = 0;                 // both panes show "No Comparison Results"
    virtual SelectedTexts SelectedObjects() const = 0;  // the texts of the selected rows of CurrentListview
    virtual bool PromptForSyncMethod() const = 0;
    virtual bool ShowSyncWizard() = 0;                       // the proceed flag
    virtual bool ShowConfirmSync(const SyncPlan& plan) = 0;  // the proceed flag
    virtual std::int32_t NumSyncLogEntries() const = 0;
    virtual bool AutoCompareAfterSync() const = 0;
    virtual void CompareDirs() = 0;  // silently
    virtual void RemoveListItemsAndShowNoCompareMsg() = 0;
    virtual void PlaySyncCompleteSound() = 0;  // asks SoundOn itself
};

// A whole synchronisation: method, plan, confirmation, space check, execution, history, refresh.
class Synchronization {
  public:
    Synchronization(const Toolbox& tools, ShellWrappers& wrappers, BusyState& busy, CSyncSettings& settings,
                    SyncHost& host)
        : tools_(tools), wrappers_(wrappers), busy_(busy), settings_(settings), host_(host) {}

    // The command: compares first where there is no result yet, then runs AutoSync. Clears SyncSelectedOnly
    // at its end, whatever happened.
    void mnuFileAutoSynch(bool showConfirmation);

    // What the run did; nothing when it ended before anything was done (declined, no space).
    std::optional<SyncReport> AutoSync(bool showConfirmation, bool noSound);

    // Restricts the next run to the rows that are selected when it begins; also a check box of frmSyncWizard.
    bool SyncSelectedOnly = false;

  private:
    std::optional<SyncReport> Run(bool showConfirmation, bool noSound);

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    BusyState& busy_;
    CSyncSettings& settings_;
    SyncHost& host_;
    SyncPlan plan_;  // of the last run; the report points into it
};

}  // namespace vantrel
