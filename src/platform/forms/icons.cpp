#include "platform/forms/icons.h"

#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <cmath>

// Must stand outside every namespace. A static library's resources are not there until this has run.
static void InitIconResource() {
    Q_INIT_RESOURCE(vantrel_icons);
}

namespace vantrel {
namespace {

// The pictures are drawn in these colours, for light windows; the others take their place.
struct Tint {
    const char* light;
    const char* dark;
    const char* grayLight;
    const char* grayDark;
};
constexpr Tint kTints[] = {
    {"#3d4657", "#dfe4ec", "#8f959e", "#8a9099"},  // ink
    {"#2667b3", "#78b1f2", "#a3a8af", "#6d737c"},  // blue
    {"#25894a", "#66c98a", "#a3a8af", "#6d737c"},  // green
    {"#b96a06", "#eeb04e", "#a3a8af", "#6d737c"},  // amber
    {"#c43a31", "#f58379", "#a3a8af", "#6d737c"},  // red
    {"#7b4db8", "#bd9cf0", "#a3a8af", "#6d737c"},  // purple
    {"#ffffff", "#1c2129", "#ffffff", "#24282f"},  // paper, and signs on a coloured ground
    {"#f4c860", "#80611f", "#d9dbde", "#4d525a"},  // folders
    {"#d6e4f5", "#3a4c63", "#e4e6e9", "#42464d"},  // shade
};

bool IsDark(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(mode == QIcon::Selected ? QPalette::Highlight : QPalette::Window).lightness() < 128;
}

QByteArray Tinted(QByteArray svg, bool dark, bool gray) {
    if (!dark && !gray) return svg;
    for (const Tint& tint : kTints)
        svg.replace(tint.light, gray ? (dark ? tint.grayDark : tint.grayLight) : tint.dark);
    return svg;
}

class PictureEngine : public QIconEngine {
  public:
    PictureEngine(QString file, IconColours colours) : file_(std::move(file)), colours_(colours) {}

    QIconEngine* clone() const override { return new PictureEngine(file_, colours_); }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        const bool dark = IsDark(mode);
        const bool gray = colours_ == IconColours::Gray || mode == QIcon::Disabled;
        const QString key = QStringLiteral("%1/%2x%3/%4%5%6")
                                .arg(file_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(dark)
                                .arg(gray)
                                .arg(mode == QIcon::Disabled);
        QPixmap picture;
        if (!QPixmapCache::find(key, &picture)) {
            picture = Render(size, dark, gray, mode == QIcon::Disabled);
            QPixmapCache::insert(key, picture);
        }
        return picture;
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal) override {
        return pixmap(size, mode, state);
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal ratio = painter->device() != nullptr ? painter->device()->devicePixelRatio() : 1.0;
        QPixmap picture = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
        picture.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), picture);
    }

  private:
    QPixmap Render(const QSize& size, bool dark, bool gray, bool pale) const {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QFile file(file_);
        if (!file.open(QIODevice::ReadOnly)) return picture;
        QSvgRenderer renderer(Tinted(file.readAll(), dark, gray));
        const QSizeF drawn = QSizeF(renderer.defaultSize()).scaled(size, Qt::KeepAspectRatio);
        // On a whole pixel, so that the lines of the grid stay sharp.
        const QPointF corner(std::floor((size.width() - drawn.width()) / 2),
                             std::floor((size.height() - drawn.height()) / 2));
        QPainter painter(&picture);
        if (pale) painter.setOpacity(0.6);
        renderer.render(&painter, QRectF(corner, drawn));
        return picture;
    }

    QString file_;
    IconColours colours_;
};

QIcon Picture(QLatin1String name, IconColours colours = IconColours::Colour) {
    [[maybe_unused]] static const bool loaded = (InitIconResource(), true);
    const QString file = QStringLiteral(":/vantrel/%1.svg").arg(name);
    return QFile::exists(file) ? QIcon(new PictureEngine(file, colours)) : QIcon();
}

}  // namespace

QIcon CommandIcon(QLatin1String name) {
    return Picture(name);
}

QIcon ResultTypeIcon(int type, IconColours colours) {
    constexpr const char* kNames[] = {
        "newer",        "older", "same", "orphan", "binary", "identical-folder", "different-folder",
        "orphan-folder"};
    if (type < 1 || type > 8) return {};
    return Picture(QLatin1String(kNames[type - 1]), colours);
}

QIcon SyncMethodIcon(int code) {
    if (code < 0 || code > 7) return {};
    const QByteArray name = "sync-" + QByteArray::number(code);
    return Picture(QLatin1String(name));
}

QIcon ProgramIcon() {
    return Picture(QLatin1String("vantrel"));
}

}  // namespace vantrel
