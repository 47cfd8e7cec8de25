#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "filetools/line_diff.h"

namespace vantrel::testing {

// The lines of a text, each with its line end.
std::vector<std::string_view> LinesOf(std::string_view text);

// Length of a longest common subsequence, by the full table.
std::size_t SlowLcs(const std::vector<std::string_view>& one, const std::vector<std::string_view>& two);

// What the hunks make of the left text; their numbers and bytes are held against each other on the way.
std::string Apply(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts);

// Lines that the hunks take away and put in.
std::size_t LengthOf(const std::vector<Hunk>& hunks);

// A text of some lines out of few different ones, and one made of it by random edits: with blank lines, CR,
// CR LF, a last line with or without its end, and now and then nothing at all.
struct RandomTexts {
    explicit RandomTexts(unsigned seed) : random(seed) {}
    PerSide<std::string> Next();

    std::mt19937 random;

  private:
    std::size_t Below(std::size_t limit) { return random() % limit; }
    std::string Line();
};

inline PerSide<std::string_view> Views(const PerSide<std::string>& texts) {
    return {{texts[Side::Left], texts[Side::Right]}};
}

}  // namespace vantrel::testing
