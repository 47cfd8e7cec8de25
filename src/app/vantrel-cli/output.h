#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::cli {

// Standard output, or another descriptor, in large writes. What was written once stays written: fill it with
// a whole result only.
class Output {
  public:
    explicit Output(int descriptor = 1) : descriptor_(descriptor) {
        buffer_.reserve(kFlushAt + (std::size_t{16} << 10));
    }

    Output& operator<<(std::string_view text) {
        if (text.size() >= kFlushAt) {
            Flush();
            Write(text);
        } else {
            buffer_.append(text);
            if (buffer_.size() >= kFlushAt) Flush();
        }
        return *this;
    }
    Output& operator<<(char letter) { return *this << std::string_view(&letter, 1); }
    Output& operator<<(std::int64_t number);
    void Fill(std::size_t count, char letter) { buffer_.append(count, letter); }
    // Cuts blanks from the end of the line and ends it.
    void EndLine();

    // Writes what is left. The errno value of the first write that failed, 0 where none did.
    int Finish();

  private:
    static constexpr std::size_t kFlushAt = std::size_t{64} << 10;
    void Flush();
    void Write(std::string_view text);

    int descriptor_;
    std::string buffer_;
    int failure_ = 0;
};

}  // namespace vantrel::cli
