#include "main/object_operations.h"

#include "main/application.h"
#include "main/running_command.h"
#include "sync/forms/frm_confirm_sync.h"
#include "sync/forms/frm_sync_wizard.h"

namespace vantrel {

ObjectOperations::ObjectOperations(Application& application, const TrashPlaces& trash)
    : application_(application),
      progress_(application.around.clock, application.around.loop),
      questions_(application.around.locale),
      shell_({.files = application.around.files,
              .volumes = application.around.volumes,
              .clock = application.around.clock,
              .loop = application.around.loop,
              .progress = progress_,
              .questions = questions_,
              .trash = trash}),
      wrappers_(shell_, application.around.messages),
      files_(application.tools, wrappers_, application.busy, *this),
      synchronization_(application.tools, wrappers_, application.busy, syncSettings, *this) {
    progress_.SetParentWindow(&application.Window());
    questions_.SetParentWindow(&application.Window());
}

template <typename Work>
void ObjectOperations::OnCurrentList(Work&& work) {
    const RunningCommand running(application_);
    work(ListRef(application_.panes, application_.panes.CurrentListview().value_or(Side::Left)));
}

std::optional<std::string> ObjectOperations::PickTarget(const ListRef& list, const char* prompt) {
    if (application_.panes.Pane(list.side).SelectedCount() == 0) return std::string();
    const std::string start = lastPicked_.empty() ? FolderPath(Other(list.side)) : lastPicked_;
    auto picked = application_.around.messages.PickDirectory("Browse for Folder", prompt, start);
    if (picked) lastPicked_ = *picked;
    return picked;
}

void ObjectOperations::CopyToOtherFolder() {
    OnCurrentList([&](ListRef list) {
        files_.CopyFilesToOtherDirAndLVW(list, application_.options.showCopyConfirmations, false);
    });
}

void ObjectOperations::CopyToAnyFolder() {
    OnCurrentList([&](ListRef list) {
        if (const auto target = PickTarget(list, "Specify the folder where the object(s) will be copied to."))
            files_.CopyFilesToSpecificDir(list, *target, application_.options.showCopyConfirmations);
    });
}

void ObjectOperations::MoveToOtherFolder() {
    OnCurrentList([&](ListRef list) {
        files_.MoveFilesToOtherDirAndLVW(list, application_.options.showMoveConfirmations);
    });
}

void ObjectOperations::MoveToAnyFolder() {
    OnCurrentList([&](ListRef list) {
        if (const auto target = PickTarget(list, "Specify the folder where the object(s) will be moved to."))
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
    const RunningCommand running(application_);
    const bool confirm = application_.options.showCopyConfirmations;
    if (action == DropAction::Copy)
        files_.CopyOLEDropObjectsToDir(paths, folder, confirm);
    else
        files_.MoveOLEDropObjectsToDir(paths, folder, confirm);
}

void ObjectOperations::Synchronize(bool selectedOnly) {
    const RunningCommand running(application_);
    synchronization_.SyncSelectedOnly = selectedOnly;
    synchronization_.mnuFileAutoSynch(application_.options.showSynchronizeConfirmations);
}

std::string ObjectOperations::FolderPath(Side side) const {
    return application_.Window().PaneFolder(side);
}

bool ObjectOperations::AutoCompareAfterFileOp() const {
    return application_.options.autoCompareAfterFileOp;
}

void ObjectOperations::CompareDirs() {
    application_.CompareDirs(CompareEnding::Silent);
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
    application_.GetCommands().RefreshChecks();
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
