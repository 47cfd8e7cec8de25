#include "views/forms/path_offer.h"

#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

const QString kWords = QStringLiteral("Compared last with ");
constexpr int kRoomAroundOffer = 16;

}  // namespace

PathOffer::PathOffer(QWidget* parent) : QPushButton(parent) {
    // Offers share the width as the boxes above them do.
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(false);
    setSizePolicy(policy);
    setStyleSheet(QStringLiteral("text-align: left; padding: 1px 6px"));
    setAutoDefault(false);
    hide();
    connect(this, &QPushButton::clicked, this, [this] {
        hide();
        Q_EMIT Taken(path_);
    });
}

void PathOffer::Offer(const std::string& path) {
    path_ = path;
    setToolTip(QStringLiteral("Take this folder: ") + DisplayQString(path_));
    setAccessibleName(kWords + DisplayQString(path_));
    show();
    ShowPath();
}

QSize PathOffer::sizeHint() const {
    return {0, fontMetrics().height() + kRoomAroundOffer / 2};
}

void PathOffer::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    ShowPath();
}

// The end of a path tells more than its beginning. An ampersand would mark a key.
void PathOffer::ShowPath() {
    QString text =
        fontMetrics().elidedText(kWords + DisplayQString(path_), Qt::ElideMiddle, width() - kRoomAroundOffer);
    setText(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
}

}  // namespace vantrel
