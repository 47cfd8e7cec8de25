#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "core/side.h"
#include "filetools/cancel_check.h"
#include "filetools/line_table.h"

namespace vantrel {

// A run of changed lines can stand at another place where the line that it gains is like the one that it
// loses. Moves each run to where it reads best: onto a change of the other side where there is one, otherwise
// to where a block of text begins; runs that meet become one. `changed` has a mark for each line and stays
// equally long: no line more is marked, and none less.
void SlideHunks(const PerSide<LineTable>& tables, const LineLikeness& likeness,
                PerSide<std::vector<std::uint8_t>>& changed, const CancelCheck& check);

}  // namespace vantrel
