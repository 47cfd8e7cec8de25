#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/result_list.h"
#include "diagnostics/error_reporter.h"
#include "platform/busy_state.h"
#include "platform/files/sighting.h"
#include "platform/ports.h"
#include "views/cview_selections.h"
#include "views/pane_list.h"

namespace vantrel {

struct SelectCriteria;

// What a window hears of the panes. Nothing may be changed in the panes from inside these calls.
class ResultPanesObserver {
  public:
    virtual ~ResultPanesObserver() = default;
    virtual void RowsReset() {}                       // of both panes, and with them their selections
    virtual void SelectionChanged(Side) {}            // rows or selected item
    virtual void EnsureVisible(Side, std::size_t) {}  // scroll the row into view
    virtual void StatusTextsChanged() {}
    virtual void ViewSelectionsChanged() {}  // pictures of the toggles, checked item of the View menu
};

// The five lists of the main window and the rules that hold between them. A row of the left and the row of
// the same number of the right visible list are always one pair, but for the state after
// ShowOnlySelectedObjects.
class ResultPanes {
  public:
    // `hold`, which comparisons fill, and all else must outlive the panes.
    ResultPanes(HoldLists& hold, CViewSelections& viewSelections, ErrorReporter& reporter,
                MessagePort& messages, BusyState& busy);
    ResultPanes(const ResultPanes&) = delete;
    ResultPanes& operator=(const ResultPanes&) = delete;

    // Every row of the last comparison: lvwHoldAllFilesSource, lvwHoldAllFilesTarget.
    const HoldLists& Hold() const { return hold_; }
    // What the user sees: lvwSourceDirFiles, lvwTargetDirFiles.
    const PaneList& Pane(Side side) const { return panes_[side]; }
    // The hold list of a visible list; nullptr for any other list.
    ResultList* GetCorrespondingHoldListView(const PaneList* list);
    const CViewSelections& ViewSelections() const { return viewSelections_; }
    // Each pane holds the one row "No Comparison Results".
    bool ShowsNoResult() const;

    // Rebuilds both visible lists from the hold lists by the view flags; at the end of a comparison, and
    // after the view changed. Does nothing while the hold lists are in the no-result state.
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

    // The other half of the pair of which the pane of `side` shows one at `row`, also where the other pane
    // does not show it; nullptr where that is not known.
    const ResultRow* CounterpartOf(Side side, std::size_t row) const;
    // The two files of that pair are alike now, with this size and time, and as they were seen. Says so in
    // both panes, whatever the view shows, and in the hold lists. Halves that stand for no file stay.
    struct AlikeNow {
        Currency size;
        FileTime lastWrite;
        PerSide<Sighting> seen;  // of the objects themselves
    };
    void BringIntoLine(Side side, std::size_t row, const AlikeNow& now);

    // Panels 1 and 2 of the status bar, and panel 4. They are state: an inversion leaves the old text.
    const std::string& StatusText(Side side) const { return statusTexts_[side]; }
    const std::string& ViewText() const { return viewText_; }

    // The pane that commands act on: the one last pressed, or whose selection the keyboard last changed.
    // Nothing until then.
    std::optional<Side> CurrentListview() const { return current_; }
    void SetCurrentListview(std::optional<Side> side) { current_ = side; }

    // While it is busy everything below does nothing.
    const BusyState& Busy() const { return busy_; }

    // A click or a key in a pane; see PaneList. The other pane loses its selection, and the status texts
    // follow.
    void Click(Side side, std::optional<std::size_t> row, SelectionKeys keys);
    void MoveTo(Side side, std::size_t row, SelectionKeys keys);
    void ToggleRow(Side side, std::size_t row);
    // What follows every click: the other pane loses its selection, the clicked one shows it in its panel.
    void HandleClick(Side side);
    void SelectAll(Side side);    // Ctrl+A
    void DeselectAll(Side side);  // Ctrl+D
    void SelectAll() {
        OnCurrent([this](Side side) { SelectAll(side); });
    }  // mnuSelectAll
    void DeselectAll() {
        OnCurrent([this](Side side) { DeselectAll(side); });
    }                        // mnuDeSelectAll
    void InvertSelection();  // status texts stay
    // mnuSelectOther, by what the Select Wizard asks: that pane is then the current one.
    void SelectFileTypesInList(Side side, const SelectCriteria& criteria);
    void ShowNextSelected();  // mnuSelectShowNext
    void ShowOnlySelectedObjects();

    // Shows, once for each user, the hint that the view is now limited.
    std::function<void()> ShowSelectedNotice;

    // An observer must be removed before it ends.
    void AddObserver(ResultPanesObserver* observer) { observers_.push_back(observer); }
    void RemoveObserver(ResultPanesObserver* observer) { std::erase(observers_, observer); }

    // Alignment, tags, kinds and counts of all lists. `why` names the first fault.
    bool IsConsistent(std::string* why = nullptr) const;
    // Bytes of all lists. The visible lists have no texts of their own: they share those of the hold lists.
    std::size_t MemoryUsed() const;

  private:
    template <typename Action>
    void OnCurrent(Action&& action) {
        if (current_) action(*current_);
    }
    template <typename Call>
    void Tell(Call&& call) const {
        for (ResultPanesObserver* observer : observers_) call(*observer);
    }
    PerSide<ResultList> RowsOfView() const;
    bool FaultOfPair(std::size_t row, std::string* why) const;
    void SetStatusTexts(std::string left, std::string right);

    HoldLists& hold_;
    CViewSelections& viewSelections_;
    ErrorReporter& reporter_;
    MessagePort& messages_;
    BusyState& busy_;
    PerSide<PaneList> panes_;
    ResultList lvwForSwap_;
    PerSide<std::string> statusTexts_;
    std::string viewText_;
    std::optional<Side> current_;
    bool aligned_ = true;  // false after ShowOnlySelectedObjects
    bool tagged_ = true;   // false after ExchangePanes
    std::vector<ResultPanesObserver*> observers_;
};

}  // namespace vantrel
