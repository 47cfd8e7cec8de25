#include "views/row_search.h"

#include <algorithm>

#include "platform/names/names.h"

namespace vantrel {
namespace {

constexpr std::string_view kPlaceHolders = "*?#[";

bool IsAscii(std::string_view text) {
    return std::ranges::none_of(text, [](char each) { return static_cast<unsigned char>(each) >= 0x80; });
}

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter | 0x20) : letter;
}

}  // namespace

RowSearch::RowSearch(std::string_view text) : folded_(FoldCase(text)), isAscii_(IsAscii(folded_)) {
    if (text.find_first_of(kPlaceHolders) != std::string_view::npos) pattern_.emplace(text);
}

// In ASCII, which nearly all names are, folding is what Lower does.
bool RowSearch::IsHeldBy(std::string_view name) const {
    if (!IsAscii(name)) return FoldCase(name).find(folded_) != std::string::npos;
    if (!isAscii_ || name.size() < folded_.size()) return false;
    const auto alike = [](char letter, char folded) { return Lower(letter) == folded; };
    return std::search(name.begin(), name.end(), folded_.begin(), folded_.end(), alike) != name.end();
}

bool RowSearch::Fits(const ResultRow& row) const {
    if (row.kind == RowKind::Placeholder || row.kind == RowKind::Sentinel) return false;
    std::string_view plain = row.text;
    if (plain.starts_with(kFolderMarker)) plain.remove_prefix(1);
    const bool twoNames = row.realName.size() != plain.size() || row.realName.data() != plain.data();
    if (IsHeldBy(row.text) || (twoNames && IsHeldBy(row.realName))) return true;
    return pattern_ &&
           (pattern_->Matches(plain) || pattern_->Matches(row.text) || pattern_->Matches(row.realName));
}

bool RowSearch::Matches(const PerSide<const PaneList*>& panes, std::size_t row) const {
    if (IsEmpty()) return false;
    const ResultRow* before = nullptr;
    for (const Side side : kBothSides) {
        if (row >= panes[side]->Count()) continue;
        const ResultRow& each = (*panes[side])[row];
        // Mostly both halves bear one name, which is looked at once.
        const bool same = before && before->text == each.text && before->realName == each.realName;
        if (!same && Fits(each)) return true;
        before = &each;
    }
    return false;
}

std::optional<std::size_t> RowSearch::Find(const PerSide<const PaneList*>& panes, std::size_t start,
                                           Direction direction) const {
    const std::size_t count = std::max(panes[Side::Left]->Count(), panes[Side::Right]->Count());
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t row = direction == Direction::Forwards ? (start + step) % count
                                                                 : (start % count + count - step) % count;
        if (Matches(panes, row)) return row;
    }
    return std::nullopt;
}

}  // namespace vantrel
