#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/result_list.h"
#include "platform/busy_state.h"
#include "platform/error.h"
#include "platform/files/sighting.h"
#include "views/pane_list.h"

namespace vantrel {

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

// Two panes that show rows of two hold lists side by side, with one selection between them: what the main
// window and the window of sub-folder differences have in common. A row of the left and the row of the same
// number of the right pane are always one pair, unless a window says otherwise.
class AlignedPanes {
  public:
    AlignedPanes(const AlignedPanes&) = delete;
    AlignedPanes& operator=(const AlignedPanes&) = delete;

    // Every row, whatever is shown.
    const HoldLists& Hold() const { return hold_; }
    // What the user sees.
    const PaneList& Pane(Side side) const { return panes_[side]; }
    // For the status texts; see PaneList. It must outlive the panes.
    void SetLocale(const LocaleFormats& locale) {
        for (const Side side : kBothSides) panes_[side].SetLocale(&locale);
    }

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

    // Panels 1 and 2 of the status bar. They are state: an inversion leaves the old text.
    const std::string& StatusText(Side side) const { return statusTexts_[side]; }

    // The pane that commands act on: the one last pressed, or whose selection the keyboard last changed.
    // Nothing until then.
    std::optional<Side> CurrentListview() const { return current_; }
    void SetCurrentListview(std::optional<Side> side) { current_ = side; }

    // While it is busy everything below does nothing.
    const BusyState& Busy() const { return busy_; }

    // What the window shows now; it tells so whenever it has scrolled.
    void SetTopRow(Side side, std::size_t row) { panes_[side].SetTopRow(row); }

    // A click or a key in a pane; see PaneList. The other pane loses its selection, and the status texts
    // follow.
    void Click(Side side, std::optional<std::size_t> row, SelectionKeys keys);
    void MoveTo(Side side, std::size_t row, SelectionKeys keys);
    void ToggleRow(Side side, std::size_t row);
    // Makes the row the selected item, where nothing is selected in either pane: the keys go on from there.
    void StandOn(Side side, std::size_t row);
    // What follows every click: the other pane loses its selection, the clicked one shows it in its panel.
    void HandleClick(Side side);
    void SelectAll(Side side);    // Ctrl+A
    void DeselectAll(Side side);  // Ctrl+D
    // The same in the pane that commands act on.
    void SelectAll() {
        OnCurrent([this](Side side) { SelectAll(side); });
    }
    void DeselectAll() {
        OnCurrent([this](Side side) { DeselectAll(side); });
    }
    void InvertSelection();  // status texts stay

    // An observer must be removed before it ends.
    void AddObserver(ResultPanesObserver* observer) { observers_.push_back(observer); }
    void RemoveObserver(ResultPanesObserver* observer) { std::erase(observers_, observer); }

  protected:
    // Both must outlive the panes.
    AlignedPanes(HoldLists& hold, BusyState& busy) : hold_(hold), busy_(busy) {}
    ~AlignedPanes() = default;

    // Copies of the rows of the hold lists for which passes(side, row) is true, with their tags; a
    // placeholder stands for the half that does not pass where the other does. They come in the room of
    // `used`, whose rows go.
    template <typename Passes>
    PerSide<ResultList> CopiesOfHeld(PerSide<ResultList> used, Passes&& passes) const;
    template <typename Action>
    void OnCurrent(Action&& action) {
        if (current_) action(*current_);
    }
    template <typename Call>
    void Tell(Call&& call) const {
        for (ResultPanesObserver* observer : observers_) call(*observer);
    }
    void SetStatusTexts(std::string left, std::string right);

    HoldLists& hold_;
    BusyState& busy_;
    PerSide<PaneList> panes_;
    std::optional<Side> current_;
    bool aligned_ = true;  // false where the two panes do not stand beside each other
    bool tagged_ = true;   // false where the rows do not know their hold rows

  private:
    PerSide<std::string> statusTexts_;
    std::vector<ResultPanesObserver*> observers_;
};

template <typename Passes>
PerSide<ResultList> AlignedPanes::CopiesOfHeld(PerSide<ResultList> used, Passes&& passes) const {
    const std::size_t count = hold_[Side::Left].Count();
    if (hold_[Side::Right].Count() != count)
        throw ErrorException(Error(ErrorNumber::Raised, "The lists of the two sides differ in length."));
    std::size_t shown = 0;
    for (std::size_t i = 0; i < count; ++i) shown += passes(Side::Left, i) || passes(Side::Right, i);

    PerSide<ResultList> rows = std::move(used);
    for (const Side side : kBothSides) {
        rows[side].ClearFor(shown);
        rows[side].ShareTexts(hold_[side]);
        for (std::size_t i = 0; i < count; ++i) {
            if (passes(side, i)) {
                ResultRow& row = rows[side].Add(hold_[side][i]);
                row.tag = static_cast<std::uint32_t>(i + 1);
                row.selected = false;
            } else if (passes(Other(side), i)) {
                rows[side].AddPlaceholder();
            }
        }
    }
    return rows;
}

}  // namespace vantrel
