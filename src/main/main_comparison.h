#pragma once

#include <array>
#include <functional>
#include <optional>

#include "core/folder_comparison.h"
#include "core/forms/frm_compare_progress.h"
#include "platform/busy_state.h"

namespace vantrel {

class Application;

// With which endings a comparison ends.
enum class CompareEnding {
    Silent,     // a refresh after another command
    Announced,  // the user asked for it: the offer of the log, the sound, the summary
};

// The comparison of the main window: the paths of its boxes go in, its panes show what comes out, and what
// the user sees and hears at the end follows.
class MainComparison : private ComparisonDisplay {
  public:
    // Both must outlive the object.
    MainComparison(Application& application, frmCompareProgress& progress);
    ~MainComparison() override;
    MainComparison(const MainComparison&) = delete;
    MainComparison& operator=(const MainComparison&) = delete;

    // A call from within a run, or of a window that is being closed, does nothing and gives NoResult.
    CompareOutcome CompareDirs(CompareEnding ending);

    // SourceDirObject and TargetDirObject.
    CDir& Dir(Side side) { return comparison_.Dir(side); }

    // The summary, as the last of the announced endings.
    std::function<void()> ShowCompareResults;

  private:
    CompareOutcome RunAndRelease();
    CompareOutcome Run();
    bool TakesTrueSizes(CompareOutcome outcome, CompareEnding ending);
    bool BothFoldersAreChosen(const PerSide<std::string>& paths);
    void ShowNoResult();
    void Finish(CompareOutcome outcome, CompareEnding ending);
    // The endings, in their order.
    void TellNesting(CompareOutcome outcome, CompareEnding ending);
    void TellUnlisted(CompareOutcome outcome, CompareEnding ending);
    void AskToViewErrors(CompareOutcome outcome, CompareEnding ending);
    void SoundAndShow(CompareOutcome outcome, CompareEnding ending);
    void Remind(CompareOutcome outcome, CompareEnding ending);

    void BeginScan() override;
    void SetPathText(Side side, const std::string& path) override;
    void SetFilterPanel(std::string_view text) override;

    Application& application_;
    frmCompareProgress& progress_;
    FolderComparison comparison_;
    std::array<FileId, 2> toldNesting_{};  // the pair of which the user knows that one holds the other
    // Of the run.
    std::optional<BusyState::Job> job_;
    std::optional<BusyState::Wait> wait_;
    Error unlogged_;
};

}  // namespace vantrel
