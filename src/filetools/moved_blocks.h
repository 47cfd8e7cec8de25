#pragma once

#include <cstdint>
#include <vector>

#include "filetools/file_diff_engine.h"

namespace vantrel {

// Lines that were taken away at one place and put in at another.
struct MovedBlock {
    PerSide<LineNumber> first;  // index from 0
    LineNumber count = 0;
};

// The blocks that moved, in the order of the right side; no line is in two of them.
class MovedBlocks {
  public:
    MovedBlocks() = default;
    explicit MovedBlocks(std::vector<MovedBlock> blocks);
    const std::vector<MovedBlock>& All() const { return blocks_; }
    // The block that holds line `line` (index from 0) of `side`, null for none.
    const MovedBlock* At(Side side, LineNumber line) const;

  private:
    std::vector<MovedBlock> blocks_;
    PerSide<std::vector<std::uint32_t>> inOrder_;  // of the lines of each side
};

// A block counts when it says something: at least kLeastMovedCharacters letters and digits. Very long ones
// are told in parts. The work is bounded by the number of changed lines.
inline constexpr int kLeastMovedCharacters = 20;
MovedBlocks FindMovedBlocks(const FileDiff& diff, const CancelCheck& check);

}  // namespace vantrel
