#include "filetools/row_layout.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "filetools/text_columns.h"

namespace vantrel {

std::vector<std::uint32_t> ColumnsOfRows(const FileGrids& grids, const CancelCheck& check) {
    const std::int32_t last = grids.Rows().LastRow();
    std::vector<std::uint32_t> columns(static_cast<std::size_t>(last));
    PacedCheck pace(check, std::size_t{1} << 20);
    for (std::int32_t row = 1; row <= last; ++row) {
        std::int64_t widest = 0;
        for (const Side side : kBothSides) {
            const std::string_view line = grids.Line(side, row);
            widest = std::max(widest, TextColumns(line).Count());
            pace.Count(line.size() + 64);
        }
        columns[static_cast<std::size_t>(row - 1)] = static_cast<std::uint32_t>(
            std::min<std::int64_t>(widest, std::numeric_limits<std::uint32_t>::max()));
    }
    return columns;
}

std::int64_t WidestLine(const FileGrids& grids, const CancelCheck& check) {
    std::int64_t widest = 0;
    PacedCheck pace(check, std::size_t{4} << 20);
    for (const Side side : kBothSides) {
        const std::string_view text = grids.Diff()->texts[side].Text();
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find('\n', at), text.size());
            const auto bytes = static_cast<std::int64_t>(end - at);
            // No character takes more columns than bytes but a tab.
            if (bytes * kTabColumns > widest) {
                const auto tabs = std::count(text.begin() + static_cast<std::ptrdiff_t>(at),
                                             text.begin() + static_cast<std::ptrdiff_t>(end), '\t');
                widest = std::max<std::int64_t>(widest, bytes + tabs * (kTabColumns - 1));
            }
            pace.Count(end - at + 16);
            at = end + 1;
        }
    }
    return widest;
}

RowLayout::RowLayout(FoldedRows folds) : folds_(std::move(folds)) {
}

RowLayout::RowLayout(FoldedRows folds, const std::vector<std::uint32_t>& columns, std::int32_t width)
    : folds_(std::move(folds)), wrapWidth_(std::max(width, 1)) {
    // More visual lines than a scroll bar counts are cut off.
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max() - 1;
    const std::int32_t last = folds_.Positions() - 2;
    starts_.reserve(static_cast<std::size_t>(last) + 1);
    std::int64_t next = 0;
    for (std::int32_t position = 1; position <= last; ++position) {
        starts_.push_back(static_cast<std::int32_t>(std::min(next, kMost)));
        std::int64_t height = 1;
        if (folds_.FoldAt(position) == nullptr) {
            const std::uint32_t wide = columns[static_cast<std::size_t>(folds_.RowAt(position) - 1)];
            height = std::max<std::int64_t>(1, (std::int64_t{wide} + wrapWidth_ - 1) / wrapWidth_);
        }
        next += height;
    }
    starts_.push_back(static_cast<std::int32_t>(std::min(next, kMost)));
}

std::int32_t RowLayout::Lines() const {
    return wrapWidth_ == 0 ? folds_.Positions() - 1 : starts_.back() + 1;
}

std::int32_t RowLayout::StartOf(std::int32_t position) const {
    if (wrapWidth_ == 0) return position - 1;
    const auto index = static_cast<std::size_t>(std::max(position, 1) - 1);
    return starts_[std::min(index, starts_.size() - 1)];
}

RowLayout::Place RowLayout::At(std::int32_t line) const {
    if (wrapWidth_ == 0) return {line + 1, 0};
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), line);
    const auto position = static_cast<std::int32_t>(behind - starts_.begin());
    return position < 1 ? Place{1, 0} : Place{position, line - StartOf(position)};
}

std::int32_t RowLayout::LineOfRow(std::int32_t row) const {
    return StartOf(folds_.PositionOf(row));
}

std::int32_t RowLayout::HeightOfRow(std::int32_t row) const {
    if (wrapWidth_ == 0) return 1;
    const std::int32_t position = folds_.PositionOf(row);
    return std::max(1, StartOf(position + 1) - StartOf(position));
}

}  // namespace vantrel
