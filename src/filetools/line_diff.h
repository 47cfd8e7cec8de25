#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "filetools/cancel_check.h"
#include "filetools/hunk.h"

namespace vantrel {

// What makes two lines alike. In all cases lines that are the same bytes are alike; a last line without a
// line end is not like one with it, unless white space is ignored.
struct LineLikeness {
    bool ignoreCase = false;  // simple Unicode case folding
    bool ignoreWhitespace =
        false;                // blanks, tabs, CR, vertical tabs and form feeds count nowhere in the line
    PerSide<bool> western{};  // bytes above 0x7F are characters of the Western code page, not UTF-8
};

// Bounds of the work. The defaults bound a comparison of any two texts to some seconds for a million lines;
// up to them the script is a shortest one.
struct MatchLimits {
    // Steps of the search for a path in one stretch before another way is tried.
    std::int64_t pathSteps = 50'000'000;
    // Words of 64 cells that one table of a stretch may take, and all tables of a comparison together.
    std::int64_t tableWords = 200'000'000;
    std::int64_t allTableWords = 2'000'000'000;
    // Pairs of equal lines that the chain over them may take; each costs 12 bytes.
    std::int64_t chainPairs = 8'000'000;
};

// Which lines of `left` stand for which of `right`, in order. The texts must hold at most kMostLines lines
// each (ErrorException otherwise). Cancelled comes from `check`.
std::vector<Hunk> DiffLines(const PerSide<std::string_view>& texts, const LineLikeness& likeness,
                            const CancelCheck& check, const MatchLimits& limits = {});

}  // namespace vantrel
