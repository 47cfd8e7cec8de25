#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantrel {

// How many bytes of each file a comparison by contents reads at a time, as a person may enter it.
inline constexpr std::int32_t kMostChunkSize = 10'000'000;
// Above this the user is warned.
inline constexpr std::int32_t kLargeChunkSize = 2'000'000;

// Nothing for a text that is no whole number from 1 to kMostChunkSize.
std::optional<std::int32_t> ChunkSizeOf(std::string_view text);

}  // namespace vantrel
