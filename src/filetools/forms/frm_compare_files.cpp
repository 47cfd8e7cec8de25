#include "filetools/forms/frm_compare_files.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStringList>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>

#include "diagnostics/log_offer.h"
#include "filetools/forms/file_path_box.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"
#include "platform/workers.h"

namespace vantrel {

namespace {

const QString kClose = QStringLiteral("C&lose");
const QString kCancel = QStringLiteral("Cancel");

// As many as the user wants, but two at least where any: one for each file.
std::size_t WorkersWanted(std::int32_t jobs) {
    const std::size_t wanted = WorkerCount(jobs);
    return wanted == 0 ? 0 : std::max(wanted, kBothSides.size());
}

}  // namespace

// A command at work: nothing else starts meanwhile, and the focus is where it was afterwards. A window that
// was to be closed meanwhile closes behind it.
class frmCompareFiles::Run {
  public:
    explicit Run(frmCompareFiles& form) : form_(form), job_(form.busy_), focus_(form.focusWidget()) {
        form_.parts_.tools.loop.ResetCancel();
        form_.EnableCommands();
    }
    ~Run() {
        job_.End();
        form_.lblStatusInfo->clear();
        form_.prgBinaryCompare->setValue(0);
        form_.cmdCancel->setText(kClose);
        form_.EnableCommands();
        if (focus_ && focus_->isEnabled()) focus_->setFocus();
        form_.parts_.tools.loop.ResetCancel();
        if (form_.closeAfterRun_) QTimer::singleShot(0, &form_, &QDialog::reject);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

  private:
    frmCompareFiles& form_;
    BusyState::Job job_;
    QPointer<QWidget> focus_;
};

void frmCompareFiles::ShowForm(const PerSide<std::string>& paths) {
    for (const Side side : kBothSides) txtFile[side]->SetPath(paths[side]);
    exec();
}

PerSide<std::string> frmCompareFiles::Paths() const {
    return {{txtFile[Side::Left]->Path(), txtFile[Side::Right]->Path()}};
}

std::vector<FileMethod> frmCompareFiles::CheckedMethods() const {
    std::vector<FileMethod> checked;
    for (std::size_t row = 0; row < methods_.size(); ++row)
        if (lvwCompareFiles->topLevelItem(static_cast<int>(row))->checkState(Method) == Qt::Checked)
            checked.push_back(methods_[row]);
    return checked;
}

void frmCompareFiles::EnableCommands() {
    const bool free = !busy_.IsBusy();
    for (QPushButton* button : {cmdCompare, cmdShowDiffs, cmdSync, cmdHelp}) button->setEnabled(free);
    cmdShowBytes->setEnabled(free && contentsDiffer_);
    if (free) cmdCancel->setEnabled(true);
    for (const Side side : kBothSides) {
        txtFile[side]->setReadOnly(!free);
        cmdFile[side]->setEnabled(free);
        cmdViewFile[side]->setEnabled(free);
    }
}

void frmCompareFiles::SetContentsDiffer(bool differ) {
    contentsDiffer_ = differ;
    EnableCommands();
}

void frmCompareFiles::cmdCompare_Click() {
    if (busy_.IsBusy()) return;
    const Run run(*this);
    const BusyState::Wait wait(busy_);
    CCompare compare(parts_.options);
    Workers workers(WorkersWanted(compare.Jobs));
    TwoFileComparison comparison(parts_.tools, compare, workers, *this);
    const TwoFileReport report = comparison.Compare(Paths(), CheckedMethods());
    if (report.outcome == TwoFileOutcome::Completed && compare.ErrorsDuringCompare && !closeAfterRun_ &&
        OfferErrorLog(parts_.tools.messages))
        parts_.showErrorLog(this);
    ThrowIfFailed(report.unlogged);
}

void frmCompareFiles::cmdShowDiffs_Click() {
    if (busy_.IsBusy()) return;
    const Run run(*this);
    cmdCancel->setEnabled(false);
    const PerSide<std::string> paths = Paths();
    if (AreExistingFiles(parts_.tools, paths)) parts_.showDifferences(paths, this);
}

void frmCompareFiles::cmdShowBytes_Click() {
    if (busy_.IsBusy()) return;
    const Run run(*this);
    const PerSide<std::string> paths = Paths();
    if (AreExistingFiles(parts_.tools, paths)) parts_.showBytes(paths, this);
}

bool frmCompareFiles::Exists(Side side, const std::string& path) {
    if (!path.empty() && parts_.tools.files.FileExists(path)) return true;
    const char* text = side == Side::Left ? "File 1 does not exist." : "File 2 does not exist.";
    parts_.tools.messages.Ask(
        {.title = "File Sync", .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
    return false;
}

void frmCompareFiles::cmdSync_Click() {
    if (busy_.IsBusy()) return;
    const Run run(*this);
    const PerSide<std::string> paths = Paths();
    for (const Side side : kBothSides)
        if (!Exists(side, paths[side])) return;
    parts_.sync(paths, this);
}

void frmCompareFiles::View(Side side) {
    const std::string path = txtFile[side]->Path();
    if (!busy_.IsBusy() && Exists(side, path)) parts_.openFile(path);
}

void frmCompareFiles::Select(Side side) {
    if (busy_.IsBusy()) return;
    FileDialog dialog;
    dialog.title = side == Side::Left ? "Select File One" : "Select File Two";
    dialog.filter = "All Files (*.*)|*.*";
    const std::string path = txtFile[side]->Path();
    const std::string folder = parts_.tools.files.FolderExists(path) ? path : GetParentFolderName(path);
    if (parts_.tools.files.FolderExists(folder)) dialog.startFolder = folder;
    if (const auto chosen = parts_.tools.messages.AskForFile(dialog)) txtFile[side]->SetPath(*chosen);
}

void frmCompareFiles::CopyRow() {
    const QTreeWidgetItem* item = lvwCompareFiles->currentItem();
    if (!item) return;
    QStringList texts;
    for (int column = 0; column < ColumnCount; ++column) texts += item->text(column).trimmed();
    QApplication::clipboard()->setText(texts.join(QLatin1Char('\t')));
}

void frmCompareFiles::cmdCancel_Click() {
    if (cmdCancel->text() != kCancel) return done(Rejected);
    if (!cancellable_) return;
    parts_.requestCancel();
    cmdCancel->setText(kClose);
}

// The key ESC is the button.
void frmCompareFiles::reject() {
    if (cmdCancel->isEnabled()) cmdCancel_Click();
}

void frmCompareFiles::closeEvent(QCloseEvent* event) {
    event->ignore();
    done(Rejected);
}

void frmCompareFiles::done(int result) {
    // The work shows its findings here: it is asked to end, and the window closes behind it.
    if (busy_.IsBusy()) {
        closeAfterRun_ = true;
        parts_.requestCancel();
        return;
    }
    QDialog::done(result);
}

void frmCompareFiles::Begin() {
    for (int row = 0; row < lvwCompareFiles->topLevelItemCount(); ++row) {
        for (const Column column : {FileOne, FileTwo, Result}) {
            lvwCompareFiles->topLevelItem(row)->setText(column, {});
            lvwCompareFiles->topLevelItem(row)->setToolTip(column, {});
        }
    }
    SetContentsDiffer(false);
}

void frmCompareFiles::SetStatus(std::string_view text) {
    lblStatusInfo->setText(ToQString(text));
}

void frmCompareFiles::SetCancellable(bool on) {
    cancellable_ = on;
    prgBinaryCompare->setValue(0);
    if (on) {
        aim_.emplace();
        cmdCancel->setText(kCancel);
        if (closeAfterRun_) parts_.requestCancel();
    } else {
        aim_.reset();
    }
}

void frmCompareFiles::SetPercentage(int percentage) {
    prgBinaryCompare->setValue(percentage);
}

void frmCompareFiles::ShowFinding(const FileFinding& finding) {
    const auto row = std::find(methods_.begin(), methods_.end(), finding.method) - methods_.begin();
    QTreeWidgetItem* item = lvwCompareFiles->topLevelItem(static_cast<int>(row));
    const auto show = [item](Column column, std::string_view text) {
        const QString shown = DisplayQString(std::string(text));
        item->setText(column, shown);
        // In a paragraph a long tip has several lines.
        if (!shown.isEmpty())
            item->setToolTip(column, QStringLiteral("<p>%1</p>").arg(shown.toHtmlEscaped()));
    };
    show(FileOne, finding.shown[Side::Left]);
    show(FileTwo, finding.shown[Side::Right]);
    show(Result, finding.result);
    if (finding.method == FileMethod::Contents && finding.differs) SetContentsDiffer(true);
}

}  // namespace vantrel
