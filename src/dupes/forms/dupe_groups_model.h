#pragma once

#include <QAbstractTableModel>
#include <optional>

#include "dupes/dupe_results.h"

namespace vantrel {

// The groups that the results show, a line for each, in one column. It holds nothing of them: a text is made
// when it is asked for. While results change before Reset is called, what is gone is shown as an empty line.
class DupeGroupsModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    // `results` must outlive the model.
    explicit DupeGroupsModel(const DupeResults& results, QObject* parent = nullptr);

    // The groups are others now, or in another order.
    void Reset();
    // The number of the group in a row, and the row of a group.
    std::optional<std::uint32_t> GroupAt(int row) const;
    std::optional<int> RowOf(std::uint32_t group) const;
    // The longest line of all, as far as that can be told without measuring each.
    QString LongestLine() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    const DupeResults& results_;
    int count_ = 0;
};

}  // namespace vantrel
