#include "main/forms/frm_sub_dir_diffs.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>

#include "core/row_texts.h"
#include "fileops/expectations.h"
#include "fileops/forms/frm_properties.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/running_command.h"
#include "main/selected_pair.h"
#include "main/sub_dir_command_table.h"
#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"
#include "sync/forms/frm_confirm_sync.h"
#include "sync/single_file_sync.h"
#include "views/drop_rule.h"
#include "views/forms/dragged_paths.h"
#include "views/forms/frm_print_options.h"
#include "views/forms/operation_line.h"

namespace vantrel {

// An operation on files for as long as it runs: a job of the whole program, with the lists that it works on.
class frmSubDirDiffs::Run {
  public:
    explicit Run(frmSubDirDiffs& form) : form_(form), running_(form.application_, "operation", form) {
        form_.actedOn_ = form_.PressedPane();
        form_.onHidden_ = false;
        form_.lists_.BeginOperation();
    }
    ~Run() {
        form_.lists_.EndOperation();
        form_.ShowProgressPanel(false);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

  private:
    frmSubDirDiffs& form_;
    const RunningCommand running_;
};

struct frmSubDirDiffs::Handler {
    std::string_view command;
    void (frmSubDirDiffs::*run)();
};

void frmSubDirDiffs::InstallHandlers() {
    using F = frmSubDirDiffs;
    for (const Handler& handler : {
             Handler{"mnuFileShowDifferences", &F::ShowDifferences},
             Handler{"mnuFileCompareFiles", &F::CompareFiles},
             Handler{"mnuFileSynchronizeSubFolders", &F::SynchronizeSubFolders},
             Handler{"mnuFileSynchronizeSelectedFiles", &F::SynchronizeSelectedFiles},
             Handler{"mnuFileCopy", &F::Copy},
             Handler{"mnuFileMove", &F::Move},
             Handler{"mnuFileDeleteRecycle", &F::Recycle},
             Handler{"mnuFileDeletePermanently", &F::DeletePermanently},
             Handler{kCommandDeleteByButton, &F::DeleteByButton},
             Handler{"mnuFilePrint", &F::Print},
             Handler{"mnuFileClose", &F::CloseForm},
             Handler{"mnuSelectAll", &F::SelectAll},
             Handler{"mnuSelectDeselectAll", &F::DeselectAll},
             Handler{"mnuSelectInvert", &F::InvertSelection},
             Handler{"mnuSelectNewer", &F::SelectByType<ResultType::Newer>},
             Handler{"mnuSelectOlder", &F::SelectByType<ResultType::Older>},
             Handler{"mnuSelectOrphans", &F::SelectByType<ResultType::Orphan>},
             Handler{"mnuSelectBinary", &F::SelectByType<ResultType::Binary>},
             Handler{"mnuExtrasFilter", &F::GoToFilter},
             Handler{"mnuExtrasHelp", &F::ShowHelp},
         })
        commands_.SetHandler(handler.command, [this, run = handler.run] { (this->*run)(); });
}

bool frmSubDirDiffs::ShowForm(const CSubFolderDiffs& diffs, const PerSide<std::string>& folders) {
    Fill(diffs, folders);
    exec();
    return resultsOutOfDate_;
}

void frmSubDirDiffs::Fill(const CSubFolderDiffs& diffs, const PerSide<std::string>& folders) {
    const BusyState::Wait wait(application_.busy);
    application_.around.loop.Yield();
    folders_ = folders;
    for (const Side side : kBothSides) lblFolder[side]->SetPath(folders[side]);
    const std::string leftAlone = DescribeLeftAlone(diffs, folders);
    lblLeftAlone->setText(MessageQString(leftAlone));
    lblLeftAlone->setVisible(!leftAlone.empty());
    lists_.Fill(diffs);
}

void frmSubDirDiffs::done(int result) {
    if (application_.busy.IsBusy()) return;
    QDialog::done(result);
}

std::vector<ShellRoot> frmSubDirDiffs::Roots() const {
    return RootsOf(application_.results);
}

void frmSubDirDiffs::ShowProgressPanel(bool shown) {
    showsProgress_ = shown;
    FitPanes();
    StatusTextsChanged();
}

void frmSubDirDiffs::SetProgressText(const std::string& text) {
    if (showsProgress_) StatusBar1->SetPanel(1, text);
}

void frmSubDirDiffs::StatusTextsChanged() {
    if (!showsProgress_) StatusBar1->SetPanel(1, lists_.StatusText(Side::Left));
    StatusBar1->SetPanel(2, lists_.StatusText(Side::Right));
}

void frmSubDirDiffs::CopyItemsFromHiddenLVWToVisibleLVW() {
    lists_.CopyItemsFromHiddenLVWToVisibleLVW();
}

SelectedTexts frmSubDirDiffs::SelectedObjects() const {
    const PaneList& list = lists_.Pane(PressedPane());
    SelectedTexts texts(std::in_place);
    for (const std::size_t row : list.SelectedRows()) texts->emplace(list[row].text);
    return texts;
}

TrashFolders frmSubDirDiffs::Trash() const {
    const ComparisonResults& results = application_.results;
    PerSide<std::string> names;
    for (const Side side : kBothSides) {
        const std::size_t above = NormalizePath(results.folders[side]).size();
        names[side] = WithoutTrailingSlash(std::string_view(folders_[side]).substr(above));
    }
    return FindTrashFolders(application_.tools, application_.around.trash, results).Under(names);
}

bool frmSubDirDiffs::PromptForSyncMethod() const {
    return application_.options.promptForSyncMethod;
}

bool frmSubDirDiffs::ShowSyncWizard() {
    const SyncScope scope = synchronization_.SyncSelectedOnly ? SyncScope::SelectedObjects : SyncScope::All;
    const auto chosen = application_.operations->ShowSyncWizard(scope, folders_, this);
    synchronization_.SyncSelectedOnly = chosen == SyncScope::SelectedObjects;
    return chosen.has_value();
}

bool frmSubDirDiffs::ShowConfirmSync(const SyncPlan& plan) {
    return frmConfirmSync(plan, application_.around.locale, this).exec() == Accepted;
}

void frmSubDirDiffs::ActOnHiddenLists(std::optional<Side> current) {
    onHidden_ = true;
    actedOn_ = current.value_or(actedOn_);
}

void frmSubDirDiffs::PlaySyncCompleteSound() {
    if (application_.sounds.SoundOn) application_.sounds.PlaySyncCompleteSound();
}

void frmSubDirDiffs::BusyChanged(bool busy) {
    txtFilter->setEnabled(!busy);
}

void frmSubDirDiffs::ShowDifferences() {
    const auto pair = PairToShow(lists_, application_.around.messages);
    if (!pair) return;
    const BusyState::Job job(application_.busy);
    vantrel::ShowDifferences(application_, PathsOf(*pair, folders_), this);
}

void frmSubDirDiffs::CompareFiles() {
    const BusyState::Job job(application_.busy);
    ShowCompareFiles(application_, PathsToCompare(application_.tools.files, lists_, folders_), this,
                     [this](const PerSide<std::string>& paths, const SyncedPair& synced) {
                         BringRowsIntoLine(application_, lists_, folders_, paths, synced);
                         SetResultsOutOfDate();
                     });
}

void frmSubDirDiffs::Synchronize(SyncScope scope) {
    const Run run(*this);
    synchronization_.SyncSelectedOnly = scope == SyncScope::SelectedObjects;
    TellEnd(synchronization_.AutoSynch(
        application_.options.showSynchronizeConfirmations ? Confirm::Yes : Confirm::No, SyncSound::Played));
}

void frmSubDirDiffs::TellEnd(const OperationSummary& summary) {
    if (summary.IsEmpty()) return operationLine_->hide();
    operationLine_->Tell(DescribeSummary(summary, application_.around.locale), ListNotDone(summary));
}

void frmSubDirDiffs::Operate(Operation operation, bool confirm) {
    const Run run(*this);
    TellEnd((operations_.*operation)(confirm ? Confirm::Yes : Confirm::No, PartOf::Command).summary);
}

void frmSubDirDiffs::Copy() {
    Operate(&SubFolderOperations::CopyFilesToOtherDir, application_.options.showCopyConfirmations);
}

void frmSubDirDiffs::Move() {
    Operate(&SubFolderOperations::MoveFilesToOtherDir, application_.options.showMoveConfirmations);
}

void frmSubDirDiffs::Recycle() {
    Operate(&SubFolderOperations::RecycleFiles, application_.options.showDeleteConfirmations);
}

void frmSubDirDiffs::DeletePermanently() {
    Operate(&SubFolderOperations::DeleteFiles, application_.options.showDeleteConfirmations);
}

void frmSubDirDiffs::DeleteByButton() {
    if (QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier))
        DeletePermanently();
    else
        Recycle();
}

void frmSubDirDiffs::Print() {
    PerSide<PrintedList> shown;
    for (const Side side : kBothSides) shown[side] = {&lists_.Pane(side).Rows(), folders_[side]};
    const BusyState::Job job(application_.busy);
    ShowPrintOptions({.tools = application_.tools,
                      .activeWindow = "frmSubDirDiffs",
                      .shown = shown,
                      .showHelp = [this] { OpenHelpPage(application_, "printing.html"); }},
                     this);
}

void frmSubDirDiffs::GoToFilter() {
    txtFilter->setFocus();
    txtFilter->selectAll();
}

void frmSubDirDiffs::ShowHelp() {
    OpenHelpPage(application_, "sub-folders.html");
}

void frmSubDirDiffs::OpenRow(Side side, std::size_t row) {
    if (application_.busy.IsBusy() || row >= lists_.Pane(side).Count()) return;
    const std::string path = ObjectPath(folders_[side], lists_.Pane(side)[row]);
    if (!application_.tools.files.Exists(path)) {
        application_.around.messages.Ask({.title = "Open Object",
                                          .text = "The object \"" + path + "\" was not found.",
                                          .icon = MessageIcon::Warning,
                                          .defaultAnswer = {}});
        return;
    }
    QtShellCalls shell(application_.tools, application_.around.desktop);
    OpenFile(shell, path);
}

std::vector<std::string> frmSubDirDiffs::SelectedPaths(Side side) const {
    const PaneList& list = lists_.Pane(side);
    std::vector<std::string> paths;
    for (const std::size_t row : list.SelectedRows()) paths.push_back(ObjectPath(folders_[side], list[row]));
    return paths;
}

void frmSubDirDiffs::DragOut(Side side) {
    if (!application_.busy.IsBusy()) DragPaths(&View(side), SelectedPaths(side));
}

// What is dropped are the selected rows of the other pane; nothing else has a place here.
void frmSubDirDiffs::ProcessDragDrop(Side side, const QList<QUrl>& uris, Qt::KeyboardModifiers keys) {
    const std::vector<std::string> paths = DroppedPaths(uris);
    if (application_.busy.IsBusy() || paths.empty() || paths != SelectedPaths(Other(side))) return;
    lists_.SetCurrentListview(Other(side));
    const bool onSameDrive =
        application_.tools.volumes.OnSameDrive(folders_[Side::Left], folders_[Side::Right]);
    const DropKeys pressed{.control = keys.testFlag(Qt::ControlModifier),
                           .shift = keys.testFlag(Qt::ShiftModifier)};
    if (DropActionFor(pressed, onSameDrive) == DropAction::Copy)
        Copy();
    else
        Move();
}

void frmSubDirDiffs::FilterChanged() {
    lists_.SetFilter(FromQString(txtFilter->text()));
    const bool filtered = !txtFilter->text().isEmpty();
    StatusBar1->SetPanel(3, filtered ? std::to_string(lists_.CountShown()) + " of " +
                                           std::to_string(lists_.Hold()[Side::Left].Count()) + " rows"
                                     : std::string());
}

}  // namespace vantrel
