#include "sync/forms/frm_confirm_sync.h"

#include <QDialogButtonBox>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/forms/icons.h"
#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

QString ActionText(const PlannedAction& action) {
    if (action.action == SyncAction::Delete) return QStringLiteral("Delete");
    return action.side == Side::Left ? QStringLiteral("Copy -->") : QStringLiteral("<-- Copy");
}

// Of a file inside a sub-folder its path from the compared folder, with the separator of all paths; the row
// of an object as the panes show it.
QString NameOf(const PlannedAction& action) {
    if (action.folder.empty()) return DisplayQString(action.name);
    constexpr char kFolderMarker = '\\';
    std::string_view folder = action.folder;
    if (folder.starts_with(kFolderMarker)) folder.remove_prefix(1);
    return DisplayQString(std::string(folder) + "/" + action.name);
}

bool IsMarked(const PlannedAction& action) {
    return ReplacesNewer(action) || DeletesForGood(action);
}

QString LinkChangeText(LinkChange change) {
    switch (change) {
        case LinkChange::LinkForFile:
            return QStringLiteral("A link is put in this file's place.");
        case LinkChange::FileForLink:
            return QStringLiteral("A file is put in this link's place.");
        case LinkChange::None:
            break;
    }
    return {};
}

}  // namespace

PlanModel::PlanModel(const SyncPlan& plan, Side side, QObject* parent)
    : QAbstractTableModel(parent), side_(side) {
    const auto add = [&](const std::vector<PlannedAction>& actions) {
        for (const PlannedAction& action : actions) actions_.push_back(&action);
    };
    add(plan.copies[side]);
    add(plan.deletes[side]);
    for (const SyncPlan::SubFolder& folder : plan.subFolders) {
        const auto first = static_cast<std::ptrdiff_t>(actions_.size());
        add(folder.copies[side]);
        add(folder.deletes[side]);
        // Within a sub-folder the list follows the records.
        std::sort(actions_.begin() + first, actions_.end(),
                  [](const PlannedAction* a, const PlannedAction* b) { return a->number < b->number; });
    }
}

int PlanModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(actions_.size());
}

int PlanModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QVariant PlanModel::data(const QModelIndex& index, int role) const {
    const PlannedAction& action = *actions_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DecorationRole && index.column() == 0)
        return ResultTypeIcon(static_cast<int>(action.type));
    if (role == Qt::FontRole && index.column() == 1 && IsMarked(action)) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const QString text = index.column() == 1 ? ActionText(action) : NameOf(action);
    return role == Qt::ToolTipRole ? TipOf(action, text) : text;
}

QVariant PlanModel::TipOf(const PlannedAction& action, const QString& text) const {
    QStringList lines{text};
    if (action.linkChange != LinkChange::None) lines += LinkChangeText(action.linkChange);
    if (ReplacesNewer(action)) lines += QStringLiteral("This replaces a newer file.");
    if (DeletesForGood(action)) lines += QStringLiteral("This is deleted for good, not to the Recycle Bin.");
    return lines.join(QLatin1Char('\n'));
}

QVariant PlanModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? QStringLiteral("File") : QStringLiteral("Action");
}

frmConfirmSync::frmConfirmSync(const SyncPlan& plan, const LocaleFormats& locale, QWidget* parent)
    : QDialog(parent), locale_(locale) {
    setObjectName(QStringLiteral("frmConfirmSync"));
    setWindowTitle(QStringLiteral("Confirm Synchronization"));

    auto* message =
        new QLabel(QStringLiteral("The following file operations are about to be performed.  Please look "
                                  "over the changes carefully.  Some "
                                  "of the changes may not be reversible.  Press Continue to proceed with the "
                                  "synchronization or Cancel to "
                                  "abort."));
    message->setObjectName(QStringLiteral("lblConfirmMsg"));
    message->setWordWrap(true);
    auto* warning = new QLabel(QStringLiteral(
        "Warning!  If you cancel a synchronization after this point, you may lose some data.  Check the "
        "information above before continuing."));
    warning->setObjectName(QStringLiteral("lblWarning"));
    warning->setWordWrap(true);

    auto* lists = new QHBoxLayout;
    lists->setSpacing(12);
    for (Side side : kBothSides) lists->addWidget(MakeList(plan, side), 1);

    auto* buttons = new QDialogButtonBox;
    auto* ok = buttons->addButton(QStringLiteral("Continue"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("OKButton"));
    auto* cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addWidget(message);
    layout->addLayout(lists, 1);
    if (const std::string notes = DescribeNotes(plan); !notes.empty()) {
        auto* label = new QLabel(MessageQString(notes));
        label->setObjectName(QStringLiteral("lblNotes"));
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    layout->addWidget(warning);
    layout->addWidget(buttons);
    // Enter alone starts nothing that cannot be taken back.
    ok->setAutoDefault(false);
    cancel->setDefault(true);
    cancel->setFocus();
    ResizeWithinScreen(*this, {820, 520});
}

QWidget* frmConfirmSync::MakeList(const SyncPlan& plan, Side side) {
    const bool left = side == Side::Left;
    auto* folder = new PathLabel(plan.folders[side]);
    folder->setObjectName(left ? QStringLiteral("lblFolderOne") : QStringLiteral("lblFolderTwo"));

    auto* list = new QTreeView;
    list->setObjectName(left ? QStringLiteral("lvwFolderOne") : QStringLiteral("lvwFolderTwo"));
    list->setAccessibleName(left ? QStringLiteral("Left Folder") : QStringLiteral("Right Folder"));
    list->setModel(new PlanModel(plan, side, list));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setTextElideMode(Qt::ElideMiddle);
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->resizeSection(1, list->fontMetrics().horizontalAdvance(QStringLiteral("<-- Copy")) + 40);

    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(folder);
    layout->addWidget(list, 1);
    layout->addWidget(MakeFigures(FiguresOf(plan)[side], side));
    return column;
}

QWidget* frmConfirmSync::MakeFigures(const PlanFigures& figures, Side side) {
    const auto number = [this](std::uint64_t count) {
        return ToQString(locale_.Number(Currency::FromWhole(static_cast<std::int64_t>(count)))) +
               (count == 1 ? QStringLiteral(" object") : QStringLiteral(" objects"));
    };
    auto* place = new QWidget;
    auto* grid = new QGridLayout(place);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    const auto add = [&](const char* name, const QString& text, bool marked) {
        auto* label = new QLabel(text);
        label->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(Index(side)));
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        const int row = grid->rowCount();
        grid->addWidget(label, row, 1);
        if (!marked) return;
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
        auto* icon = new QLabel;
        icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(QSize(size, size)));
        grid->addWidget(icon, row, 0);
    };
    const QString bytes = ToQString(ConvertBytesToCorrectByteTypeString(figures.copiedBytes));
    add("lblCopied",
        figures.copied == 0 ? QStringLiteral("Nothing is copied.")
                            : QStringLiteral("Copied: %1, %2").arg(number(figures.copied), bytes),
        false);
    if (figures.overNewer > 0)
        add("lblOverNewer", QStringLiteral("Over something newer: %1").arg(number(figures.overNewer)), true);
    if (figures.recycled > 0)
        add("lblRecycled", QStringLiteral("To the Recycle Bin: %1").arg(number(figures.recycled)), false);
    if (figures.deleted > 0)
        add("lblDeleted", QStringLiteral("Deleted for good: %1").arg(number(figures.deleted)), true);
    // The lists beside each other end at one height.
    grid->setRowStretch(grid->rowCount(), 1);
    return place;
}

}  // namespace vantrel
