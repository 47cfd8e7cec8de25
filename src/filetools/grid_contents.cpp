#include "filetools/grid_contents.h"

namespace vantrel {

RowMarker GridContents::MarkerOf(std::int32_t row) const {
    if (row != currentRow) return bookmarks.Contains(row) ? RowMarker::Bookmark : RowMarker::None;
    if (bookmarks.Contains(row)) return RowMarker::BookmarkArrow;
    switch (grids.Rows().KindAt(row)) {
        case GridRowKind::Orphan:
            return RowMarker::OrphanArrow;
        case GridRowKind::Changed:
            return RowMarker::DifferArrow;
        case GridRowKind::Same:
            break;
    }
    return RowMarker::Arrow;
}

const MovedBlock* GridContents::MovedAt(Side side, std::int32_t row) const {
    const LineNumber line = grids.Rows().LineAt(side, row);
    return line == 0 ? nullptr : moved.At(side, line - 1);
}

std::int32_t GridContents::OtherPlaceOf(std::int32_t row) const {
    for (const Side side : kBothSides) {
        const MovedBlock* block = MovedAt(side, row);
        if (block == nullptr) continue;
        const LineNumber inside = grids.Rows().LineAt(side, row) - 1 - block->first[side];
        return grids.Rows().RowOfLine(Other(side), block->first[Other(side)] + inside + 1);
    }
    return 0;
}

}  // namespace vantrel
