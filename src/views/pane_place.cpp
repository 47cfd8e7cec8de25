#include "views/pane_place.h"

#include <algorithm>
#include <unordered_set>

#include "platform/names/names.h"

namespace vantrel {
namespace {

// Of the pair in this row, which shows it on at least one side.
std::string_view PairText(const PerSide<PaneList>& panes, std::size_t row) {
    const std::string_view left = panes[Side::Left][row].text;
    return left.empty() ? panes[Side::Right][row].text : left;
}

std::uint32_t PairTag(const PerSide<PaneList>& panes, std::size_t row) {
    return std::max(panes[Side::Left][row].tag, panes[Side::Right][row].tag);
}

// The order in which a comparison makes its rows: files, then folders, each by name.
bool StandsBefore(std::string_view text, std::string_view other) {
    const auto isFolder = [](std::string_view name) { return name.starts_with(kFolderMarker); };
    if (isFolder(text) != isFolder(other)) return isFolder(other);
    return CompareIgnoringCase(text, other) < 0;
}

// The first row for which before(row) is false, where it is true for all rows up to some place.
template <typename Before>
std::size_t FirstNot(std::size_t count, const Before& before) {
    std::size_t low = 0, high = count;
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (before(middle))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

// The row itself, the next one that is an object, or else the last one before it.
std::optional<std::size_t> RealRowAt(const PaneList& pane, std::size_t row) {
    for (std::size_t i = row; i < pane.Count(); ++i)
        if (pane[i].IsReal()) return i;
    for (std::size_t i = std::min(row, pane.Count()); i > 0; --i)
        if (pane[i - 1].IsReal()) return i - 1;
    return std::nullopt;
}

}  // namespace

PanePlace::PanePlace(const PerSide<PaneList>& panes, Beside beside) {
    for (const Side side : kBothSides) {
        const PaneList& pane = panes[side];
        if (pane.Count() == 0 || pane.Rows().IsSentinel()) continue;
        OfPane& kept = kept_[side];
        names_[side].ShareTexts(pane.Rows());
        kept.top = MarkOf(panes, side, std::min(pane.TopRow(), pane.Count() - 1), beside);
        if (const auto item = pane.SelectedItem()) {
            kept.item = MarkOf(panes, side, *item, beside);
            kept.itemIsReal = pane[*item].IsReal();
        }
        kept.selected.reserve(pane.SelectedCount());
        for (const ResultRow& row : pane.Rows())
            if (row.selected) kept.selected.push_back({row.text, row.tag, side});
    }
}

PanePlace::Mark PanePlace::MarkOf(const PerSide<PaneList>& panes, Side side, std::size_t row, Beside beside) {
    const ResultRow& own = panes[side][row];
    const PaneList& other = panes[Other(side)];
    const bool byOther = beside == Beside::Yes && own.text.empty() && row < other.Count();
    const ResultRow& named = byOther ? other[row] : own;
    return {named.text, named.tag, byOther ? Other(side) : side};
}

// The old names are alive, so no other name stands where one of them does.
bool PanePlace::AreRowsOf(const HoldLists& hold) const {
    const auto leadsBack = [&hold](const std::optional<Mark>& mark) {
        if (!mark || mark->tag == 0 || mark->text.empty()) return false;
        const ResultList& held = hold[mark->side];
        return mark->tag <= held.Count() && held[mark->tag - 1].text.data() == mark->text.data();
    };
    return std::ranges::any_of(
        kBothSides, [&](Side side) { return leadsBack(kept_[side].top) || leadsBack(kept_[side].item); });
}

PanePlace::Goal PanePlace::FindByTag(const PerSide<PaneList>& panes, const Mark& mark) {
    const std::size_t count = panes[Side::Left].Count();
    const std::size_t row = FirstNot(count, [&](std::size_t i) { return PairTag(panes, i) < mark.tag; });
    return {row, row < count && PairTag(panes, row) == mark.tag};
}

PanePlace::Goal PanePlace::FindByName(const PerSide<PaneList>& panes, const Mark& mark) {
    const std::size_t count = panes[Side::Left].Count();
    for (std::size_t i = 0; i < count; ++i)
        if (PairText(panes, i) == mark.text) return {i, true};
    const std::size_t row =
        FirstNot(count, [&](std::size_t i) { return StandsBefore(PairText(panes, i), mark.text); });
    return {row, row < count && EqualIgnoringCase(PairText(panes, row), mark.text)};
}

void PanePlace::SelectByTag(PaneList& pane, const std::vector<Mark>& selected) {
    auto next = selected.begin();
    for (std::size_t i = 0; i < pane.Count() && next != selected.end(); ++i) {
        if (!pane[i].IsReal()) continue;
        while (next != selected.end() && next->tag < pane[i].tag) ++next;
        if (next != selected.end() && next->tag == pane[i].tag) pane.SetSelected(i, true);
    }
}

// Most rows stand in the order in which they stood before: they are met on the way through both. Only what
// is left over on both sides is looked up.
void PanePlace::SelectByName(PaneList& pane, const std::vector<Mark>& selected) {
    constexpr std::size_t kLookAhead = 8;
    std::vector<std::size_t> rowsLeft;
    std::vector<std::string_view> namesLeft;
    std::size_t next = 0;
    if (selected.empty()) return;
    for (std::size_t i = 0; i < pane.Count(); ++i) {
        if (!pane[i].IsReal()) continue;
        const std::string_view text = pane[i].text;
        const std::size_t end = std::min(next + kLookAhead, selected.size());
        std::size_t at = next;
        while (at < end && selected[at].text != text) ++at;
        if (at == end) {
            rowsLeft.push_back(i);
            continue;
        }
        for (; next < at; ++next) namesLeft.push_back(selected[next].text);
        pane.SetSelected(i, true);
        ++next;
    }
    for (; next < selected.size(); ++next) namesLeft.push_back(selected[next].text);
    if (rowsLeft.empty() || namesLeft.empty()) return;
    const std::unordered_set<std::string_view> names(namesLeft.begin(), namesLeft.end());
    for (const std::size_t row : rowsLeft)
        if (names.contains(pane[row].text)) pane.SetSelected(row, true);
}

void PanePlace::GiveBack(PerSide<PaneList>& panes, const HoldLists& hold, Selection selection) const {
    if (panes[Side::Left].Count() != panes[Side::Right].Count()) return;
    const bool byTag = AreRowsOf(hold);
    const auto find = [&](const Mark& mark) {
        return byTag ? FindByTag(panes, mark) : FindByName(panes, mark);
    };
    for (const Side side : kBothSides) {
        PaneList& pane = panes[side];
        const OfPane& kept = kept_[side];
        if (pane.Count() == 0 || pane.Rows().IsSentinel()) continue;
        if (kept.top) pane.SetTopRow(std::min(find(*kept.top).row, pane.Count() - 1));
        if (kept.item) {
            const Goal goal = find(*kept.item);
            const bool stays = goal.found && !kept.itemIsReal;
            pane.SetSelectedItem(stays ? std::optional(goal.row) : RealRowAt(pane, goal.row));
        }
        if (selection == Selection::Dropped) continue;
        byTag ? SelectByTag(pane, kept.selected) : SelectByName(pane, kept.selected);
    }
}

}  // namespace vantrel
