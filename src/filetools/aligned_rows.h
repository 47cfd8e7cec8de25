#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/side.h"
#include "filetools/hunk.h"

namespace vantrel {

enum class GridRowKind : std::uint8_t { Same, Orphan, Changed };

// The values of the colours as they stand in a DiffList: red + 256 green + 65,536 blue.
inline constexpr std::int32_t kOrphanRowColour = 255 + 256 * 225 + 65'536 * 196;
inline constexpr std::int32_t kChangedRowColour = 221 + 256 * 221 + 65'536 * 255;

// The rows in which two texts stand beside each other: row 0 is the fixed row, then lines and padding, the
// same number on both sides, and one blank row at the end. Rows are found by arithmetic over the hunks: some
// 24 bytes a hunk, nothing for a row. With no hunk and no lines there are the two rows of empty grids.
class AlignedRows {
  public:
    // One difference: `height` rows from `row`.
    struct Block {
        std::int32_t row = 0;
        std::int32_t height = 0;
        PerSide<LineNumber> first;  // index of the first line from 0
        PerSide<LineNumber> count;
        GridRowKind Kind() const {
            return count[Side::Left] == 0 || count[Side::Right] == 0 ? GridRowKind::Orphan
                                                                     : GridRowKind::Changed;
        }
    };

    // No line differs.
    explicit AlignedRows(PerSide<LineNumber> lineCounts = {});
    // Adds the next difference. False, and nothing happens, where it does not fit: it is out of order, begins
    // at different distances from the one before, or goes beyond the end of a text.
    [[nodiscard]] bool Add(const Hunk& hunk);
    // Whether both texts have equally many lines behind the last difference, as they must once all were
    // added.
    bool IsConsistent() const;

    std::int32_t Rows() const;                           // with the fixed one and the blank one
    std::int32_t LastRow() const { return Rows() - 2; }  // that holds a line or padding; 0 for none
    // The line in a row, from 1; 0 for padding, the fixed row and the blank one.
    LineNumber LineAt(Side side, std::int32_t row) const;
    // How many lines stand above a row.
    LineNumber LinesBefore(Side side, std::int32_t row) const;
    // The row of a line, from 1.
    std::int32_t RowOfLine(Side side, LineNumber line) const;
    GridRowKind KindAt(std::int32_t row) const;

    const std::vector<Block>& Blocks() const { return blocks_; }
    // Index of the block that holds `row`, -1 for none.
    std::int32_t BlockAt(std::int32_t row) const;
    // Row of the first block behind `row`, and of the last one that begins before it; -1 for none.
    std::int32_t NextDiff(std::int32_t row) const;
    std::int32_t PreviousDiff(std::int32_t row) const;

  private:
    std::size_t BlocksUpTo(std::int32_t row) const;  // how many begin at or before it

    PerSide<LineNumber> lineCounts_;
    std::vector<Block> blocks_;
};

// The differences as texts "row-rows-colour", in ascending order of rows; made when asked for.
class DiffList {
  public:
    DiffList() = default;
    explicit DiffList(const AlignedRows& rows) : blocks_(&rows.Blocks()) {}
    std::int32_t Count() const { return static_cast<std::int32_t>(blocks_ == nullptr ? 0 : blocks_->size()); }
    std::string Entry(std::int32_t index) const;  // from 0

  private:
    const std::vector<AlignedRows::Block>* blocks_ = nullptr;
};

}  // namespace vantrel
