#pragma once

#include <functional>
#include <string>

#include "diagnostics/error_reporter.h"
#include "platform/ports.h"
#include "views/aligned_panes.h"
#include "views/cview_selections.h"

namespace vantrel {

struct SelectCriteria;

// The five lists of the main window and the rules that hold between them: lvwHoldAllFilesSource and
// lvwHoldAllFilesTarget (Hold) have every row of the last comparison, the user sees lvwSourceDirFiles and
// lvwTargetDirFiles (Pane). A row of the left and the row of
// the same number of the right visible list are always one pair, but for the state after
// ShowOnlySelectedObjects.
class ResultPanes : public AlignedPanes {
  public:
    // `hold`, which comparisons fill, and all else must outlive the panes.
    ResultPanes(HoldLists& hold, CViewSelections& viewSelections, ErrorReporter& reporter,
                MessagePort& messages, BusyState& busy);

    // The hold list of a visible list; nullptr for any other list.
    ResultList* GetCorrespondingHoldListView(const PaneList* list);
    const CViewSelections& ViewSelections() const { return viewSelections_; }
    // Each pane holds the one row "No Comparison Results".
    bool ShowsNoResult() const;

    // Rebuilds both visible lists from the hold lists by the view flags; at the end of a comparison, and
    // after the view changed. Top rows, selected items and selections stay with their rows (PanePlace). Does
    // nothing while the hold lists are in the no-result state.
    void ApplyViewTypes();
    void RemoveListItemsAndShowNoCompareMsg();
    // Three steps through lvwForSwap. The rows lose their tags, since they no longer match their hold list.
    void ExchangePanes();

    // mnuViewViewAll, mnuViewDifferences, mnuViewSimilarities (kViewAll, kViewDifferent, kViewSimilar).
    void ChooseView(std::int32_t viewType);
    // mnuViewOther: its item is checked and the user told; flags and rows stay.
    void ChooseOtherView();
    // A click on the toggle of a result type.
    void ToggleView(ResultType type);
    // To be called when the view selections were changed elsewhere (settings were read): shows them.
    void DisplayViewSelections();
    // Number of the checked one of the four view items, kViewAll to kViewCustom.
    std::int32_t CheckedViewItem() const { return viewSelections_.CheckedItem(); }

    // Panel 4 of the status bar.
    const std::string& ViewText() const { return viewText_; }

    // mnuSelectOther, by what the Select Wizard asks: that pane is then the current one.
    void SelectFileTypesInList(Side side, const SelectCriteria& criteria);
    void ShowNextSelected();  // mnuSelectShowNext
    void ShowOnlySelectedObjects();

    // Shows, once for each user, the hint that the view is now limited.
    std::function<void()> ShowSelectedNotice;

    // Alignment, tags, kinds and counts of all lists. `why` names the first fault.
    bool IsConsistent(std::string* why = nullptr) const;
    // Bytes of all lists. The visible lists have no texts of their own: they share those of the hold lists.
    std::size_t MemoryUsed() const;

  private:
    PerSide<ResultList> RowsOfView(PerSide<ResultList> used) const;
    bool FaultOfPair(std::size_t row, std::string* why) const;

    CViewSelections& viewSelections_;
    ErrorReporter& reporter_;
    MessagePort& messages_;
    ResultList lvwForSwap_;
    std::string viewText_;
};

}  // namespace vantrel
