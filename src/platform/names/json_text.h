#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace vantrel {

constexpr bool NeedsJsonEscape(char letter) {
    return letter == '"' || letter == '\\' || static_cast<unsigned char>(letter) < 0x20;
}

// Whether one of eight letters does.
inline bool AnyNeedsJsonEscape(const char* letters) {
    constexpr std::uint64_t kOnes = 0x0101'0101'0101'0101, kHighest = 0x80 * kOnes;
    std::uint64_t word = 0;
    std::memcpy(&word, letters, sizeof word);
    // The highest bit of a byte comes out set where the byte is below `limit`.
    const auto below = [](std::uint64_t bytes, std::uint64_t limit) {
        return (bytes - limit * kOnes) & ~bytes & kHighest;
    };
    return (below(word, 0x20) | below(word ^ '"' * kOnes, 1) | below(word ^ '\\' * kOnes, 1)) != 0;
}

// The letters before the first that needs an escape.
inline std::size_t PlainJsonLength(std::string_view text) {
    std::size_t at = 0;
    while (at + 8 <= text.size() && !AnyNeedsJsonEscape(text.data() + at)) at += 8;
    while (at < text.size() && !NeedsJsonEscape(text[at])) ++at;
    return at;
}

// Hands a text of the engine to `out(std::string_view)` as a JSON string, with its quotes, a stretch at a
// time.
template <typename Out>
void WriteJsonString(std::string_view text, Out&& out) {
    out(std::string_view("\""));
    while (!text.empty()) {
        const std::size_t plain = PlainJsonLength(text);
        out(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        char escape[8];
        if (text[0] == '"' || text[0] == '\\')
            std::snprintf(escape, sizeof escape, "\\%c", text[0]);
        else
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(text[0]));
        out(std::string_view(escape));
        text.remove_prefix(1);
    }
    out(std::string_view("\""));
}

}  // namespace vantrel
