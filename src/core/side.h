#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vantrel {

enum class Side : std::uint8_t { Left = 0, Right = 1 };
inline constexpr std::array<Side, 2> kBothSides{Side::Left, Side::Right};
constexpr Side Other(Side side) {
    return side == Side::Left ? Side::Right : Side::Left;
}
constexpr std::size_t Index(Side side) {
    return static_cast<std::size_t>(side);
}
// What exists once for each side: array[Index(side)].
template <typename T>
struct PerSide {
    std::array<T, 2> values{};
    T& operator[](Side side) { return values[Index(side)]; }
    const T& operator[](Side side) const { return values[Index(side)]; }
};

}  // namespace vantrel
