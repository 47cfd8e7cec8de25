#include "output.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>

namespace vantrel::cli {

Output& Output::operator<<(std::int64_t number) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return *this << std::string_view(digits, static_cast<std::size_t>(end - digits));
}

void Output::EndLine() {
    while (buffer_.ends_with(' ')) buffer_.pop_back();
    *this << '\n';
}

void Output::Flush() {
    Write(buffer_);
    buffer_.clear();
}

void Output::Write(std::string_view text) {
    while (!text.empty() && failure_ == 0) {
        const ssize_t written = write(descriptor_, text.data(), text.size());
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (written < 0 && errno != EINTR)
            failure_ = errno;
    }
}

int Output::Finish() {
    Flush();
    return failure_;
}

}  // namespace vantrel::cli
