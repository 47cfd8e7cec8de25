#include "sync/sub_folder_synchronization.h"

#include "fileops/told_at_end.h"
#include "sync/sync_space.h"

namespace vantrel {

OperationSummary SubFolderSynchronization::AutoSynch(Confirm confirm, SyncSound sound) {
    OperationSummary summary;
    tools_.reporter.Guard("SubDirDiffs.AutoSync()", [&] {
        tools_.loop.ResetCancel();
        if (host_.PromptForSyncMethod() && !host_.ShowSyncWizard()) return;
        tools_.loop.Yield();
        SelectedTexts selected;
        if (SyncSelectedOnly) selected = host_.SelectedObjects().value_or(std::unordered_set<std::string>());

        host_.ActOnHiddenLists(std::nullopt);
        PerSide<std::string> folders;
        for (Side side : kBothSides) folders[side] = host_.FolderPath(side);
        const SyncPlan plan =
            GetListOfFilesAffectedBySync(host_.Lists(), folders, settings_, selected, host_.Trash());
        if (const std::string leftOut = plan.leftOut.Describe(); !leftOut.empty())
            tools_.messages.Ask({"Synchronization", leftOut, MessageIcon::Warning, MessageButtons::Ok, {}});
        bool proceed = confirm == Confirm::No || host_.ShowConfirmSync(plan);
        if (proceed) {
            tools_.loop.Yield();
            proceed = SpaceSufficesOrUserGoesOn(tools_, plan, "frmSubDirDiffs.EnoughSpaceForSubFolderSync");
            const bool whole = proceed && CarryOut(plan, summary) && plan.leftOut.IsEmpty();
            if (whole && sound == SyncSound::Played) host_.PlaySyncCompleteSound();
        }
        host_.CopyItemsFromHiddenLVWToVisibleLVW();
        host_.RefreshStatus();
    });
    SyncSelectedOnly = false;
    return summary;
}

bool SubFolderSynchronization::CarryOut(const SyncPlan& plan, OperationSummary& summary) {
    bool cancelled = false, ended = false;
    NotKept notKept;
    const auto run = [&](Side side, const std::vector<PlannedAction>& actions, auto operation) {
        if (ended || (cancelled && !settings_.GoOnAfterFailure()) || !Select(side, actions)) return;
        host_.ActOnHiddenLists(side);
        const SubFolderOperations::Result result =
            (operations_.*operation)(Confirm::No, PartOf::Synchronization);
        cancelled = cancelled || result.cancelled;
        ended = ended || result.ended;
        notKept += result.notKept;
        summary += result.summary;
    };
    for (Side side : kBothSides) run(side, plan.deletes[side], &SubFolderOperations::DeleteFiles);
    for (Side side : kBothSides) run(side, plan.copies[side], &SubFolderOperations::CopyFilesToOtherDir);
    if (const std::string told = DescribeNotKept(notKept); !told.empty())
        tools_.messages.Ask({"Synchronization", told, MessageIcon::Information, MessageButtons::Ok, {}});
    return !cancelled;
}

bool SubFolderSynchronization::Select(Side side, const std::vector<PlannedAction>& actions) {
    ResultList& list = host_.Lists()[side];
    for (ResultRow& row : list) row.selected = false;
    for (const PlannedAction& action : actions) list[action.number].selected = true;
    return !actions.empty();
}

}  // namespace vantrel
