#include "dupes/duplicate_finder.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "dupes/content_pass.h"
#include "dupes/is_criteria_valid.h"
#include "platform/files/readers.h"

namespace vantrel {

namespace {

// What does not answer is waited for no longer than a user waits for a cancel.
constexpr std::chrono::milliseconds kPatience{1'000};
constexpr const char* kCancelled = "Search cancelled by user.";

}  // namespace

// One thread is there at least, whatever the option says: this one hears the user meanwhile.
DupeOutcome DuplicateFinder::Find(const DupeSearchOrder& order) {
    Workers workers(std::max<std::size_t>(WorkerCount(order.jobs), 1));
    const DupeOutcome outcome = Find(order, workers, HashMakerFor(order.hashMethod));
    leftBehind_ = workers.End(kPatience);
    return outcome;
}

DupeOutcome DuplicateFinder::Find(const DupeSearchOrder& order, Workers& workers,
                                  const ContentHashMaker& hash) {
    tools_.loop.ResetCancel();
    DupeOutcome outcome = DupeOutcome::Failed;
    try {
        if (!IsCriteriaValid(tools_, workers, order)) return DupeOutcome::Refused;
        if (order.jobs == 0) AddReaders(workers, tools_.volumes, order.folders);
        Clear();
        bool whole = false;
        tools_.reporter.Guard("frmFindDuplicates.cmdFindDupes_Click",
                              [&] { whole = Search(order, workers, hash); });
        if (whole) outcome = DupeOutcome::Completed;
    } catch (const Cancelled&) {
        outcome = DupeOutcome::Cancelled;
    }
    if (outcome != DupeOutcome::Completed) {
        results_ = DupeResults();
        progress_.SetStatus(outcome == DupeOutcome::Cancelled ? kCancelled : "");
    }
    progress_.SetSearching(false);
    progress_.SetBar(0, 0);
    return outcome;
}

void DuplicateFinder::Clear() {
    progress_.SetStatus("Freeing up memory from last search.  Please wait...");
    tools_.loop.Yield();
    results_ = DupeResults();
    foundFileCount_ = 0;
    unsearched_.clear();
    progress_.SetFigures({});
    progress_.SetStatus("");
}

void DuplicateFinder::CheckCancel() {
    tools_.loop.Yield();
    if (tools_.loop.CancelRequested()) throw Cancelled();
}

// False where it failed, which was reported.
bool DuplicateFinder::Search(const DupeSearchOrder& order, Workers& workers, const ContentHashMaker& hash) {
    progress_.SetSearching(true);
    DupeCollection found = CollectDupeFiles(tools_, workers, order, progress_, [this] { CheckCancel(); });
    unsearched_ = std::move(found.unsearched);
    foundFileCount_ = found.files.Count();
    progress_.SetSearching(false);
    CheckCancel();
    return tools_.reporter.Guard("frmFindDuplicates.ShowDupes",
                                 [&] { ShowDupes(std::move(found.files), order, workers, hash); });
}

void DuplicateFinder::ShowDupes(FoundFiles files, const DupeSearchOrder& order, Workers& workers,
                                const ContentHashMaker& hash) {
    if (files.Count() == 0) {
        progress_.SetStatus("No duplicates found");
        return;
    }
    const std::string found = std::to_string(files.Count()) + " files were found in the path.";
    progress_.SetStatus(found);
    const DupeCheck check = [this] { CheckCancel(); };
    check();
    std::vector<DupeRun> runs = OrderByCriteria(files, order.criteria, check);
    if (order.criteria.contents) {
        const bool rotates = AnyRotates(tools_.volumes, order.folders);
        progress_.SetStatus(found + " Searching for duplicates.  Press ESC to cancel the search...");
        check();
        cache_.UseMethod(order.hashMethod);
        ContentPass({tools_.clock, tools_.files, workers, cache_, progress_, check, rotates})
            .Look(files, runs, hash);
        runs = DivideByContents(files, runs, check);
    }
    progress_.SetStatus("Loading duplicates...");
    check();
    results_ = DupeResults(std::move(files), runs, order.criteria);
    progress_.SetStatus(results_.StatusText());
}

}  // namespace vantrel
