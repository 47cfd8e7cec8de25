#pragma once

#include <string>
#include <vector>

#include "fileops/file_operations.h"
#include "fileops/forms/frm_shell_progress.h"
#include "fileops/forms/qt_shell_questions.h"
#include "fileops/shell_wrappers.h"
#include "platform/shell_operations.h"
#include "sync/csync_settings.h"
#include "sync/synchronization.h"
#include "views/drop_rule.h"

namespace vantrel {

class Application;

// The operations that change objects on the user's command, with what they need of the main window: file
// operations and synchronisation over one shell service.
class ObjectOperations : private FileOperationsHost, private SyncHost {
  public:
    ObjectOperations(Application& application, const TrashPlaces& trash);

    // Each does nothing until a pane has been pressed.
    void CopyToOtherFolder();
    void CopyToAnyFolder();
    void MoveToOtherFolder();
    void MoveToAnyFolder();
    void Recycle();
    void DeletePermanently();
    void Drop(DropAction action, const std::vector<std::string>& paths, const std::string& folder);
    void Synchronize(bool selectedOnly);

    CSyncSettings syncSettings;

  private:
    // Runs `work` on the list of CurrentListview with the menus disabled, as every long job does.
    template <typename Work>
    void OnCurrentList(Work&& work);
    template <typename Work>
    void AsJob(Work&& work);
    std::optional<std::string> PickTarget();

    // FileOperationsHost and SyncHost
    std::string FolderPath(Side side) const override;
    void SetBusyPointer(bool busy) override;
    bool AutoCompareAfterFileOp() const override;
    void CompareDirs() override;
    void RemoveListItemsAndShowNoCompareMsg() override;
    const ComparisonResults& Results() const override;
    bool NoResults() const override;
    SelectedTexts SelectedObjects() const override;
    bool PromptForSyncMethod() const override;
    bool ShowSyncWizard() override;
    bool ShowConfirmSync(const SyncPlan& plan) override;
    std::int32_t NumSyncLogEntries() const override;
    bool AutoCompareAfterSync() const override;
    void PlaySyncCompleteSound() override;

    Application& application_;
    QtShellProgress progress_;
    QtShellQuestions questions_;
    SystemShellOperations shell_;
    ShellWrappers wrappers_;
    FileOperations files_;
    Synchronization synchronization_;
};

}  // namespace vantrel
