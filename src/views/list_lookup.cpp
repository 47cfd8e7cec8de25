#include "views/list_lookup.h"

#include <charconv>
#include <cstdint>
#include <utility>

#include "platform/names/names.h"

namespace vantrel {
namespace {

// Binary search over `count` texts in order; the index of a match.
template <typename TextAt>
std::optional<std::size_t> Search(std::string_view text, std::size_t count, const TextAt& textAt) {
    std::size_t low = 1, high = count;
    while (low <= high) {
        const std::size_t probe = (low + high) / 2;
        const int order = CompareIgnoringCase(textAt(probe - 1), text);
        if (order == 0) return probe - 1;
        if (order > 0)
            high = probe - 1;
        else
            low = probe + 1;
    }
    return std::nullopt;
}

template <typename Number>
std::optional<Number> NumberOf(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

struct LongItem {
    std::int64_t value;
    std::string text;
};

void QuickSort(std::vector<LongItem>& items, std::ptrdiff_t low, std::ptrdiff_t high) {
    if (low >= high) return;
    const std::int64_t pivot = items[static_cast<std::size_t>((low + high) / 2)].value;
    std::ptrdiff_t i = low, j = high;
    const auto at = [&items](std::ptrdiff_t index) -> LongItem& {
        return items[static_cast<std::size_t>(index)];
    };
    while (i <= j) {
        while (at(i).value < pivot) ++i;
        while (at(j).value > pivot) --j;
        if (i <= j) std::swap(at(i++), at(j--));
    }
    QuickSort(items, low, j);
    QuickSort(items, i, high);
}

bool BeginsWithFolded(std::string_view name, std::string_view foldedPrefix, std::string& buffer) {
    buffer.clear();
    // Folding keeps the number of characters, and one takes four bytes at most.
    std::string_view head = name.substr(0, foldedPrefix.size() * 4 + 4);
    while (head.size() < name.size() && !head.empty() && (name[head.size()] & 0xC0) == 0x80)
        head.remove_suffix(1);
    AppendFolded(head, buffer);
    return std::string_view(buffer).starts_with(foldedPrefix);
}

}  // namespace

std::optional<std::size_t> FindListItemInSortedListview(std::string_view text, const ResultList& list) {
    return Search(text, list.Count(), [&list](std::size_t index) { return list[index].text; });
}

std::optional<long> FindListItem(std::string_view text, const std::vector<std::string>& collection) {
    const auto field = [&collection](std::size_t index) {
        const std::string_view entry = collection[index];
        return entry.substr(0, entry.find(kFieldSeparator));
    };
    const auto found = Search(text, collection.size(), field);
    if (!found) return std::nullopt;
    const std::string_view entry = collection[*found];
    const std::size_t separator = entry.find(kFieldSeparator);
    if (separator == std::string_view::npos) return std::nullopt;
    const std::string_view rest = entry.substr(separator + kFieldSeparator.size());
    return NumberOf<long>(rest.substr(0, rest.find(kFieldSeparator)));
}

void SortLongCollection(std::vector<std::string>& collection) {
    std::vector<LongItem> items;
    items.reserve(collection.size());
    for (std::string& text : collection) {
        const std::int64_t value = NumberOf<std::int64_t>(text).value_or(0);
        items.push_back({value, std::move(text)});
    }
    QuickSort(items, 0, static_cast<std::ptrdiff_t>(items.size()) - 1);
    for (std::size_t i = 0; i < items.size(); ++i) collection[i] = std::move(items[i].text);
}

std::optional<std::size_t> FindRowByPrefix(const ResultList& list, std::size_t start,
                                           std::string_view prefix) {
    const std::string folded = FoldCase(prefix);
    std::string buffer;
    for (std::size_t step = 0; step < list.Count(); ++step) {
        const std::size_t index = (start + step) % list.Count();
        const ResultRow& row = list[index];
        if (!row.IsReal()) continue;
        if (BeginsWithFolded(row.text, folded, buffer)) return index;
        if (row.kind == RowKind::Folder && BeginsWithFolded(row.text.substr(1), folded, buffer)) return index;
    }
    return std::nullopt;
}

}  // namespace vantrel
