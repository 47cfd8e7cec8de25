#pragma once

#include <QDialog>
#include <QList>
#include <QUrl>
#include <optional>
#include <string>
#include <vector>

#include "core/sub_folder_diffs.h"
#include "fileops/sub_folder_operations.h"
#include "main/object_operations.h"
#include "sync/sub_folder_synchronization.h"
#include "views/forms/aligned_panes_widget.h"
#include "views/forms/commands.h"
#include "views/forms/status_bar.h"
#include "views/sub_folder_panes.h"

class QLabel;
class QLineEdit;

namespace vantrel {

class Application;
class CommandStrip;
class OperationLine;
class PathLabel;

// "View Sub-Folder Differences": which files differ in one pair of sub-folders, in two panes like those of
// the main window, and what can be done with them. Its rows come from the records of the comparison; no file
// is read to show them. It is modal over the main window, and its jobs are jobs of the whole program.
class frmSubDirDiffs : public QDialog,
                       private SubFolderSyncHost,
                       private ResultPanesObserver,
                       private BusyObserver {
    Q_OBJECT

  public:
    frmSubDirDiffs(Application& application, QWidget* parent);
    ~frmSubDirDiffs() override;

    // Shows the records until the window is closed. `folders` are the two sub-folders. Whether anything in
    // them was changed, so that the results of the main window are out of date.
    bool ShowForm(const CSubFolderDiffs& diffs, const PerSide<std::string>& folders);
    // The first half of that.
    void Fill(const CSubFolderDiffs& diffs, const PerSide<std::string>& folders);

    Commands& GetCommands() { return commands_; }
    SubFolderPanes& Panes() { return lists_; }
    PaneView& View(Side side) const { return panes_->View(side); }

    PerSide<PathLabel*> lblFolder;  // lblFolderOne, lblFolderTwo
    CommandStrip* SubDirDiffsToolbar = nullptr;
    MainStatusBar* StatusBar1 = nullptr;
    QLineEdit* txtFilter;
    QLabel* lblLeftAlone;  // what nothing is done with, and what is not known

  public Q_SLOTS:
    void done(int result) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Run;
    struct Handler;
    using Operation = SubFolderOperations::Result (SubFolderOperations::*)(Confirm, PartOf);
    void InstallHandlers();
    // `work` as what a signal calls, as the routine "frmSubDirDiffs.<control>_<event>".
    template <typename Work>
    auto Guarded(const char* control, const char* event, Work work);

    // Layout
    void MakeMenusAndToolbar();
    void LayOut();
    void WirePane(Side side);
    void FitPanes();

    // SubFolderSyncHost
    std::string FolderPath(Side side) const override { return folders_[side]; }
    std::vector<ShellRoot> Roots() const override;
    Side CurrentListview() const override { return actedOn_; }
    PerSide<ResultList>& Lists() override { return onHidden_ ? lists_.Hidden() : lists_.Chosen(); }
    PerSide<ResultList>& TwinLists() override { return onHidden_ ? lists_.Chosen() : lists_.Hidden(); }
    void ShowProgressPanel(bool shown) override;
    void SetProgressText(const std::string& text) override;
    void CopyItemsFromHiddenLVWToVisibleLVW() override;
    void SetResultsOutOfDate() override { resultsOutOfDate_ = true; }
    SelectedTexts SelectedObjects() const override;
    TrashFolders Trash() const override;
    bool PromptForSyncMethod() const override;
    bool ShowSyncWizard() override;
    bool ShowConfirmSync(const SyncPlan& plan) override;
    void ActOnHiddenLists(std::optional<Side> current) override;
    void RefreshStatus() override { StatusTextsChanged(); }
    void PlaySyncCompleteSound() override;

    void StatusTextsChanged() override;
    void BusyChanged(bool busy) override;

    // Commands
    Side PressedPane() const { return lists_.CurrentListview().value_or(Side::Left); }
    void ShowDifferences();
    void CompareFiles();
    void SynchronizeSubFolders() { Synchronize(SyncScope::All); }
    void SynchronizeSelectedFiles() { Synchronize(SyncScope::SelectedObjects); }
    void Synchronize(SyncScope scope);
    void Copy();
    void Move();
    void Recycle();
    void DeletePermanently();
    void DeleteByButton();
    void Operate(Operation operation, bool confirm);
    void TellEnd(const OperationSummary& summary);
    void Print();
    void CloseForm() { close(); }
    void SelectAll() { lists_.SelectAll(); }
    void DeselectAll() { lists_.DeselectAll(); }
    void InvertSelection() { lists_.InvertSelection(); }
    template <ResultType type>
    void SelectByType() {
        lists_.SelectByType(type);
    }
    void GoToFilter();
    void ShowHelp();
    void OpenRow(Side side, std::size_t row);
    void DragOut(Side side);
    std::vector<std::string> SelectedPaths(Side side) const;
    void ProcessDragDrop(Side side, const QList<QUrl>& uris, Qt::KeyboardModifiers keys);
    void FilterChanged();

    Application& application_;
    SubFolderPanes lists_;
    Commands commands_;
    SubFolderOperations operations_;
    SubFolderSynchronization synchronization_;
    AlignedPanesWidget* panes_ = nullptr;
    OperationLine* operationLine_ = nullptr;
    PerSide<std::string> folders_;
    Side actedOn_ = Side::Left;   // by the operation that runs
    bool onHidden_ = false;       // likewise
    bool showsProgress_ = false;  // in the place of the totals
    bool resultsOutOfDate_ = false;
    PerSide<int> laidOutWidths_;  // of the panes whose columns were fitted
};

}  // namespace vantrel
