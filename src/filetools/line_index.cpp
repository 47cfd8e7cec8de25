#include "filetools/line_index.h"

#include <algorithm>
#include <cstring>

#include "platform/error.h"

namespace vantrel {

LineIndex::LineIndex(std::string_view text, const CancelCheck& check) : text_(text) {
    PacedCheck pace(check, std::size_t{4} << 20);
    if (text.empty()) return;
    constexpr std::size_t kSample = std::size_t{64} << 10;
    const std::size_t sample = std::min(text.size(), kSample);
    const auto inSample = static_cast<std::size_t>(
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(sample), '\n'));
    starts_.reserve(std::min<std::size_t>(text.size() / sample * inSample + inSample + 2, kMostLines));
    for (std::size_t at = 0; at < text.size();) {
        starts_.push_back(at);
        if (starts_.size() > static_cast<std::size_t>(kMostLines))
            throw ErrorException(Error(ErrorNumber::Overflow, "The file has too many lines"));
        const void* end = std::memchr(text.data() + at, '\n', text.size() - at);
        const std::size_t next =
            end == nullptr ? text.size()
                           : static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1;
        pace.Count(next - at);
        at = next;
    }
    starts_.push_back(text.size());
}

std::string_view LineIndex::Line(LineNumber index) const {
    const auto at = static_cast<std::size_t>(index);
    std::string_view line = text_.substr(starts_[at], starts_[at + 1] - starts_[at]);
    if (line.ends_with('\n')) {
        line.remove_suffix(1);
        if (line.ends_with('\r')) line.remove_suffix(1);
    }
    return line;
}

LineNumber LineIndex::LineOf(std::uint64_t offset) const {
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), offset);
    return static_cast<LineNumber>(behind - starts_.begin()) - 1;
}

}  // namespace vantrel
