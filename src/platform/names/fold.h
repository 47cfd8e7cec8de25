#pragma once

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel {

constexpr UChar32 FoldAscii(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

// The folded character at `at`, which moves behind it. A byte that is no valid text counts as a character of
// its own above all others.
inline UChar32 NextFolded(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) {
        ++at;
        return FoldAscii(first);
    }
    const auto size = static_cast<std::int64_t>(text.size());
    auto next = static_cast<std::int64_t>(at);
    UChar32 point = 0;
    U8_NEXT(text.data(), next, size, point);
    if (point < 0) {
        ++at;
        return 0x110000 + first;
    }
    at = static_cast<std::size_t>(next);
    return u_foldCase(point, U_FOLD_CASE_DEFAULT);
}

// Adds the same to `to`, as UTF-8; a byte that is no valid text as it stands.
inline void AppendFoldedCharacter(std::string_view text, std::size_t& at, std::string& to) {
    const char first = text[at];
    const UChar32 point = NextFolded(text, at);
    if (point > 0x10FFFF) {
        to.push_back(first);
        return;
    }
    char units[U8_MAX_LENGTH];
    int length = 0;
    U8_APPEND_UNSAFE(units, length, point);
    to.append(units, static_cast<std::size_t>(length));
}

}  // namespace vantrel
