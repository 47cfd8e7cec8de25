#include "dupes/forms/dupe_groups_model.h"

#include <algorithm>

#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"

namespace vantrel {

DupeGroupsModel::DupeGroupsModel(const DupeResults& results, QObject* parent)
    : QAbstractTableModel(parent), results_(results) {
}

void DupeGroupsModel::Reset() {
    beginResetModel();
    count_ = static_cast<int>(results_.Shown().size());
    endResetModel();
}

std::optional<std::uint32_t> DupeGroupsModel::GroupAt(int row) const {
    const auto at = static_cast<std::size_t>(row);
    if (row < 0 || at >= results_.Shown().size()) return std::nullopt;
    return results_.Shown()[at];
}

std::optional<int> DupeGroupsModel::RowOf(std::uint32_t group) const {
    const std::vector<std::uint32_t>& shown = results_.Shown();
    const auto found = std::find(shown.begin(), shown.end(), group);
    if (found == shown.end()) return std::nullopt;
    return static_cast<int>(found - shown.begin());
}

QString DupeGroupsModel::LongestLine() const {
    std::size_t most = 0;
    std::optional<std::uint32_t> longest;
    for (const std::uint32_t group : results_.Shown()) {
        const std::size_t length = results_.Group(group).label.size();
        if (longest && length <= most) continue;
        most = length;
        longest = group;
    }
    return longest ? DisplayQString(results_.Group(*longest).Line()) : QString();
}

int DupeGroupsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

int DupeGroupsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 1;
}

QVariant DupeGroupsModel::data(const QModelIndex& index, int role) const {
    const auto group = GroupAt(index.row());
    if (!group) return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return DisplayQString(results_.Group(*group).Line());
        case Qt::ToolTipRole:
            return DisplayQString(results_.Group(*group).Line() + "\n" +
                                  ConvertBytesToCorrectByteTypeString(results_.Group(*group).bytes));
        default:
            return {};
    }
}

}  // namespace vantrel
