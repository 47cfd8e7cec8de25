#pragma once

#include <cstdint>
#include <vector>

#include "filetools/aligned_rows.h"

namespace vantrel {

// Which rows are seen when stretches of equal lines are folded away: each becomes one row, its fold, that
// tells how many rows it hides. Rows of differences, and `context` rows around them, are never hidden.
// Positions are numbered like rows: 0 is the fixed row, the blank row stays at the end.
class FoldedRows {
  public:
    // A stretch of fewer rows than this is not worth a fold.
    static constexpr std::int32_t kLeastHidden = 3;

    struct Fold {
        std::int32_t row = 0;       // the first one hidden
        std::int32_t count = 0;     // rows hidden
        std::int32_t position = 0;  // where the fold is seen
    };

    FoldedRows() = default;
    // `rows` are those of the grids; they may go afterwards.
    FoldedRows(const AlignedRows& rows, std::int32_t context);
    // All rows are seen.
    static FoldedRows Unfolded(const AlignedRows& rows);

    std::int32_t Positions() const { return rows_ - hidden_; }
    // The row seen at a position; of a fold, the first row that it hides.
    std::int32_t RowAt(std::int32_t position) const;
    // Where a row is seen; of a hidden one, its fold.
    std::int32_t PositionOf(std::int32_t row) const;
    // The fold at a position, null where a row is seen there.
    const Fold* FoldAt(std::int32_t position) const;
    // Shows what the fold that hides `row` hides. False where the row is seen.
    bool Open(std::int32_t row);

  private:
    void Place();  // positions of the folds and the sum of what they hide

    std::int32_t rows_ = 2;
    std::int32_t hidden_ = 0;  // rows less positions
    std::vector<Fold> folds_;
};

}  // namespace vantrel
