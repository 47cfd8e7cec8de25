#include "sync/forms/frm_sync_wizard.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "sync/forms/frm_custom_sync.h"
#include "sync/forms/path_label.h"

namespace vantrel {
namespace {

constexpr QSize kPictureSize(64, 32);
constexpr int kFallbackPosition = 2;  // in the display order, for a stored method that is none

}  // namespace

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
        settings_.SetSyncMethod(ChosenMethod());
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
    cboSyncMethod_ = new QComboBox;
    cboSyncMethod_->setObjectName(QStringLiteral("cboSyncMethod"));
    cboSyncMethod_->setAccessibleName(QStringLiteral("Sync Methods"));
    int position = kFallbackPosition;
    for (SyncMethod method : SyncMethodsInDisplayOrder()) {
        const SyncMethodInfo& info = SyncMethods()[static_cast<std::size_t>(method)];
        if (static_cast<int>(method) == settings_.SyncMethod()) position = cboSyncMethod_->count();
        cboSyncMethod_->addItem(ToQString(info.itemText), static_cast<int>(method));
    }
    cboSyncMethod_->setCurrentIndex(position);
    connect(cboSyncMethod_, &QComboBox::currentIndexChanged, this, &frmSyncWizard::MethodChanged);

    imgSyncMethod_ = new QLabel;
    imgSyncMethod_->setObjectName(QStringLiteral("imgSyncMethod"));
    imgSyncMethod_->setFixedSize(kPictureSize);
    lblSyncMethodDescription_ = new QLabel;
    lblSyncMethodDescription_->setObjectName(QStringLiteral("lblSyncMethodDescription"));
    lblSyncMethodDescription_->setWordWrap(true);
    lblSyncMethodDescription_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    lblSyncMethodDescription_->setMinimumHeight(4 * fontMetrics().lineSpacing());
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
    grid->addWidget(cboSyncMethod_, row++, 0, 1, 2);
    grid->addWidget(imgSyncMethod_, row, 0, Qt::AlignTop | Qt::AlignHCenter);
    grid->addWidget(lblSyncMethodDescription_, row++, 1);
    grid->addWidget(cmdCustomSettings_, row, 1, Qt::AlignRight);
    grid->setColumnStretch(1, 1);
    return frame;
}

frmSyncWizard::Flags frmSyncWizard::ChosenFlags() const {
    return {chkPromptForSyncMethod_->isChecked(), chkSyncSelectedOnly_->isChecked()};
}

void frmSyncWizard::MethodChanged() {
    const auto& info = SyncMethods()[static_cast<std::size_t>(ChosenMethod())];
    const bool custom = info.method == SyncMethod::Custom;
    QString description = ToQString(info.description);
    if (custom) {
        description +=
            QStringLiteral(" Press the Set Custom Settings button below to select your custom settings.");
    }
    lblSyncMethodDescription_->setText(description);
    imgSyncMethod_->setPixmap(
        custom ? QPixmap() : SyncMethodIcon(ChosenMethod()).pixmap(kPictureSize, devicePixelRatioF()));
    cmdCustomSettings_->setEnabled(custom);
}

}  // namespace vantrel
