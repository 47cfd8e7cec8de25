#include "sync/synchronization.h"

#include "sync/sync_history.h"
#include "sync/sync_space.h"

namespace vantrel {

void Synchronization::mnuFileAutoSynch(bool showConfirmation) {
    if (host_.NoResults()) host_.CompareDirs();
    if (host_.NoResults()) {
        tools_.messages.Ask({"Synchronization",
                             "Unable to synchronize.  No comparison has been executed yet.",
                             MessageIcon::Warning,
                             MessageButtons::Ok,
                             {}});
    } else {
        AutoSync(showConfirmation, false);
    }
    SyncSelectedOnly = false;
}

std::optional<SyncReport> Synchronization::AutoSync(bool showConfirmation, bool noSound) {
    std::optional<SyncReport> report;
    tools_.reporter.Guard("frmMain.AutoSync()", [&] { report = Run(showConfirmation, noSound); });
    return report;
}

std::optional<SyncReport> Synchronization::Run(bool showConfirmation, bool noSound) {
    tools_.loop.ResetCancel();
    if (host_.PromptForSyncMethod() && !host_.ShowSyncWizard()) return std::nullopt;
    tools_.loop.Yield();

    SelectedTexts selected;
    if (SyncSelectedOnly) selected = host_.SelectedObjects().value_or(std::unordered_set<std::string>());
    if (!tools_.reporter.Guard("modVantrel.GetListOfFilesAffectedBySync()", [&] {
            plan_ = GetListOfFilesAffectedBySync(host_.Results(), settings_, selected);
        }))
        return std::nullopt;
    // The list of the confirmation does not show what is not done.
    if (const std::string spared = DescribeSpared(plan_); !spared.empty())
        tools_.messages.Ask({"Synchronization", spared, MessageIcon::Warning, MessageButtons::Ok, {}});
    if (showConfirmation && !host_.ShowConfirmSync(plan_)) return std::nullopt;
    tools_.loop.Yield();
    if (!SpaceSufficesOrUserGoesOn(tools_, plan_, "frmMain.EnoughSpaceForSync")) return std::nullopt;

    SyncReport report;
    {
        const BusyState::Wait wait(busy_);
        if (!tools_.reporter.Guard("frmMain.AutoSync()",
                                   [&] { report = CarryOutSync(plan_, tools_, wrappers_); }))
            report.cancelled = true;
    }

    // What was done is done: a record that cannot be written is told, and the panes are refreshed all the
    // same.
    tools_.reporter.Guard("frmMain.AutoSync()", [&] {
        ThrowIfFailed(SyncHistory(tools_).Append(plan_.folders[Side::Left], plan_.folders[Side::Right],
                                                 report.cancelled ? kSyncCancelled : kSyncCompleted,
                                                 host_.NumSyncLogEntries()));
    });
    if (!report.cancelled && !noSound) host_.PlaySyncCompleteSound();
    if (host_.AutoCompareAfterSync())
        host_.CompareDirs();
    else
        host_.RemoveListItemsAndShowNoCompareMsg();
    return report;
}

}  // namespace vantrel
