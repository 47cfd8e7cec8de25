#include "filetools/line_diff.h"

#include <algorithm>
#include <bit>

#include "filetools/common_ends.h"
#include "filetools/hunk_sliding.h"
#include "filetools/line_table.h"
#include "filetools/token_matching.h"

namespace vantrel {

namespace {

using Marks = std::vector<std::uint8_t>;  // one a line: 1 for a changed one

// The lines of one side that may still match, by index, and their tokens.
struct Candidates {
    std::vector<std::uint32_t> lines;
    std::vector<std::uint32_t> tokens;
};

// One bit for some of the bits of a token. A token whose bit is missing is missing.
class TokenSet {
  public:
    TokenSet(const std::vector<std::uint32_t>& tokens, std::size_t room, int rotation) : rotation_(rotation) {
        constexpr std::size_t kBitsForToken = 16;
        const std::size_t bits =
            std::bit_ceil(std::clamp<std::size_t>(room * kBitsForToken, 1'024, std::size_t{1} << 32));
        mask_ = static_cast<std::uint32_t>(bits - 1);
        words_.resize(bits / 64);
        for (const std::uint32_t token : tokens)
            words_[Bit(token) / 64] |= std::uint64_t{1} << Bit(token) % 64;
    }
    bool MayHold(std::uint32_t token) const { return (words_[Bit(token) / 64] >> Bit(token) % 64 & 1) != 0; }

  private:
    std::uint32_t Bit(std::uint32_t token) const { return std::rotl(token, rotation_) & mask_; }
    int rotation_;
    std::uint32_t mask_;
    std::vector<std::uint64_t> words_;
};

// Leaves out what the other side does not hold: such lines match nothing. Two rounds over different bits of
// the tokens leave few of them.
PerSide<Candidates> SetAside(const PerSide<LineTable>& tables, const CancelCheck& check) {
    PacedCheck pace(check, 1'000'000);
    PerSide<Candidates> found;
    PerSide<std::vector<std::uint32_t>> tokens;
    const std::size_t room = std::max(tables[Side::Left].Count(), tables[Side::Right].Count());
    PerSide<TokenSet> sets{
        {TokenSet(tables[Side::Left].tokens, room, 0), TokenSet(tables[Side::Right].tokens, room, 0)}};
    for (const Side side : kBothSides) {
        const std::vector<std::uint32_t>& all = tables[side].tokens;
        for (std::size_t index = 0; index < all.size(); ++index) {
            pace.Count();
            if (!sets[Other(side)].MayHold(all[index])) continue;
            found[side].lines.push_back(static_cast<std::uint32_t>(index));
            found[side].tokens.push_back(all[index]);
        }
    }
    constexpr int kOtherBits = 13;
    for (const Side side : kBothSides) sets[side] = TokenSet(found[side].tokens, room, kOtherBits);
    for (const Side side : kBothSides) {
        Candidates& mine = found[side];
        std::size_t kept = 0;
        for (std::size_t index = 0; index < mine.lines.size(); ++index) {
            pace.Count();
            if (!sets[Other(side)].MayHold(mine.tokens[index])) continue;
            mine.lines[kept] = mine.lines[index];
            mine.tokens[kept++] = mine.tokens[index];
        }
        mine.lines.resize(kept);
        mine.tokens.resize(kept);
    }
    return found;
}

PerSide<Marks> Match(const PerSide<LineTable>& tables, const MatchLimits& limits, const CancelCheck& check) {
    if (auto near =
            MatchTokensIfNear({{tables[Side::Left].tokens, tables[Side::Right].tokens}}, limits, check))
        return std::move(*near);
    const PerSide<Candidates> candidates = SetAside(tables, check);
    const PerSide<Marks> unmatched =
        MatchTokens({{candidates[Side::Left].tokens, candidates[Side::Right].tokens}}, limits, check);
    PerSide<Marks> changed;
    for (const Side side : kBothSides) {
        changed[side].assign(tables[side].Count(), 1);
        for (std::size_t index = 0; index < candidates[side].lines.size(); ++index)
            changed[side][candidates[side].lines[index]] = unmatched[side][index];
    }
    return changed;
}

// Goes through stretches of matched lines, which are equally long on both sides: their first lines and their
// number.
template <typename Take>
void ForEachMatchedStretch(const PerSide<Marks>& changed, Take&& take) {
    const Marks& left = changed[Side::Left];
    const Marks& right = changed[Side::Right];
    std::size_t one = 0;
    std::size_t two = 0;
    while (true) {
        while (one < left.size() && left[one] != 0) ++one;
        while (two < right.size() && right[two] != 0) ++two;
        std::size_t count = 0;
        while (one + count < left.size() && two + count < right.size() && left[one + count] == 0 &&
               right[two + count] == 0)
            ++count;
        if (count == 0) return;
        take(one, two, count);
        one += count;
        two += count;
    }
}

// Looks at every pair of matched lines, and marks those that are not alike. Their number.
std::size_t CheckPairs(const PerSide<LineTable>& tables, const LineLikeness& likeness,
                       PerSide<Marks>& changed, const CancelCheck& check) {
    LineReader left(likeness, Side::Left);
    LineReader right(likeness, Side::Right);
    PacedCheck pace(check, std::size_t{8} << 20);
    std::size_t wrong = 0;
    constexpr std::size_t kMostAtOnce = 65'536;
    ForEachMatchedStretch(changed, [&](std::size_t one, std::size_t two, std::size_t count) {
        for (std::size_t done = 0; done < count; done += std::min(kMostAtOnce, count - done)) {
            const std::size_t some = std::min(kMostAtOnce, count - done);
            const std::string_view all = tables[Side::Left].Lines(one + done, some);
            pace.Count(all.size() + some);
            // Lines that are the same are the same in one piece.
            if (all == tables[Side::Right].Lines(two + done, some)) continue;
            for (std::size_t line = done; line < done + some; ++line) {
                if (left.IsLike(tables[Side::Left].Line(one + line), right,
                                tables[Side::Right].Line(two + line)))
                    continue;
                changed[Side::Left][one + line] = changed[Side::Right][two + line] = 1;
                ++wrong;
            }
        }
    });
    return wrong;
}

std::vector<Hunk> CollectHunks(const PerSide<LineTable>& tables, const PerSide<Marks>& changed,
                               const CommonEnds& ends) {
    std::vector<Hunk> hunks;
    PerSide<std::size_t> at{};
    PerSide<std::size_t> count;
    for (const Side side : kBothSides) count[side] = changed[side].size();
    while (at[Side::Left] < count[Side::Left] || at[Side::Right] < count[Side::Right]) {
        Hunk hunk;
        bool differs = false;
        for (const Side side : kBothSides) {
            const std::size_t first = at[side];
            while (at[side] < count[side] && changed[side][at[side]] != 0) ++at[side];
            differs = differs || at[side] > first;
            hunk.lines[side] = {.first = ends.headLines + static_cast<LineNumber>(first),
                                .count = static_cast<LineNumber>(at[side] - first),
                                .offset = ends.head + tables[side].starts[first],
                                .size = tables[side].starts[at[side]] - tables[side].starts[first]};
        }
        if (differs) hunks.push_back(hunk);
        // The pair of equal lines behind it; an unchanged line has its counterpart on the other side.
        for (const Side side : kBothSides) ++at[side];
    }
    return hunks;
}

}  // namespace

std::vector<Hunk> DiffLines(const PerSide<std::string_view>& texts, const LineLikeness& likeness,
                            const CancelCheck& check, const MatchLimits& limits,
                            const TableMaker& makeTables) {
    const CommonEnds ends = FindCommonEnds(texts, check);
    PerSide<std::string_view> stretches;
    for (const Side side : kBothSides)
        stretches[side] = texts[side].substr(ends.head, texts[side].size() - ends.head - ends.tail);
    const auto tablesInTurn = [&](std::uint64_t seed) {
        PerSide<LineTable> made;
        for (const Side side : kBothSides)
            made[side] = MakeLineTable(stretches[side], likeness, side, seed, check);
        return made;
    };
    PerSide<LineTable> tables;
    PerSide<Marks> changed;
    // Different lines with one token are rare, and rarer still where they were matched: then other tokens are
    // tried. Whoever makes such lines on purpose gets a correct script all the same, if not a shortest one.
    constexpr std::uint64_t kSeeds = 3;
    for (std::uint64_t seed = 1; seed <= kSeeds; ++seed) {
        tables = makeTables ? makeTables(stretches, seed) : tablesInTurn(seed);
        changed = Match(tables, limits, check);
        if (CheckPairs(tables, likeness, changed, check) == 0) break;
    }
    SlideHunks(tables, likeness, changed, check);
    return CollectHunks(tables, changed, ends);
}

}  // namespace vantrel
