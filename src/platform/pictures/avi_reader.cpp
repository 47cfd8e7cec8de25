#include "platform/pictures/avi_reader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "platform/little_endian.h"
#include "platform/pictures/dib_decoder.h"

namespace vantrel {
namespace {

[[noreturn]] void Refuse(const char* why) {
    throw ErrorException(
        Error(ErrorNumber::InvalidPropertyValue, std::string("Not a playable AVI file: ") + why));
}

struct Chunk {
    std::string_view id;
    std::string_view data;
};

// Goes through the chunks of a list, one after the other. Each must lie wholly within the list.
class Chunks {
  public:
    explicit Chunks(std::string_view bytes) : rest_(bytes) {}

    std::optional<Chunk> Next() {
        if (rest_.size() < 8) {
            // A single zero may pad the list.
            if (rest_.size() > 1) Refuse("cut short");
            return std::nullopt;
        }
        const std::size_t size = Little32(rest_, 4);
        if (size > rest_.size() - 8) Refuse("cut short");
        const Chunk chunk{rest_.substr(0, 4), rest_.substr(8, size)};
        rest_.remove_prefix(std::min(rest_.size(), 8 + size + size % 2));
        return chunk;
    }

  private:
    std::string_view rest_;
};

// The content of a list chunk of that type; nothing for any other chunk.
std::optional<std::string_view> ListContent(const Chunk& chunk, std::string_view type) {
    if (chunk.id != "LIST" || chunk.data.substr(0, 4) != type) return std::nullopt;
    return chunk.data.substr(4);
}

class Reader {
  public:
    explicit Reader(std::string_view bytes) {
        if (bytes.size() > kMaxAviBytes) Refuse("too large");
        if (bytes.substr(0, 4) != "RIFF" || bytes.size() < 12 || bytes.substr(8, 4) != "AVI ")
            Refuse("another kind of file");
        const std::size_t size = Little32(bytes, 4);
        if (size < 4 || size > bytes.size() - 8) Refuse("cut short");
        Chunks chunks(bytes.substr(12, size - 4));
        while (const auto chunk = chunks.Next()) {
            if (const auto header = ListContent(*chunk, "hdrl")) ReadHeader(*header);
            if (const auto frames = ListContent(*chunk, "movi")) ReadFrames(*frames);
        }
        if (animation_.frames.empty()) Refuse("no frames");
    }

    Animation Take() { return std::move(animation_); }

  private:
    void ReadHeader(std::string_view header) {
        std::uint32_t microseconds = 0;
        unsigned streams = 0;
        Chunks chunks(header);
        while (const auto chunk = chunks.Next()) {
            if (chunk->id == "avih" && chunk->data.size() >= 4) microseconds = Little32(chunk->data, 0);
            if (const auto stream = ListContent(*chunk, "strl")) {
                if (!decoder_) ReadStream(*stream, streams);
                ++streams;
            }
        }
        if (!decoder_) Refuse("no pictures");
        if (scale_ != 0 && rate_ != 0) {
            const std::uint64_t period = std::uint64_t{scale_} * 1'000'000 / rate_;
            microseconds = static_cast<std::uint32_t>(std::min<std::uint64_t>(period, 0xFFFF'FFFF));
        }
        animation_.width = decoder_->Width();
        animation_.height = decoder_->Height();
        animation_.frameMilliseconds =
            static_cast<int>(std::clamp<std::uint32_t>(microseconds / 1000, 10, 10'000));
    }

    void ReadStream(std::string_view stream, unsigned number) {
        bool isVideo = false;
        Chunks chunks(stream);
        while (const auto chunk = chunks.Next()) {
            if (chunk->id == "strh") {
                if (chunk->data.size() < 28) Refuse("a header is cut short");
                isVideo = chunk->data.substr(0, 4) == "vids";
                if (!isVideo) return;
                scale_ = Little32(chunk->data, 20);
                rate_ = Little32(chunk->data, 24);
            } else if (chunk->id == "strf" && isVideo) {
                const char* refusal = nullptr;
                decoder_ = DibDecoder::FromHeader(chunk->data, kMaxAviSide, refusal);
                if (!decoder_) Refuse(refusal);
            }
        }
        if (isVideo) {
            if (number > 99) Refuse("too many streams");
            prefix_ = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
        }
    }

    void ReadFrames(std::string_view frames) {
        if (!decoder_) Refuse("no header before the frames");
        Chunks chunks(frames);
        while (const auto chunk = chunks.Next()) {
            // Frames may be bundled for slow disks; a bundle holds no further one.
            if (const auto bundle = ListContent(*chunk, "rec ")) {
                Chunks bundled(*bundle);
                while (const auto inner = bundled.Next()) ReadFrame(*inner);
            } else {
                ReadFrame(*chunk);
            }
        }
    }

    void ReadFrame(const Chunk& chunk) {
        if (chunk.id.substr(0, 2) != std::string_view(prefix_.data(), 2)) return;
        const std::string_view kind = chunk.id.substr(2);
        if (kind == "pc") Refuse("a change of colours");
        if (kind != "db" && kind != "dc") return;
        const std::size_t points = static_cast<std::size_t>(animation_.width) * animation_.height;
        if (animation_.frames.size() >= kMaxAviFrames ||
            (animation_.frames.size() + 1) * points > kMaxAviPoints)
            Refuse("too many frames");
        // An empty chunk shows the frame before once more.
        if (!chunk.data.empty() && !decoder_->Decode(chunk.data)) Refuse("a damaged frame");
        animation_.frames.push_back(decoder_->Picture());
    }

    Animation animation_;
    std::optional<DibDecoder> decoder_;
    std::array<char, 2> prefix_{'0', '0'};
    std::uint32_t scale_ = 0;
    std::uint32_t rate_ = 0;
};

}  // namespace

Error ReadAvi(std::string_view bytes, Animation& animation) {
    animation = {};
    try {
        animation = Reader(bytes).Take();
        return {};
    } catch (const ErrorException& exception) {
        return exception.Get();
    }
}

}  // namespace vantrel
