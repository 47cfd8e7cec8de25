#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "filetools/aligned_rows.h"
#include "filetools/file_diff_engine.h"
#include "filetools/line_index.h"

namespace vantrel {

enum class FindDirection : std::uint8_t { Next, Previous, Both };

// The data of the two grids grdFileOne and grdFileTwo: the lines of both texts in aligned rows. Nothing is
// copied for a row; a cell is made when it is asked for. Rows are numbered as AlignedRows has them.
class FileGrids {
  public:
    FileGrids() = default;  // empty grids
    // Takes the texts of `diff` with every line in the row of its number, on both sides.
    FileGrids(std::shared_ptr<const FileDiff> diff, const CancelCheck& check);

    bool IsLoaded() const { return diff_ != nullptr; }
    const FileDiff* Diff() const { return diff_.get(); }
    LineNumber LineCount(Side side) const { return lines_[side].Count(); }
    const AlignedRows& Rows() const { return rows_; }
    void SetRows(AlignedRows rows) { rows_ = std::move(rows); }
    DiffList Differences() const { return DiffList(rows_); }

    // " 12.text" with each tab as three blanks; empty for padding. At most `limit` bytes of it, cut between
    // characters, for rows with very long lines.
    std::string CellText(Side side, std::int32_t row, std::size_t limit = std::string::npos) const;
    // What follows the first "." of the cell.
    std::string LineText(Side side, std::int32_t row, std::size_t limit = std::string::npos) const;
    // The line as it stands in the text, tabs included, without line end; empty for padding.
    std::string_view Line(Side side, std::int32_t row) const;

    // Case-insensitive search in the whole cell. Next: from behind `current` to the last row of the left
    // grid, then the same rows of the right one; Previous: from before `current` to row 1, likewise; Both:
    // Next, then Previous. Nothing where the text is empty or not found.
    std::optional<std::int32_t> Find(std::string_view text, FindDirection direction, std::int32_t current,
                                     const CancelCheck& check) const;

  private:
    std::optional<std::int32_t> FindOnSide(Side side, std::string_view text, FindDirection direction,
                                           std::int32_t current, const CancelCheck& check) const;

    std::shared_ptr<const FileDiff> diff_;
    PerSide<LineIndex> lines_;
    AlignedRows rows_;
};

}  // namespace vantrel
