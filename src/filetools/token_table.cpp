#include <algorithm>
#include <cmath>
#include <utility>

#include "filetools/bit_rows.h"
#include "filetools/token_box.h"

namespace vantrel {

namespace {

// A table of so many words is kept whole (1 MiB); larger ones are halved first.
constexpr std::size_t kKeptWords = std::size_t{1} << 17;

// Bit rows run along the longer of the two sequences.
struct Oriented {
    Side rows;
    Side pattern;
};
Oriented Orient(const TokenBox& box) {
    const bool leftIsLonger = box.Size(Side::Left) > box.Size(Side::Right);
    return leftIsLonger ? Oriented{Side::Right, Side::Left} : Oriented{Side::Left, Side::Right};
}

using BitRow = std::vector<std::uint64_t>;

BitRow LastRow(Tokens rows, Tokens pattern, PacedCheck& pace) {
    MatchBits matches(pattern);
    BitRow row(matches.Words(), ~std::uint64_t{0});
    for (const std::uint32_t token : rows) {
        AdvanceRow(matches.For(token), row);
        pace.Count(row.size() + 8);
    }
    return row;
}

class TableSolver {
  public:
    TableSolver(const PerSide<Tokens>& tokens, PacedCheck& pace) : tokens_(tokens), pace_(pace) {}

    // Boxes are taken from the last to the first, so that the pairs come in descending order.
    std::vector<TokenPair> Run() {
        boxes_.push_back({{{0, 0}}, {{tokens_[Side::Left].size(), tokens_[Side::Right].size()}}});
        while (!boxes_.empty()) {
            const TokenBox box = boxes_.back();
            boxes_.pop_back();
            if (box.IsEmpty(Side::Left) || box.IsEmpty(Side::Right)) continue;
            const Oriented sides = Orient(box);
            const std::size_t words = (box.Size(sides.pattern) + 63) / 64;
            if (box.Size(sides.rows) == 1 || box.Size(sides.rows) * words <= kKeptWords)
                WalkBack(box, sides);
            else
                Halve(box, sides);
        }
        std::reverse(pairs_.begin(), pairs_.end());
        return std::move(pairs_);
    }

  private:
    void WalkBack(const TokenBox& box, Oriented sides) {
        const Tokens rows = box.Of(tokens_, sides.rows);
        const Tokens pattern = box.Of(tokens_, sides.pattern);
        MatchBits matches(pattern);
        const std::size_t words = matches.Words();
        table_.assign(words * rows.size(), 0);
        BitRow row(words, ~std::uint64_t{0});
        for (std::size_t i = 0; i < rows.size(); ++i) {
            AdvanceRow(matches.For(rows[i]), row);
            std::copy(row.begin(), row.end(), table_.begin() + static_cast<std::ptrdiff_t>(i * words));
            pace_.Count(words + 8);
        }
        std::size_t i = rows.size();
        std::size_t j = pattern.size();
        while (i > 0 && j > 0) {
            if (rows[i - 1] == pattern[j - 1]) {
                --i;
                --j;
                TokenPair pair;
                pair[sides.rows] = static_cast<std::uint32_t>(box.begin[sides.rows] + i);
                pair[sides.pattern] = static_cast<std::uint32_t>(box.begin[sides.pattern] + j);
                pairs_.push_back(pair);
            } else if (Grows({table_.data() + (i - 1) * words, words}, j - 1)) {
                --i;
            } else {
                --j;
            }
        }
    }

    // Cuts the rows in the middle and the pattern where the best ways through both halves meet.
    void Halve(const TokenBox& box, Oriented sides) {
        const Tokens rows = box.Of(tokens_, sides.rows);
        const Tokens pattern = box.Of(tokens_, sides.pattern);
        const std::size_t middle = rows.size() / 2;
        const BitRow forward = LastRow(rows.first(middle), pattern, pace_);
        const std::vector<std::uint32_t> rowsBack(rows.rbegin(),
                                                  rows.rend() - static_cast<std::ptrdiff_t>(middle));
        const std::vector<std::uint32_t> patternBack(pattern.rbegin(), pattern.rend());
        const BitRow backward = LastRow(rowsBack, patternBack, pace_);
        std::size_t length = CountGrowth(backward, pattern.size());
        std::size_t best = length;
        std::size_t cut = 0;
        for (std::size_t j = 0; j < pattern.size(); ++j) {
            length += static_cast<std::size_t>(Grows(forward, j));
            length -= static_cast<std::size_t>(Grows(backward, pattern.size() - 1 - j));
            if (length > best) {
                best = length;
                cut = j + 1;
            }
        }
        PerSide<std::size_t> point;
        point[sides.rows] = box.begin[sides.rows] + middle;
        point[sides.pattern] = box.begin[sides.pattern] + cut;
        boxes_.push_back({box.begin, point});
        boxes_.push_back({point, box.end});
    }

    const PerSide<Tokens> tokens_;
    PacedCheck& pace_;
    std::vector<TokenBox> boxes_;
    std::vector<TokenPair> pairs_;
    BitRow table_;
};

}  // namespace

std::vector<TokenPair> PairsByTable(Tokens left, Tokens right, PacedCheck& pace) {
    return TableSolver({{left, right}}, pace).Run();
}

PerSide<std::size_t> FindWindow(Tokens left, Tokens right, std::int64_t words, PacedCheck& pace) {
    const PerSide<Tokens> tokens{{left, right}};
    const Side longer = left.size() > right.size() ? Side::Left : Side::Right;
    const double ratio =
        static_cast<double>(tokens[Other(longer)].size()) / static_cast<double>(tokens[longer].size());
    // Twice as much of the shorter one as its share, so that there is a choice: rows * (2 * ratio * rows)
    // cells.
    const double wantedRows = std::sqrt(static_cast<double>(words) * 32 / std::max(ratio, 1e-9));
    const std::size_t rows = std::clamp<std::size_t>(static_cast<std::size_t>(wantedRows), 1,
                                                     std::max<std::size_t>(tokens[longer].size() / 2, 1));
    const double share = static_cast<double>(rows) * ratio;
    const std::size_t width =
        std::clamp<std::size_t>(static_cast<std::size_t>(2 * share) + 1, 1, tokens[Other(longer)].size());
    const BitRow row = LastRow(tokens[longer].first(rows), tokens[Other(longer)].first(width), pace);
    // Where most of what was gone through had its match.
    double best = -1;
    std::size_t cut = 0;
    std::size_t length = 0;
    for (std::size_t j = 0; j < width; ++j) {
        length += static_cast<std::size_t>(Grows(row, j));
        const double density = static_cast<double>(length) / (share + static_cast<double>(j + 1));
        if (density <= best) continue;
        best = density;
        cut = j + 1;
    }
    PerSide<std::size_t> point;
    point[longer] = rows;
    point[Other(longer)] = cut;
    return point;
}

}  // namespace vantrel
