#include "sync/forms/frm_sync_wizard.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/forms/path_label.h"
#include "sync/forms/frm_custom_sync.h"
#include "sync/forms/sync_method_chooser.h"

namespace vantrel {

frmSyncWizard::frmSyncWizard(CSyncSettings& settings, Flags flags, const PerSide<std::string>& folders,
                             QWidget* parent)
    : QDialog(parent), settings_(settings) {
    setObjectName(QStringLiteral("frmSyncWizard"));
    setWindowTitle(QStringLiteral("Folder Synchronization Method"));

    auto* message = new QLabel(
        QStringLiteral("Please specify the synchronization method to use.  Press OK to continue."));
    message->setObjectName(QStringLiteral("lblConfirmMsg"));
    message->setWordWrap(true);

    chkSyncSelectedOnly_ = new QCheckBox(QStringLiteral("Sync Selected Objects Only"));
    chkSyncSelectedOnly_->setObjectName(QStringLiteral("chkSyncSelectedOnly"));
    chkSyncSelectedOnly_->setChecked(flags.syncSelectedOnly);
    chkPromptForSyncMethod_ = new QCheckBox(QStringLiteral("Show this before each sync operation"));
    chkPromptForSyncMethod_->setObjectName(QStringLiteral("chkPromptForSyncMethod"));
    chkPromptForSyncMethod_->setChecked(flags.promptForSyncMethod);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        settings_.SetSyncMethod(method_->Chosen());
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addWidget(message);
    layout->addWidget(MakeMethodFrame(folders));
    layout->addWidget(chkSyncSelectedOnly_);
    layout->addWidget(chkPromptForSyncMethod_);
    layout->addWidget(buttons);
    setMinimumWidth(520);
    MethodChanged();
}

QWidget* frmSyncWizard::MakeMethodFrame(const PerSide<std::string>& folders) {
    method_ = new SyncMethodChooser(
        QStringLiteral(" Press the Set Custom Settings button below to select your custom settings."), this);
    method_->Choose(settings_.SyncMethod());
    connect(method_, &SyncMethodChooser::Changed, this, &frmSyncWizard::MethodChanged);
    cmdCustomSettings_ = new QPushButton(QStringLiteral("Set &Custom Settings"));
    cmdCustomSettings_->setObjectName(QStringLiteral("cmdCustomSettings"));
    cmdCustomSettings_->setAutoDefault(false);
    connect(cmdCustomSettings_, &QPushButton::clicked, this,
            [this] { frmCustomSync(settings_, this).exec(); });

    auto* frame = new QGroupBox(QStringLiteral("Sync Methods"));
    auto* grid = new QGridLayout(frame);
    grid->setVerticalSpacing(8);
    int row = 0;
    for (Side side : kBothSides) {
        grid->addWidget(
            new QLabel(side == Side::Left ? QStringLiteral("Left Folder:") : QStringLiteral("Right Folder:")),
            row, 0);
        auto* folder = new PathLabel(folders[side]);
        folder->setObjectName(side == Side::Left ? QStringLiteral("lblLeftFolder")
                                                 : QStringLiteral("lblRightFolder"));
        grid->addWidget(folder, row++, 1);
    }
    grid->addWidget(method_->cboSyncMethod, row++, 0, 1, 2);
    grid->addWidget(method_->imgSyncMethod, row, 0, Qt::AlignTop | Qt::AlignHCenter);
    grid->addWidget(method_->lblSyncMethodDescription, row++, 1);
    grid->addWidget(cmdCustomSettings_, row, 1, Qt::AlignRight);
    grid->setColumnStretch(1, 1);
    return frame;
}

frmSyncWizard::Flags frmSyncWizard::ChosenFlags() const {
    return {chkPromptForSyncMethod_->isChecked(), chkSyncSelectedOnly_->isChecked()};
}

void frmSyncWizard::MethodChanged() {
    cmdCustomSettings_->setEnabled(method_->Chosen() == SyncMethod::Custom);
}

}  // namespace vantrel
