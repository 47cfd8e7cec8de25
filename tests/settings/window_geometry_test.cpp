#include "settings/window_geometry.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vantrel {
namespace {

constexpr TwipsRect kLeast{0, 0, 6'000, 4'000};

TEST(FitToScreens, KeepsWhatShowsAndBringsBackWhatDoesNot) {
    const std::vector<TwipsRect> two = {{0, 0, 28'800, 16'000}, {28'800, 0, 20'000, 12'000}};
    const TwipsRect onSecond{30'000, 500, 9'435, 6'945};
    const TwipsRect across{25'000, 500, 9'435, 6'945};
    EXPECT_EQ(onSecond, FitToScreens(onSecond, two, kLeast));
    EXPECT_EQ(across, FitToScreens(across, two, kLeast));
    const std::vector<TwipsRect> one = {two[0]};
    EXPECT_EQ((TwipsRect{28'800 - 9'435, 500, 9'435, 6'945}), FitToScreens(onSecond, one, kLeast));
    EXPECT_EQ(onSecond, FitToScreens(onSecond, {}, kLeast));
    // A projector that shows the same does not count twice.
    EXPECT_EQ((TwipsRect{28'800 - 9'435, 500, 9'435, 6'945}),
              FitToScreens(across, std::vector<TwipsRect>{two[0], two[0]}, kLeast));
}

TEST(FitToScreens, AlwaysEndsOnAScreen) {
    std::mt19937 random(7);
    const auto number = [&] { return static_cast<std::int32_t>(random() % 3'000'000) - 1'000'000; };
    const std::vector<TwipsRect> screens = {{-9'000, 300, 9'000, 7'000}, {0, 0, 12'000, 15'000}};
    for (int i = 0; i < 2'000; ++i) {
        const TwipsRect fitted = FitToScreens({number(), number(), number(), number()}, screens, kLeast);
        bool inside = false;
        for (const TwipsRect& screen : screens)
            inside |= fitted.left >= screen.left && fitted.top >= screen.top &&
                      fitted.left + fitted.width <= screen.left + screen.width &&
                      fitted.top + fitted.height <= screen.top + screen.height;
        ASSERT_TRUE(inside);
        ASSERT_GE(fitted.width, kLeast.width);
        ASSERT_GE(fitted.height, kLeast.height);
    }
}

TEST(Twips, AreFifteenToThePixelOfAnOrdinaryScreen) {
    EXPECT_EQ(6'945, TwipsFromPixels(463, 96));
    EXPECT_EQ(463, PixelsFromTwips(6'945, 96));
    EXPECT_EQ(926, PixelsFromTwips(6'945, 192));
}

}  // namespace
}  // namespace vantrel
