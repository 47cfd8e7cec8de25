#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace vantrel {

// One name in a sort: the beginning of its key as a number, and where the rest of it is found.
struct SortItem {
    std::uint64_t head;
    std::uint32_t index;
};

// The first eight bytes as a number that sorts as they do.
inline std::uint64_t HeadOf(std::string_view key) {
    std::uint64_t head = 0;
    if (key.size() >= sizeof head) {
        std::memcpy(&head, key.data(), sizeof head);
        return __builtin_bswap64(head);
    }
    for (std::size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return head;
}

// The numbers 0 to count - 1 in the order of keyOf(number), and among equal keys of tieOf(number), both by
// bytes. `check` is called at least every few thousand steps and may throw.
template <typename KeyOf, typename TieOf, typename Check>
void OrderByKey(std::size_t count, const KeyOf& keyOf, const TieOf& tieOf, const Check& check,
                std::vector<SortItem>& order) {
    order.clear();
    if (count == 0) return;
    order.reserve(count);

    // Names of one folder often begin alike: the number is taken from behind what all have in common.
    const std::string_view first = keyOf(0);
    std::size_t common = first.size();
    for (std::size_t i = 1; i < count && common > 0; ++i) {
        const std::string_view key = keyOf(i);
        common = std::min(common, key.size());
        while (common > 0 && std::memcmp(first.data(), key.data(), common) != 0) --common;
    }
    for (std::size_t i = 0; i < count; ++i)
        order.push_back({HeadOf(keyOf(i).substr(common)), static_cast<std::uint32_t>(i)});

    constexpr std::uint32_t kStepsBetweenChecks = 8192;
    std::uint32_t steps = 0;
    std::sort(order.begin(), order.end(), [&](const SortItem& a, const SortItem& b) {
        if (++steps >= kStepsBetweenChecks) {
            steps = 0;
            check();
        }
        if (a.head != b.head) return a.head < b.head;
        const int difference = keyOf(a.index).compare(keyOf(b.index));
        return difference != 0 ? difference < 0 : tieOf(a.index) < tieOf(b.index);
    });
}

}  // namespace vantrel
