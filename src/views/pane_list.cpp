#include "views/pane_list.h"

#include <algorithm>

#include "platform/locale/locale_formats.h"
#include "platform/names/paths.h"

namespace vantrel {

void PaneList::TakeRows(ResultList& rows) {
    rows_.Clear();
    rows_.Swap(rows);
    selectedCount_ = 0;
    largestSize_ = {};
    for (ResultRow& row : rows_) {
        row.selected = false;
        largestSize_ = std::max(largestSize_, row.size);
    }
    selectedItem_.reset();
    anchor_.reset();
    topRow_ = 0;
}

ResultList PaneList::GiveUpRows() {
    ResultList rows, none;
    rows_.Swap(rows);
    TakeRows(none);
    return rows;
}

std::vector<std::size_t> PaneList::SelectedRows() const {
    std::vector<std::size_t> numbers;
    numbers.reserve(selectedCount_);
    for (std::size_t i = 0; numbers.size() < selectedCount_; ++i)
        if (rows_[i].selected) numbers.push_back(i);
    return numbers;
}

const ResultRow* PaneList::SelectedObject() const {
    return selectedItem_ && rows_[*selectedItem_].IsReal() ? &rows_[*selectedItem_] : nullptr;
}

void PaneList::SetSelectedItem(std::optional<std::size_t> row) {
    selectedItem_ = row && *row < Count() ? row : std::nullopt;
    anchor_ = selectedItem_;
}

void PaneList::SetSelected(std::size_t row, bool selected) {
    if (rows_[row].IsReal()) Mark(rows_[row], selected);
}

void PaneList::SelectAll() {
    SetSelectedWhere([](const ResultRow&) { return true; }, true);
}

void PaneList::DeselectAll() {
    ClearSelection();
    selectedItem_.reset();
    anchor_.reset();
}

void PaneList::ClearSelection() {
    for (std::size_t i = 0; selectedCount_ > 0; ++i) Mark(rows_[i], false);
}

void PaneList::Invert() {
    for (ResultRow& row : rows_)
        if (row.IsReal()) Mark(row, !row.selected);
}

void PaneList::SelectRun(std::size_t first, std::size_t last) {
    if (first > last) std::swap(first, last);
    for (std::size_t i = first; i <= last; ++i) SetSelected(i, true);
}

void PaneList::Click(std::optional<std::size_t> row, SelectionKeys keys) {
    if (!row || *row >= Count()) {
        if (!keys.extend && !keys.toggle) DeselectAll();
        return;
    }
    if (keys.extend) {
        if (!keys.toggle) ClearSelection();
        if (!anchor_) anchor_ = selectedItem_.value_or(0);
        SelectRun(*anchor_, *row);
    } else {
        const bool selected = !keys.toggle || !rows_[*row].selected;
        if (!keys.toggle) ClearSelection();
        SetSelected(*row, selected);
        anchor_ = row;
    }
    selectedItem_ = row;
}

void PaneList::MoveTo(std::size_t row, SelectionKeys keys) {
    if (row >= Count()) return;
    if (keys.toggle && !keys.extend)
        selectedItem_ = row;
    else
        Click(row, keys);
}

std::optional<std::size_t> PaneList::NextSelected() const {
    if (!selectedItem_ || selectedCount_ == 0) return std::nullopt;
    const auto find = [this](std::size_t from, std::size_t to) -> std::optional<std::size_t> {
        for (std::size_t i = from; i < to; ++i)
            if (rows_[i].selected) return i;
        return std::nullopt;
    };
    const auto after = find(*selectedItem_ + 1, Count());
    return after ? after : find(0, *selectedItem_);
}

PaneList::Totals PaneList::AllTotals() const {
    Totals totals;
    for (const ResultRow& row : rows_) {
        if (!row.IsReal()) continue;
        ++totals.objects;
        totals.bytes += row.size;
    }
    return totals;
}

PaneList::Totals PaneList::SelectedTotals() const {
    Totals totals;
    totals.objects = selectedCount_;
    if (selectedCount_ == 0) return totals;
    for (const ResultRow& row : rows_)
        if (row.selected) totals.bytes += row.size;
    return totals;
}

bool PaneList::IsConsistent(std::string* why) const {
    const auto fail = [why](const char* fault) {
        if (why) *why = fault;
        return false;
    };
    std::size_t selected = 0;
    for (const ResultRow& row : rows_) {
        if (row.selected && !row.IsReal()) return fail("a row that is no object is selected");
        selected += row.selected;
    }
    if (selected != selectedCount_) return fail("the count of selected rows is wrong");
    if (selectedItem_ && *selectedItem_ >= Count()) return fail("the selected item lies outside the list");
    if (anchor_ && *anchor_ >= Count()) return fail("the anchor lies outside the list");
    return true;
}

namespace {

std::string CountAndSize(const char* word, const PaneList& list, const PaneList::Totals& totals) {
    const LocaleFormats* locale = list.Locale();
    const auto count = Currency::FromWhole(static_cast<std::int64_t>(totals.objects));
    return word + (locale ? locale->Number(count) : std::to_string(totals.objects)) + " object(s)  (" +
           (locale ? locale->ByteSize(totals.bytes) : ConvertBytesToCorrectByteTypeString(totals.bytes)) +
           ")";
}

}  // namespace

std::string TotalsText(const PaneList& list) {
    return CountAndSize("Total ", list, list.AllTotals());
}

std::string SelectionText(const PaneList& list) {
    return CountAndSize("Selected ", list, list.SelectedTotals());
}

std::string StatusTextOf(const PaneList& list) {
    return list.SelectedCount() > 0 ? SelectionText(list) : TotalsText(list);
}

}  // namespace vantrel
