#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "core/side.h"
#include "filetools/bit_rows.h"
#include "filetools/cancel_check.h"

namespace vantrel {

using Tokens = std::span<const std::uint32_t>;

// A stretch of each of two sequences.
struct TokenBox {
    PerSide<std::size_t> begin;
    PerSide<std::size_t> end;

    std::size_t Size(Side side) const { return end[side] - begin[side]; }
    bool IsEmpty(Side side) const { return begin[side] == end[side]; }
    Tokens Of(const PerSide<Tokens>& tokens, Side side) const {
        return tokens[side].subspan(begin[side], Size(side));
    }
    // Words of 64 cells in the table over it.
    double Words() const {
        return static_cast<double>(Size(Side::Left)) * static_cast<double>(Size(Side::Right)) / 64;
    }
};

// Positions, from the start of each sequence, of equal tokens.
using TokenPair = PerSide<std::uint32_t>;

// A point on a shortest path through the table of two sequences that begin and end with different tokens: the
// cheapest way to the point and on from it is the cheapest of all. False where the search takes more than
// `steps` steps.
bool FindPathPoint(Tokens left, Tokens right, std::int64_t steps, PacedCheck& pace,
                   PerSide<std::size_t>& point);

// The pairs of a longest common subsequence, ascending, by a table with one bit a cell.
std::vector<TokenPair> PairsByTable(Tokens left, Tokens right, PacedCheck& pace);

// How many pairs of equal tokens there are.
double CountPairs(Tokens left, const Occurrences& onRight);
// The longest ascending chain over all pairs of equal tokens: a longest common subsequence.
std::vector<TokenPair> PairsByChain(Tokens left, const Occurrences& onRight, PacedCheck& pace);
// The same over the tokens that stand once on each side.
std::vector<TokenPair> UniquePairsByChain(Tokens left, Tokens right, const Occurrences& onRight,
                                          PacedCheck& pace);

// A point to cut a box at that is too large for all of these: the head of the longer sequence, and as much of
// the other as matches it best. `words` bounds the table that is made for it.
PerSide<std::size_t> FindWindow(Tokens left, Tokens right, std::int64_t words, PacedCheck& pace);

}  // namespace vantrel
