#include "dupes/forms/frm_find_duplicates.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <limits>

#include "dupes/box_lines.h"
#include "dupes/dupe_set_up.h"
#include "dupes/forms/dupe_details_model.h"
#include "dupes/forms/dupe_groups_model.h"
#include "dupes/forms/dupe_preview.h"
#include "dupes/forms/frm_find_duplicates_run.h"
#include "dupes/forms/search_folder_list.h"
#include "dupes/protected_folders.h"
#include "platform/forms/animation_view.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr int kFiguresPace = 50;    // milliseconds
constexpr int kMeasuredRows = 50;   // of those that a column is fitted to
constexpr int kWidestColumn = 100;  // in characters

QString TimeLeft(std::int64_t seconds) {
    return QStringLiteral("%1:%2 left").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString Bytes(std::uint64_t bytes) {
    return ToQString(
        ConvertBytesToCorrectByteTypeString(Currency::FromWhole(static_cast<std::int64_t>(bytes))));
}

}  // namespace

void frmFindDuplicates::ShowForm() {
    FormLoad();
    if (!closeAfterRun_) exec();
}

void frmFindDuplicates::FormLoad() {
    parts_.tools.reporter.GuardRun("frmFindDuplicates.Form_Load", [&] {
        ShowFolders();
        ShowSettings();
        TellImportantInformation(parts_.tools.messages, settings_);
    });
}

void frmFindDuplicates::Tell(const char* title, const std::string& text, MessageIcon icon) {
    parts_.tools.messages.Ask({.title = title, .text = text, .icon = icon, .defaultAnswer = {}});
}

// Progress

void frmFindDuplicates::SetStatus(std::string_view text) {
    status_ = text;
    lblStatus->setText(DisplayQString(text));
    lblStatus->setToolTip(WithLineBreaks(lblStatus->text()));
}

void frmFindDuplicates::SetFigures(const DupeFigures& figures) {
    figures_ = figures;
    if (figuresShown_.isValid() && figuresShown_.elapsed() < kFiguresPace) return;
    ShowFigures();
}

void frmFindDuplicates::SetBar(std::int64_t value, std::int64_t maximum) {
    if (maximum <= 0) {
        ProgressBar1->hide();
        ProgressBar1->reset();
        return;
    }
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    ProgressBar1->setRange(0, static_cast<int>(std::min(maximum, kMost)));
    ProgressBar1->setValue(static_cast<int>(std::min(value, kMost)));
    ProgressBar1->show();
}

// Once a search begins the files of the one before are gone.
void frmFindDuplicates::SetSearching(bool searching) {
    if (!searching) return Animation1->Stop();
    ListsChanged();
    const Toolbox& tools = parts_.tools;
    // Without the picture the search is the same.
    static_cast<void>(
        Animation1->Open(tools.files, tools.folders.SupportFile(tools.files, "small_find_computer.avi")));
}

void frmFindDuplicates::ShowFigures() {
    figuresShown_.start();
    const auto& unsearched = finder_.Unsearched();
    QString text, tip;
    if (busy_.IsBusy()) {
        if (figures_.files > 0)
            text = QStringLiteral("%1 files").arg(locale().toString(qulonglong{figures_.files}));
        if (figures_.bytesTotal > 0)
            text += QStringLiteral(", %1 of %2").arg(Bytes(figures_.bytesDone), Bytes(figures_.bytesTotal));
        if (figures_.secondsLeft) text += QStringLiteral(", ") + TimeLeft(*figures_.secondsLeft);
    } else if (!unsearched.empty()) {
        text = unsearched.size() == 1
                   ? QStringLiteral("1 folder could not be searched")
                   : QStringLiteral("%1 folders could not be searched").arg(unsearched.size());
        for (std::size_t i = 0; i < unsearched.size() && i < kMostBoxLines; ++i)
            tip += DisplayQString(unsearched[i].path) + QStringLiteral(": ") +
                   DisplayQString(unsearched[i].error.Description()) + QLatin1Char('\n');
    }
    lblFigures->setText(text);
    lblFigures->setToolTip(WithLineBreaks(tip.trimmed()));
}

// State

void frmFindDuplicates::ShowSettings() {
    const DupeCriteria chosen = settings_.Criteria();
    const std::array<bool, kCriteria> set{chosen.names,        chosen.sizes,      chosen.createTimes,
                                          chosen.lastModTimes, chosen.attributes, chosen.contents};
    for (std::size_t i = 0; i < kCriteria; ++i) chkDupeCriteria[i]->setChecked(set[i]);
    chkIncludeSubFolders->setChecked(settings_.IncludeSubFolders());
    commands_.RefreshChecks();
}

void frmFindDuplicates::ShowFolders() {
    std::vector<SearchFolderList::Folder> folders;
    for (const std::string& path : settings_.FolderPaths())
        folders.push_back({path, IsProtectedFolder(settings_, path)});
    lstFolders->SetFolders(folders);
    commands_.RefreshChecks();
}

// Other groups are there, or none.
void frmFindDuplicates::ListsChanged() {
    details_->Show(std::nullopt);
    if (!finder_.Results().GroupCount()) keepsMarks_ = false;
    GroupsChanged();
    DetailsChanged();
}

