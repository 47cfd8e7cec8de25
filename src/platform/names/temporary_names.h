#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

// The names that a copy gives to a file while it is being written, as in ".~vantrel-1f00b4c2-4711-3.tmp": a
// number for this machine, the process, and a number of its own.
struct TemporaryCopyName {
    std::string_view machine;  // part of the name that was parsed
    pid_t process = 0;

    static std::optional<TemporaryCopyName> Parse(std::string_view name);
    // A new name of this process. `number` is to be used once only.
    static std::string Make(std::uint64_t number);
    bool IsOfThisMachine() const;
};

// Scans may leave files of such a name out: none of them is ever a whole file.
bool IsTemporaryCopyName(std::string_view name);

}  // namespace vantrel
