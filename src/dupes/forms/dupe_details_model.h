#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "dupes/dupe_details.h"

namespace vantrel {

// The files of one group, a row for each, with a check box in front of the name. What a row shows is asked of
// the disk when the row is painted first.
class DupeDetailsModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    // Both must outlive the model.
    DupeDetailsModel(const Toolbox& tools, DupeResults& results, QObject* parent = nullptr);

    // Shows the files that the group has now; nothing: none. Checksums are forgotten.
    void Show(std::optional<std::uint32_t> group);
    // The same group has other files or marks now; checksums stay.
    void Refresh();
    std::optional<std::uint32_t> Group() const { return group_; }
    // The number of the file in a row.
    std::optional<std::uint32_t> FileAt(int row) const;
    void SetCrc32(std::uint32_t file, std::string text);
    // The file has another name now.
    void FileChanged(std::uint32_t file);
    bool IsMarked(int row) const;
    void Mark(const std::vector<int>& rows, bool marked);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  Q_SIGNALS:
    void MarksChanged();

  private:
    const DupeRow& RowOf(std::uint32_t file) const;
    QString Text(std::uint32_t file, DupeColumn column) const;

    const Toolbox& tools_;
    DupeResults& results_;
    std::optional<std::uint32_t> group_;
    std::vector<std::uint32_t> files_;
    std::unordered_map<std::uint32_t, std::string> checksums_;
    mutable std::unordered_map<std::uint32_t, DupeRow> rows_;  // those that were painted lately
};

}  // namespace vantrel
