#pragma once

#include <cstdint>
#include <span>

namespace vantrel {

// In twips, 1,440 to the inch.
struct TwipsRect {
    std::int32_t left = 0, top = 0, width = 0, height = 0;
    friend bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

// The place for a window that was left at `stored`, on the screens that are there now (their usable areas,
// the main one first). A window that fits where it was stays there. Otherwise it goes to the screen that
// holds most of it, or else to the main one, is made no larger than that screen and no smaller than `least`
// allows, and is moved until all of it shows. Without a screen it stays as it is.
TwipsRect FitToScreens(TwipsRect stored, std::span<const TwipsRect> screens, TwipsRect least);

// Twips and the pixels of a screen with `dotsPerInch`, rounded.
std::int32_t TwipsFromPixels(std::int32_t pixels, double dotsPerInch);
std::int32_t PixelsFromTwips(std::int32_t twips, double dotsPerInch);

}  // namespace vantrel
