#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QStringList>

#include <array>

#include "platform/locale/locale_formats.h"
#include "views/forms/result_icons.h"
#include "views/pane_list.h"

namespace vantrel {

// Shows a PaneList as a table of three columns. It holds nothing of the rows: the texts are made when asked
// for. A list of the left and one of the right side differ in their headers.
class PaneModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    // Results are shown by the names of their pairs, what is in a sub-folder by the names on each side, which
    // can differ in letter case.
    enum class Content { Results, SubFolder };
    enum Column { Name = 0, Size = 1, ModifiedDate = 2, ColumnCount = 3 };

    // `list` and `locale` must outlive the model.
    PaneModel(const PaneList& list, Side side, Content content, const LocaleFormats& locale,
              const ResultIcons& icons, QObject* parent = nullptr);

    const PaneList& List() const { return list_; }
    const ResultRow& Row(int row) const { return list_[static_cast<std::size_t>(row)]; }
    // The rows are others now.
    void Reset();

    // The largest of all sizes, and dates of all lengths, as their columns show them.
    QString LargestSizeText() const;
    const QStringList& SampleDates() const { return sampleDates_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    QString NameText(const ResultRow& row) const;
    QString AccessibleText(const ResultRow& row) const;

    const PaneList& list_;
    Side side_;
    Content content_;
    const LocaleFormats& locale_;
    std::array<QIcon, kResultTypeCount + 1> icons_;
    QStringList sampleDates_;
};

}  // namespace vantrel
