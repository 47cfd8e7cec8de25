#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrel {

// Numbers of file formats, least significant byte first. `at` and the number must lie within `bytes`.
inline std::uint32_t Little16(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}
inline std::uint32_t Little32(std::string_view bytes, std::size_t at) {
    return Little16(bytes, at) | Little16(bytes, at + 2) << 16;
}

}  // namespace vantrel
