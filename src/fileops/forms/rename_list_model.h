#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>
#include <vector>

#include "fileops/multiple_rename.h"

namespace vantrel {

enum RenameColumn { OriginalName, RevisedNameColumn, ConflictsColumn, RenameColumnCount };

// The list of a multiple rename: the names as they are and as they would be. Holds nothing for a row beside
// them.
class RenameListModel : public QAbstractTableModel {
  public:
    // `objects` must outlive the model.
    RenameListModel(const std::vector<ObjectToRename>& objects, QObject* parent);

    // One for each object.
    void Show(std::vector<RevisedName> revised);
    const std::vector<RevisedName>& Revised() const { return revised_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString ShownName(std::size_t row, const std::string& name) const;

    const std::vector<ObjectToRename>& objects_;
    std::vector<RevisedName> revised_;
};

// Marks what of a revised name is not in the original one.
class RevisedNameDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}  // namespace vantrel
