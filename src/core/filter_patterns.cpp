#include "core/filter_patterns.h"

#include "core/result_row.h"

namespace vantrel {
namespace {

// A list has no quoting: a comma must not stand in a pattern, not even in brackets. This is the set of all
// characters that a name may hold but those up to "+" and those from "-" on.
constexpr std::string_view kCommaOnly = "[! -+--\xF4\x8F\xBF\xBF]";
constexpr std::string_view kMeaningful = "*?#[";

}  // namespace

std::string PatternFor(std::string_view text) {
    std::string pattern;
    if (text.starts_with(kFolderMarker)) {
        pattern = kFolderMarker;
        text.remove_prefix(1);
    }
    const std::size_t firstInner = text.find_first_not_of(' '), lastInner = text.find_last_not_of(' ');
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const bool isOuterBlank = c == ' ' && (at < firstInner || at > lastInner);
        if (c == ',')
            pattern += kCommaOnly;
        else if (isOuterBlank || kMeaningful.find(c) != std::string_view::npos)
            pattern.append({'[', c, ']'});
        else
            pattern += c;
    }
    return pattern;
}

std::string PatternForExtension(std::string_view extension) {
    return "*." + PatternFor(extension);
}

void AddPattern(std::string& list, std::string_view pattern) {
    if (!list.empty() && !list.ends_with(',')) list += ',';
    list += pattern;
}

}  // namespace vantrel
