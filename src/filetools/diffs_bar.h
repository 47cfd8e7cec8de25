#pragma once

#include <cstdint>
#include <vector>

#include "filetools/aligned_rows.h"

namespace vantrel {

// The picture of a whole comparison in a narrow bar, in pixels. `rows` is the scale: AlignedRows::Rows()
// less 1. Everything is 0 or empty for a bar without height or rows.

// Lines of one colour below each other: `height` of them from `top`.
struct BarMark {
    int top = 0;
    int height = 0;
    GridRowKind kind = GridRowKind::Same;
    friend bool operator==(const BarMark&, const BarMark&) = default;
};

// One mark for each difference that is at least half a pixel high; the others leave none. Marks of one kind
// that touch are joined, so that there are never more than the bar has lines.
std::vector<BarMark> MarksOfBar(const std::vector<AlignedRows::Block>& blocks, std::int32_t rows, int height);

// Where the line that marks a row stands.
int BarLineOfRow(std::int32_t row, std::int32_t rows, int height);
// The row at a point of the bar: 1 to the last one.
std::int32_t RowAtBarPoint(int y, std::int32_t rows, int height);

}  // namespace vantrel
