#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/error.h"

namespace vantrel {

// A moving picture. Each frame is width * height points, 0xFFRRGGBB, rows from top to bottom.
struct Animation {
    int width = 0;
    int height = 0;
    int frameMilliseconds = 0;  // 10 to 10,000
    std::vector<std::vector<std::uint32_t>> frames;
};

// Bounds of what is read; a file beyond one of them is refused.
inline constexpr std::size_t kMaxAviBytes = 16u << 20;
inline constexpr int kMaxAviSide = 1024;
inline constexpr std::size_t kMaxAviFrames = 1000;
inline constexpr std::size_t kMaxAviPoints = 16u << 20;  // of all frames together: 64 MiB

// Reads the first video stream of an AVI file from its bytes: frames of uncompressed bitmaps (8, 24 or 32
// bits a point) or of run lengths (RLE8, RLE4), where a frame may change only a part of the one before. Sound
// and indexes are passed over. A file that is damaged, cut short, too large or of another kind gives an
// error, with `animation` empty; nothing partial is given.
Error ReadAvi(std::string_view bytes, Animation& animation);

}  // namespace vantrel
