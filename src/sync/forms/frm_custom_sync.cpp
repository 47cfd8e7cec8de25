#include "sync/forms/frm_custom_sync.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

struct TableRow {
    SyncCell cell;
    ResultType type;
    const char* name;  // of the combos: cboNew(0) is the left one, cboNew(1) the right
    const char* image;
    const char* label;  // for screen readers and as the row's tip
};

constexpr TableRow kRows[] = {
    {SyncCell::New, ResultType::Newer, "cboNew", "imgSyncIconNew", "Newer files"},
    {SyncCell::Old, ResultType::Older, "cboOld", "imgSyncIconOld", "Older files"},
    {SyncCell::Orphan, ResultType::Orphan, "cboOrphan", "imgSyncIconOrphan", "Orphan files and sub-folders"},
    {SyncCell::Binary, ResultType::Binary, "cboBinary", "imgSyncIconBinary",
     "Files with the same date and different contents"},
};

}  // namespace

frmCustomSync::frmCustomSync(CSyncSettings& settings, QWidget* parent)
    : QDialog(parent), settings_(settings) {
    setObjectName(QStringLiteral("frmCustomSync"));
    setWindowTitle(QStringLiteral("Specify Custom Synchronization Options"));

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    auto* left = new QLabel(QStringLiteral("  Left Folder"));
    auto* right = new QLabel(QStringLiteral("  Right Folder"));
    grid->addWidget(left, 0, 1);
    grid->addWidget(right, 0, 2);
    int row = 1;
    for (const TableRow& line : kRows) AddRow(*grid, row++, line.cell, line.type);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("OKButton"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CancelButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        Store();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addWidget(buttons);
    LoadCustomSyncCombos();
}

void frmCustomSync::AddRow(QGridLayout& grid, int row, SyncCell cell, ResultType type) {
    const TableRow& line = kRows[row - 1];
    auto* image = new QLabel;
    image->setObjectName(QString::fromLatin1(line.image));
    image->setPixmap(ResultTypeIcon(static_cast<int>(type)).pixmap(QSize(16, 16), devicePixelRatioF()));
    image->setToolTip(QString::fromLatin1(line.label));
    grid.addWidget(image, row, 0);
    for (Side side : kBothSides) {
        auto* combo = new QComboBox;
        combo->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(line.name)).arg(Index(side)));
        combo->setAccessibleName(QStringLiteral("%1, %2").arg(
            QLatin1String(line.label),
            side == Side::Left ? QStringLiteral("Left Folder") : QStringLiteral("Right Folder")));
        for (std::string_view choice : CustomSyncChoices(cell)) combo->addItem(ToQString(choice));
        connect(combo, &QComboBox::activated, this, [this, cell, side] { ComboClicked(cell, side); });
        grid.addWidget(combo, row, 1 + static_cast<int>(Index(side)));
        combos_[static_cast<std::size_t>(cell)][side] = combo;
    }
}

void frmCustomSync::LoadCustomSyncCombos() {
    for (const TableRow& line : kRows) {
        for (Side side : kBothSides) {
            // A cell that the combo does not offer, as Replace for orphans in a file edited by hand, shows as
            // Leave.
            const auto choice = CustomSyncChoice(line.cell, settings_.Action(side, line.cell));
            Combo(line.cell, side)->setCurrentText(ToQString(choice.value_or("Leave")));
        }
    }
}

void frmCustomSync::ComboClicked(SyncCell cell, Side side) {
    const auto partnerCell = CustomSyncPartner(cell);
    if (!partnerCell) return;
    QComboBox* partner = Combo(*partnerCell, Other(side));
    const auto choice = CustomSyncPartnerChoice(cell, FromQString(Combo(cell, side)->currentText()),
                                                FromQString(partner->currentText()));
    if (choice) partner->setCurrentText(ToQString(*choice));
}

void frmCustomSync::Store() {
    for (Side side : kBothSides)
        for (const TableRow& line : kRows)
            settings_.SetAction(side, line.cell,
                                ActionOfCustomSyncChoice(FromQString(Combo(line.cell, side)->currentText())));
}

}  // namespace vantrel
