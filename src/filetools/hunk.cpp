#include "filetools/hunk.h"

#include <charconv>

namespace vantrel {

namespace {

void AppendRange(const LineRange& range, std::string& text) {
    text += std::to_string(range.count == 0 ? range.first : range.first + 1);
    if (range.count > 1) text.append(",").append(std::to_string(range.End()));
}

// "N" or "L,H". A side that has no lines is a single number, the line in front.
bool TakeRange(std::string_view text, bool hasLines, LineRange& range) {
    const std::size_t comma = text.find(',');
    LineNumber numbers[2] = {};
    for (int index = 0; index < 2; ++index) {
        const std::string_view part = comma == std::string_view::npos ? text
                                      : index == 0                    ? text.substr(0, comma)
                                                                      : text.substr(comma + 1);
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), numbers[index]);
        if (error != std::errc() || end != part.data() + part.size() || numbers[index] < 0) return false;
        if (numbers[index] > kMostLines) return false;
    }
    if (!hasLines) {
        range = {.first = numbers[0], .count = 0};
        return comma == std::string_view::npos;
    }
    range = {.first = numbers[0] - 1, .count = numbers[1] - numbers[0] + 1};
    return numbers[0] >= 1 && range.count >= 1;
}

}  // namespace

std::string HunkHeader(const Hunk& hunk) {
    std::string text;
    AppendRange(hunk.lines[Side::Left], text);
    text += hunk.Form();
    AppendRange(hunk.lines[Side::Right], text);
    return text;
}

bool ParseHunkHeader(std::string_view text, Hunk& hunk) {
    const std::size_t letter = text.find_first_of("adcADC");
    if (letter == std::string_view::npos) return false;
    const char form = static_cast<char>(text[letter] | 0x20);
    hunk = {};
    return TakeRange(text.substr(0, letter), form != 'a', hunk.lines[Side::Left]) &&
           TakeRange(text.substr(letter + 1), form != 'd', hunk.lines[Side::Right]);
}

}  // namespace vantrel
