#pragma once

#include <vector>

#include "core/merged_names.h"
#include "core/pair_comparison.h"
#include "core/result_list.h"

namespace vantrel {

// Fills both lists, which must be empty, with a row for every name: the file's, or a placeholder on the side
// that lacks it. Throws ComparisonCancelled.
void ShowAllFilesInBothDirs(const std::vector<MergedFile>& allFileNames, const PerSide<const CDir*>& dirs,
                            PairComparison& pairs, const ComparisonContext& context, HoldLists& hold);

}  // namespace vantrel
