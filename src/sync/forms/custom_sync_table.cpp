#include "sync/forms/custom_sync_table.h"

#include <QGridLayout>
#include <QLabel>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// What the action does with such objects of `side`.
QString TipOf(SyncAction action, const QString& objects, Side side) {
    const bool isLeft = side == Side::Left;
    const QString own = isLeft ? QStringLiteral("left") : QStringLiteral("right");
    const QString other = isLeft ? QStringLiteral("right") : QStringLiteral("left");
    const QString which = QStringLiteral("%1 of the %2 folder").arg(objects, own);
    switch (action) {
        case SyncAction::Copy:
            return QStringLiteral("%1 are copied to the %2 folder, over what has their names there.")
                .arg(which, other);
        case SyncAction::Replace:
            return QStringLiteral("%1 are replaced by their counterparts from the %2 folder.")
                .arg(which, other);
        case SyncAction::Delete:
            return QStringLiteral(
                       "%1 are deleted: to the Recycle Bin, and for good inside of sub-folders that "
                       "both folders have.")
                .arg(which);
        case SyncAction::Leave:
            break;
    }
    return QStringLiteral("%1 stay as they are.").arg(which);
}

}  // namespace

struct CustomSyncTable::Row {
    SyncCell cell;
    ResultType type;
    const char* name;  // of the combos, without the number of the side
    const char* image;
    const char* label;  // for screen readers and as the row's tip
};

const std::array<CustomSyncTable::Row, kSyncCellCount> CustomSyncTable::kRows{{
    {SyncCell::New, ResultType::Newer, "cboNew", "imgSyncIconNew", "Newer files"},
    {SyncCell::Old, ResultType::Older, "cboOld", "imgSyncIconOld", "Older files"},
    {SyncCell::Orphan, ResultType::Orphan, "cboOrphan", "imgSyncIconOrphan", "Orphan files and sub-folders"},
    {SyncCell::Binary, ResultType::Binary, "cboBinary", "imgSyncIconBinary",
     "Files with the same date and different contents"},
}};

CustomSyncTable::CustomSyncTable(CSyncSettings& settings, QWidget* parent)
    : QWidget(parent), settings_(settings) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    auto* left = new QLabel(QStringLiteral("  Left Folder"));
    left->setObjectName(QStringLiteral("lblLeftFolder"));
    auto* right = new QLabel(QStringLiteral("  Right Folder"));
    right->setObjectName(QStringLiteral("lblRightFolder"));
    grid->addWidget(left, 0, 1);
    grid->addWidget(right, 0, 2);
    int number = 1;
    for (const Row& row : kRows) AddRow(row, number++);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    LoadCustomSyncCombos();
}

void CustomSyncTable::AddRow(const Row& row, int number) {
    auto* grid = static_cast<QGridLayout*>(layout());
    auto* image = new QLabel;
    image->setObjectName(QString::fromLatin1(row.image));
    image->setPixmap(ResultTypeIcon(static_cast<int>(row.type)).pixmap(QSize(16, 16), devicePixelRatioF()));
    image->setToolTip(QString::fromLatin1(row.label));
    grid->addWidget(image, number, 0);
    for (const Side side : kBothSides) {
        auto* combo = new QComboBox;
        combo->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(row.name)).arg(Index(side)));
        combo->setAccessibleName(QStringLiteral("%1, %2").arg(
            QLatin1String(row.label),
            side == Side::Left ? QStringLiteral("Left Folder") : QStringLiteral("Right Folder")));
        for (const std::string_view choice : CustomSyncChoices(row.cell)) {
            combo->addItem(ToQString(choice));
            combo->setItemData(combo->count() - 1,
                               TipOf(ActionOfCustomSyncChoice(choice), QString::fromLatin1(row.label), side),
                               Qt::ToolTipRole);
        }
        // The closed combo tells of what stands in it.
        const auto showTip = [combo] { combo->setToolTip(combo->currentData(Qt::ToolTipRole).toString()); };
        connect(combo, &QComboBox::currentIndexChanged, combo, showTip);
        showTip();
        connect(combo, &QComboBox::activated, this,
                [this, cell = row.cell, side] { ComboClicked(cell, side); });
        grid->addWidget(combo, number, 1 + static_cast<int>(Index(side)));
        combos_[static_cast<std::size_t>(row.cell)][side] = combo;
    }
}

void CustomSyncTable::LoadCustomSyncCombos() {
    for (const Row& row : kRows) {
        for (const Side side : kBothSides) {
            // A cell that the combo does not offer, as Replace for orphans in a file edited by hand, shows as
            // Leave.
            const auto choice = CustomSyncChoice(row.cell, settings_.Action(side, row.cell));
            Combo(row.cell, side)->setCurrentText(ToQString(choice.value_or("Leave")));
        }
    }
}

void CustomSyncTable::ComboClicked(SyncCell cell, Side side) {
    if (const auto partnerCell = CustomSyncPartner(cell)) {
        QComboBox* partner = Combo(*partnerCell, Other(side));
        const auto choice = CustomSyncPartnerChoice(cell, FromQString(Combo(cell, side)->currentText()),
                                                    FromQString(partner->currentText()));
        if (choice) partner->setCurrentText(ToQString(*choice));
    }
    Q_EMIT Clicked();
}

void CustomSyncTable::Store() {
    for (const Side side : kBothSides)
        for (const Row& row : kRows)
            settings_.SetAction(side, row.cell,
                                ActionOfCustomSyncChoice(FromQString(Combo(row.cell, side)->currentText())));
}

}  // namespace vantrel
