#include "views/aligned_panes.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace vantrel {

const ResultRow* AlignedPanes::CounterpartOf(Side side, std::size_t row) const {
    const ResultList& held = hold_[Other(side)];
    const std::uint32_t tag = panes_[side][row].tag;
    if (tag != 0) return tag <= held.Count() ? &held[tag - 1] : nullptr;
    const PaneList& shown = panes_[Other(side)];
    return aligned_ && row < shown.Count() ? &shown[row] : nullptr;
}

namespace {

void MakeAlike(ResultRow& row, const AlignedPanes::AlikeNow& now, const Sighting& seen, const Seen* kept) {
    if (row.kind != RowKind::File) return;
    row.size = std::max(now.size, Currency());
    row.lastWrite = now.lastWrite;
    row.type = ResultType::Same;
    row.isLink = seen.kind == Sighting::Kind::Link;
    row.seen = kept;
}

}  // namespace

void AlignedPanes::BringIntoLine(Side side, std::size_t row, const AlikeNow& now) {
    const std::uint32_t tag = panes_[side][row].tag;
    for (const Side each : kBothSides) {
        const Sighting& seen = now.seen[each];
        const Seen* kept = nullptr;
        if (seen.state == Sighting::State::Present) {
            const auto pool = std::make_shared<SeenPool>();
            kept = pool->Add(seen.seen);
            hold_[each].SharePool(pool);
            panes_[each].rows_.SharePool(pool);
        }
        if (tag != 0 && tag <= hold_[each].Count()) MakeAlike(hold_[each][tag - 1], now, seen, kept);
        if (each != side && (!aligned_ || row >= panes_[each].Count())) continue;
        MakeAlike(panes_[each].rows_[row], now, seen, kept);
        panes_[each].largestSize_ = std::max(panes_[each].largestSize_, now.size);
    }
    for (const Side each : kBothSides)
        Tell([each](ResultPanesObserver& observer) { observer.SelectionChanged(each); });
    SetStatusTexts(StatusTextOf(panes_[Side::Left]), StatusTextOf(panes_[Side::Right]));
}

void AlignedPanes::HandleClick(Side side) {
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

void AlignedPanes::Click(Side side, std::optional<std::size_t> row, SelectionKeys keys) {
    if (busy_.IsBusy()) return;
    panes_[side].Click(row, keys);
    HandleClick(side);
}

void AlignedPanes::MoveTo(Side side, std::size_t row, SelectionKeys keys) {
    if (busy_.IsBusy()) return;
    panes_[side].MoveTo(row, keys);
    HandleClick(side);
}

void AlignedPanes::ToggleRow(Side side, std::size_t row) {
    Click(side, row, {.toggle = true});
}

void AlignedPanes::StandOn(Side side, std::size_t row) {
    if (busy_.IsBusy()) return;
    for (const Side each : kBothSides)
        if (panes_[each].SelectedCount() > 0) return;
    panes_[side].SetSelectedItem(row);
    Tell([side](ResultPanesObserver& observer) { observer.SelectionChanged(side); });
}

void AlignedPanes::SelectAll(Side side) {
    if (busy_.IsBusy()) return;
    panes_[side].SelectAll();
    HandleClick(side);
}

void AlignedPanes::DeselectAll(Side side) {
    if (busy_.IsBusy()) return;
    panes_[side].DeselectAll();
    HandleClick(side);
}

void AlignedPanes::InvertSelection() {
    if (busy_.IsBusy() || !current_) return;
    panes_[*current_].Invert();
    Tell([this](ResultPanesObserver& observer) { observer.SelectionChanged(*current_); });
}

void AlignedPanes::SetStatusTexts(std::string left, std::string right) {
    statusTexts_[Side::Left] = std::move(left);
    statusTexts_[Side::Right] = std::move(right);
    Tell([](ResultPanesObserver& observer) { observer.StatusTextsChanged(); });
}

}  // namespace vantrel
