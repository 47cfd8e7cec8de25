#include "platform/forms/animation_view.h"

#include <QImage>
#include <QPainter>

namespace vantrel {

AnimationView::AnimationView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    timer_.callOnTimeout(this, [this] {
        shown_ = (shown_ + 1) % animation_.frames.size();
        update();
    });
}

Error AnimationView::Open(const FileSystem& files, const std::string& path) {
    Stop();
    std::string bytes;
    if (Error error = files.ReadWholeFile(path, kMaxAviBytes, bytes); !error.IsOk()) return error;
    if (Error error = ReadAvi(bytes, animation_); !error.IsOk()) return error;
    timer_.setInterval(animation_.frameMilliseconds);
    if (isVisible()) timer_.start();
    update();
    return {};
}

void AnimationView::Stop() {
    timer_.stop();
    animation_ = {};
    shown_ = 0;
    scaled_.clear();
    update();
}

void AnimationView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (IsPlaying()) timer_.start();
}

void AnimationView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    timer_.stop();
}

QPixmap AnimationView::Scaled(std::size_t frame) const {
    const auto& points = animation_.frames[frame];
    const std::uint32_t nothing = animation_.frames.front().front();
    QImage image(animation_.width, animation_.height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto* from = &points[static_cast<std::size_t>(y) * image.width()];
        for (int x = 0; x < image.width(); ++x) row[x] = from[x] == nothing ? 0 : from[x];
    }
    return QPixmap::fromImage(image.scaled(scaledTo_, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void AnimationView::paintEvent(QPaintEvent*) {
    if (!IsPlaying()) return;
    const qreal ratio = devicePixelRatioF();
    const QSize wanted = (QSizeF(size()) * ratio).toSize();
    if (wanted.isEmpty()) return;
    if (scaledTo_ != wanted || scaled_.isEmpty()) {
        scaledTo_ = wanted;
        scaled_ = QList<QPixmap>(static_cast<qsizetype>(animation_.frames.size()));
    }
    QPixmap& picture = scaled_[static_cast<qsizetype>(shown_)];
    if (picture.isNull()) {
        picture = Scaled(shown_);
        picture.setDevicePixelRatio(ratio);
    }
    const QSizeF drawn = picture.deviceIndependentSize();
    QPainter painter(this);
    painter.drawPixmap(QPointF((width() - drawn.width()) / 2, (height() - drawn.height()) / 2), picture);
}

}  // namespace vantrel
