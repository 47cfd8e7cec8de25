#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "core/ccompare.h"
#include "core/cdir.h"
#include "core/comparison_context.h"
#include "core/comparison_results.h"

namespace vantrel {

// What a path box shows before a folder was chosen.
inline constexpr std::string_view kNoFolderChosen = "Press the folder icon with three dots -->";

// How a run ended.
enum class CompareOutcome {
    Completed,  // the results are those of this run
    NoResult,   // cancelled, or stopped by a fault that the user was told of: there are no results
    Failed,     // an error was reported; the results are still those of an earlier run
};

// The one routine that turns two paths into results. It talks to the window, or the console, through the host
// and the progress window alone. The results change at the end of a run and as a whole.
class FolderComparison {
  public:
    // All must outlive the object. CCompare's clean-up of sub-folder results is pointed at `results`.
    FolderComparison(const Toolbox& tools, CCompare& compare, ComparisonHost& host, CompareProgress& progress,
                     ComparisonResults& results);
    ~FolderComparison();
    FolderComparison(const FolderComparison&) = delete;
    FolderComparison& operator=(const FolderComparison&) = delete;

    // `fromCompareCommand` or `announce`: the run ends with the endings that the user sees and hears. A
    // silent refresh passes false for both. A call from within a run does nothing and gives NoResult.
    CompareOutcome CompareDirs(bool fromCompareCommand, bool announce);

    // The scanned folders: SourceDirObject and TargetDirObject. During a run, and after one that failed, they
    // can be others than those of the results.
    CDir& Dir(Side side) { return dirs_[Index(side)]; }

  private:
    bool Run();
    bool BothFoldersAreChosen();
    bool CheckPaths();
    bool AreOneFolder() const;
    bool Scan(Side side);
    bool OfferSmallerChunks();
    bool CompareContent(ComparisonResults& found);
    bool RunStep(std::string_view routineName, const std::function<void()>& work);
    void ShowNoResult();
    void Finish(CompareOutcome outcome, bool announce);
    void ReportUnlistedFolders();
    void AskToViewErrors();
    void RemindAboutFileSystems();

    Toolbox tools_;
    CCompare& compare_;
    ComparisonHost& host_;
    CompareProgress& progress_;
    ComparisonResults& results_;
    ComparisonContext context_;
    std::array<CDir, 2> dirs_;
    PerSide<std::string> paths_;  // as the path boxes gave them
    bool menusDisabled_ = false;  // by this run
};

}  // namespace vantrel
