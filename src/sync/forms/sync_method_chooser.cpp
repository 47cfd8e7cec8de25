#include "sync/forms/sync_method_chooser.h"

#include <utility>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr QSize kPictureSize(64, 32);
constexpr int kFallbackPosition = 2;  // in the display order, for a stored method that is none

}  // namespace

SyncMethodChooser::SyncMethodChooser(QString customHint, QObject* parent)
    : QObject(parent),
      cboSyncMethod(new QComboBox),
      imgSyncMethod(new QLabel),
      lblSyncMethodDescription(new QLabel),
      customHint_(std::move(customHint)) {
    cboSyncMethod->setObjectName(QStringLiteral("cboSyncMethod"));
    cboSyncMethod->setAccessibleName(QStringLiteral("Sync Methods"));
    for (const SyncMethod method : SyncMethodsInDisplayOrder()) {
        const SyncMethodInfo& info = SyncMethods()[static_cast<std::size_t>(method)];
        cboSyncMethod->addItem(ToQString(info.itemText), static_cast<int>(method));
    }
    imgSyncMethod->setObjectName(QStringLiteral("imgSyncMethod"));
    imgSyncMethod->setFixedSize(kPictureSize);
    lblSyncMethodDescription->setObjectName(QStringLiteral("lblSyncMethodDescription"));
    lblSyncMethodDescription->setWordWrap(true);
    lblSyncMethodDescription->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    lblSyncMethodDescription->setMinimumHeight(5 * lblSyncMethodDescription->fontMetrics().lineSpacing());
    connect(cboSyncMethod, &QComboBox::currentIndexChanged, this, [this] {
        ShowMethod();
        Q_EMIT Changed();
    });
    ShowMethod();
}

void SyncMethodChooser::Choose(int method) {
    const int position = cboSyncMethod->findData(method);
    cboSyncMethod->setCurrentIndex(position >= 0 ? position : kFallbackPosition);
}

void SyncMethodChooser::ShowMethod() {
    const SyncMethodInfo& info = SyncMethods()[static_cast<std::size_t>(Chosen())];
    const bool custom = info.method == SyncMethod::Custom;
    QString description = ToQString(info.description);
    if (custom) description += customHint_;
    lblSyncMethodDescription->setText(description);
    imgSyncMethod->setPixmap(custom ? QPixmap()
                                    : SyncMethodIcon(static_cast<int>(info.method))
                                          .pixmap(kPictureSize, imgSyncMethod->devicePixelRatioF()));
}

}  // namespace vantrel
