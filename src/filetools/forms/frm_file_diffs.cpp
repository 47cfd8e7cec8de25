#include "filetools/forms/frm_file_diffs.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <algorithm>
#include <utility>

#include "filetools/file_diffs.h"
#include "filetools/forms/diffs_bar_view.h"
#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_file_diffs_run.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

constexpr const char* kPrompt = "Select two files then press the Compare button";
constexpr const char* kHint =
    "Click on a line in either file to see how it differs from its counterpart in the other file.";

CancelCheck CheckOf(const Toolbox& tools) {
    return [&tools] {
        tools.loop.Yield();
        if (tools.loop.CancelRequested()) throw Cancelled();
    };
}

}  // namespace

void frmFileDiffs::ShowForm() {
    FormLoad();
    if (!closeAfterRun_) exec();
}

void frmFileDiffs::FormLoad() {
    parts_.tools.reporter.GuardRun("frmFileDiffs.Form_Load", [this] {
        {
            const QScopedValueRollback<bool> loading(loading_, true);
            txtFile[Side::Left]->SetPath(parts_.options.FileOne);
            txtFile[Side::Right]->SetPath(parts_.options.FileTwo);
        }
        commands_.RefreshChecks();
        ResetToPromptState();
        parts_.tools.loop.Yield();
        mnuFileCompare_Click();
    });
}

void frmFileDiffs::Tell(const char* title, const std::string& text, MessageIcon icon) {
    parts_.tools.messages.Ask({.title = title, .text = text, .icon = icon, .defaultAnswer = {}});
}

bool frmFileDiffs::CheckPaths() {
    constexpr PerSide<const char*> kMissing{
        {"File One is not an existing file.", "File Two is not an existing file."}};
    for (const Side side : kBothSides) {
        const std::string path = txtFile[side]->Path();
        if (!path.empty() && parts_.tools.files.FileExists(path)) continue;
        Tell("File Does Not Exist", kMissing[side], MessageIcon::Warning);
        ResetToPromptState();
        return false;
    }
    return true;
}

void frmFileDiffs::mnuFileCompare_Click() {
    if (busy_.IsBusy() || !CheckPaths()) return;
    const Run run(*this);
    try {
        Compare();
    } catch (const Cancelled&) {
        ResetToPromptState();
    }
}

void frmFileDiffs::Compare() {
    ClearGrids();
    parts_.tools.loop.Yield();
    parts_.options.FileOne = txtFile[Side::Left]->Path();
    parts_.options.FileTwo = txtFile[Side::Right]->Path();
    const bool shown = CompareFilesAndStoreResultsInGlobalDiffObject(parts_.tools, parts_.options,
                                                                     parts_.globalDiffObject) &&
                       DisplayComparisonResultsInGrid() && DrawDiffBars();
    if (!shown) return ResetToPromptState();
    ShowHint();
    ShowFirstDiff();
}

bool frmFileDiffs::DisplayComparisonResultsInGrid() {
    bool displayed = false;
    parts_.tools.reporter.Guard("frmFileDiffs.DisplayComparisonResultsInGrid", [&] {
        const CancelCheck check = CheckOf(parts_.tools);
        const PerSide<std::string> paths{{parts_.options.FileOne, parts_.options.FileTwo}};
        FileGrids grids;
        if (!LoadFilesIntoGrids(parts_.tools, parts_.globalDiffObject, grids)) return;
        if (!AlignGridsToDiffOutput(parts_.tools, parts_.globalDiffObject, paths, grids)) return;
        GridContents contents;
        contents.grids = std::move(grids);
        contents.widest = WidestLine(contents.grids, check);
        contents.moved = FindMovedBlocks(*contents.grids.Diff(), check);
        contents.markCharacters = parts_.settings.inlineDifferences;
        contents.ignoreCase = parts_.options.IgnoreCase();
        if (wraps_) columnsOfRows_ = ColumnsOfRows(contents.grids, check);
        contents_ = std::move(contents);
        FoldRows();
        found_ = false;
        EnableCommands();
        displayed = true;
    });
    return displayed;
}

// Bookmarks and all else that belongs to a result go with it.
void frmFileDiffs::ClearGrids() {
    pctDiffsBar->Clear();
    pctContainer->Clear();
    contents_ = {};
    columnsOfRows_.clear();
    columnsOfRows_.shrink_to_fit();
    found_ = false;
    ContentsChanged();
    for (const Side side : kBothSides) grdFile[side]->SetTopRow(1);
}

void frmFileDiffs::ContentsChanged() {
    for (const Side side : kBothSides) grdFile[side]->ContentsChanged();
    ShowStatus();
}

void frmFileDiffs::ResetToPromptState() {
    ClearGrids();
    parts_.globalDiffObject.Release();
    for (const Side side : kBothSides) grdFile[side]->SetPrompt(QLatin1String(kPrompt));
    EnableCommands();
    ShowHint();
}

void frmFileDiffs::ShowHint() {
    rtfLineDiff[0]->SetLine(kHint);
    rtfLineDiff[1]->SetLine({});
}

void frmFileDiffs::OnPathChanged(Side side) {
    if (loading_) return;
    parts_.options.Encodings[side].clear();
    if (HasResult() && !busy_.IsBusy()) ResetToPromptState();
}

void frmFileDiffs::FoldRows() {
    constexpr std::int32_t kContext = 3;  // rows that stay around a difference
    const AlignedRows& rows = contents_.grids.Rows();
    LayOutRows(folds_ ? FoldedRows(rows, kContext) : FoldedRows::Unfolded(rows));
}

// The top row stays the same. Wrapped lines follow the narrower grid, so that rows stay beside each other.
void frmFileDiffs::LayOutRows(FoldedRows folds) {
    const std::int32_t top = grdFile[Side::Left]->TopRow();
    if (wraps_) {
        const int width = std::min(grdFile[Side::Left]->ColumnsSeen(), grdFile[Side::Right]->ColumnsSeen());
        contents_.layout = RowLayout(std::move(folds), columnsOfRows_, width);
    } else {
        contents_.layout = RowLayout(std::move(folds));
    }
    ContentsChanged();
    grdFile[Side::Left]->SetTopRow(top);
}

bool frmFileDiffs::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && busy_.IsBusy() && watched->isWidgetType() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        parts_.requestCancel();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmFileDiffs::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (std::exchange(isPlaced_, true) || !HasResult()) return;
    // Only now it is known how many rows there is room for.
    grdFile[Side::Left]->SetTopRow(1);
    GoToRow(CurrentRow());
}

void frmFileDiffs::done(int result) {
    // The work holds on to what the window owns: it is asked to end, and the window closes behind it.
    if (busy_.IsBusy()) {
        closeAfterRun_ = true;
        parts_.requestCancel();
        return;
    }
    ClearGrids();
    findHistory_.clear();
    parts_.globalDiffObject.Release();
    QDialog::done(result);
}

}  // namespace vantrel
