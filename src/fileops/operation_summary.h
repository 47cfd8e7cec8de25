#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/currency.h"
#include "platform/locale/locale_formats.h"
#include "shell/shell_operations.h"

namespace vantrel {

// What an operation did and what it did not, for the line that tells it when it is over. Files, links and
// folders count alike, at any depth.
struct OperationSummary {
    std::uint64_t copied = 0;
    Currency copiedBytes;
    std::uint64_t moved = 0;
    std::uint64_t renamed = 0;
    std::uint64_t stamped = 0;  // files that got another time
    // What goes to the trash as a whole counts as one where nobody looked into it.
    std::uint64_t recycled = 0;
    std::uint64_t deleted = 0;  // for good
    std::uint64_t skipped = 0;
    std::uint64_t failed = 0;
    std::uint64_t notReached = 0;  // of the objects asked for: the operation ended before

    // Each object that failed or was skipped.
    struct NotDone {
        std::string path;
        std::string reason;
    };
    std::vector<NotDone> notDone;

    bool IsWhole() const { return skipped + failed + notReached == 0; }
    // Whether anything was asked for at all: something was done, or was not.
    bool IsEmpty() const;
    OperationSummary& operator+=(const OperationSummary& other);
    // Notes one object that failed; a skipped one has no error.
    void AddNotDone(const std::string& path, const Error& error);
};

OperationSummary SummaryOf(const ShellResult& result);

// "Copied 34 (1.2 GB), deleted 9, skipped 1"; "Nothing was done" where all figures are 0.
std::string DescribeSummary(const OperationSummary& summary, const LocaleFormats& locale);
// What was not done, a line each with its reason.
std::string ListNotDone(const OperationSummary& summary);

}  // namespace vantrel
