#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/side.h"

namespace vantrel {

// What a line is, for every part of the line comparison and for whoever shows its lines: it ends behind its
// LF, or where the text ends. A CR in front of that LF belongs to the line's end and is not shown; any other
// CR is a character of its line. A text without any LF whose lines end in CR is turned to LF lines when it is
// loaded for reading (TextForm::ForReading) and is one line when it is loaded as it is stored, which is how
// `patch` counts. Lines are numbered from 1 for people and in the output, from 0 in the engine. An empty text
// has no lines.
using LineNumber = std::int32_t;
inline constexpr LineNumber kMostLines = 0x7FFF'FFFE;

// Lines that follow each other in one text, and the bytes that they take there, line ends included.
struct LineRange {
    LineNumber first = 0;  // index from 0; where count is 0, the line in front of which it would stand
    LineNumber count = 0;
    std::uint64_t offset = 0;
    std::uint64_t size = 0;

    LineNumber End() const { return first + count; }
    friend bool operator==(const LineRange&, const LineRange&) = default;
};

// The lines of one text that stand for lines of the other. At least one of the two ranges has lines; between
// two hunks there are equal lines on both sides, as many on the left as on the right.
struct Hunk {
    PerSide<LineRange> lines;

    char Form() const {  // "a", "d" or "c" of the output
        if (lines[Side::Left].count == 0) return 'a';
        return lines[Side::Right].count == 0 ? 'd' : 'c';
    }
};

// "5a6,7", "3,4d2", "8c9". Where a side has no lines its number is that of the line before, which may be 0.
std::string HunkHeader(const Hunk& hunk);

// Reads a header back: numbers of lines, no offsets. False for what is none: a number that is missing, too
// large, or a range that runs backwards.
bool ParseHunkHeader(std::string_view text, Hunk& hunk);

}  // namespace vantrel
