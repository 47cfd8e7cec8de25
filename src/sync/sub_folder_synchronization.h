#pragma once

#include "core/toolbox.h"
#include "fileops/sub_folder_operations.h"
#include "sync/csync_settings.h"
#include "sync/sync_plan.h"
#include "sync/trash_folders.h"

namespace vantrel {

// What a synchronisation needs of the window of sub-folder differences, beside what its file operations need.
class SubFolderSyncHost : public SubFolderHost {
  public:
    virtual SelectedTexts SelectedObjects() const = 0;  // of the list last pressed
    virtual TrashFolders Trash() const = 0;             // as seen from the folders of FolderPath
    virtual bool PromptForSyncMethod() const = 0;
    virtual bool ShowSyncWizard() = 0;                       // the proceed flag
    virtual bool ShowConfirmSync(const SyncPlan& plan) = 0;  // the proceed flag
    // From now on Lists() gives the hidden lists, TwinLists() the visible ones, and `current` is the list
    // acted on; nothing restores what was before.
    virtual void ActOnHiddenLists(std::optional<Side> current) = 0;
    virtual void RefreshStatus() = 0;
    virtual void PlaySyncCompleteSound() = 0;  // asks SoundOn itself
};

// Whether a synchronisation that was done wholly is heard.
enum class SyncSound : bool { Silent, Played };

// The synchronisation of one pair of sub-folders from their window: every row is a file. It deletes for good,
// has no sub-folder phase, writes no history and compares nothing again; the rows are put right one by one.
class SubFolderSynchronization {
  public:
    SubFolderSynchronization(const Toolbox& tools, SubFolderOperations& operations,
                             const CSyncSettings& settings, SubFolderSyncHost& host)
        : tools_(tools), operations_(operations), settings_(settings), host_(host) {}

    // What was done. Errors are reported under "SubDirDiffs.AutoSync()".
    OperationSummary AutoSynch(Confirm confirm, SyncSound sound);

    // Restricts the next run to the rows that are selected when it begins.
    bool SyncSelectedOnly = false;

  private:
    // The selection of the hidden list becomes the rows of `actions`; false where there are none.
    bool Select(Side side, const std::vector<PlannedAction>& actions);
    // False where anything was aborted or failed.
    bool CarryOut(const SyncPlan& plan, OperationSummary& summary);

    const Toolbox& tools_;
    SubFolderOperations& operations_;
    const CSyncSettings& settings_;
    SubFolderSyncHost& host_;
};

}  // namespace vantrel
