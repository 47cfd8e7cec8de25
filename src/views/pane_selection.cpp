// The part of ResultPanes that the Select menu uses.
#include "views/result_panes.h"
#include "views/select_criteria.h"

namespace vantrel {

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
