#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

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

    // What `job` gives, found by a worker where there are any: on a mount whose server is gone it may never
    // be found, and then a cancel leaves the worker behind. The job owns all that it needs, and touches
    // nothing but files. Throws ComparisonCancelled.
    template <typename Job>
    auto ByWorker(Job job) const {
        using Found = std::invoke_result_t<const Job&>;
        PendingJob<Found> pending(workers, [job = std::move(job)](const StopFlag&) { return job(); });
        return pending.Take([this] { ThrowIfCancelled(); });
    }
    // Opens a folder in that way; the result is there in any case.
    Error Open(const std::string& path, std::shared_ptr<OpenFolder>& folder) const {
        auto [error, opened] = ByWorker([files = tools.files, path] {
            auto found = std::make_shared<OpenFolder>();
            Error failed = files.Open(path, *found);
            return std::pair(std::move(failed), std::move(found));
        });
        folder = std::move(opened);
        return std::move(error);
    }
};

}  // namespace vantrel
