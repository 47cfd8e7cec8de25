#include "dupes/forms/frm_restore_dupes.h"

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <array>

#include "platform/forms/named_control.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {

namespace {

enum StoredColumn { Original, Size, Removed, StoredColumnCount };

class StoredModel : public QAbstractTableModel {
  public:
    StoredModel(const std::vector<StoredDupe>& stored, const LocaleFormats& locale, QObject* parent)
        : QAbstractTableModel(parent), stored_(stored), locale_(locale) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(stored_.size());
    }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : StoredColumnCount;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const StoredDupe& file = stored_[static_cast<std::size_t>(index.row())];
        if (role == Qt::TextAlignmentRole && index.column() == Size)
            return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
        if (role == Qt::ToolTipRole)
            return WithLineBreaks(DisplayQString(file.original + "\n" + file.stored));
        if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
        switch (index.column()) {
            case Original:
                return DisplayQString(file.original);
            case Size:
                return ToQString(locale_.Number(Currency::FromWhole(static_cast<std::int64_t>(file.size))));
            default:
                return ToQString(file.when);
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        static constexpr std::array kCaptions{"Former Path", "Size", "Removed (UTC)"};
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return QLatin1String(kCaptions[static_cast<std::size_t>(section)]);
    }

  private:
    const std::vector<StoredDupe>& stored_;
    const LocaleFormats& locale_;
};

}  // namespace

frmRestoreDupes::frmRestoreDupes(const Toolbox& tools, std::vector<StoredDupe> stored, QWidget* parent)
    : QDialog(parent),
      lvwStored(new QTableView(this)),
      cmdRestore(Named(new QPushButton(QStringLiteral("&Restore Selected Files"), this), "cmdRestore")),
      cmdSelectAll(Named(new QPushButton(QStringLiteral("Select &All"), this), "cmdSelectAll")),
      cmdCancel(Named(new QPushButton(QStringLiteral("C&lose"), this), "cmdCancel")),
      stored_(std::move(stored)) {
    setObjectName(QStringLiteral("frmRestoreDupes"));
    setWindowTitle(QStringLiteral("Restore from DUPES"));
    lvwStored->setObjectName(QStringLiteral("lvwStored"));
    lvwStored->setAccessibleName(QStringLiteral("Files in the DUPES folder"));
    lvwStored->setModel(new StoredModel(stored_, tools.locale, lvwStored));
    LayOut();
    cmdRestore->setDefault(true);
    cmdRestore->setEnabled(false);
    connect(lvwStored->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { cmdRestore->setEnabled(lvwStored->selectionModel()->hasSelection()); });
    connect(cmdRestore, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdSelectAll, &QPushButton::clicked, lvwStored, &QTableView::selectAll);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmRestoreDupes::LayOut() {
    lvwStored->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvwStored->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvwStored->setTabKeyNavigation(false);
    lvwStored->setShowGrid(false);
    lvwStored->setWordWrap(false);
    lvwStored->setTextElideMode(Qt::ElideMiddle);
    lvwStored->verticalHeader()->hide();
    lvwStored->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 4);
    QHeaderView* header = lvwStored->horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionResizeMode(Original, QHeaderView::Stretch);
    header->resizeSection(Size, fontMetrics().averageCharWidth() * 16);
    header->resizeSection(Removed, fontMetrics().averageCharWidth() * 30);
    auto* label = new QLabel(QStringLiteral("Files that were moved to the DUPES folder.  Those that are "
                                            "restored go back to where they were; nothing is replaced."),
                             this);
    label->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSelectAll);
    buttons->addStretch(1);
    buttons->addWidget(cmdRestore);
    buttons->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(lvwStored, 1);
    column->addLayout(buttons);
    ResizeWithinScreen(*this, {760, 440});
    lvwStored->setFocus();
}

std::vector<StoredDupe> frmRestoreDupes::ShowForm() {
    std::vector<StoredDupe> chosen;
    if (exec() != QDialog::Accepted) return chosen;
    for (std::size_t i = 0; i < stored_.size(); ++i)
        if (lvwStored->selectionModel()->isRowSelected(static_cast<int>(i), {})) chosen.push_back(stored_[i]);
    return chosen;
}

}  // namespace vantrel
