#include "platform/names/names.h"

#include <unicode/utf8.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace vantrel {

namespace {

constexpr UChar32 kCarrierBase = 0x10F800;
constexpr UChar32 kCarrierEnd = kCarrierBase + 0x100;

bool IsPlainAscii(unsigned char byte) {
    return byte >= 0x20 && byte < 0x7F && byte != '\\';
}

// Length of the character at `at` when the engine's form holds it, 0 when its first byte must be carried.
// Carrying characters are themselves only welcome in a text that a person typed.
std::size_t HeldLength(std::string_view text, std::size_t at, bool carriersWelcome) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) return IsPlainAscii(first) ? 1 : 0;
    const auto size = static_cast<std::int64_t>(text.size());
    auto next = static_cast<std::int64_t>(at);
    UChar32 point = 0;
    U8_NEXT(text.data(), next, size, point);
    if (point < 0xA0) return 0;
    if (point >= kCarrierBase && point < kCarrierEnd && !carriersWelcome) return 0;
    return static_cast<std::size_t>(next) - at;
}

// Whether all eight bytes are plain: of each byte the highest bit tells that it is not.
bool AreEightPlain(const char* bytes) {
    constexpr std::uint64_t kOnes = 0x0101010101010101, kHighest = 0x80 * kOnes;
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes, sizeof eight);
    // Exact as to whether there is a zero byte (Hacker's Delight, 2nd edition, section 6-1).
    const auto zero = [](std::uint64_t word) { return (word - kOnes) & ~word; };
    const std::uint64_t belowBlank = (eight - 0x20 * kOnes) & ~eight;
    return ((eight | belowBlank | zero(eight ^ 0x7F * kOnes) | zero(eight ^ '\\' * kOnes)) & kHighest) == 0;
}

std::size_t PlainAsciiHead(std::string_view text) {
    std::size_t at = 0;
    while (at + 8 <= text.size() && AreEightPlain(text.data() + at)) at += 8;
    while (at < text.size() && IsPlainAscii(static_cast<unsigned char>(text[at]))) ++at;
    return at;
}

void AppendPoint(UChar32 point, std::string& to) {
    char units[U8_MAX_LENGTH];
    int length = 0;
    U8_APPEND_UNSAFE(units, length, point);
    to.append(units, static_cast<std::size_t>(length));
}

std::string ToEngineForm(std::string_view bytes, bool carriersWelcome) {
    std::size_t at = PlainAsciiHead(bytes);
    std::string name(bytes.substr(0, at));
    while (at < bytes.size()) {
        const std::size_t length = HeldLength(bytes, at, carriersWelcome);
        if (length == 0) {
            AppendPoint(kCarrierBase + static_cast<unsigned char>(bytes[at++]), name);
        } else {
            name.append(bytes, at, length);
            at += length;
        }
    }
    return name;
}

// The byte carried by the character at `at`, -1 when it carries none. Bytes of plain ASCII are never carried,
// so a character that claims one is just a character: a typed one cannot smuggle in a "/".
int CarriedByte(std::string_view name, std::size_t at) {
    if (static_cast<unsigned char>(name[at]) != 0xF4 || name.size() - at < 4) return -1;
    const auto size = static_cast<std::int64_t>(name.size());
    auto next = static_cast<std::int64_t>(at);
    UChar32 point = 0;
    U8_NEXT(name.data(), next, size, point);
    if (point < kCarrierBase || point >= kCarrierEnd) return -1;
    const auto byte = static_cast<unsigned char>(point - kCarrierBase);
    return IsPlainAscii(byte) ? -1 : byte;
}

// Marks of direction and line ends: they would move or break what stands beside them.
bool DisturbsLine(UChar32 point) {
    return point == 0x061C || point == 0x200E || point == 0x200F || (point >= 0x2028 && point <= 0x202E) ||
           (point >= 0x2066 && point <= 0x2069) || point == 0xFEFF;
}

UChar32 StandIn(int carried) {
    if (carried == '\\') return '\\';
    if (carried < 0x20) return 0x2400 + carried;  // control pictures
    if (carried == 0x7F) return 0x2421;
    return 0xFFFD;
}

}  // namespace

std::string NameFromSystem(std::string_view bytes) {
    return ToEngineForm(bytes, false);
}

std::string NameToSystem(std::string_view name) {
    std::string bytes;
    bytes.reserve(name.size());
    std::size_t at = 0;
    while (at < name.size()) {
        const std::size_t lead = name.find('\xF4', at);
        if (lead == std::string_view::npos) break;
        bytes.append(name, at, lead - at);
        const int carried = CarriedByte(name, lead);
        at = lead + (carried < 0 ? 1 : 4);
        bytes.push_back(carried < 0 ? '\xF4' : static_cast<char>(carried));
    }
    if (at < name.size()) bytes.append(name.substr(at));
    return bytes;
}

bool IsPlainName(std::string_view bytes) {
    std::size_t at = PlainAsciiHead(bytes);
    while (at < bytes.size()) {
        const std::size_t length = HeldLength(bytes, at, false);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

std::string PathFromUser(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    const char* home = text.starts_with("~/") ? std::getenv("HOME") : nullptr;
    if (home == nullptr || *home == '\0') return ToEngineForm(text, true);
    std::string path = NameFromSystem(home);
    while (path.ends_with('/')) path.pop_back();
    return path + ToEngineForm(text.substr(1), true);
}

std::string DisplayName(std::string_view name) {
    const std::size_t plain = PlainAsciiHead(name);
    std::string shown(name.substr(0, plain));
    const auto size = static_cast<std::int64_t>(name.size());
    for (auto at = static_cast<std::int64_t>(plain); at < size;) {
        const int carried = CarriedByte(name, static_cast<std::size_t>(at));
        UChar32 point = 0;
        U8_NEXT_OR_FFFD(name.data(), at, size, point);
        if (carried >= 0) point = StandIn(carried);
        AppendPoint(DisturbsLine(point) ? 0xFFFD : point, shown);
    }
    return shown;
}

}  // namespace vantrel
