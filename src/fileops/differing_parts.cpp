#include "fileops/differing_parts.h"

#include <algorithm>
#include <cstdint>

namespace vantrel {
namespace {

constexpr std::size_t kLongest = 300;  // units; no name has more than 255

void Mark(std::size_t at, std::vector<TextPart>& parts) {
    if (!parts.empty() && parts.back().from + parts.back().length == at)
        ++parts.back().length;
    else
        parts.push_back({at, 1});
}

}  // namespace

std::vector<TextPart> DifferingParts(std::u16string_view original, std::u16string_view revised) {
    // The tail first: most changes stand in front of an extension, or of the whole name.
    while (!original.empty() && !revised.empty() && original.back() == revised.back()) {
        original.remove_suffix(1);
        revised.remove_suffix(1);
    }
    const auto heads = std::ranges::mismatch(original, revised);
    const auto head = static_cast<std::size_t>(heads.in1 - original.begin());
    original.remove_prefix(head);
    revised.remove_prefix(head);
    std::vector<TextPart> parts;
    if (revised.empty()) return parts;
    if (original.size() > kLongest || revised.size() > kLongest) return {{head, revised.size()}};
    // Length of the longest common sequence of what is left of both, from each pair of places on.
    const std::size_t width = revised.size() + 1;
    std::vector<std::uint16_t> common((original.size() + 1) * width);
    for (std::size_t i = original.size(); i-- > 0;)
        for (std::size_t j = revised.size(); j-- > 0;)
            common[i * width + j] = original[i] == revised[j]
                                        ? static_cast<std::uint16_t>(common[(i + 1) * width + j + 1] + 1)
                                        : std::max(common[(i + 1) * width + j], common[i * width + j + 1]);
    for (std::size_t i = 0, j = 0; j < revised.size();) {
        if (i < original.size() && original[i] == revised[j]) {
            ++i, ++j;
        } else if (i < original.size() && common[(i + 1) * width + j] >= common[i * width + j + 1]) {
            ++i;
        } else {
            Mark(head + j++, parts);
        }
    }
    return parts;
}

}  // namespace vantrel
