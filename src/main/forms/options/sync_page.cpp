#include <QGridLayout>
#include <QGroupBox>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <array>

#include "main/forms/options/option_pages.h"
#include "platform/forms/qt_text.h"
#include "sync/forms/custom_sync_table.h"
#include "sync/forms/sync_method_chooser.h"

namespace vantrel {

SyncPage::SyncPage(const OptionsContext& context)
    : OptionPage(OptionTab::Synchronize, context),
      settings_(Edited()),
      method_(new SyncMethodChooser(QStringLiteral(" Specify the actions to be performed on each type by "
                                                   "selecting values from the options below."),
                                    this)),
      table_(new CustomSyncTable(settings_)),
      fraCustomSync_(new QGroupBox(QStringLiteral("Custom Synchronization Options"))) {
    Describe(*method_->cboSyncMethod, BoxOf("SyncMethod"));
    auto* frame = new QGroupBox(QStringLiteral("Sync Methods"));
    auto* grid = new QGridLayout(frame);
    grid->addWidget(method_->cboSyncMethod, 0, 0, 1, 2);
    grid->addWidget(method_->imgSyncMethod, 1, 0, Qt::AlignTop);
    grid->addWidget(method_->lblSyncMethodDescription, 1, 1);
    grid->setColumnStretch(1, 1);
    Column().addWidget(frame);

    fraCustomSync_->setObjectName(QStringLiteral("fraCustomSync"));
    (new QVBoxLayout(fraCustomSync_))->addWidget(table_);
    Column().addWidget(fraCustomSync_);
    Column().addStretch(1);
    for (const OptionBox& box : OptionBoxes())
        if (auto* combo = table_->findChild<QComboBox*>(ToQString(box.control))) Describe(*combo, box);

    connect(method_, &SyncMethodChooser::Changed, this,
            Guarded("cboSyncMethod_Click", [this] { MethodChanged(); }));
    connect(table_, &CustomSyncTable::Clicked, this, Guarded("cboBinary_Click", [this] { table_->Store(); }));
    OnShow([this] {
        const QScopedValueRollback<bool> showing(showing_, true);
        // The table of a method is that of the method, whatever a file edited by hand says.
        settings_.ConvertPredefinedToCustom();
        method_->Choose(settings_.SyncMethod());
        ShowTable();
    });
}

void SyncPage::MethodChanged() {
    if (showing_) return;
    settings_.SetSyncMethod(method_->Chosen());
    ShowTable();
}

void SyncPage::ShowTable() {
    table_->LoadCustomSyncCombos();
    fraCustomSync_->setEnabled(method_->Chosen() == SyncMethod::Custom);
}

}  // namespace vantrel
