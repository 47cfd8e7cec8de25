#pragma once

#include <QStyledItemDelegate>

namespace vantrel {

class PaneView;

// Paints the cells of a pane: the selection from the rows, a frame round the selected item, and a quiet tint
// on the rows that stand for no object.
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
    PaneView& view_;
};

}  // namespace vantrel
