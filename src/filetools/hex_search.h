#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/side.h"
#include "filetools/hex_dump.h"

namespace vantrel {

enum class SearchDirection : std::uint8_t { Forward, Backward };
enum class SearchCase : std::uint8_t { Exact, Ignored };  // of ASCII letters

// All of these look on from `from`, itself included, yield as they go, and throw Cancelled when the user asks
// for it and ErrorException where a file cannot be read. `progress`, which may be null, gets the bytes looked
// at, of those that lie ahead. Nothing where there is no such place.
//
// The offset of the next, or of the last, occurrence of `wanted`, not empty, that begins at or behind `from`,
// or at or before it.
std::optional<std::uint64_t> FindBytes(BytesOfFile& file, std::string_view wanted, std::uint64_t from,
                                       SearchDirection direction, SearchCase letterCase, EventLoopPort& loop,
                                       const BytesDone& progress = nullptr);
// The offset of the next byte, or the last one, that is not the same in both; where one file ends and the
// other goes on, all bytes behind its end differ.
std::optional<std::uint64_t> FindDifference(PerSide<BytesOfFile>& files, std::uint64_t from,
                                            SearchDirection direction, EventLoopPort& loop,
                                            const BytesDone& progress = nullptr);

// Differing bytes that stand beside each other are one stretch. The first byte of the next stretch, or of the
// one before; a stretch that `from` lies in is stepped over.
std::optional<std::uint64_t> FindOtherStretch(PerSide<BytesOfFile>& files, std::uint64_t from,
                                              SearchDirection direction, EventLoopPort& loop,
                                              const BytesDone& progress = nullptr);

}  // namespace vantrel