// The groups that are shown, or their order, are others now. The one that is open stays open where it is
// still there.
void frmFindDuplicates::GroupsChanged() {
    const auto open = details_->Group();
    const int before = lstDupeGroups->currentIndex().row();
    {
        const QScopedValueRollback<bool> filling(fillingLists_, true);
        groups_->Reset();
        FitGroupWidth();
        const auto row = open ? groups_->RowOf(*open) : std::nullopt;
        if (row) {
            lstDupeGroups->selectRow(*row);
        } else if (groups_->rowCount() > 0) {
            // A current line, so that the keys have where to begin; it opens nothing.
            lstDupeGroups->selectionModel()->setCurrentIndex(
                groups_->index(std::clamp(before, 0, groups_->rowCount() - 1), 0),
                QItemSelectionModel::NoUpdate);
        }
    }
    GroupChosen();
}

void frmFindDuplicates::SelectGroup(int row) {
    lstDupeGroups->selectRow(row);
}

// The line that is selected tells which group is open.
void frmFindDuplicates::GroupChosen() {
    if (fillingLists_) return;
    const QModelIndexList selected = lstDupeGroups->selectionModel()->selectedRows();
    const auto group = selected.isEmpty() ? std::nullopt : groups_->GroupAt(selected.front().row());
    if (group == details_->Group()) return;
    if (const auto left = details_->Group(); left && !keepsMarks_)
        for (const std::uint32_t file : finder_.Results().Group(*left).members)
            finder_.Results().Mark(file, false);
    details_->Show(group);
    DetailsChanged();
}

void frmFindDuplicates::DetailsChanged() {
    FitColumns();
    if (details_->rowCount() > 0)
        lvwDupeDetails->selectionModel()->setCurrentIndex(details_->index(0, 0),
                                                          QItemSelectionModel::NoUpdate);
    ShowMarks();
    ShowPreview();
}

void frmFindDuplicates::ShowMarks() {
    lblMarks->setText(finder_.Results().GroupCount() == 0 ? QString()
                                                          : ToQString(finder_.Results().Totals().Text()));
}

void frmFindDuplicates::ShowPreview() {
    if (picPreview->isHidden()) return;
    const auto file = SelectedFile();
    if (!file) return picPreview->ShowNothing();
    const FoundFiles& files = finder_.Results().Files();
    QString about;
    for (const std::string& other : files.OtherNamesOf(files[*file]))
        about += (about.isEmpty() ? QStringLiteral("The same file is also: ") : QStringLiteral("\n")) +
                 DisplayQString(other);
    picPreview->ShowFile(files.PathOf(*file), about);
}

void frmFindDuplicates::FitGroupWidth() {
    const int longest =
        fontMetrics().horizontalAdvance(groups_->LongestLine()) + fontMetrics().averageCharWidth() * 3;
    lstDupeGroups->setColumnWidth(0, std::max(longest, lstDupeGroups->viewport()->width()));
}

void frmFindDuplicates::FitColumns() {
    const int character = fontMetrics().averageCharWidth();
    const int rows = std::min(details_->rowCount(), kMeasuredRows);
    for (int column = 0; column < details_->columnCount(); ++column) {
        int widest = fontMetrics().horizontalAdvance(
            details_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int row = 0; row < rows; ++row)
            widest = std::max(widest, fontMetrics().horizontalAdvance(
                                          details_->index(row, column).data(Qt::DisplayRole).toString()));
        const int box = column == 0 ? fontMetrics().height() + character : 0;
        lvwDupeDetails->setColumnWidth(column,
                                       std::min(widest + box + character * 3, character * kWidestColumn));
    }
}

std::vector<int> frmFindDuplicates::SelectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : lvwDupeDetails->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::optional<std::uint32_t> frmFindDuplicates::SelectedFile() const {
    const std::vector<int> rows = SelectedRows();
    if (rows.empty()) return std::nullopt;
    // Of several it is the one that the keys are at.
    const int current = lvwDupeDetails->currentIndex().row();
    const bool isSelected = std::binary_search(rows.begin(), rows.end(), current);
    return details_->FileAt(isSelected ? current : rows.front());
}

bool frmFindDuplicates::eventFilter(QObject* watched, QEvent* event) {
    // It has its new size once the event is through.
    if (event->type() == QEvent::Resize && watched == lstDupeGroups->viewport())
        QTimer::singleShot(0, this, [this] { FitGroupWidth(); });
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (busy_.IsBusy()) {
        // A box that asks in between has an ESC of its own.
        const QWidget* modal = QApplication::activeModalWidget();
        const bool isOurs = modal == nullptr || modal == this;
        if (key != Qt::Key_Escape || !isOurs || !watched->isWidgetType())
            return QDialog::eventFilter(watched, event);
        parts_.requestCancel();
        return true;
    }
    return OnListKey(watched, key) || QDialog::eventFilter(watched, event);
}

// What the lists do with keys of their own. Enter would otherwise be no list's.
bool frmFindDuplicates::OnListKey(QObject* list, int key) {
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (list == lvwDupeDetails && key == Qt::Key_Space)
        FlipMarksOfSelection();
    else if (list == lvwDupeDetails && isEnter)
        commands_.Run("mnuFileViewFile");
    else if (list == lstDupeGroups && isEnter)
        lvwDupeDetails->setFocus();
    else if (list == lstFolders && isEnter)
        commands_.Run("mnuFoldersEdit");
    else if (list == lstFolders && key == Qt::Key_Delete)
        commands_.Run("mnuFoldersRemove");
    else
        return false;
    return true;
}

void frmFindDuplicates::done(int result) {
    // The work holds on to what the window owns: it is asked to end, and the window closes behind it.
    if (busy_.IsBusy()) {
        closeAfterRun_ = true;
        parts_.requestCancel();
        return;
    }
    ClearListBoxAndListview();
    QDialog::done(result);
}

}  // namespace vantrel
