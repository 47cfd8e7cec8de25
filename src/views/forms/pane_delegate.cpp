#include "views/forms/pane_delegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "views/forms/pane_view.h"

namespace vantrel {
namespace {

constexpr int kPlaceholderTint = 14;  // of 255: seen, and quieter than any row
constexpr int kRoomBehindSize = 6;    // keeps the sizes off the dates beside them

QColor Tint(const QPalette& palette) {
    QColor tint = palette.color(QPalette::Text);
    tint.setAlpha(kPlaceholderTint);
    return tint;
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
        option->palette.setBrush(QPalette::Text, option->palette.brush(QPalette::PlaceholderText));
    if (row.kind == RowKind::Sentinel) {
        option->features &= ~QStyleOptionViewItem::ViewItemFeatures(QStyleOptionViewItem::HasDecoration);
    }
}

void PaneDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const auto number = static_cast<std::size_t>(index.row());
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    if (view_.List()[number].kind == RowKind::Placeholder) {
        painter->fillRect(option.rect, Tint(option.palette));
    } else {
        view_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, &view_);
        if (index.column() == PaneModel::Size) cell.rect.adjust(0, 0, -kRoomBehindSize, 0);
        view_.style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, &view_);
        cell.rect = option.rect;
    }
    // Without a selected item the keys begin at the first row.
    if (view_.hasFocus() && view_.List().SelectedItem().value_or(0) == number)
        DrawFrame(*painter, cell, index.column());
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
