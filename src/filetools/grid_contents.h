#pragma once

#include <cstdint>

#include "filetools/file_grids.h"
#include "filetools/inline_differences.h"
#include "filetools/moved_blocks.h"
#include "filetools/row_bookmarks.h"
#include "filetools/row_layout.h"

namespace vantrel {

// The picture in front of a row, in the left grid.
enum class RowMarker : std::uint8_t { None, Arrow, DifferArrow, OrphanArrow, Bookmark, BookmarkArrow };

// What the two grids of the difference viewer show, both of the same; the window alone changes it. Without a
// result `grids` is not loaded.
struct GridContents {
    FileGrids grids;
    RowLayout layout;
    MovedBlocks moved;
    RowBookmarks bookmarks;
    RowDifferences differences;
    std::int32_t currentRow = 1;
    std::int64_t widest = 0;     // columns
    bool markCharacters = true;  // in the rows that are seen
    bool ignoreCase = false;     // when they are marked

    bool HasResult() const { return grids.IsLoaded(); }
    RowMarker MarkerOf(std::int32_t row) const;

    // The block that moved, of the line that a side has in a row; null for none.
    const MovedBlock* MovedAt(Side side, std::int32_t row) const;
    // Where the line of a row stands on the other side, if either of its two lines moved, the left one first;
    // 0 for none.
    std::int32_t OtherPlaceOf(std::int32_t row) const;
};

}  // namespace vantrel
