#include "sync/synchronization.h"

#include "sync/sync_history.h"
#include "sync/sync_space.h"

namespace vantrel {

std::optional<SyncReport> Synchronization::AutoSync(const SyncOrder& order, SyncConfirmation* confirmation) {
    std::optional<SyncReport> report;
    tools_.reporter.Guard("frmMain.AutoSync()", [&] { report = Run(order, confirmation); });
    return report;
}

std::optional<SyncReport> Synchronization::Run(const SyncOrder& order, SyncConfirmation* confirmation) {
    tools_.loop.Yield();
    if (!tools_.reporter.Guard("modVantrel.GetListOfFilesAffectedBySync()", [&] {
            plan_ = GetListOfFilesAffectedBySync(order.results, order.settings, order.selected);
            LookAtWholeFolders(tools_.files, plan_);
        }))
        return std::nullopt;
    // The list of the confirmation does not show what is not done.
    if (const std::string spared = DescribeSpared(plan_); !spared.empty())
        tools_.messages.Ask({"Synchronization", spared, MessageIcon::Warning, MessageButtons::Ok, {}});
    if (confirmation && !confirmation->ShowConfirmSync(plan_)) return std::nullopt;
    tools_.loop.Yield();
    if (!SpaceSufficesOrUserGoesOn(tools_, plan_, "frmMain.EnoughSpaceForSync")) return std::nullopt;

    SyncReport report;
    {
        const BusyState::Wait wait(busy_);
        if (!tools_.reporter.Guard("frmMain.AutoSync()",
                                   [&] { report = CarryOutSync(plan_, tools_, wrappers_); }))
            report.cancelled = true;
    }

    // What was done is done: a record that cannot be written is told, and the report is given all the same.
    tools_.reporter.Guard("frmMain.AutoSync()", [&] {
        ThrowIfFailed(SyncHistory(tools_).Append(
            plan_.folders[Side::Left], plan_.folders[Side::Right],
            report.cancelled || plan_.LeavesOut() ? kSyncCancelled : kSyncCompleted,
            order.numSyncLogEntries));
    });
    return report;
}

}  // namespace vantrel
