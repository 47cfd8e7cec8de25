#pragma once

#include "core/cdir.h"
#include "core/comparison_results.h"
#include "core/pair_comparison.h"
#include "core/tree_walk.h"

namespace vantrel {

inline constexpr std::string_view kComparingSubFolders =
    "Comparing files in sub-folders.  Press ESC to cancel...";

// The analysis of the trees below the sub-folders of two scanned folders.
class SubFolderAnalysis {
  public:
    // All must outlive the object.
    SubFolderAnalysis(const ComparisonContext& context, PairComparison& pairs,
                      const PerSide<const CDir*>& dirs);

    // Adds a row to each hold list for every sub-folder of either side, behind the rows that are there, and
    // the differences to the collection; what could not be listed goes to results.unlisted. Throws
    // ComparisonCancelled, also after an error that was reported as "modVantrel.AreFoldersIdentical": a
    // result that is not whole is not shown.
    void ShowAllSubFoldersInBothDirs(ComparisonResults& results);

  private:
    struct Answer {
        bool identical = false;
        TreeWalk::Outcome walk;
    };
    Answer AreFoldersIdentical(TreeWalk& walk, const PerSide<std::string_view>& names,
                               CSubFolderDiffs& diffs);

    const ComparisonContext& context_;
    PairComparison& pairs_;
    PerSide<const CDir*> dirs_;
};

}  // namespace vantrel
