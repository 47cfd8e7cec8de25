#pragma once

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>
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

}  // namespace vantrel
