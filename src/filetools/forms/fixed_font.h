#pragma once

#include <QFont>
#include <algorithm>

namespace vantrel {

// The font of what stands in columns, `zoom` points larger or smaller than the usual one.
inline QFont FixedFont(int zoom) {
    constexpr int kPoints = 10;
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSize(kPoints + zoom);
    return font;
}

// As far as that goes: from 5 to 48 points.
inline int ClampedZoom(int zoom) {
    constexpr int kLeast = -5, kMost = 38;
    return std::clamp(zoom, kLeast, kMost);
}

}  // namespace vantrel
