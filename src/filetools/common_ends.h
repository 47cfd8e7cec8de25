#pragma once

#include <cstddef>
#include <string_view>

#include "core/side.h"
#include "filetools/cancel_check.h"
#include "filetools/hunk.h"

namespace vantrel {

// How much two texts share at their head and at their tail, in bytes: whole lines, the same on both sides,
// and never more than the shorter text has. Some equal lines (kKeptLines) are left between the two ends, so
// that a difference beside them can still be moved to where it reads best.
struct CommonEnds {
    static constexpr int kKeptLines = 60;

    std::size_t head = 0;
    std::size_t tail = 0;
    LineNumber headLines = 0;
};
CommonEnds FindCommonEnds(const PerSide<std::string_view>& texts, const CancelCheck& check);

}  // namespace vantrel
