#include "views/result_panes.h"

#include <algorithm>

#include "views/pane_place.h"

namespace vantrel {

ResultPanes::ResultPanes(HoldLists& hold, CViewSelections& viewSelections, ErrorReporter& reporter,
                         MessagePort& messages, BusyState& busy)
    : AlignedPanes(hold, busy), viewSelections_(viewSelections), reporter_(reporter), messages_(messages) {
}

ResultList* ResultPanes::GetCorrespondingHoldListView(const PaneList* list) {
    for (Side side : kBothSides)
        if (list == &panes_[side]) return &hold_[side];
    return nullptr;
}

bool ResultPanes::ShowsNoResult() const {
    return panes_[Side::Left].Rows().IsSentinel() && panes_[Side::Right].Rows().IsSentinel();
}

PerSide<ResultList> ResultPanes::RowsOfView(PerSide<ResultList> used) const {
    const bool all = viewSelections_.ViewType() == kViewAll;
    return CopiesOfHeld(std::move(used), [&](Side side, std::size_t i) {
        return all || viewSelections_.Shows(hold_[side][i].type);
    });
}

void ResultPanes::ApplyViewTypes() {
    if (hold_[Side::Left].IsSentinel()) return;
    const BusyState::Wait wait(busy_);
    reporter_.Guard("frmMain.ApplyViewTypes", [this] {
        const PanePlace place(panes_, aligned_ ? PanePlace::Beside::Yes : PanePlace::Beside::No);
        // The new rows take the room of the old ones, so that never three generations of a large result are
        // held.
        PerSide<ResultList> used;
        for (Side side : kBothSides) used[side] = panes_[side].GiveUpRows();
        aligned_ = tagged_ = true;
        // Also after a failure the windows must let go of rows that are no more.
        try {
            PerSide<ResultList> rows = RowsOfView(std::move(used));
            for (Side side : kBothSides) panes_[side].TakeRows(rows[side]);
            place.GiveBack(panes_, hold_, PanePlace::Selection::Kept);
        } catch (...) {
            Tell([](ResultPanesObserver& observer) { observer.RowsReset(); });
            throw;
        }
        Tell([](ResultPanesObserver& observer) { observer.RowsReset(); });
        viewText_ = ViewTypeText(viewSelections_.ViewType());
        SetStatusTexts(TotalsText(panes_[Side::Left]), TotalsText(panes_[Side::Right]));
    });
}

void ResultPanes::RemoveListItemsAndShowNoCompareMsg() {
    if (hold_[Side::Left].IsSentinel()) return;
    reporter_.Guard("frmMain.RemoveListItemsAndShowNoCompareMsg", [this] {
        for (Side side : kBothSides) hold_[side].SetToSentinel();
        for (Side side : kBothSides) {
            ResultList sentinel;
            sentinel.SetToSentinel();
            panes_[side].TakeRows(sentinel);
        }
        aligned_ = tagged_ = true;
        Tell([](ResultPanesObserver& observer) { observer.RowsReset(); });
        SetStatusTexts({}, {});
    });
}

void ResultPanes::ExchangePanes() {
    reporter_.Guard("frmMain.ExchangePanes", [this] {
        PerSide<ResultList> rows;
        for (Side side : kBothSides) rows[side].Swap(panes_[side].rows_);
        lvwForSwap_.Swap(rows[Side::Left]);
        rows[Side::Left].Swap(rows[Side::Right]);
        rows[Side::Right].Swap(lvwForSwap_);
        lvwForSwap_.Clear();
        for (Side side : kBothSides) {
            for (ResultRow& row : rows[side]) row.tag = 0;
            panes_[side].TakeRows(rows[side]);
        }
        tagged_ = false;
        Tell([](ResultPanesObserver& observer) { observer.RowsReset(); });
    });
}

void ResultPanes::ChooseView(std::int32_t viewType) {
    if (busy_.IsBusy()) return;
    viewSelections_.SetCheckedItem(viewType);
    viewSelections_.SetViewType(viewType);
    ApplyViewTypes();
    Tell([](ResultPanesObserver& observer) { observer.ViewSelectionsChanged(); });
}

void ResultPanes::ChooseOtherView() {
    if (busy_.IsBusy()) return;
    viewSelections_.SetCheckedItem(kViewCustom);
    Tell([](ResultPanesObserver& observer) { observer.ViewSelectionsChanged(); });
    messages_.ShowInformationMessage(
        "Custom View", "Use the icons in the center of the program to specify custom View options");
}

void ResultPanes::ToggleView(ResultType type) {
    if (busy_.IsBusy()) return;
    if (ShowsNoResult()) {
        messages_.ShowInformationMessage("View Types",
                                         "These buttons require that a comparison be run first");
        return;
    }
    bool& flag = viewSelections_.Flag(type);
    flag = !flag;
    viewSelections_.SetViewType(viewSelections_.ViewTypeOfFlags());
    DisplayViewSelections();
    ApplyViewTypes();
}

void ResultPanes::DisplayViewSelections() {
    viewSelections_.SetCheckedItem(viewSelections_.ViewType());
    Tell([](ResultPanesObserver& observer) { observer.ViewSelectionsChanged(); });
}

bool ResultPanes::FaultOfPair(std::size_t row, std::string* why) const {
    const char* fault = nullptr;
    const ResultRow& left = panes_[Side::Left][row];
    const ResultRow& right = panes_[Side::Right][row];
    const bool unknown = left.IsUnknown() || right.IsUnknown();
    if (!unknown && !left.IsReal() && !right.IsReal()) fault = "a pair of two placeholders";
    if (left.IsReal() && right.IsReal() && left.text != right.text) fault = "two names on one line";
    if (left.tag != 0 && right.tag != 0 && left.tag != right.tag) fault = "halves of two pairs";
    for (Side side : kBothSides) {
        const ResultRow& visible = panes_[side][row];
        if (!tagged_) continue;
        if (visible.IsReal() && visible.tag == 0) fault = "a real row without a tag";
        if (visible.tag > hold_[side].Count()) fault = "a tag behind the hold list's end";
        if (fault || visible.tag == 0) continue;
        const ResultRow& held = hold_[side][visible.tag - 1];
        if (held.text != visible.text || held.type != visible.type || held.kind != visible.kind)
            fault = "a tag that leads to another row";
    }
    if (fault && why) *why = "row " + std::to_string(row) + ": " + fault;
    return fault != nullptr;
}

bool ResultPanes::IsConsistent(std::string* why) const {
    if (!vantrel::IsConsistent(hold_, why)) return false;
    for (Side side : kBothSides)
        if (!panes_[side].IsConsistent(why)) return false;
    if (!lvwForSwap_.IsEmpty()) {
        if (why) *why = "the scratch list is not empty";
        return false;
    }
    if (!aligned_ || ShowsNoResult()) return true;
    if (panes_[Side::Left].Count() != panes_[Side::Right].Count()) {
        if (why) *why = "panes of unequal length";
        return false;
    }
    for (std::size_t row = 0; row < panes_[Side::Left].Count(); ++row)
        if (FaultOfPair(row, why)) return false;
    return true;
}

std::size_t ResultPanes::MemoryUsed() const {
    std::size_t bytes = lvwForSwap_.MemoryUsed();
    for (Side side : kBothSides) bytes += hold_[side].MemoryUsed() + panes_[side].Rows().MemoryOfRows();
    return bytes;
}

}  // namespace vantrel
