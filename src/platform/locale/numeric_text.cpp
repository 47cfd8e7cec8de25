#include "platform/locale/numeric_text.h"

#include <charconv>

namespace vantrel {

std::optional<double> NumericValue(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(" \t") + 1 - first);
    if (text.front() == '+') text.remove_prefix(1);
    if (text.empty() || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos)
        return std::nullopt;

    double value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (fault != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

}  // namespace vantrel
