// The part of PaneView that knows how wide its columns have to be.
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "views/forms/pane_delegate.h"
#include "views/forms/pane_view.h"

namespace vantrel {
namespace {

constexpr int kFewestLetters = 12;  // of the names, however little is left for them

// In whole pixels that hold the text: rounded down, it would be cut.
int WidthOf(const QFontMetricsF& font, const QString& text) {
    return static_cast<int>(std::ceil(font.horizontalAdvance(text)));
}

// With the widest of the digits in place of each.
int WidthWithAnyDigits(const QFontMetricsF& font, QString text) {
    QChar widest = QLatin1Char('0');
    for (char digit = '1'; digit <= '9'; ++digit)
        if (font.horizontalAdvance(QLatin1Char(digit)) > font.horizontalAdvance(widest))
            widest = QLatin1Char(digit);
    for (QChar& letter : text)
        if (letter.isDigit()) letter = widest;
    return WidthOf(font, text);
}

}  // namespace

// Measured are rows that are nearly as long as the longest one in bytes: the widest name is among them, or as
// good as.
int PaneView::WidthOfLongestNames() const {
    constexpr int kMostMeasured = 200;
    const QFontMetricsF font(this->font());
    std::size_t longest = 0;
    for (const ResultRow& row : List().Rows()) longest = std::max(longest, row.text.size());
    int width = 0, measured = 0;
    for (std::size_t i = 0; i < List().Count() && measured < kMostMeasured; ++i) {
        if (List()[i].text.size() * 5 < longest * 4) continue;
        const QString name = model_.index(static_cast<int>(i), PaneModel::Name).data().toString();
        width = std::max(width, WidthOf(font, name));
        ++measured;
    }
    return width + iconSize().width() + kRoomBesideIcon;
}

int PaneView::WidthForContents(PaneModel::Column column) const {
    const QFontMetricsF font(this->font());
    int width = 0;
    switch (column) {
        case PaneModel::Name:
            width = WidthOfLongestNames();
            break;
        case PaneModel::Size:
            width = WidthWithAnyDigits(font, model_.LargestSizeText()) + kRoomBehindSize;
            break;
        case PaneModel::ModifiedDate:
            for (const QString& date : model_.SampleDates())
                width = std::max(width, WidthWithAnyDigits(font, date));
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
