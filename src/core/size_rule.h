#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/currency.h"

namespace vantrel {

// By which rule the size of a found file is taken. Classification, display and the comparison of contents all
// see what it gives.
enum class SizeRule : std::uint8_t {
    Words,  // the low word minus the high word, both taken as signed 32-bit numbers
    True,   // the bytes
};

// From this size on the two rules differ. By the words a file has a negative size up to 4 GiB, and one that
// says little about it beyond that.
inline constexpr std::uint64_t kLeastLargeFile = std::uint64_t{1} << 31;

constexpr Currency SizeByRule(std::uint64_t bytes, SizeRule rule) {
    if (rule == SizeRule::True) {
        constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        return Currency::FromWhole(static_cast<std::int64_t>(std::min(bytes, kMost)));
    }
    const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes));
    const auto high = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes >> 32));
    return Currency::FromWhole(std::int64_t{low} - std::int64_t{high});
}

}  // namespace vantrel
