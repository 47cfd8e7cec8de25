#include "platform/names/temporary_names.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <charconv>
#include <cstdio>

namespace vantrel {
namespace {

constexpr std::string_view kHead = ".~vantrel-";
constexpr std::string_view kTail = ".tmp";
constexpr std::size_t kMachineDigits = 8;

// Two machines can write to one shared folder, where a process number of the one says nothing to the other.
std::string FindThisMachine() {
    utsname name{};
    uname(&name);
    std::uint32_t hash = 2166136261U;  // FNV-1a
    for (const char* c = name.nodename; *c; ++c) hash = (hash ^ static_cast<unsigned char>(*c)) * 16777619U;
    char text[kMachineDigits + 1];
    std::snprintf(text, sizeof text, "%08x", hash);
    return text;
}

const std::string& ThisMachine() {
    static const std::string machine = FindThisMachine();
    return machine;
}

}  // namespace

std::optional<TemporaryCopyName> TemporaryCopyName::Parse(std::string_view name) {
    if (!name.starts_with(kHead) || !name.ends_with(kTail)) return std::nullopt;
    name.remove_prefix(kHead.size());
    if (name.size() < kTail.size() + kMachineDigits + 4) return std::nullopt;
    name.remove_suffix(kTail.size());
    TemporaryCopyName parsed{name.substr(0, kMachineDigits), 0};
    if (parsed.machine.find_first_not_of("0123456789abcdef") != std::string_view::npos) return std::nullopt;
    std::uint64_t number = 0;
    const char* at = name.data() + kMachineDigits;
    const char* end = name.data() + name.size();
    if (*at++ != '-') return std::nullopt;
    auto read = std::from_chars(at, end, parsed.process);
    if (read.ec != std::errc() || parsed.process <= 0 || read.ptr == end || *read.ptr != '-')
        return std::nullopt;
    read = std::from_chars(read.ptr + 1, end, number);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return parsed;
}

std::string TemporaryCopyName::Make(std::uint64_t number) {
    std::string name(kHead);
    name += ThisMachine();
    name += "-" + std::to_string(getpid()) + "-" + std::to_string(number);
    name += kTail;
    return name;
}

bool TemporaryCopyName::IsOfThisMachine() const {
    return machine == ThisMachine();
}

bool IsTemporaryCopyName(std::string_view name) {
    return TemporaryCopyName::Parse(name).has_value();
}

}  // namespace vantrel
