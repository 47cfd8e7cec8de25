#include "object_operations.h"

#include "application.h"
#include "sync/forms/frm_confirm_sync.h"
#include "sync/forms/frm_sync_wizard.h"

namespace vantrel {

ObjectOperations::ObjectOperations(Application& application, const TrashPlaces& trash)
    : application_(application),
      progress_(application.around.clock),
      questions_(application.around.locale),
      shell_({.files = application.around.files,
              .volumes = application.around.volumes,
              .clock = application.around.clock,
              .loop = application.around.loop,
              .progress = progress_,
              .questions = questions_,
              .trash = trash}),
      wrappers_(shell_, application.around.messages),
      files_(application.tools, wrappers_, *this),
      synchronization_(application.tools, wrappers_, syncSettings, *this) {
    progress_.SetParentWindow(&application.Window());
    questions_.SetParentWindow(&application.Window());
}

template <typename Work>
void ObjectOperations::AsJob(Work&& work) {
    application_.around.loop.ResetCancel();
    application_.Window().SetMenusEnabled(false);
    work();
    application_.Window().SetMenusEnabled(true);
}

template <typename Work>
void ObjectOperations::OnCurrentList(Work&& work) {
    if (const auto side = application_.panes.CurrentListview())
        AsJob([&] { work(ListRef(application_.panes, *side)); });
}

std::optional<std::string> ObjectOperations::PickTarget() {
    const auto side = application_.panes.CurrentListview();
    return application_.around.messages.PickDirectory("Browse for Folder", "Specify the folder.",
                                                      side ? FolderPath(*side) : std::string());
}

void ObjectOperations::CopyToOtherFolder() {
    OnCurrentList([&](ListRef list) {
        files_.CopyFilesToOtherDirAndLVW(list, application_.options.showCopyConfirmations, false);
    });
}

void ObjectOperations::CopyToAnyFolder() {
    if (const auto target = PickTarget())
        OnCurrentList([&](ListRef list) {
            files_.CopyFilesToSpecificDir(list, *target, application_.options.showCopyConfirmations);
        });
}

void ObjectOperations::MoveToOtherFolder() {
    OnCurrentList([&](ListRef list) {
        files_.MoveFilesToOtherDirAndLVW(list, application_.options.showMoveConfirmations);
    });
}

void ObjectOperations::MoveToAnyFolder() {
    if (const auto target = PickTarget())
        OnCurrentList([&](ListRef list) {
            files_.MoveFilesToSpecificDir(list, *target, application_.options.showMoveConfirmations);
        });
}

void ObjectOperations::Recycle() {
    OnCurrentList([&](ListRef list) {
        files_.DeleteFilesFromLVW(list, application_.options.showDeleteConfirmations, false);
    });
}

void ObjectOperations::DeletePermanently() {
    OnCurrentList([&](ListRef list) {
        files_.DeletePermanentlyFilesFromLVW(list, application_.options.showDeleteConfirmations, false);
    });
}

// Whether a drop asks is the option of copying, for moving too.
void ObjectOperations::Drop(DropAction action, const std::vector<std::string>& paths,
                            const std::string& folder) {
    const bool confirm = application_.options.showCopyConfirmations;
    AsJob([&] {
        if (action == DropAction::Copy)
            files_.CopyOLEDropObjectsToDir(paths, folder, confirm);
        else
            files_.MoveOLEDropObjectsToDir(paths, folder, confirm);
    });
}

void ObjectOperations::Synchronize(bool selectedOnly) {
    if (selectedOnly) synchronization_.SyncSelectedOnly = true;
    AsJob([&] { synchronization_.mnuFileAutoSynch(application_.options.showSynchronizeConfirmations); });
}

std::string ObjectOperations::FolderPath(Side side) const {
    return application_.Window().PaneFolder(side);
}

void ObjectOperations::SetBusyPointer(bool busy) {
    application_.Window().SetBusyPointer(busy);
}

bool ObjectOperations::AutoCompareAfterFileOp() const {
    return application_.options.autoCompareAfterFileOp;
}

void ObjectOperations::CompareDirs() {
    application_.CompareDirs(false, false);
}

void ObjectOperations::RemoveListItemsAndShowNoCompareMsg() {
    application_.panes.RemoveListItemsAndShowNoCompareMsg();
}

const ComparisonResults& ObjectOperations::Results() const {
    return application_.results;
}

bool ObjectOperations::NoResults() const {
    return application_.panes.ShowsNoResult();
}

SelectedTexts ObjectOperations::SelectedObjects() const {
    SelectedTexts texts(std::in_place);
    if (const auto side = application_.panes.CurrentListview()) {
        const PaneList& list = application_.panes.Pane(*side);
        for (const std::size_t row : list.SelectedRows()) texts->emplace(list[row].text);
    }
    return texts;
}

bool ObjectOperations::PromptForSyncMethod() const {
    return application_.options.promptForSyncMethod;
}

bool ObjectOperations::ShowSyncWizard() {
    frmSyncWizard wizard(syncSettings,
                         {.promptForSyncMethod = application_.options.promptForSyncMethod,
                          .syncSelectedOnly = synchronization_.SyncSelectedOnly},
                         application_.results.folders, &application_.Window());
    if (wizard.exec() != QDialog::Accepted) return false;
    application_.options.promptForSyncMethod = wizard.ChosenFlags().promptForSyncMethod;
    synchronization_.SyncSelectedOnly = wizard.ChosenFlags().syncSelectedOnly;
    return true;
}

bool ObjectOperations::ShowConfirmSync(const SyncPlan& plan) {
    return frmConfirmSync(plan, &application_.Window()).exec() == QDialog::Accepted;
}

std::int32_t ObjectOperations::NumSyncLogEntries() const {
    return application_.options.numSyncLogEntries;
}

bool ObjectOperations::AutoCompareAfterSync() const {
    return application_.options.autoCompareAfterSync;
}

void ObjectOperations::PlaySyncCompleteSound() {
    if (application_.sounds.SoundOn) application_.sounds.PlaySyncCompleteSound();
}

}  // namespace vantrel
