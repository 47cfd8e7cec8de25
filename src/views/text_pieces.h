#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace vantrel {

// Gathers a long text and hands it on in pieces of some 64 KiB.
class TextPieces {
  public:
    using Sink = std::function<void(std::string_view piece)>;
    // What the sink throws comes out of whatever writes. The last piece is handed on by Flush.
    explicit TextPieces(Sink sink) : sink_(std::move(sink)) {
        buffer_.reserve(kFlushAt + (std::size_t{16} << 10));
    }

    TextPieces& operator<<(std::string_view text) {
        buffer_.append(text);
        if (buffer_.size() >= kFlushAt) Flush();
        return *this;
    }
    TextPieces& operator<<(char letter) { return *this << std::string_view(&letter, 1); }
    TextPieces& operator<<(std::int64_t number) {
        std::array<char, 24> digits;
        const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }
    void Flush() {
        if (!buffer_.empty()) sink_(buffer_);
        buffer_.clear();
    }

  private:
    static constexpr std::size_t kFlushAt = std::size_t{64} << 10;

    Sink sink_;
    std::string buffer_;
};

}  // namespace vantrel
