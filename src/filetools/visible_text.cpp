#include "filetools/visible_text.h"

#include <unicode/utf8.h>

#include <algorithm>

namespace vantrel {

namespace {

bool ShowsAsItIs(char letter) {
    return (letter >= 0x20 && letter < 0x7F) || letter == '\t';
}

bool DisturbsLine(UChar32 point) {
    return (point >= 0x80 && point < 0xA0) || point == 0x061C || point == 0x200E || point == 0x200F ||
           (point >= 0x2028 && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069) || point == 0xFEFF;
}

}  // namespace

std::string VisibleText(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), ShowsAsItIs)) return std::string(text);
    std::string shown;
    shown.reserve(text.size());
    const auto size = static_cast<std::int64_t>(text.size());
    for (std::int64_t at = 0; at < size;) {
        UChar32 point = 0;
        U8_NEXT_OR_FFFD(text.data(), at, size, point);
        if (point < 0x20 && point != '\t') point += 0x2400;
        if (point == 0x7F) point = 0x2421;
        if (DisturbsLine(point)) point = 0xFFFD;
        char units[U8_MAX_LENGTH];
        int length = 0;
        U8_APPEND_UNSAFE(units, length, point);
        shown.append(units, static_cast<std::size_t>(length));
    }
    return shown;
}

}  // namespace vantrel
