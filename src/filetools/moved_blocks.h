#pragma once

#include <vector>

#include "filetools/file_diff_engine.h"

namespace vantrel {

// Lines that were taken away at one place and put in at another.
struct MovedBlock {
    PerSide<LineNumber> first;  // index from 0
    LineNumber count = 0;
};

// The blocks that moved, in the order of the right side; no line is in two of them. A block counts when it
// says something: at least kLeastMovedCharacters letters and digits. `lines` are the lines of the two texts.
// The work is bounded by the number of changed lines.
inline constexpr int kLeastMovedCharacters = 20;
std::vector<MovedBlock> FindMovedBlocks(const FileDiff& diff, const CancelCheck& check);

// The block that holds line `line` (index from 0) of `side`, null for none.
const MovedBlock* MovedBlockAt(const std::vector<MovedBlock>& blocks, Side side, LineNumber line);

}  // namespace vantrel
