#pragma once

#include "core/ccompare.h"
#include "core/compare_ports.h"
#include "core/toolbox.h"
#include "platform/workers.h"

namespace vantrel {

// Thrown inside a comparison when the user cancelled it; caught by FolderComparison and by nothing else.
struct ComparisonCancelled : Cancelled {};

// What every step of a running comparison works with. Nothing in it is owned, and all of it is the one
// thread's: what workers are handed is taken from it beforehand.
struct ComparisonContext {
    const Toolbox& tools;
    CCompare& compare;
    CompareProgress& progress;
    Workers& workers;                      // without threads all is done by the one thread
    ComparisonDisplay* display = nullptr;  // none without a window

    // Lets events through, then reads the cancel flag. Cheap enough for every file.
    bool IsCancelled() const {
        tools.loop.Yield();
        if (tools.loop.CancelRequested()) compare.CompareCancelled = true;
        return compare.CompareCancelled;
    }
    // The size that a found file has for this run.
    Currency SizeOf(std::uint64_t bytes) const {
        if (bytes >= kLeastLargeFile) compare.MetLargeFiles = true;
        return SizeByRule(bytes, compare.Sizes);
    }
    void ThrowIfCancelled() const {
        if (IsCancelled()) throw ComparisonCancelled();
    }
};

}  // namespace vantrel
