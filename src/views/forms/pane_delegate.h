#pragma once

#include <QStyledItemDelegate>

namespace vantrel {

class PaneView;

inline constexpr int kRoomBehindSize = 6;  // keeps the sizes off the dates beside them
inline constexpr int kRoomBesideIcon = 10;

// Paints the cells of a pane: the selection from the rows, a frame round the selected item, the marks of a
// search, and a quiet tint with a line on the rows that stand for no object. A number that has no room is not
// cut, which would make another one of it: signs stand in its place.
class PaneDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit PaneDelegate(PaneView& view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // A tip with what the row has to say, otherwise with the whole text where the cell is too narrow for it.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    void DrawMark(QPainter& painter, const QStyleOptionViewItem& cell, std::size_t row) const;

    PaneView& view_;
};

}  // namespace vantrel
