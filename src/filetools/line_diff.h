#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "filetools/cancel_check.h"
#include "filetools/hunk.h"
#include "filetools/line_table.h"

namespace vantrel {

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

// Makes the tables of the two stretches of text that differ; it may make them side by side.
using TableMaker =
    std::function<PerSide<LineTable>(const PerSide<std::string_view>& stretches, std::uint64_t seed)>;

// What stands for what, in order. The texts must hold at most kMostLines lines each (ErrorException
// otherwise). Cancelled comes from `check`. Without `makeTables` the tables are made one after the other.
std::vector<Hunk> DiffLines(const PerSide<std::string_view>& texts, const LineLikeness& likeness,
                            const CancelCheck& check, const MatchLimits& limits = {},
                            const TableMaker& makeTables = {});

}  // namespace vantrel
