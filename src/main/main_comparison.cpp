#include "main/main_comparison.h"

#include <QScopedValueRollback>

#include "core/file_system_reminder.h"
#include "core/unlisted_folders.h"
#include "diagnostics/log_offer.h"
#include "main/application.h"

namespace vantrel {
namespace {

// What a path box shows before a folder was chosen.
constexpr std::string_view kNoFolderChosen = "Press the folder icon with three dots -->";

}  // namespace

MainComparison::MainComparison(Application& application, frmCompareProgress& progress)
    : application_(application),
      progress_(progress),
      comparison_(application.tools, application.compare, progress) {
    application_.compare.CleanupPreviousSubFolderResults = [this] {
        application_.results.SubFolderDiffs.Clear();
    };
}

MainComparison::~MainComparison() {
    application_.compare.CleanupPreviousSubFolderResults = nullptr;
}

CompareOutcome MainComparison::CompareDirs(CompareEnding ending) {
    if (application_.compare.RunningCompare || application_.Window().IsClosing())
        return CompareOutcome::NoResult;
    if (ending == CompareEnding::Announced) application_.Window().TellOperation({}, {});
    progress_.SetWaits(ending == CompareEnding::Announced);
    CompareOutcome outcome = RunAndRelease();
    application_.GuardRun("frmMain.CompareDirs", [&] {
        if (TakesTrueSizes(outcome, ending)) outcome = RunAndRelease();
        Finish(outcome, ending);
    });
    wait_.reset();
    return outcome;
}

// The menus are back before the user is asked anything.
CompareOutcome MainComparison::RunAndRelease() {
    CompareOutcome outcome = CompareOutcome::Failed;
    const QScopedValueRollback<std::string> runs(application_.whatRuns, "comparison");
    application_.GuardRun("frmMain.CompareDirs", [&] { outcome = Run(); });
    application_.GuardRun("frmMain.CompareDirs", [&] {
        progress_.Unload();
        application_.around.loop.Yield();
    });
    application_.compare.RunningCompare = false;
    application_.GuardRun("frmMain.CompareDirs", [&] { application_.Window().RaiseMainWindow(); });
    job_.reset();
    return outcome;
}

CompareOutcome MainComparison::Run() {
    PerSide<std::string> paths;
    for (const Side side : kBothSides) paths[side] = application_.Window().PathText(side);
    if (!BothFoldersAreChosen(paths)) {
        application_.compare.CompareCancelled = true;
        ShowNoResult();
        return CompareOutcome::NoResult;
    }
    application_.around.loop.Yield();
    job_.emplace(application_.busy);
    application_.compare.RunningCompare = true;
    ComparisonReport report = comparison_.Compare(paths, this);
    unlogged_ = report.unlogged;
    if (report.leftBehind > 0) application_.Window().StatusBar1().Note(kLeftBehind);
    if (report.outcome == CompareOutcome::NoResult) ShowNoResult();
    if (report.outcome != CompareOutcome::Completed) return report.outcome;
    std::swap(application_.results, report.results);
    application_.panes.ApplyViewTypes();
    const PerSide<std::string>& folders = application_.results.folders;
    application_.Window().AddPathsToIni(folders[Side::Left], folders[Side::Right]);
    return report.outcome;
}

bool MainComparison::BothFoldersAreChosen(const PerSide<std::string>& paths) {
    if (paths[Side::Left] != kNoFolderChosen && paths[Side::Right] != kNoFolderChosen) return true;
    application_.around.messages.Ask({"Compare Folders",
                                      "Please select two folders to compare.  See Help file for details.",
                                      MessageIcon::Information, MessageButtons::Ok});
    return false;
}

void MainComparison::ShowNoResult() {
    application_.results.SubFolderDiffs.Clear();
    application_.results.folders = {};
    application_.panes.RemoveListItemsAndShowNoCompareMsg();
}

// Whether the folders are to be compared again, by the true sizes that the user took to.
bool MainComparison::TakesTrueSizes(CompareOutcome outcome, CompareEnding ending) {
    CCompare& compare = application_.compare;
    if (outcome != CompareOutcome::Completed || ending != CompareEnding::Announced ||
        application_.Window().IsClosing() || !compare.MetLargeFiles || !compare.OfferTrueSizes)
        return false;
    const MessageAnswer answer = application_.around.messages.Ask(
        {"Large Files",
         "At least one of the compared files has 2 GiB or more.\r\n\r\n"
         "The sizes of such files cannot be trusted: they are shown as 0 or too small, and files of "
         "different sizes can be taken for equal ones.\r\n\r\n"
         "Use true sizes for files of 2 GiB and more?  The folders are then compared again.",
         MessageIcon::Warning, MessageButtons::YesNo});
    compare.OfferTrueSizes = false;
    application_.options.trueSizesOffered = true;
    if (answer != MessageAnswer::Yes) return false;
    application_.options.trueSizes = true;
    compare.Sizes = SizeRule::True;
    return !application_.Window().IsClosing();
}

// The ordinary pointer is back after the first of the questions.
void MainComparison::Finish(CompareOutcome outcome, CompareEnding ending) {
    using Step = void (MainComparison::*)(CompareOutcome, CompareEnding);
    for (const Step step :
         {&MainComparison::TellNesting, &MainComparison::TellUnlisted, &MainComparison::AskToViewErrors,
          &MainComparison::SoundAndShow, &MainComparison::Remind}) {
        // The window can be closed behind the job, or while a message stands.
        if (application_.Window().IsClosing()) return;
        (this->*step)(outcome, ending);
    }
}

void MainComparison::TellNesting(CompareOutcome outcome, CompareEnding ending) {
    const ComparisonResults& results = application_.results;
    if (outcome != CompareOutcome::Completed || ending != CompareEnding::Announced || !results.inner ||
        toldNesting_ == results.folderIds.values)
        return;
    toldNesting_ = results.folderIds.values;
    application_.around.messages.Ask(
        {"Compare Folders", DescribeNesting(results), MessageIcon::Warning, MessageButtons::Ok});
}

void MainComparison::TellUnlisted(CompareOutcome outcome, CompareEnding ending) {
    if (outcome == CompareOutcome::Completed) {
        const std::vector<UnlistedFolder>& unlisted = application_.results.unlisted;
        if (ending == CompareEnding::Announced)
            ReportUnlistedFolders(application_.reporter, unlisted);
        else if (Error error = RecordUnlistedFolders(application_.tools, unlisted); unlogged_.IsOk())
            unlogged_ = std::move(error);
    }
    if (const Error unlogged = std::exchange(unlogged_, {}); !unlogged.IsOk())
        application_.reporter.ReportError("frmMain.CompareDirs", unlogged);
}

void MainComparison::AskToViewErrors(CompareOutcome, CompareEnding ending) {
    if (ending != CompareEnding::Announced || !application_.compare.ErrorsDuringCompare) return;
    if (OfferErrorLog(application_.around.messages) && !application_.Window().IsClosing())
        application_.GetCommands().Run("mnuViewErrorLog");
}

void MainComparison::SoundAndShow(CompareOutcome outcome, CompareEnding ending) {
    wait_.reset();
    if (outcome != CompareOutcome::Completed || ending != CompareEnding::Announced) return;
    if (application_.sounds.SoundOn) application_.sounds.PlayCompareCompleteSound();
    if (ShowCompareResults) ShowCompareResults();
}

void MainComparison::Remind(CompareOutcome outcome, CompareEnding) {
    if (outcome == CompareOutcome::Completed)
        RemindAboutFileSystems(application_.tools, application_.compare, application_.results.folders);
}

void MainComparison::BeginScan() {
    wait_.emplace(application_.busy);
}

void MainComparison::SetPathText(Side side, const std::string& path) {
    application_.Window().SetPathText(side, path);
}

void MainComparison::SetFilterPanel(std::string_view text) {
    application_.Window().SetFilterPanel(text);
}

}  // namespace vantrel
