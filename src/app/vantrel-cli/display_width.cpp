#include "display_width.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

#include "platform/names/names.h"

namespace vantrel::cli {

namespace {

std::size_t WidthOf(UChar32 point) {
    if (point < 0x300) return 1;
    const int kind = u_charType(point);
    if (kind == U_NON_SPACING_MARK || kind == U_ENCLOSING_MARK || kind == U_FORMAT_CHAR) return 0;
    const int width = u_getIntPropertyValue(point, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
    if (IsAscii(text)) return text.size();
    std::size_t width = 0;
    const auto size = static_cast<std::int64_t>(text.size());
    for (std::int64_t at = 0; at < size;) {
        UChar32 point = 0;
        U8_NEXT_OR_FFFD(text.data(), at, size, point);
        width += WidthOf(point);
    }
    return width;
}

std::string CutToWidth(std::string_view text, std::size_t width) {
    const auto size = static_cast<std::int64_t>(text.size());
    std::int64_t at = 0;
    while (at < size) {
        std::int64_t next = at;
        UChar32 point = 0;
        U8_NEXT_OR_FFFD(text.data(), next, size, point);
        if (WidthOf(point) > width) break;
        width -= WidthOf(point);
        at = next;
    }
    return std::string(text.substr(0, static_cast<std::size_t>(at)));
}

std::string DisplayLines(std::string_view text) {
    std::string lines;
    while (true) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines += DisplayName(line);
        if (end == std::string_view::npos) return lines;
        lines += '\n';
        text.remove_prefix(end + 1);
    }
}

}  // namespace vantrel::cli
