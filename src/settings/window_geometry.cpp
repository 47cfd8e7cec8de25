#include "settings/window_geometry.h"

#include <algorithm>
#include <cmath>

namespace vantrel {
namespace {

constexpr double kTwipsPerInch = 1440;

// Length of what two stretches have in common. In 64 bits: stored numbers may be anything.
std::int64_t Common(std::int64_t begin, std::int64_t length, std::int64_t otherBegin,
                    std::int64_t otherLength) {
    return std::max<std::int64_t>(
        0, std::min(begin + length, otherBegin + otherLength) - std::max(begin, otherBegin));
}

std::int64_t CommonArea(const TwipsRect& a, const TwipsRect& b) {
    return Common(a.left, a.width, b.left, b.width) * Common(a.top, a.height, b.top, b.height);
}

std::int32_t Within(std::int32_t position, std::int32_t length, std::int32_t begin, std::int32_t available) {
    const std::int32_t last = begin + std::max(0, available - length);
    return std::clamp(position, begin, last);
}

std::int32_t Rounded(double value) {
    return static_cast<std::int32_t>(std::lround(std::clamp(value, -2e9, 2e9)));
}

}  // namespace

TwipsRect FitToScreens(TwipsRect stored, std::span<const TwipsRect> screens, TwipsRect least) {
    if (screens.empty()) return stored;
    stored.width = std::max(stored.width, least.width);
    stored.height = std::max(stored.height, least.height);

    const std::int64_t area = std::int64_t{stored.width} * stored.height;
    std::int64_t shown = 0;
    const TwipsRect* home = &screens.front();
    for (const TwipsRect& screen : screens) {
        const std::int64_t common = CommonArea(stored, screen);
        if (common > CommonArea(stored, *home)) home = &screen;
        // One that shows a part of another, as a projector does, adds nothing.
        const bool repeats = std::any_of(screens.data(), &screen, [&](const TwipsRect& earlier) {
            return CommonArea(screen, earlier) > 0;
        });
        if (!repeats) shown += common;
    }
    if (shown >= area) return stored;

    stored.width = std::min(stored.width, home->width);
    stored.height = std::min(stored.height, home->height);
    stored.left = Within(stored.left, stored.width, home->left, home->width);
    stored.top = Within(stored.top, stored.height, home->top, home->height);
    return stored;
}

std::int32_t TwipsFromPixels(std::int32_t pixels, double dotsPerInch) {
    return Rounded(pixels * kTwipsPerInch / dotsPerInch);
}

std::int32_t PixelsFromTwips(std::int32_t twips, double dotsPerInch) {
    return Rounded(twips * dotsPerInch / kTwipsPerInch);
}

}  // namespace vantrel
