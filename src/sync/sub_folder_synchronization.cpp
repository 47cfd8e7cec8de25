#include "sync/sub_folder_synchronization.h"

#include "sync/sync_space.h"

namespace vantrel {

void SubFolderSynchronization::AutoSynch(Confirm confirm, SyncSound sound) {
    tools_.reporter.Guard("SubDirDiffs.AutoSync()", [&] {
        tools_.loop.ResetCancel();
        if (host_.PromptForSyncMethod() && !host_.ShowSyncWizard()) return;
        tools_.loop.Yield();
        SelectedTexts selected;
        if (SyncSelectedOnly) selected = host_.SelectedObjects().value_or(std::unordered_set<std::string>());

        host_.ActOnHiddenLists(std::nullopt);
        PerSide<std::string> folders;
        for (Side side : kBothSides) folders[side] = host_.FolderPath(side);
        const SyncPlan plan = GetListOfFilesAffectedBySync(host_.Lists(), folders, settings_, selected);
        bool proceed = confirm == Confirm::No || host_.ShowConfirmSync(plan);
        if (proceed) {
            tools_.loop.Yield();
            proceed = SpaceSufficesOrUserGoesOn(tools_, plan, "frmSubDirDiffs.EnoughSpaceForSubFolderSync");
            if (proceed && CarryOut(plan) && sound == SyncSound::Played) host_.PlaySyncCompleteSound();
        }
        host_.CopyItemsFromHiddenLVWToVisibleLVW();
        host_.RefreshStatus();
    });
    SyncSelectedOnly = false;
}

bool SubFolderSynchronization::CarryOut(const SyncPlan& plan) {
    bool cancelled = false;
    const auto run = [&](Side side, const std::vector<PlannedAction>& actions, auto operation) {
        if (cancelled || !Select(side, actions)) return;
        host_.ActOnHiddenLists(side);
        cancelled = (operations_.*operation)(Confirm::No, PartOf::Synchronization).cancelled;
    };
    for (Side side : kBothSides) run(side, plan.deletes[side], &SubFolderOperations::DeleteFiles);
    for (Side side : kBothSides) run(side, plan.copies[side], &SubFolderOperations::CopyFilesToOtherDir);
    return !cancelled;
}

bool SubFolderSynchronization::Select(Side side, const std::vector<PlannedAction>& actions) {
    ResultList& list = host_.Lists()[side];
    for (ResultRow& row : list) row.selected = false;
    for (const PlannedAction& action : actions) list[action.number].selected = true;
    return !actions.empty();
}

}  // namespace vantrel
