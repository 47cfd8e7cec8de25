#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vantrel {

// A run of UTF-16 units of a text.
struct TextPart {
    std::size_t from = 0, length = 0;
    friend bool operator==(const TextPart&, const TextPart&) = default;
};

// What of `revised` is not in `original`: all that lies outside of a longest common sequence of units. Texts
// of more than some hundred units are marked from their first to their last difference. For painting names.
std::vector<TextPart> DifferingParts(std::u16string_view original, std::u16string_view revised);

}  // namespace vantrel
