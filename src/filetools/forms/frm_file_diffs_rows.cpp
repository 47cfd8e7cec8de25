// The way to a row, and what is shown of it.
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <algorithm>

#include "filetools/forms/diffs_bar_view.h"
#include "filetools/forms/frm_file_diffs.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

// With tabs as blanks. In very long lines they stay what they are and are shown so.
std::string TextForBox(const FileGrids& grids, Side side, std::int32_t row) {
    const std::string_view line = grids.Line(side, row);
    return line.size() > kMostComparedBytes ? std::string(line) : grids.LineText(side, row);
}

}  // namespace

void frmFileDiffs::ShowSelectedRows(std::int32_t row) {
    if (!HasResult()) return;
    GoToRow(row);
    MarkCurrentRowInDiffsBar();
    DisplayLinesOf(row);
}

// The row seen and current in both grids, with its marker.
void frmFileDiffs::GoToRow(std::int32_t row) {
    FoldedRows folds = contents_.layout.Folds();
    if (folds.Open(row)) LayOutRows(std::move(folds));
    if (!grdFile[Side::Left]->IsRowVisible(row)) grdFile[Side::Left]->SetTopRow(row);
    contents_.currentRow = row;
    MarkCurrentRowInGrid();
    ShowStatus();
}

void frmFileDiffs::MarkCurrentRowInGrid() {
    constexpr std::size_t kMostSpoken = 500;
    for (const Side side : kBothSides) {
        grdFile[side]->setAccessibleDescription(
            DisplayQString(contents_.grids.CellText(side, CurrentRow(), kMostSpoken)));
        grdFile[side]->viewport()->update();
    }
}

bool frmFileDiffs::DrawDiffBars() {
    pctDiffsBar->Draw(contents_.grids.Rows());
    return true;
}

void frmFileDiffs::MarkCurrentRowInDiffsBar() {
    if (!HasResult()) return pctContainer->Clear();
    pctContainer->SetLine(
        BarLineOfRow(CurrentRow(), contents_.grids.Rows().Rows() - 1, pctDiffsBar->height()));
}

void frmFileDiffs::OnBarClicked(int y) {
    if (busy_.IsBusy()) return;
    if (!HasResult())
        return Tell("Navigate Differences",
                    "This feature only works when two files have been compared and there are differences.");
    pctContainer->SetLine(y);
    ScrollFilesToPointInDiffBar(y);
}

void frmFileDiffs::ScrollFilesToPointInDiffBar(int y) {
    const AlignedRows& rows = contents_.grids.Rows();
    const std::int32_t row =
        std::clamp(RowAtBarPoint(y, rows.Rows() - 1, pctDiffsBar->height()), 1, rows.LastRow());
    GoToRow(row);
    DisplayLinesOf(row);
}

void frmFileDiffs::OnRowPressed(std::int32_t row) {
    if (!busy_.IsBusy()) ShowSelectedRows(row);
}

void frmFileDiffs::DisplayLinesOf(std::int32_t row) {
    const bool isSame = contents_.grids.Rows().KindAt(row) == GridRowKind::Same;
    const bool isPaired = std::all_of(kBothSides.begin(), kBothSides.end(),
                                      [&](Side side) { return !contents_.grids.Line(side, row).empty(); });
    if (isSame || !isPaired)
        DisplaySelectedLinesInRTF(row);
    else
        DisplaySelectedLinesDiffsInRTF(row);
}

void frmFileDiffs::DisplaySelectedLinesInRTF(std::int32_t row) {
    parts_.tools.reporter.Guard("frmFileDiffs.DisplaySelectedLinesInRTF", [&] {
        for (const Side side : kBothSides) {
            std::string text = TextForBox(contents_.grids, side, row);
            std::vector<TextRange> marks;
            if (!text.empty() && contents_.grids.Line(Other(side), row).empty())
                marks.push_back({0, text.size()});
            rtfLineDiff[Index(side)]->SetLine(std::move(text), std::move(marks));
        }
    });
}

void frmFileDiffs::DisplaySelectedLinesDiffsInRTF(std::int32_t row) {
    parts_.tools.reporter.Guard("frmFileDiffs.DisplaySelectedLinesDiffsInRTF", [&] {
        const BusyState::Wait wait(busy_);
        PerSide<std::string> lines;
        for (const Side side : kBothSides) lines[side] = TextForBox(contents_.grids, side, row);
        LineDifferences differences = DifferencesOfLines(
            parts_.tools.reporter, {{lines[Side::Left], lines[Side::Right]}}, parts_.options.IgnoreCase());
        for (const Side side : kBothSides)
            rtfLineDiff[Index(side)]->SetLine(lines[side], std::move(differences[side]),
                                              !parts_.options.IgnoreWhitespace());
    });
}

void frmFileDiffs::ShowTooltip(Side side, std::int32_t row) {
    if (!chkTooltip->isChecked()) return;
    constexpr int kMostCharacters = 255;
    constexpr std::size_t kMostBytes = std::size_t{4} * kMostCharacters;
    QString tip;
    if (row > 0 && HasResult()) tip = DisplayQString(contents_.grids.CellText(side, row, kMostBytes));
    tip = tip.left(kMostCharacters);
    // A line of a file is never a page to be laid out.
    if (Qt::mightBeRichText(tip)) tip = QStringLiteral("<p>") + tip.toHtmlEscaped() + QStringLiteral("</p>");
    grdFile[side]->setToolTip(tip);
}

void frmFileDiffs::CopyLine(Side side) {
    if (!HasResult()) return;
    const std::string_view line = contents_.grids.Line(side, CurrentRow());
    QGuiApplication::clipboard()->setText(ToQString(line));
}

void frmFileDiffs::ShowStatus() {
    const AlignedRows& rows = contents_.grids.Rows();
    if (!HasResult()) {
        for (QLabel* label : {lblPosition, lblDifferences, lblForm[Side::Left], lblForm[Side::Right]})
            label->clear();
        return;
    }
    const auto number = [this](auto value) { return locale().toString(static_cast<qlonglong>(value)); };
    QString position = QStringLiteral("Row %1 of %2").arg(number(CurrentRow()), number(rows.LastRow()));
    if (const std::int32_t other = contents_.OtherPlaceOf(CurrentRow()); other > 0)
        position += QStringLiteral(", also in row %1").arg(number(other));
    lblPosition->setText(position);
    const std::size_t count = rows.Blocks().size();
    QString differences =
        count == 1 ? QStringLiteral("1 difference") : QStringLiteral("%1 differences").arg(number(count));
    if (const std::int32_t block = rows.BlockAt(CurrentRow()); block >= 0)
        differences = QStringLiteral("Difference %1 of %2").arg(number(block + 1), number(count));
    if (contents_.grids.Diff()->lineEndsIgnored) differences += QStringLiteral(" (line ends differ)");
    lblDifferences->setText(differences);
    constexpr PerSide<const char*> kFiles{{"File One: ", "File Two: "}};
    for (const Side side : kBothSides)
        lblForm[side]->setText(QLatin1String(kFiles[side]) +
                               ToQString(FormText(contents_.grids.Diff()->texts[side])));
}

}  // namespace vantrel
