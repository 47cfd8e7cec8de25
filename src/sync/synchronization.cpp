#include "sync/synchronization.h"

#include <algorithm>

#include "sync/sync_history.h"
#include "sync/sync_space.h"
#include "sync/synced_pairs.h"

namespace vantrel {
namespace {

// A comparison that did not see everything counts too few objects.
bool SawEverything(const ComparisonResults& results) {
    if (!results.unlisted.empty()) return false;
    for (const Side side : kBothSides)
        for (const ResultRow& row : results.hold[side])
            if (row.incomplete || row.reason == UnknownReason::NotTold) return false;
    return true;
}

// What the sides hold after the run.
PerSide<std::uint64_t> HeldAfter(const SyncPlan& plan, const SyncReport& report) {
    PerSide<std::uint64_t> held = plan.objects;
    for (const ActionOutcome& each : report.actions) {
        if (each.outcome != ItemOutcome::Done) continue;
        const PlannedAction& action = *each.action;
        const std::uint64_t count = 1 + action.contents.objects;
        if (action.action == SyncAction::Delete)
            held[action.side] -= std::min(count, held[action.side]);
        else if (action.type == ResultType::Orphan || action.type == ResultType::OrphanFolder)
            held[Other(action.side)] += count;
    }
    return held;
}

}  // namespace

bool AskMayEmpty(MessagePort& messages, const EmptyingRisk& risk) {
    return messages.Ask({"Synchronization", risk.Text() + "\r\n\r\nDo you wish to continue?",
                         MessageIcon::Warning, MessageButtons::YesNo, MessageAnswer::No}) ==
           MessageAnswer::Yes;
}

SyncPlan MakeSyncPlan(const Toolbox& tools, const SyncOrder& order, const TrashPlaces& trash,
                      const std::function<void()>& onYield) {
    SyncPlan plan = GetListOfFilesAffectedBySync(order.results, order.settings, order.selected,
                                                 FindTrashFolders(tools, trash, order.results));
    LookAtWholeFolders(tools, order.jobs, order.results.taken, plan, onYield);
    return plan;
}

std::optional<SyncReport> Synchronization::AutoSync(const SyncOrder& order, SyncConfirmation& confirmation) {
    std::optional<SyncReport> report;
    tools_.reporter.Guard("frmMain.AutoSync()", [&] { report = Run(order, confirmation); });
    return report;
}

// False where it failed, or was cancelled.
bool Synchronization::MakePlan(const SyncOrder& order) {
    ShellOperations& shell = wrappers_.Shell();
    const ShellSeries shown(shell, {ShellOperation::Copy, "Looking into the folders...", {}});
    const auto throwIfCancelled = [&] {
        if (shell.SeriesCancelled() || tools_.loop.CancelRequested()) throw Cancelled();
    };
    try {
        return tools_.reporter.Guard("modVantrel.GetListOfFilesAffectedBySync()",
                                     [&] { plan_ = MakeSyncPlan(tools_, order, trash_, throwIfCancelled); });
    } catch (const Cancelled&) {
        return false;
    }
}

std::optional<SyncReport> Synchronization::Run(const SyncOrder& order, SyncConfirmation& confirmation) {
    tools_.loop.Yield();
    if (!MakePlan(order)) return std::nullopt;
    // The list of the confirmation does not show what is not done.
    if (const std::string leftOut = plan_.leftOut.Describe(); !leftOut.empty())
        tools_.messages.Ask({"Synchronization", leftOut, MessageIcon::Warning, MessageButtons::Ok, {}});
    const SyncedPairs pairs(tools_.files, tools_.folders.appPath);
    const EmptyingRisk risk = RiskOfEmptying(plan_, pairs.Find(order.results), order.permits);
    if (!risk.IsNone() && !confirmation.MayEmpty(risk)) return std::nullopt;
    if (order.confirm && !confirmation.ShowConfirmSync(plan_)) return std::nullopt;
    tools_.loop.Yield();
    if (!SpaceSufficesOrUserGoesOn(tools_, plan_, "frmMain.EnoughSpaceForSync")) return std::nullopt;

    SyncReport report;
    {
        const BusyState::Wait wait(busy_);
        const AfterFailure afterFailure =
            order.settings.GoOnAfterFailure() ? AfterFailure::GoesOn : AfterFailure::Ends;
        if (!tools_.reporter.Guard("frmMain.AutoSync()",
                                   [&] { report = CarryOutSync(plan_, tools_, wrappers_, afterFailure); }))
            report.cancelled = true;
    }
    // What was done is done: a record that cannot be written is told, and the report is given all the same.
    tools_.reporter.Guard("frmMain.AutoSync()", [&] { Record(order, report); });
    return report;
}

void Synchronization::Record(const SyncOrder& order, const SyncReport& report) {
    ThrowIfFailed(SyncHistory(tools_).Append(plan_.folders[Side::Left], plan_.folders[Side::Right],
                                             report.IsWhole() ? kSyncCompleted : kSyncCancelled,
                                             order.numSyncLogEntries));
    const SyncedPairs pairs(tools_.files, tools_.folders.appPath);
    PerSide<std::uint64_t> held = HeldAfter(plan_, report);
    if (const auto before = pairs.Find(order.results); before && !SawEverything(order.results))
        for (const Side side : kBothSides) held[side] = std::max(held[side], (*before)[side]);
    ThrowIfFailed(pairs.Remember(order.results, held));
}

}  // namespace vantrel
