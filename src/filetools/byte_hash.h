#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace vantrel {

// A fast hash of 64 bits for what never leaves the process. Two products a 16 bytes; for tables, not against
// somebody who wants two texts to meet: whoever uses it compares what is found.
inline std::uint64_t HashBytes(std::string_view bytes, std::uint64_t seed) {
    __extension__ using Wide = unsigned __int128;
    const auto mix = [](std::uint64_t a, std::uint64_t b) {
        const Wide product = static_cast<Wide>(a) * b;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    };
    const auto word = [](const char* at) {
        std::uint64_t value = 0;
        std::memcpy(&value, at, sizeof value);
        return value;
    };
    const auto half = [](const char* at) {
        std::uint32_t value = 0;
        std::memcpy(&value, at, sizeof value);
        return std::uint64_t{value};
    };
    constexpr std::uint64_t kFirst = 0xA076'1D64'78BD'642F;
    constexpr std::uint64_t kSecond = 0xE703'7ED1'A0B4'28DB;
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    std::uint64_t state = seed ^ kFirst;
    while (left > 16) {
        state = mix(word(at) ^ kSecond, word(at + 8) ^ state);
        at += 16;
        left -= 16;
    }
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    if (left >= 8) {
        low = word(at);
        high = word(at + left - 8);
    } else if (left >= 4) {
        low = half(at);
        high = half(at + left - 4);
    } else if (left > 0) {
        low = static_cast<unsigned char>(at[0]) |
              std::uint64_t{static_cast<unsigned char>(at[left / 2])} << 8 |
              std::uint64_t{static_cast<unsigned char>(at[left - 1])} << 16;
    }
    return mix(kSecond ^ bytes.size(), mix(low ^ kSecond, high ^ state));
}

}  // namespace vantrel
