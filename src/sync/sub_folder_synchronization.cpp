#include "sync/sub_folder_synchronization.h"

#include "sync/sync_space.h"

namespace vantrel {

void SubFolderSynchronization::AutoSynch(bool showConfirmation, bool noSound) {
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
        bool proceed = !showConfirmation || host_.ShowConfirmSync(plan);
        if (proceed) {
            tools_.loop.Yield();
            proceed = SpaceSufficesOrUserGoesOn(tools_, plan, "frmSubDirDiffs.EnoughSpaceForSubFolderSync");
            operations_.CancelFlag() = false;
            if (proceed) CarryOut(plan);
            if (proceed && !operations_.CancelFlag() && !noSound) host_.PlaySyncCompleteSound();
        }
        host_.CopyItemsFromHiddenLVWToVisibleLVW();
        host_.RefreshStatus();
    });
    SyncSelectedOnly = false;
}

void SubFolderSynchronization::CarryOut(const SyncPlan& plan) {
    bool cancelled = false;
    // The flag is cleared at the start of each operation: what one of them set is kept here.
    const auto run = [&](Side side, const std::vector<PlannedAction>& actions, auto operation) {
        if (cancelled || !Select(side, actions)) return;
        host_.ActOnHiddenLists(side);
        (operations_.*operation)(false, true);
        cancelled |= operations_.CancelFlag();
    };
    for (Side side : kBothSides) run(side, plan.deletes[side], &SubFolderOperations::DeleteFiles);
    for (Side side : kBothSides) run(side, plan.copies[side], &SubFolderOperations::CopyFilesToOtherDir);
    operations_.CancelFlag() = cancelled;
}

bool SubFolderSynchronization::Select(Side side, const std::vector<PlannedAction>& actions) {
    ResultList& list = host_.Lists()[side];
    for (ResultRow& row : list) row.selected = false;
    for (const PlannedAction& action : actions) list[action.number].selected = true;
    return !actions.empty();
}

}  // namespace vantrel
