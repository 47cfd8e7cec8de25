#include "sync/forms/frm_custom_sync.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "sync/forms/custom_sync_table.h"

namespace vantrel {

frmCustomSync::frmCustomSync(CSyncSettings& settings, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmCustomSync"));
    setWindowTitle(QStringLiteral("Specify Custom Synchronization Options"));
    auto* table = new CustomSyncTable(settings, this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("OKButton"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CancelButton"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this, table] {
        table->Store();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addSpacing(8);
    layout->addWidget(buttons);
}

}  // namespace vantrel
