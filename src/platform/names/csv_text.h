#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace vantrel {

// A text as a field of a CSV file (RFC 4180), with its quotes. A spreadsheet takes a field that begins with
// one of a few signs for a formula and runs it: such a text gets an apostrophe in front.
inline std::string CsvField(std::string_view text) {
    // The last four are their wide forms, which some spreadsheets take as well.
    constexpr std::array<std::string_view, 10> kFormulas{
        "=", "+", "-", "@", "\t", "\r", "\xEF\xBC\x9D", "\xEF\xBC\x8B", "\xEF\xBC\x8D", "\xEF\xBC\xA0"};
    std::string field = "\"";
    if (std::any_of(kFormulas.begin(), kFormulas.end(),
                    [&](std::string_view sign) { return text.starts_with(sign); }))
        field += '\'';
    for (const char letter : text) {
        if (letter == '"') field += '"';
        field += letter;
    }
    return field += '"';
}

}  // namespace vantrel
