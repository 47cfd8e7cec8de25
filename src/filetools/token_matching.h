#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/side.h"
#include "filetools/cancel_check.h"
#include "filetools/line_diff.h"

namespace vantrel {

// Marks, of two sequences of tokens, those that belong to no common subsequence: a longest one within the
// limits, a long one beyond them. What stays 0 on the left and on the right are equal tokens, as many on both
// sides, in order.
PerSide<std::vector<std::uint8_t>> MatchTokens(const PerSide<std::span<const std::uint32_t>>& tokens,
                                               const MatchLimits& limits, const CancelCheck& check);

// The same where so little differs that it is found at once; nothing otherwise.
std::optional<PerSide<std::vector<std::uint8_t>>> MatchTokensIfNear(
    const PerSide<std::span<const std::uint32_t>>& tokens, const MatchLimits& limits,
    const CancelCheck& check);

}  // namespace vantrel
