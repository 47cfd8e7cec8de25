// The part of ResultPanes that clicks, keys and the Select menu use.
#include "views/result_panes.h"
#include "views/select_criteria.h"

namespace vantrel {

void ResultPanes::HandleClick(Side side) {
    if (busy_.IsBusy()) return;
    current_ = side;
    const Side other = Other(side);
    const bool otherChanged = panes_[other].SelectedCount() > 0 || panes_[other].SelectedItem();
    panes_[other].DeselectAll();
    Tell([side](ResultPanesObserver& observer) { observer.SelectionChanged(side); });
    if (otherChanged) Tell([other](ResultPanesObserver& observer) { observer.SelectionChanged(other); });

    PerSide<std::string> texts;
    texts[side] = StatusTextOf(panes_[side]);
    texts[other] = TotalsText(panes_[other]);
    SetStatusTexts(std::move(texts[Side::Left]), std::move(texts[Side::Right]));
}

void ResultPanes::Click(Side side, std::optional<std::size_t> row, SelectionKeys keys) {
    if (busy_.IsBusy()) return;
    panes_[side].Click(row, keys);
    HandleClick(side);
}

void ResultPanes::MoveTo(Side side, std::size_t row, SelectionKeys keys) {
    if (busy_.IsBusy()) return;
    panes_[side].MoveTo(row, keys);
    HandleClick(side);
}

void ResultPanes::ToggleRow(Side side, std::size_t row) {
    Click(side, row, {.toggle = true});
}

void ResultPanes::SelectAll(Side side) {
    if (busy_.IsBusy()) return;
    panes_[side].SelectAll();
    HandleClick(side);
}

void ResultPanes::DeselectAll(Side side) {
    if (busy_.IsBusy()) return;
    panes_[side].DeselectAll();
    HandleClick(side);
}

void ResultPanes::InvertSelection() {
    if (busy_.IsBusy() || !current_) return;
    panes_[*current_].Invert();
    Tell([this](ResultPanesObserver& observer) { observer.SelectionChanged(*current_); });
}

void ResultPanes::SelectFileTypesInList(Side side, const SelectCriteria& criteria) {
    if (busy_.IsBusy()) return;
    const BusyState::Wait wait(busy_);
    reporter_.Guard("frmmain.SelectFileTypesInList", [&] {
        vantrel::SelectFileTypesInList(panes_[side], criteria);
        HandleClick(side);
    });
}

void ResultPanes::ShowNextSelected() {
    if (busy_.IsBusy()) return;
    if (!current_ || !panes_[*current_].SelectedItem()) {
        Message message;
        message.title = "Show Next Selection";
        message.text = "No items selected";
        message.icon = MessageIcon::Information;
        messages_.Ask(message);
        return;
    }
    const std::optional<std::size_t> next = panes_[*current_].NextSelected();
    if (!next) return;
    panes_[*current_].SetSelectedItem(next);
    Tell([this, next](ResultPanesObserver& observer) {
        observer.SelectionChanged(*current_);
        observer.EnsureVisible(*current_, *next);
    });
}

void ResultPanes::ShowOnlySelectedObjects() {
    if (busy_.IsBusy() || !current_) return;
    const Side side = *current_;
    if (panes_[side].Count() == 0 || panes_[side].Rows().IsSentinel()) return;
    if (ShowSelectedNotice) ShowSelectedNotice();
    const BusyState::Wait wait(busy_);
    reporter_.Guard("frmMain.ShowOnlySelectedObjects", [this, side] {
        ResultList& hold = *GetCorrespondingHoldListView(&panes_[side]);
        ResultList chosen, none;
        chosen.ShareTexts(hold);
        chosen.Reserve(panes_[side].SelectedCount());
        for (const ResultRow& row : panes_[side].Rows())
            if (row.IsReal() && row.tag != 0) hold[row.tag - 1].selected = row.selected;
        for (std::size_t i = 0; i < hold.Count(); ++i) {
            if (!hold[i].selected) continue;
            hold[i].selected = false;
            chosen.Add(hold[i]).tag = static_cast<std::uint32_t>(i + 1);
        }
        panes_[side].TakeRows(chosen);
        panes_[Other(side)].TakeRows(none);
        aligned_ = false;
        tagged_ = true;
        Tell([](ResultPanesObserver& observer) { observer.RowsReset(); });
        SetStatusTexts(TotalsText(panes_[Side::Left]), TotalsText(panes_[Side::Right]));
    });
}

}  // namespace vantrel
