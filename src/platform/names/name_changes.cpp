#include "platform/names/name_changes.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>

#include "platform/names/names.h"

namespace vantrel::names {
namespace {

constexpr std::size_t kLongestName = 255;  // bytes, on every file system of this platform

// Calls `take(character, from, to)` for each code point and where its bytes are.
template <typename Take>
void ForEachCharacter(std::string_view name, const Take& take) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(name.data());
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t from = at;
        UChar32 character = 0;
        U8_NEXT(bytes, at, name.size(), character);
        take(character, from, at);
    }
}

void Append(UChar32 character, std::string& to) {
    char bytes[U8_MAX_LENGTH] = {};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(reinterpret_cast<std::uint8_t*>(bytes), length, character);
    to.append(bytes, length);
}

template <typename Change>
std::string EachChanged(std::string_view name, const Change& change) {
    std::string changed;
    changed.reserve(name.size());
    ForEachCharacter(name, [&](UChar32 character, std::size_t from, std::size_t to) {
        const UChar32 now = character < 0 ? character : change(character);
        if (now == character)
            changed.append(name.substr(from, to - from));
        else
            Append(now, changed);
    });
    return changed;
}

bool GoesOnWithWord(UChar32 character) {
    constexpr UChar32 kApostrophe = 0x27, kRightQuote = 0x2019;
    return u_isalnum(character) || (U_GET_GC_MASK(character) & U_GC_M_MASK) != 0 ||
           character == kApostrophe || character == kRightQuote;
}

}  // namespace

NameParts SplitName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || name.find_first_not_of('.') >= dot) return {name, {}};
    return {name.substr(0, dot), name.substr(dot)};
}

bool IsPossibleName(std::string_view name) {
    if (name.empty() || name == "." || name == "..") return false;
    if (name.find('/') != std::string_view::npos || name.find('\0') != std::string_view::npos) return false;
    return NameToSystem(name).size() <= kLongestName;
}

std::string RemoveInternalSpaces(std::string_view name) {
    const auto isSpace = [](UChar32 character) { return u_charType(character) == U_SPACE_SEPARATOR; };
    std::size_t first = name.size(), last = 0;  // where what is no blank begins and ends
    ForEachCharacter(name, [&](UChar32 character, std::size_t from, std::size_t to) {
        if (isSpace(character)) return;
        first = std::min(first, from);
        last = to;
    });
    std::string changed;
    ForEachCharacter(name, [&](UChar32 character, std::size_t from, std::size_t to) {
        if (!isSpace(character) || from < first || from >= last) changed.append(name.substr(from, to - from));
    });
    return changed;
}

std::string RemoveFilenameExtension(std::string_view name) {
    return std::string(SplitName(name).base);
}

std::string ReplaceFileName(std::string_view name, std::string_view newName) {
    return std::string(newName).append(SplitName(name).extension);
}

std::string ReplaceExtension(std::string_view name, std::string_view newExtension) {
    std::string changed(SplitName(name).base);
    if (!newExtension.empty()) changed.append(".").append(newExtension);
    return changed;
}

std::string AddSuffixToFileName(std::string_view name, std::string_view suffix) {
    const NameParts parts = SplitName(name);
    return std::string(parts.base).append(suffix).append(parts.extension);
}

std::string UpperCase(std::string_view name) {
    return EachChanged(name, [](UChar32 character) { return u_toupper(character); });
}

std::string LowerCase(std::string_view name) {
    return EachChanged(name, [](UChar32 character) { return u_tolower(character); });
}

std::string ProperCase(std::string_view name) {
    const NameParts parts = SplitName(name);
    bool inWord = false;
    std::string changed = EachChanged(parts.base, [&inWord](UChar32 character) {
        const bool begins = !inWord && u_isalnum(character);
        inWord = begins || (inWord && GoesOnWithWord(character));
        return begins ? u_totitle(character) : u_tolower(character);
    });
    return changed.append(LowerCase(parts.extension));
}

std::string ToggleCase(std::string_view name) {
    return EachChanged(name, [](UChar32 character) {
        const UChar32 small = u_tolower(character);
        return small != character ? small : u_toupper(character);
    });
}

}  // namespace vantrel::names
