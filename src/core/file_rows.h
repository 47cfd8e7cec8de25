#pragma once

#include <vector>

#include "core/comparison_results.h"
#include "core/merged_names.h"
#include "core/pair_comparison.h"

namespace vantrel {

// Fills both hold lists, which must be empty, with a row for every name: the file's, or a placeholder on the
// side that lacks it. A name that is occupied by what is no file gives rows of the kind Unknown, special
// objects without a counterpart are only counted. Throws ComparisonCancelled.
void ShowAllFilesInBothDirs(const MergedFiles& allFileNames, const PerSide<const CDir*>& dirs,
                            PairComparison& pairs, const ComparisonContext& context,
                            ComparisonResults& found);

}  // namespace vantrel
