#include "views/forms/pane_delegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "views/forms/pane_view.h"

namespace vantrel {
namespace {

// Of 255: seen, and quieter than any row.
constexpr int kPlaceholderTint = 14;
constexpr int kPlaceholderLine = 34;
constexpr int kMarkTint = 50, kFoundTint = 110;

QColor Tint(const QPalette& palette, QPalette::ColorRole role, int alpha) {
    QColor tint = palette.color(role);
    tint.setAlpha(alpha);
    return tint;
}

// The line keeps empty rows that follow each other apart.
void DrawPlaceholder(QPainter& painter, const QStyleOptionViewItem& cell) {
    painter.fillRect(cell.rect, Tint(cell.palette, QPalette::Text, kPlaceholderTint));
    const QRect line(cell.rect.left(), cell.rect.bottom(), cell.rect.width(), 1);
    painter.fillRect(line, Tint(cell.palette, QPalette::Text, kPlaceholderLine));
}

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// Paler than the text, and as legible as a text has to be on every palette.
QColor QuietText(const QPalette& palette) {
    constexpr double kLeastContrast = 5;
    const QColor text = palette.color(QPalette::Text), base = palette.color(QPalette::Base);
    for (const double share : {0.65, 0.75, 0.85}) {
        const auto mixed = [share](double ink, double paper) { return ink * share + paper * (1 - share); };
        const QColor quiet = QColor::fromRgbF(static_cast<float>(mixed(text.redF(), base.redF())),
                                              static_cast<float>(mixed(text.greenF(), base.greenF())),
                                              static_cast<float>(mixed(text.blueF(), base.blueF())));
        if (Contrast(quiet, base) >= kLeastContrast) return quiet;
    }
    return text;
}

// The number, or as many signs as there is room for.
QString WholeNumberOrSigns(const QString& number, const QFontMetrics& font, int room) {
    if (font.horizontalAdvance(number) <= room) return number;
    const QChar sign = QLatin1Char('#');
    return QString(std::max(room / std::max(font.horizontalAdvance(sign), 1), 1), sign);
}

// The part of the row's frame that lies in this cell.
void DrawFrame(QPainter& painter, const QStyleOptionViewItem& option, int column) {
    const bool selected = option.state & QStyle::State_Selected;
    QColor colour = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight);
    colour.setAlpha(selected ? 160 : 255);
    painter.save();
    painter.setPen(QPen(colour, 1));
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QRect frame = option.rect;
    painter.drawLine(frame.left(), frame.top(), frame.right(), frame.top());
    painter.drawLine(frame.left(), frame.bottom(), frame.right(), frame.bottom());
    if (column == 0) painter.drawLine(frame.left(), frame.top(), frame.left(), frame.bottom());
    if (column == PaneModel::ColumnCount - 1)
        painter.drawLine(frame.right(), frame.top(), frame.right(), frame.bottom());
    painter.restore();
}

}  // namespace

PaneDelegate::PaneDelegate(PaneView& view) : QStyledItemDelegate(&view), view_(view) {
}

void PaneDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const ResultRow& row = view_.List()[static_cast<std::size_t>(index.row())];
    option->state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver | QStyle::State_Selected);
    if (row.selected) option->state |= QStyle::State_Selected;
    option->textElideMode = index.column() == PaneModel::Name ? Qt::ElideMiddle : Qt::ElideRight;
    // What is left alone is told by its tip too, and looks so.
    if (row.kind == RowKind::Sentinel || row.elsewhere != Elsewhere::No)
        option->palette.setColor(QPalette::Text, QuietText(option->palette));
    if (row.kind == RowKind::Sentinel)
        option->features &= ~QStyleOptionViewItem::ViewItemFeatures(QStyleOptionViewItem::HasDecoration);
}

void PaneDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto number = static_cast<std::size_t>(index.row());
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    if (view_.List()[number].kind == RowKind::Placeholder) {
        DrawPlaceholder(*painter, option);
        DrawMark(*painter, cell, number);
    } else {
        view_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, &view_);
        DrawMark(*painter, cell, number);
        if (index.column() == PaneModel::Size) {
            cell.rect.adjust(0, 0, -kRoomBehindSize, 0);
            const int margins =
                2 * (view_.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, &view_) + 1);
            cell.text = WholeNumberOrSigns(cell.text, cell.fontMetrics, cell.rect.width() - margins);
        }
        view_.style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, &view_);
        cell.rect = option.rect;
    }
    // Without a selected item the keys begin at the first row.
    if (view_.hasFocus() && view_.List().SelectedItem().value_or(0) == number)
        DrawFrame(*painter, cell, index.column());
}

// On a selected row, which is painted in the same colour, the lines tell.
void PaneDelegate::DrawMark(QPainter& painter, const QStyleOptionViewItem& cell, std::size_t row) const {
    const PaneMarks& marks = view_.Marks();
    const bool found = marks.found == row;
    if (!found && !(marks.fits && marks.fits(row))) return;
    const bool selected = cell.state & QStyle::State_Selected;
    const QPalette::ColorRole role = selected ? QPalette::HighlightedText : QPalette::Highlight;
    if (!selected) painter.fillRect(cell.rect, Tint(cell.palette, role, found ? kFoundTint : kMarkTint));
    if (!found) return;
    const QColor colour = cell.palette.color(role);
    for (const int top : {cell.rect.top(), cell.rect.bottom() - 1})
        painter.fillRect(QRect(cell.rect.left(), top, cell.rect.width(), 2), colour);
}

bool PaneDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) return false;
    QString tip = index.data(Qt::ToolTipRole).toString();
    if (tip.isEmpty() && sizeHint(option, index).width() > option.rect.width())
        tip = index.data(Qt::DisplayRole).toString();
    if (!tip.isEmpty())
        QToolTip::showText(event->globalPos(), tip, view, option.rect);
    else
        QToolTip::hideText();
    return true;
}

}  // namespace vantrel
