#include "filetools/text_search.h"

#include <algorithm>
#include <cstring>

namespace vantrel {

namespace {

bool IsLetter(char letter) {
    return (letter | 0x20) >= 'a' && (letter | 0x20) <= 'z';
}

// Common letters are met too often to look for them first.
int Rarity(char letter) {
    constexpr std::string_view kByFrequency = " etaoinsrhldcumfpgwybvkxjqz";
    const std::size_t place = kByFrequency.find(letter);
    return place == std::string_view::npos ? 100 : static_cast<int>(place);
}

const char* Next(const char* from, const char* end, char letter) {
    const void* const found =
        from < end ? std::memchr(from, letter, static_cast<std::size_t>(end - from)) : nullptr;
    return found == nullptr ? end : static_cast<const char*>(found);
}

}  // namespace

std::optional<TextSearch> TextSearch::Make(std::string_view wanted, std::string_view text) {
    constexpr std::string_view kInNumbers = " .0123456789";
    if (wanted.empty() || kInNumbers.find(wanted.front()) != std::string_view::npos) return std::nullopt;
    if (std::any_of(wanted.begin(), wanted.end(),
                    [](char letter) { return letter < 0x20 || letter == 0x7F; }))
        return std::nullopt;
    TextSearch search;
    for (const char letter : wanted) {
        search.lower_ += IsLetter(letter) ? static_cast<char>(letter | 0x20) : letter;
        search.upper_ += IsLetter(letter) ? static_cast<char>(letter & ~0x20) : letter;
    }
    const auto wants = [&](char letter) { return search.lower_.find(letter) != std::string::npos; };
    const auto holds = [&](std::string_view part) { return text.find(part) != std::string_view::npos; };
    if ((wants(' ') && holds("\t")) || (wants('k') && holds("\u212A")) || (wants('s') && holds("\u017F")))
        return std::nullopt;
    for (std::size_t index = 1; index < search.lower_.size(); ++index)
        if (Rarity(search.lower_[index]) > Rarity(search.lower_[search.anchor_])) search.anchor_ = index;
    return search;
}

bool TextSearch::IsAt(const char* place) const {
    for (std::size_t index = 0; index < lower_.size(); ++index)
        if (place[index] != lower_[index] && place[index] != upper_[index]) return false;
    return true;
}

std::size_t TextSearch::FindIn(std::string_view text, std::size_t from, std::size_t end) const {
    if (end < lower_.size() || from > end - lower_.size()) return std::string_view::npos;
    const char* const last = text.data() + end - lower_.size() + anchor_ + 1;
    const char* const first = text.data() + from + anchor_;
    const bool oneForm = lower_[anchor_] == upper_[anchor_];
    const char* lower = Next(first, last, lower_[anchor_]);
    const char* upper = oneForm ? last : Next(first, last, upper_[anchor_]);
    while (lower < last || upper < last) {
        const char* const at = std::min(lower, upper);
        if (IsAt(at - anchor_)) return static_cast<std::size_t>(at - anchor_ - text.data());
        if (at == lower)
            lower = Next(at + 1, last, lower_[anchor_]);
        else
            upper = Next(at + 1, last, upper_[anchor_]);
    }
    return std::string_view::npos;
}

}  // namespace vantrel
