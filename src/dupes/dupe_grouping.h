#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "dupes/dupe_collecting.h"

namespace vantrel {

// Files with equal keys, which stand side by side.
struct DupeRun {
    std::size_t first = 0, count = 0;
};

// Puts the files in the order of their keys, each criterion in turn, ascending, without contents: names by
// their folded form, times by whole seconds. Equal keys are in the order of ComesBefore. Gives the runs of
// two and more. A file of unknown size is equal to none where sizes count.
std::vector<DupeRun> OrderByCriteria(FoundFiles& files, const DupeCriteria& criteria, const DupeCheck& check);

// Orders the files of the runs by their hashes, and divides each run into those of equal contents, again of
// two and more. Contents that were not looked at are equal to none.
std::vector<DupeRun> DivideByContents(FoundFiles& files, const std::vector<DupeRun>& runs,
                                      const DupeCheck& check);

}  // namespace vantrel
