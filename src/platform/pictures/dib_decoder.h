#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantrel {

// Decodes the frames of one bitmap stream. Run-length frames are laid over the frame before.
class DibDecoder {
  public:
    // From the bitmap's header (40 bytes or more) and the colours that follow it. Nothing, with the reason in
    // `refusal`, where the header is damaged, of another kind, or a side is longer than `maxSide`.
    static std::optional<DibDecoder> FromHeader(std::string_view header, int maxSide, const char*& refusal);

    int Width() const { return width_; }
    int Height() const { return height_; }

    // False where the data does not fit the header; the picture is then of no use.
    [[nodiscard]] bool Decode(std::string_view data);
    // The last frame: rows from top to bottom, 0xFFRRGGBB.
    std::vector<std::uint32_t> Picture() const;

  private:
    bool DecodeRows(std::string_view data);
    bool DecodeRuns(std::string_view data);
    bool Literal(std::string_view data, std::size_t count, int x, int y);

    int width_ = 0;
    int height_ = 0;
    bool topDown_ = false;
    unsigned bits_ = 0;  // of a point: 4, 8, 24 or 32
    bool runs_ = false;
    std::array<std::uint32_t, 256> colours_{};
    // Rows as the stream counts them, usually from the bottom up: an index of colours_, or 0x00RRGGBB.
    std::vector<std::uint32_t> points_;
};

}  // namespace vantrel
