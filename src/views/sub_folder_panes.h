#pragma once

#include <string>
#include <string_view>

#include "core/sub_folder_diffs.h"
#include "diagnostics/error_reporter.h"
#include "views/aligned_panes.h"

namespace vantrel {

// The four lists of the window of sub-folder differences: lvwHiddenDirOneDiffs and lvwHiddenDirTwoDiffs
// (Hold) have every row, the user sees lvwDirOneDiffs and lvwDirTwoDiffs (Pane), which a filter can limit. A
// file operation may leave a pair of two placeholders behind.
class SubFolderPanes : public AlignedPanes {
  public:
    // Both must outlive the panes.
    SubFolderPanes(ErrorReporter& reporter, BusyState& busy)
        : AlignedPanes(hidden_, busy), reporter_(reporter) {}

    // The records become the rows of all four lists. What lies elsewhere as well, and what is not known, has
    // rows that say so. The rows outlive `diffs`.
    void Fill(const CSubFolderDiffs& diffs);
    // Rebuilds the visible lists from the hidden ones, as far as the filter lets rows through. Nothing stays
    // selected; top rows and selected items stay with their rows (PanePlace).
    void CopyItemsFromHiddenLVWToVisibleLVW();

    // Shows only pairs whose path holds this text, whatever its letter case; behind a "/" at its beginning
    // stands how the path has to begin. Empty: all pairs.
    void SetFilter(std::string_view text);
    std::size_t CountShown() const { return panes_[Side::Left].Count(); }

    // The real rows of the pane last pressed: selected exactly where they have this type. Status texts stay.
    void SelectByType(ResultType type);

    // Two pairs of lists for an operation on files, with all rows: those with the selection of the panes, and
    // their twins, the hidden lists. From BeginOperation to EndOperation; the panes show what came of it
    // after CopyItemsFromHiddenLVWToVisibleLVW.
    void BeginOperation();
    void EndOperation();
    PerSide<ResultList>& Chosen() { return chosen_; }
    PerSide<ResultList>& Hidden() { return hidden_; }

    // The panes stand beside each other and lead to their hidden rows. `why` names the first fault.
    bool IsConsistent(std::string* why = nullptr) const;

  private:
    bool Passes(std::size_t row) const;

    HoldLists hidden_;
    ErrorReporter& reporter_;
    PerSide<ResultList> chosen_;
    std::string filter_;  // folded
};

// What a user is told of the records that nothing is done with, and of places that are not known, a line
// each; empty where there are none. `folders` are the two sub-folders.
std::string DescribeLeftAlone(const CSubFolderDiffs& diffs, const PerSide<std::string>& folders);

}  // namespace vantrel
