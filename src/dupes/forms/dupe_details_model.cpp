#include "dupes/forms/dupe_details_model.h"

#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

constexpr std::size_t kMostRowsHeld = 2'000;

DupeColumn ColumnOf(const QModelIndex& index) {
    return static_cast<DupeColumn>(index.column());
}

}  // namespace

DupeDetailsModel::DupeDetailsModel(const Toolbox& tools, DupeResults& results, QObject* parent)
    : QAbstractTableModel(parent), tools_(tools), results_(results) {
}

void DupeDetailsModel::Show(std::optional<std::uint32_t> group) {
    group_ = group;
    checksums_.clear();
    Refresh();
}

void DupeDetailsModel::Refresh() {
    beginResetModel();
    rows_.clear();
    files_.clear();
    if (group_ && *group_ < results_.AllGroups()) files_ = results_.Group(*group_).members;
    if (files_.empty()) group_.reset();
    endResetModel();
    Q_EMIT MarksChanged();
}

std::optional<std::uint32_t> DupeDetailsModel::FileAt(int row) const {
    const auto at = static_cast<std::size_t>(row);
    if (row < 0 || at >= files_.size()) return std::nullopt;
    return files_[at];
}

void DupeDetailsModel::SetCrc32(std::uint32_t file, std::string text) {
    checksums_[file] = std::move(text);
    const int column = static_cast<int>(DupeColumn::Crc32);
    Q_EMIT dataChanged(index(0, column), index(rowCount() - 1, column));
}

void DupeDetailsModel::FileChanged(std::uint32_t file) {
    rows_.erase(file);
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

bool DupeDetailsModel::IsMarked(int row) const {
    const auto file = FileAt(row);
    return file && results_.IsMarked(*file);
}

void DupeDetailsModel::Mark(const std::vector<int>& rows, bool marked) {
    for (const int row : rows)
        if (const auto file = FileAt(row)) results_.Mark(*file, marked);
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0));
    Q_EMIT MarksChanged();
}

int DupeDetailsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(files_.size());
}

int DupeDetailsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kDupeColumnCount);
}

const DupeRow& DupeDetailsModel::RowOf(std::uint32_t file) const {
    if (const auto found = rows_.find(file); found != rows_.end()) return found->second;
    if (rows_.size() >= kMostRowsHeld) rows_.clear();
    return rows_.emplace(file, DetailsOf(tools_, results_.Files(), results_.Files()[file])).first->second;
}

QString DupeDetailsModel::Text(std::uint32_t file, DupeColumn column) const {
    if (column == DupeColumn::Crc32)
        if (const auto found = checksums_.find(file); found != checksums_.end())
            return ToQString(found->second);
    return DisplayQString(RowOf(file)[static_cast<std::size_t>(column)]);
}

QVariant DupeDetailsModel::data(const QModelIndex& index, int role) const {
    const auto file = FileAt(index.row());
    if (!file) return {};
    switch (role) {
        case Qt::DisplayRole:
            return Text(*file, ColumnOf(index));
        case Qt::CheckStateRole:
            if (index.column() != 0) return {};
            return results_.IsMarked(*file) ? Qt::Checked : Qt::Unchecked;
        case Qt::TextAlignmentRole:
            return static_cast<int>(Qt::AlignVCenter |
                                    (ColumnOf(index) == DupeColumn::Size ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::ToolTipRole: {
            QString text = DisplayQString(results_.Files().PathOf(*file));
            for (const std::string& other : results_.Files().OtherNamesOf(results_.Files()[*file]))
                text += QStringLiteral("\nThe same file: ") + DisplayQString(other);
            return WithLineBreaks(text);
        }
        case Qt::AccessibleTextRole:
            return Text(*file, ColumnOf(index));
        default:
            return {};
    }
}

bool DupeDetailsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != 0) return false;
    Mark({index.row()}, value.toInt() == Qt::Checked);
    return true;
}

QVariant DupeDetailsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return ToQString(DupeColumnCaption(static_cast<DupeColumn>(section)));
}

Qt::ItemFlags DupeDetailsModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == 0) flags |= Qt::ItemIsUserCheckable;
    return flags;
}

}  // namespace vantrel
