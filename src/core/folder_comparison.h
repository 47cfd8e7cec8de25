#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "core/ccompare.h"
#include "core/cdir.h"
#include "core/comparison_context.h"
#include "core/comparison_results.h"

namespace vantrel {

// How a run ended.
enum class CompareOutcome {
    Completed,  // there are results
    NoResult,   // cancelled, or stopped by a fault that the user was told of: nothing may be shown
    Failed,     // an error was reported; what an earlier run found may stay
};

// Of a run that had to leave a reader behind.
inline constexpr std::string_view kLeftBehind =
    "A folder or file did not answer.  What was reading it was left behind.";

struct ComparisonReport {
    CompareOutcome outcome = CompareOutcome::Failed;
    ComparisonResults results;   // of a completed run, otherwise empty
    Error unlogged;              // why the log is not whole
    std::size_t leftBehind = 0;  // readers that did not answer when the run ended (Workers::LeftBehind)
};

// The one routine that turns two paths into results. What follows a run (showing the results, sound, summary,
// reminders) is its caller's. It belongs to the one thread; each run has workers of its own.
class FolderComparison {
  public:
    // All must outlive the object.
    FolderComparison(const Toolbox& tools, CCompare& compare, CompareProgress& progress)
        : tools_(tools), compare_(compare), progress_(progress), dirs_{CDir(tools), CDir(tools)} {}
    FolderComparison(const FolderComparison&) = delete;
    FolderComparison& operator=(const FolderComparison&) = delete;

    // Compares the folders at `paths` under the options of CCompare, and sets its state of the run but for
    // RunningCompare. Errors are reported under "frmMain.CompareDirs". The progress window is left to the
    // caller to unload, for the results are shown before it goes. Not to be called from within a run.
    ComparisonReport Compare(const PerSide<std::string>& paths, ComparisonDisplay* display);

    // The scanned folders: SourceDirObject and TargetDirObject. During a run, and after one that failed, they
    // can be others than those of the last results.
    CDir& Dir(Side side) { return dirs_[Index(side)]; }

  private:
    // One run: its paths and what it works with.
    struct Run {
        const PerSide<std::string>& paths;
        const ComparisonContext context;
    };
    bool Carry(const Run& run, ComparisonResults& found);
    bool ScanBoth(const Run& run);
    void AwaitAnswers(const Run& run) const;
    bool CheckPaths(const Run& run);
    bool AreOneFolder(const PerSide<std::string>& paths) const;
    bool Scan(Side side, const Run& run, FolderReading* begun, FolderReading* other);
    bool OfferSmallerChunks();
    std::shared_ptr<std::mutex> TurnsOnDisk(const ComparisonContext& context) const;
    bool CompareContent(const ComparisonContext& context, ComparisonResults& found);

    const Toolbox tools_;
    CCompare& compare_;
    CompareProgress& progress_;
    std::array<CDir, 2> dirs_;
};

}  // namespace vantrel
