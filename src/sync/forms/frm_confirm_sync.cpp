#include "sync/forms/frm_confirm_sync.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "sync/forms/path_label.h"

namespace vantrel {
namespace {

QString ActionText(const PlannedAction& action) {
    if (action.action == SyncAction::Delete) return QStringLiteral("Delete");
    return action.side == Side::Left ? QStringLiteral("Copy -->") : QStringLiteral("<-- Copy");
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
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const QString text =
        index.column() == 1
            ? ActionText(action)
            : DisplayQString(action.folder.empty() ? action.name : action.folder + "/" + action.name);
    const bool toolTip = role == Qt::ToolTipRole && action.linkChange != LinkChange::None;
    return toolTip ? text + QLatin1Char('\n') + LinkChangeText(action.linkChange) : text;
}

QVariant PlanModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? QStringLiteral("File") : QStringLiteral("Action");
}

frmConfirmSync::frmConfirmSync(const SyncPlan& plan, QWidget* parent) : QDialog(parent) {
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
    return column;
}

}  // namespace vantrel
