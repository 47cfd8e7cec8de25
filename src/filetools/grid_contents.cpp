#include "filetools/grid_contents.h"

#include <algorithm>

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

void GridContents::SetMoved(const std::vector<MovedBlock>& blocks) {
    for (const Side side : kBothSides) {
        moved_[side] = blocks;
        std::sort(moved_[side].begin(), moved_[side].end(),
                  [side](const MovedBlock& one, const MovedBlock& other) {
                      return one.first[side] < other.first[side];
                  });
    }
}

const MovedBlock* GridContents::MovedAt(Side side, std::int32_t row) const {
    const LineNumber line = grids.Rows().LineAt(side, row);
    if (line == 0) return nullptr;
    const auto behind = std::upper_bound(
        moved_[side].begin(), moved_[side].end(), line - 1,
        [side](LineNumber index, const MovedBlock& block) { return index < block.first[side]; });
    if (behind == moved_[side].begin()) return nullptr;
    const MovedBlock& block = *(behind - 1);
    return line - 1 - block.first[side] < block.count ? &block : nullptr;
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
