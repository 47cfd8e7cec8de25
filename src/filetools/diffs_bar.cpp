#include "filetools/diffs_bar.h"

#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

int Rounded(double value) {
    return static_cast<int>(std::nearbyint(value));
}

}  // namespace

std::vector<BarMark> MarksOfBar(const std::vector<AlignedRows::Block>& blocks, std::int32_t rows,
                                int height) {
    std::vector<BarMark> marks;
    if (rows < 1 || height < 1) return marks;
    const float scale = static_cast<float>(height) / static_cast<float>(rows);
    for (const AlignedRows::Block& block : blocks) {
        const int lines = Rounded(static_cast<double>(scale) * block.height);
        if (lines == 0) continue;
        const int top = Rounded(static_cast<double>(height) * (block.row - 1) / rows);
        if (!marks.empty()) {
            BarMark& last = marks.back();
            if (last.kind == block.Kind() && top <= last.top + last.height) {
                last.height = std::max(last.height, top + lines - last.top);
                continue;
            }
        }
        marks.push_back({top, lines, block.Kind()});
    }
    return marks;
}

int BarLineOfRow(std::int32_t row, std::int32_t rows, int height) {
    if (rows < 1) return 0;
    const float scale = static_cast<float>(height) / static_cast<float>(rows);
    return Rounded(static_cast<double>(scale) * (row - 1));
}

std::int32_t RowAtBarPoint(int y, std::int32_t rows, int height) {
    if (rows < 1 || height < 1) return 0;
    const float scale = static_cast<float>(height) / static_cast<float>(rows);
    const double row = std::nearbyint(y / static_cast<double>(scale));
    return static_cast<std::int32_t>(std::clamp(row, 1.0, std::max(1.0, rows - 1.0)));
}

}  // namespace vantrel
