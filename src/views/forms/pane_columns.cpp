// The part of PaneView that knows how wide its columns have to be.
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyle>
#include <algorithm>

#include "views/forms/pane_delegate.h"
#include "views/forms/pane_view.h"

namespace vantrel {
namespace {

constexpr int kFewestLetters = 12;  // of the names, however little is left for them

// With the widest of the digits in place of each.
int WidthWithAnyDigits(const QFontMetrics& font, QString text) {
    QChar widest = QLatin1Char('0');
    for (char digit = '1'; digit <= '9'; ++digit)
        if (font.horizontalAdvance(QLatin1Char(digit)) > font.horizontalAdvance(widest))
            widest = QLatin1Char(digit);
    for (QChar& letter : text)
        if (letter.isDigit()) letter = widest;
    return font.horizontalAdvance(text);
}

}  // namespace

// Measured are rows that are nearly as long as the longest one in bytes: the widest name is among them, or as
// good as.
int PaneView::WidthOfLongestNames() const {
    constexpr int kMostMeasured = 200;
    std::size_t longest = 0;
    for (const ResultRow& row : List().Rows()) longest = std::max(longest, row.text.size());
    int width = 0, measured = 0;
    for (std::size_t i = 0; i < List().Count() && measured < kMostMeasured; ++i) {
        if (List()[i].text.size() * 5 < longest * 4) continue;
        const QString name = model_.index(static_cast<int>(i), PaneModel::Name).data().toString();
        width = std::max(width, fontMetrics().horizontalAdvance(name));
        ++measured;
    }
    return width + iconSize().width() + kRoomBesideIcon;
}

int PaneView::WidthForContents(PaneModel::Column column) const {
    int width = 0;
    switch (column) {
        case PaneModel::Name:
            width = WidthOfLongestNames();
            break;
        case PaneModel::Size:
            width = WidthWithAnyDigits(fontMetrics(), model_.LargestSizeText()) + kRoomBehindSize;
            break;
        case PaneModel::ModifiedDate:
            for (const QString& date : model_.SampleDates())
                width = std::max(width, WidthWithAnyDigits(fontMetrics(), date));
            break;
        case PaneModel::ColumnCount:
            return 0;
    }
    const int margins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    return std::max(width + margins, horizontalHeader()->sectionSizeHint(column));
}

void PaneView::FitColumns(const Widths& widths) {
    if (!fitted_) return;
    const QScopedValueRollback<bool> fitting(fitting_, true);
    const int rest = viewport()->width() - widths[PaneModel::Size] - widths[PaneModel::ModifiedDate];
    const int least =
        fontMetrics().averageCharWidth() * kFewestLetters + iconSize().width() + kRoomBesideIcon;
    setColumnWidth(PaneModel::Name, std::max(rest, least));
    for (const auto column : {PaneModel::Size, PaneModel::ModifiedDate})
        setColumnWidth(column, widths[column]);
}

}  // namespace vantrel
