#pragma once

#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace vantrel {

// Tiles all of a list's viewport with the background picture. On a dark base they are faint: a bright tile
// would take the contrast from the text.
inline void PaintTiles(QPainter& painter, const QWidget& viewport, const QPixmap& tile) {
    constexpr double kOpacityOnDark = 0.08;
    constexpr int kDark = 128;
    const bool onDark = viewport.palette().color(QPalette::Base).lightness() < kDark;
    painter.setOpacity(onDark ? kOpacityOnDark : 1);
    painter.drawTiledPixmap(viewport.rect(), tile);
    painter.setOpacity(1);
}

}  // namespace vantrel
