#include "platform/names/like_pattern.h"

#include <algorithm>

#include "platform/names/names.h"

namespace vantrel {
namespace {

constexpr unsigned char kAsciiEnd = 0x80;

bool IsAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char byte : text) bits |= static_cast<unsigned char>(byte);
    return bits < kAsciiEnd;
}

// The first element of `rest`: a star, a set with its brackets, or one character with all its bytes.
std::string_view FirstElement(std::string_view rest) {
    if (rest.front() == '[')
        if (const std::size_t close = rest.find(']'); close != std::string_view::npos)
            return rest.substr(0, close + 1);
    std::size_t length = 1;
    while (length < rest.size() && (static_cast<unsigned char>(rest[length]) & 0xC0) == kAsciiEnd) ++length;
    return rest.substr(0, length);
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) : pattern_(pattern), runs_(1) {
    for (std::string_view rest = pattern; !rest.empty();) {
        const std::string_view element = FirstElement(rest);
        rest.remove_prefix(element.size());
        if (element == "[]") continue;  // no character at all
        if (element == "*") {
            runs_.emplace_back();
            continue;
        }
        Place place;
        for (unsigned char byte = 0; byte < kAsciiEnd; ++byte) {
            const auto character = static_cast<char>(byte);
            place[byte] = Like({&character, 1}, element);
        }
        runs_.back().push_back(place);
        ++least_;
    }
}

bool LikePattern::Matches(std::string_view name) const {
    return IsAscii(name) ? MatchesAscii(name) : Like(name, pattern_);
}

bool LikePattern::FitsAt(const Run& run, std::string_view name, std::size_t at) {
    for (std::size_t i = 0; i < run.size(); ++i)
        if (!run[i][static_cast<unsigned char>(name[at + i])]) return false;
    return true;
}

// The first run stands at the head and the last one at the tail; each one between is best taken where it
// first fits.
bool LikePattern::MatchesAscii(std::string_view name) const {
    if (name.size() < least_) return false;
    const Run& head = runs_.front();
    if (runs_.size() == 1) return name.size() == least_ && FitsAt(head, name, 0);
    const Run& tail = runs_.back();
    const std::size_t end = name.size() - tail.size();
    if (!FitsAt(tail, name, end) || !FitsAt(head, name, 0)) return false;
    std::size_t at = head.size();
    for (std::size_t i = 1; i + 1 < runs_.size(); ++i) {
        while (at + runs_[i].size() <= end && !FitsAt(runs_[i], name, at)) ++at;
        at += runs_[i].size();
        if (at > end) return false;
    }
    return true;
}

}  // namespace vantrel
