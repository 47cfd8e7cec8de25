#include "filetools/folded_rows.h"

#include <algorithm>

namespace vantrel {

FoldedRows::FoldedRows(const AlignedRows& rows, std::int32_t context) : rows_(rows.Rows()) {
    std::int32_t from = 1;
    const auto fold = [&](std::int32_t end) {
        if (end - from >= kLeastHidden) folds_.push_back({.row = from, .count = end - from});
    };
    bool first = true;
    for (const AlignedRows::Block& block : rows.Blocks()) {
        from += first ? 0 : context;
        fold(block.row - context);
        from = block.row + block.height;
        first = false;
    }
    from += first ? 0 : context;
    // With no difference there is nothing that a fold would lead to.
    if (!first) fold(rows.LastRow() + 1);
    Place();
}

FoldedRows FoldedRows::Unfolded(const AlignedRows& rows) {
    FoldedRows all;
    all.rows_ = rows.Rows();
    return all;
}

void FoldedRows::Place() {
    hidden_ = 0;
    for (Fold& fold : folds_) {
        fold.position = fold.row - hidden_;
        hidden_ += fold.count - 1;
    }
}

const FoldedRows::Fold* FoldedRows::FoldAt(std::int32_t position) const {
    const auto found = std::lower_bound(folds_.begin(), folds_.end(), position,
                                        [](const Fold& fold, std::int32_t at) { return fold.position < at; });
    return found != folds_.end() && found->position == position ? &*found : nullptr;
}

std::int32_t FoldedRows::RowAt(std::int32_t position) const {
    const auto behind =
        std::upper_bound(folds_.begin(), folds_.end(), position,
                         [](std::int32_t at, const Fold& fold) { return at < fold.position; });
    if (behind == folds_.begin()) return position;
    const Fold& fold = *(behind - 1);
    return position == fold.position ? fold.row : fold.row + fold.count + position - fold.position - 1;
}

std::int32_t FoldedRows::PositionOf(std::int32_t row) const {
    const auto behind = std::upper_bound(folds_.begin(), folds_.end(), row,
                                         [](std::int32_t at, const Fold& fold) { return at < fold.row; });
    if (behind == folds_.begin()) return row;
    const Fold& fold = *(behind - 1);
    const std::int32_t inside = row - fold.row;
    return inside < fold.count ? fold.position : fold.position + 1 + inside - fold.count;
}

bool FoldedRows::Open(std::int32_t row) {
    const auto found = std::find_if(folds_.begin(), folds_.end(), [row](const Fold& fold) {
        return row >= fold.row && row - fold.row < fold.count;
    });
    if (found == folds_.end()) return false;
    folds_.erase(found);
    Place();
    return true;
}

}  // namespace vantrel
