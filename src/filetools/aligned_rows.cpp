#include "filetools/aligned_rows.h"

#include <algorithm>

namespace vantrel {

AlignedRows::AlignedRows(PerSide<LineNumber> lineCounts) : lineCounts_(lineCounts) {
}

bool AlignedRows::Add(const Hunk& hunk) {
    Block block;
    PerSide<LineNumber> equalLines;  // since the block before
    for (const Side side : kBothSides) {
        const LineRange& range = hunk.lines[side];
        const LineNumber from = blocks_.empty() ? 0 : blocks_.back().first[side] + blocks_.back().count[side];
        equalLines[side] = range.first - from;
        block.first[side] = range.first;
        block.count[side] = range.count;
        block.height = std::max(block.height, range.count);
        if (range.first < 0 || range.count < 0 || equalLines[side] < 0) return false;
        if (range.count > lineCounts_[side] || range.first > lineCounts_[side] - range.count) return false;
    }
    if (equalLines[Side::Left] != equalLines[Side::Right] || block.height == 0) return false;
    const std::int64_t row =
        (blocks_.empty() ? 1 : std::int64_t{blocks_.back().row} + blocks_.back().height) +
        equalLines[Side::Left];
    if (row + block.height > kMostLines) return false;
    block.row = static_cast<std::int32_t>(row);
    blocks_.push_back(block);
    return true;
}

bool AlignedRows::IsConsistent() const {
    PerSide<LineNumber> behind = lineCounts_;
    if (!blocks_.empty())
        for (const Side side : kBothSides)
            behind[side] -= blocks_.back().first[side] + blocks_.back().count[side];
    return behind[Side::Left] == behind[Side::Right];
}

std::int32_t AlignedRows::Rows() const {
    std::int32_t rows = 0;
    for (const Side side : kBothSides) {
        std::int32_t ofSide = lineCounts_[side];
        if (!blocks_.empty()) {
            const Block& last = blocks_.back();
            ofSide += last.row - 1 + last.height - last.first[side] - last.count[side];
        }
        rows = std::max(rows, ofSide);
    }
    return rows + 2;
}

std::size_t AlignedRows::BlocksUpTo(std::int32_t row) const {
    const auto behind =
        std::upper_bound(blocks_.begin(), blocks_.end(), row,
                         [](std::int32_t wanted, const Block& block) { return wanted < block.row; });
    return static_cast<std::size_t>(behind - blocks_.begin());
}

LineNumber AlignedRows::LinesBefore(Side side, std::int32_t row) const {
    const std::size_t blocks = BlocksUpTo(row);
    LineNumber lines = row - 1;
    if (blocks > 0) {
        const Block& block = blocks_[blocks - 1];
        const std::int32_t inside = row - block.row;
        lines = block.first[side] + (inside < block.height ? std::min(inside, block.count[side])
                                                           : block.count[side] + inside - block.height);
    }
    return std::clamp(lines, 0, lineCounts_[side]);
}

LineNumber AlignedRows::LineAt(Side side, std::int32_t row) const {
    if (row < 1 || row > LastRow()) return 0;
    const LineNumber before = LinesBefore(side, row);
    return LinesBefore(side, row + 1) > before ? before + 1 : 0;
}

std::int32_t AlignedRows::RowOfLine(Side side, LineNumber line) const {
    const auto behind =
        std::upper_bound(blocks_.begin(), blocks_.end(), line - 1,
                         [side](LineNumber index, const Block& block) { return index < block.first[side]; });
    if (behind == blocks_.begin()) return line;
    const Block& block = *(behind - 1);
    const LineNumber inside = line - 1 - block.first[side];
    if (inside < block.count[side]) return block.row + inside;
    return block.row + block.height + inside - block.count[side];
}

std::int32_t AlignedRows::BlockAt(std::int32_t row) const {
    const std::size_t blocks = BlocksUpTo(row);
    if (blocks == 0) return -1;
    const Block& block = blocks_[blocks - 1];
    return row - block.row < block.height ? static_cast<std::int32_t>(blocks - 1) : -1;
}

GridRowKind AlignedRows::KindAt(std::int32_t row) const {
    const std::int32_t block = BlockAt(row);
    return block < 0 ? GridRowKind::Same : blocks_[static_cast<std::size_t>(block)].Kind();
}

std::int32_t AlignedRows::NextDiff(std::int32_t row) const {
    const std::size_t next = BlocksUpTo(row);
    return next < blocks_.size() ? blocks_[next].row : -1;
}

std::int32_t AlignedRows::PreviousDiff(std::int32_t row) const {
    const std::size_t before = BlocksUpTo(row - 1);
    return before > 0 ? blocks_[before - 1].row : -1;
}

std::string DiffList::Entry(std::int32_t index) const {
    const AlignedRows::Block& block = (*blocks_)[static_cast<std::size_t>(index)];
    const std::int32_t colour = block.Kind() == GridRowKind::Orphan ? kOrphanRowColour : kChangedRowColour;
    return std::to_string(block.row) + "-" + std::to_string(block.height) + "-" + std::to_string(colour);
}

}  // namespace vantrel
