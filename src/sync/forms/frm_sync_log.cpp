#include "sync/forms/frm_sync_log.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/mod_date_time.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "sync/sync_history.h"

namespace vantrel {

frmSyncLog::frmSyncLog(const Toolbox& tools, std::int32_t& numSyncLogEntries, QWidget* parent)
    : QDialog(parent), tools_(tools), numSyncLogEntries_(numSyncLogEntries) {
    setObjectName(QStringLiteral("frmSyncLog"));
    setWindowTitle(QStringLiteral("Synchronization History"));

    lvwSyncHistory_ = new QTreeWidget;
    lvwSyncHistory_->setObjectName(QStringLiteral("lvwSyncHistory"));
    lvwSyncHistory_->setAccessibleName(windowTitle());
    lvwSyncHistory_->setHeaderLabels({QStringLiteral("Date"), QStringLiteral("Folder #1"),
                                      QStringLiteral("Folder #2"), QStringLiteral("Result")});
    lvwSyncHistory_->setRootIsDecorated(false);
    lvwSyncHistory_->setUniformRowHeights(true);
    lvwSyncHistory_->setTextElideMode(Qt::ElideMiddle);

    auto* label = new QLabel(QStringLiteral("Store this many entries in the Synchronization Log:"));
    label->setObjectName(QStringLiteral("lblNumEntries"));
    txtNumEntries_ = new QLineEdit;
    txtNumEntries_->setObjectName(QStringLiteral("txtNumEntries"));
    txtNumEntries_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0")) * 10);
    label->setBuddy(txtNumEntries_);

    auto* buttons = new QDialogButtonBox;
    auto* ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("cmdOK"));
    connect(ok, &QPushButton::clicked, this, &frmSyncLog::cmdOK_Click);

    auto* entries = new QHBoxLayout;
    entries->addWidget(label);
    entries->addWidget(txtNumEntries_);
    entries->addStretch(1);
    entries->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addWidget(lvwSyncHistory_, 1);
    layout->addLayout(entries);
    ok->setDefault(true);
    ResizeWithinScreen(*this, {820, 420});

    tools_.reporter.Guard("frmSyncLog.Form_Load", [&] {
        AdjustNumLogEntries(tools_, numSyncLogEntries_, false, numSyncLogEntries_);
        txtNumEntries_->setText(QString::number(numSyncLogEntries_));
        FillList();
    });
}

void frmSyncLog::FillList() {
    std::vector<SyncHistoryRecord> records;
    ThrowIfFailed(SyncHistory(tools_).Read(records));
    QList<QTreeWidgetItem*> items;
    items.reserve(static_cast<qsizetype>(records.size()));
    for (const SyncHistoryRecord& record : records) {
        items.append(new QTreeWidgetItem({ToQString(HistoryDateText(record, tools_.locale)),
                                          DisplayQString(ShownHistoryField(record.leftFolder)),
                                          DisplayQString(ShownHistoryField(record.rightFolder)),
                                          DisplayQString(ShownHistoryField(record.result))}));
    }
    lvwSyncHistory_->addTopLevelItems(items);
    const int digit = fontMetrics().horizontalAdvance(QStringLiteral("0"));
    QHeaderView* header = lvwSyncHistory_->header();
    header->setStretchLastSection(false);
    header->resizeSection(0, 22 * digit);
    header->resizeSection(3, 24 * digit);
    // The paths share what is left.
    for (const int column : {1, 2}) header->setSectionResizeMode(column, QHeaderView::Stretch);
}

bool frmSyncLog::ValidateEntries() {
    const std::string text = FromQString(txtNumEntries_->text());
    std::int32_t entries = 0;
    if (ParseNumLogEntries(text, entries)) return true;
    QApplication::beep();
    tools_.messages.ShowInformationMessage(
        "Invalid Number of Entries",
        "\"" + text +
            "\" is not a valid number of entries.\r\n\r\nPlease enter a whole number in "
            "the range of 1 to 32000.");
    txtNumEntries_->setFocus();
    txtNumEntries_->selectAll();
    return false;
}

// The box is checked when it is left for the button. Checking it on every loss of the focus would bring the
// message up as well when the window is closed, or when another program comes to the front.
void frmSyncLog::cmdOK_Click() {
    if (!ValidateEntries()) return;
    std::int32_t entries = 0;
    ParseNumLogEntries(FromQString(txtNumEntries_->text()), entries);
    AdjustNumLogEntries(tools_, entries, true, numSyncLogEntries_);
    accept();
}

}  // namespace vantrel
