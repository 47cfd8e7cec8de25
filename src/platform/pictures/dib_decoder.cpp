#include "platform/pictures/dib_decoder.h"

#include <algorithm>
#include <string>

#include "platform/little_endian.h"

namespace vantrel {
namespace {

constexpr std::uint32_t kUncompressed = 0;
constexpr std::uint32_t kRle8 = 1;
constexpr std::uint32_t kRle4 = 2;

unsigned Byte(std::string_view data, std::size_t at) {
    return static_cast<unsigned char>(data[at]);
}

}  // namespace

std::optional<DibDecoder> DibDecoder::FromHeader(std::string_view header, int maxSide, const char*& refusal) {
    refusal = "a header is cut short";
    if (header.size() < 40) return std::nullopt;
    const std::uint32_t headerSize = Little32(header, 0);
    if (headerSize < 40 || headerSize > header.size()) return std::nullopt;

    DibDecoder decoder;
    const auto width = static_cast<std::int32_t>(Little32(header, 4));
    const auto height = static_cast<std::int32_t>(Little32(header, 8));
    refusal = "the size of its frames";
    if (width < 1 || width > maxSide || height == 0 || height > maxSide || height < -maxSide)
        return std::nullopt;
    decoder.width_ = width;
    decoder.height_ = height < 0 ? -height : height;
    decoder.topDown_ = height < 0;

    refusal = "the kind of its frames";
    decoder.bits_ = Little16(header, 14);
    const std::uint32_t compression = Little32(header, 16);
    decoder.runs_ = compression != kUncompressed;
    const bool known =
        (compression == kRle8 && decoder.bits_ == 8 && !decoder.topDown_) ||
        (compression == kRle4 && decoder.bits_ == 4 && !decoder.topDown_) ||
        (compression == kUncompressed && (decoder.bits_ == 8 || decoder.bits_ == 24 || decoder.bits_ == 32));
    if (!known) return std::nullopt;

    if (decoder.bits_ <= 8) {
        refusal = "its colours";
        const std::uint32_t all = 1u << decoder.bits_;
        const std::uint32_t used = Little32(header, 32) == 0 ? all : Little32(header, 32);
        if (used > all || header.size() - headerSize < std::size_t{4} * used) return std::nullopt;
        for (std::uint32_t i = 0; i < used; ++i)
            decoder.colours_[i] = Little32(header, headerSize + 4 * i) & 0xFFFFFF;
    }
    decoder.points_.assign(static_cast<std::size_t>(decoder.width_) * decoder.height_, 0);
    return decoder;
}

bool DibDecoder::Decode(std::string_view data) {
    return runs_ ? DecodeRuns(data) : DecodeRows(data);
}

bool DibDecoder::DecodeRows(std::string_view data) {
    const std::size_t bytes = bits_ / 8;
    const std::size_t stride = (static_cast<std::size_t>(width_) * bytes + 3) / 4 * 4;
    if (data.size() < stride * height_) return false;
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            const std::size_t at = y * stride + x * bytes;
            std::uint32_t point = Byte(data, at);
            if (bytes > 1) point |= Byte(data, at + 1) << 8 | Byte(data, at + 2) << 16;
            points_[static_cast<std::size_t>(y) * width_ + x] = point;
        }
    }
    return true;
}

// Writes `count` points, each a byte or half a byte of `data`. They must fit the row.
bool DibDecoder::Literal(std::string_view data, std::size_t count, int x, int y) {
    if (y >= height_ || count > static_cast<std::size_t>(width_ - x)) return false;
    std::uint32_t* row = &points_[static_cast<std::size_t>(y) * width_ + x];
    for (std::size_t i = 0; i < count; ++i)
        row[i] = bits_ == 8 ? Byte(data, i) : i % 2 == 0 ? Byte(data, i / 2) >> 4 : Byte(data, i / 2) & 15;
    return true;
}

bool DibDecoder::DecodeRuns(std::string_view data) {
    int x = 0;
    int y = 0;
    std::size_t at = 0;
    while (at + 2 <= data.size()) {
        const unsigned count = Byte(data, at);
        const unsigned value = Byte(data, at + 1);
        at += 2;
        if (count > 0) {  // one byte over and over; with half bytes its two halves in turn
            const std::string repeated(bits_ == 8 ? count : (count + 1) / 2, static_cast<char>(value));
            if (!Literal(repeated, count, x, y)) return false;
            x += static_cast<int>(count);
        } else if (value == 0) {  // end of row
            x = 0;
            ++y;
        } else if (value == 1) {  // end of frame
            return true;
        } else if (value == 2) {  // a step to the right and on by rows
            if (at + 2 > data.size()) return false;
            x += static_cast<int>(Byte(data, at));
            y += static_cast<int>(Byte(data, at + 1));
            at += 2;
            if (x > width_ || y > height_) return false;
        } else {  // points as they are, padded to an even number of bytes
            const std::size_t bytes = bits_ == 8 ? value : (value + 1) / 2;
            if (bytes > data.size() - at || !Literal(data.substr(at, bytes), value, x, y)) return false;
            x += static_cast<int>(value);
            at = std::min(data.size(), at + bytes + bytes % 2);
        }
        if (y > height_) return false;
    }
    return at == data.size();
}

std::vector<std::uint32_t> DibDecoder::Picture() const {
    std::vector<std::uint32_t> picture(points_.size());
    for (int y = 0; y < height_; ++y) {
        const std::size_t from = static_cast<std::size_t>(topDown_ ? y : height_ - 1 - y) * width_;
        for (int x = 0; x < width_; ++x) {
            const std::uint32_t point = points_[from + x];
            picture[static_cast<std::size_t>(y) * width_ + x] =
                0xFF000000 | (bits_ <= 8 ? colours_[point & 0xFF] : point);
        }
    }
    return picture;
}

}  // namespace vantrel
