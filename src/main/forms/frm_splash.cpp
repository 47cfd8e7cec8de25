#include "main/forms/frm_splash.h"

#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <utility>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr QSize kSize(480, 270);
constexpr QRect kTile(0, 0, 160, 160);

// The outline of the logo: a tile that stands out of a panel. The picture is drawn to the same measures.
QPainterPath Shape() {
    QPainterPath tile, panel;
    tile.addRoundedRect(kTile, 34, 34);
    panel.addRoundedRect(QRectF(36, 40, 444, 230), 26, 26);
    return tile.united(panel);
}

void DrawPlainLogo(QPainter& painter) {
    painter.fillRect(QRect(QPoint(), kSize), QColor(0x1f, 0x5a, 0x9e));
    ProgramIcon().paint(&painter, kTile);
    QFont font = QGuiApplication::font();
    font.setPixelSize(46);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(64, 222), QStringLiteral("Vantrel"));
}

QPixmap Logo(const std::string& file, qreal ratio) {
    QPixmap logo((QSizeF(kSize) * ratio).toSize());
    logo.setDevicePixelRatio(ratio);
    logo.fill(Qt::transparent);
    QPainter painter(&logo);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    // The edge is smoothed by a brush, where clipping would leave steps.
    QImage picture((QSizeF(kSize) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    QPainter inner(&picture);
    inner.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (const QImage loaded(DialogPath(file)); !loaded.isNull())
        inner.drawImage(QRect(QPoint(), kSize),
                        loaded.scaled(picture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    else
        DrawPlainLogo(inner);
    inner.end();
    painter.fillPath(Shape(), QBrush(picture));
    return logo;
}

}  // namespace

frmSplash::frmSplash(SplashServices services)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint), services_(std::move(services)) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Vantrel"));
    setWindowIcon(ProgramIcon());
    setAttribute(Qt::WA_TranslucentBackground);
    setFixedSize(kSize);
    setMask(QRegion(Shape().toFillPolygon().toPolygon()));
    auto* pctLogo = new QLabel(this);
    pctLogo->setObjectName(QStringLiteral("pctLogo"));
    pctLogo->setAccessibleName(QStringLiteral("Vantrel"));
    pctLogo->setGeometry(rect());
    pctLogo->setPixmap(Logo(services_.logoFile, devicePixelRatioF()));
    timer1_.setSingleShot(true);
    timer1_.setInterval(2'000);
    timer1_.callOnTimeout(this, [this] { Leave(); });
}

void frmSplash::Load() {
    if (const QScreen* where = screen()) move(where->availableGeometry().center() - rect().center());
    show();
    PlayStartSound();
    timer1_.start();
}

void frmSplash::PlayStartSound() {
    if (services_.readOption("SoundOn", "True") != "True") return;
    if (const std::string sound = services_.readOption("StartSound", "(none)"); sound != "(none)")
        services_.playWave(sound);
}

void frmSplash::Leave() {
    if (std::exchange(left_, true)) return;
    timer1_.stop();
    services_.LoadNextForm();
    close();
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    Leave();
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    Leave();
}

}  // namespace vantrel
