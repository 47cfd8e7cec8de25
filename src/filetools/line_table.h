#pragma once

#include <cstdint>
#include <string>
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

// Tells whether lines are alike, and hashes them so that those that are alike have equal hashes.
class LineReader {
  public:
    LineReader(const LineLikeness& likeness, Side side);
    // `line` with its line end.
    std::uint64_t Hash(std::string_view line, std::uint64_t seed);
    // Whether `line` is like `other`, a line that `otherReader` reads.
    bool IsLike(std::string_view line, LineReader& otherReader, std::string_view other);

  private:
    std::string_view Normal(std::string_view line);

    bool exact_;
    bool ignoreCase_;
    bool ignoreWhitespace_;
    bool western_;
    std::string normal_;  // of the line read last
};

// The lines of a stretch of text: where each begins, and a token for each that is equal where lines are
// alike. Two lines with equal tokens may all the same differ: whoever pairs them looks.
struct LineTable {
    std::string_view text;
    std::vector<std::uint64_t> starts;  // one more than there are lines: the last is the end of the text
    std::vector<std::uint32_t> tokens;

    std::size_t Count() const { return tokens.size(); }
    std::string_view Line(std::size_t index) const { return Lines(index, 1); }
    std::string_view Lines(std::size_t first, std::size_t count) const {
        return text.substr(starts[first], starts[first + count] - starts[first]);
    }
};
LineTable MakeLineTable(std::string_view text, const LineLikeness& likeness, Side side, std::uint64_t seed,
                        const CancelCheck& check);

}  // namespace vantrel
