#pragma once

#include <cstdint>
#include <vector>

#include "filetools/cancel_check.h"
#include "filetools/file_grids.h"
#include "filetools/folded_rows.h"

namespace vantrel {

// How many columns the wider of the two lines of each row takes: four bytes a row, made when lines are to be
// wrapped. The first element is that of row 1.
std::vector<std::uint32_t> ColumnsOfRows(const FileGrids& grids, const CancelCheck& check);

// Columns of the widest line, or somewhat more where lines hold many tabs or characters beyond ASCII.
std::int64_t WidestLine(const FileGrids& grids, const CancelCheck& check);

// Where rows stand below each other: which are seen, and how many visual lines each takes. Visual lines are
// numbered from 0; the last one is the blank row at the end. Unwrapped this is arithmetic alone.
class RowLayout {
  public:
    RowLayout() = default;
    // One visual line for each row seen.
    explicit RowLayout(FoldedRows folds);
    // Rows wrapped in both panes alike behind `width` columns (at least 1): as many visual lines on the left
    // as on the right. Four bytes a row seen.
    RowLayout(FoldedRows folds, const std::vector<std::uint32_t>& columns, std::int32_t width);

    const FoldedRows& Folds() const { return folds_; }
    std::int32_t WrapWidth() const { return wrapWidth_; }  // 0: not wrapped
    std::int32_t Lines() const;

    struct Place {
        std::int32_t position = 0;  // of FoldedRows
        std::int32_t part = 0;      // 0 for the first visual line of the row
    };
    Place At(std::int32_t line) const;
    // First visual line of the row, or of the fold that hides it.
    std::int32_t LineOfRow(std::int32_t row) const;
    std::int32_t HeightOfRow(std::int32_t row) const;
    std::int32_t RowAt(std::int32_t line) const { return folds_.RowAt(At(line).position); }

  private:
    std::int32_t StartOf(std::int32_t position) const;

    FoldedRows folds_;
    std::int32_t wrapWidth_ = 0;
    std::vector<std::int32_t> starts_;  // of positions 1 to the last, and behind it
};

}  // namespace vantrel
