#include "core/folder_comparison.h"

#include "core/file_rows.h"
#include "core/sub_folder_analysis.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::int32_t kChunkForSlowConnections = 10'000;

constexpr PerSide<std::string_view> kExamining{{"Examining the left folder.  Press ESC to cancel...",
                                                "Examining the right folder. Press ESC to cancel..."}};

constexpr std::array<std::string_view, 4> kComparing{
    "Comparing Size and Date/Time.  Press ESC to cancel...",
    "Comparing Contents.  Press ESC to cancel...",
    "Comparing CRC32 values.  Press ESC to cancel...",
    "Comparing SHA-1 values.  Press ESC to cancel...",
};

}  // namespace

FolderComparison::FolderComparison(const Toolbox& tools, CCompare& compare, ComparisonHost& host,
                                   CompareProgress& progress, ComparisonResults& results)
    : tools_(tools),
      compare_(compare),
      host_(host),
      progress_(progress),
      results_(results),
      context_{tools_, compare, host, progress},
      dirs_{CDir(tools), CDir(tools)} {
    compare_.CleanupPreviousSubFolderResults = [this] { results_.SubFolderDiffs.Clear(); };
}

FolderComparison::~FolderComparison() {
    compare_.CleanupPreviousSubFolderResults = nullptr;
}

CompareOutcome FolderComparison::CompareDirs(bool fromCompareCommand, bool announce) {
    if (compare_.RunningCompare) return CompareOutcome::NoResult;
    menusDisabled_ = false;
    CompareOutcome outcome = CompareOutcome::Failed;
    tools_.reporter.Guard("frmMain.CompareDirs", [&] {
        bool completed = false;
        try {
            completed = Run();
        } catch (const ComparisonCancelled&) {
            // The same ending as that of a failed check.
        }
        if (!completed) ShowNoResult();
        outcome = completed ? CompareOutcome::Completed : CompareOutcome::NoResult;
    });
    tools_.reporter.Guard("frmMain.CompareDirs", [&] { Finish(outcome, fromCompareCommand || announce); });
    compare_.RunningCompare = false;
    return outcome;
}

// From the choice of the folders to the shown result. False: the ending for failure.
bool FolderComparison::Run() {
    if (!BothFoldersAreChosen()) return false;
    tools_.loop.Yield();
    if (host_.MenusEnabled()) {
        host_.SetMenusEnabled(false);
        menusDisabled_ = true;
    }
    compare_.RunningCompare = true;
    compare_.CompareCancelled = compare_.ErrorsDuringCompare = false;
    tools_.loop.ResetCancel();
    ThrowIfFailed(tools_.log.Recreate());
    if (!CheckPaths()) return false;

    host_.SetBusyPointer(true);
    tools_.loop.Yield();
    for (const Side side : kBothSides)
        if (!Scan(side)) return false;
    if (!OfferSmallerChunks()) return false;

    ComparisonResults found;
    if (!CompareContent(found)) return false;
    context_.ThrowIfCancelled();

    std::swap(results_, found);
    host_.ApplyViewTypes();
    host_.AddPathsToIni(dirs_[0].Path(), dirs_[1].Path());
    return true;
}

bool FolderComparison::BothFoldersAreChosen() {
    for (const Side side : kBothSides) paths_[side] = host_.PathText(side);
    if (paths_[Side::Left] != kNoFolderChosen && paths_[Side::Right] != kNoFolderChosen) return true;
    tools_.messages.Ask({"Compare Folders",
                         "Please select two folders to compare.  See Help file for details.",
                         MessageIcon::Information, MessageButtons::Ok});
    return false;
}

bool FolderComparison::CheckPaths() {
    for (const Side side : kBothSides) {
        if (Dir(side).IsValidPath(paths_[side])) continue;
        compare_.RunningCompare = false;
        if (menusDisabled_) host_.SetMenusEnabled(true);
        return false;
    }
    if (!AreOneFolder()) return true;
    tools_.messages.Ask({"Folders Are Same", "Please specify two different folders to compare.",
                         MessageIcon::Warning, MessageButtons::Ok});
    return false;
}

// By the text, or by what the texts lead to: two that differ in letter case only can be two folders.
bool FolderComparison::AreOneFolder() const {
    if (NormalizePath(paths_[Side::Left]) == NormalizePath(paths_[Side::Right])) return true;
    PerSide<FileInfo> info;
    for (const Side side : kBothSides) {
        // One that has just vanished is the scan's to report.
        if (!tools_.files.Stat(paths_[side], LinkPolicy::Follow, info[side]).IsOk()) return false;
    }
    return info[Side::Left].id == info[Side::Right].id;
}

bool FolderComparison::Scan(Side side) {
    CDir& dir = Dir(side);
    if (side == Side::Left) {
        progress_.Show();
        progress_.SetBarValue(0);
    }
    progress_.SetMessage(kExamining[side]);
    progress_.SetFileName(paths_[side]);
    if (side == Side::Left)
        progress_.WaitUntilPainted();
    else
        tools_.loop.Yield();
    dir.Clear();
    dir.SetPath(paths_[side]);
    if (!paths_[side].empty()) host_.SetPathText(side, dir.Path());
    if (side == Side::Left) compare_.SlowConnection = false;
    context_.ThrowIfCancelled();
    if (dir.PopulateSelfWithFiles(ScanOptions::Of(compare_), context_) != ScanOutcome::Complete) return false;
    context_.ThrowIfCancelled();
    return true;
}

// False where the user would rather not compare at all.
bool FolderComparison::OfferSmallerChunks() {
    if (!compare_.SlowConnection || compare_.CompareMethod == CompareMethod::SizeAndDate ||
        compare_.ChunkSize <= kChunkForSlowConnections)
        return true;
    const MessageAnswer answer =
        tools_.messages.Ask({"Performance Monitor",
                             "A slow connection has been detected.\r\n"
                             "You should reduce your Chunk Size to 10,000 bytes or less.\r\n\r\n"
                             "Would you like to do this?",
                             MessageIcon::Information, MessageButtons::YesNoCancel});
    if (answer == MessageAnswer::Yes) compare_.ChunkSize = kChunkForSlowConnections;
    return answer != MessageAnswer::Cancel;
}

// Runs a part that reports under its own name. False where the user cancelled or an error came out: what the
// part has made until then is not whole.
bool FolderComparison::RunStep(std::string_view routineName, const std::function<void()>& work) {
    bool cancelled = false;
    const bool fine = tools_.reporter.Guard(routineName, [&] {
        try {
            work();
        } catch (const ComparisonCancelled&) {
            cancelled = true;
        }
    });
    return fine && !cancelled;
}

bool FolderComparison::CompareContent(ComparisonResults& found) {
    const PerSide<const CDir*> dirs{{&dirs_[0], &dirs_[1]}};
    PairComparison pairs(context_);
    {
        const std::vector<MergedFile> allFileNames = MergeFiles(dirs, context_);
        tools_.loop.Yield();
        progress_.SetMessage(kComparing.at(static_cast<std::size_t>(compare_.CompareMethod)));
        progress_.SetBarValue(0);
        progress_.SetAnimation("scanfiles.avi");
        progress_.SetFileName({});
        context_.ThrowIfCancelled();
        if (!RunStep("frmMain.ShowAllFilesInBothDirs",
                     [&] { ShowAllFilesInBothDirs(allFileNames, dirs, pairs, context_, found); }))
            return false;
    }
    context_.ThrowIfCancelled();
    if (compare_.CompareSubFolders()) {
        progress_.SetBarValue(0);
        progress_.SetMessage(kComparingSubFolders);
        progress_.SetFileName({});
        SubFolderAnalysis analysis(context_, pairs, dirs);
        if (!RunStep("frmMain.ShowAllSubFoldersInBothDirs",
                     [&] { analysis.ShowAllSubFoldersInBothDirs(found); }))
            return false;
    }
    for (const Side side : kBothSides) found.folders[side] = dirs[side]->Path();
    if (found.specialObjects > 0)
        tools_.log.AppendNote(std::to_string(found.specialObjects) + " special objects passed over");
    return true;
}

void FolderComparison::ShowNoResult() {
    compare_.CompareCancelled = true;
    results_.SubFolderDiffs.Clear();
    results_.folders = {};
    host_.RemoveListItemsAndShowNoCompareMsg();
}

void FolderComparison::Finish(CompareOutcome outcome, bool announce) {
    progress_.Unload();
    tools_.loop.Yield();
    compare_.RunningCompare = false;
    host_.RaiseMainWindow();
    if (!host_.MenusEnabled()) host_.SetMenusEnabled(true);
    if (announce && outcome == CompareOutcome::Completed) ReportUnlistedFolders();
    if (const Error unlogged = tools_.log.TakeFailure(); !unlogged.IsOk())
        tools_.reporter.ReportError("frmMain.CompareDirs", unlogged);
    if (announce) AskToViewErrors();
    host_.SetBusyPointer(false);
    if (outcome != CompareOutcome::Completed) return;
    if (announce) {
        host_.PlayCompareCompleteSound();
        host_.ShowCompareResults();
    }
    RemindAboutFileSystems();
}

// One message for all of them; the log has each by itself.
void FolderComparison::ReportUnlistedFolders() {
    if (results_.unlisted.empty()) return;
    std::string text =
        "Analysis of folder failed.  Comparison results will be invalid!\r\n"
        "Correct the problem with this folder before attempting to sync it.";
    for (const UnlistedFolder& unlisted : results_.unlisted)
        text += "\r\n\r\nFolder: " + unlisted.folder + "\r\nFile: " + unlisted.lastFile;
    tools_.reporter.ReportError("modVantrel.GetFolderInfo", results_.unlisted.front().error, text);
}

void FolderComparison::AskToViewErrors() {
    if (!compare_.ErrorsDuringCompare) return;
    const MessageAnswer answer = tools_.messages.Ask({"Errors Occurred",
                                                      "Errors were encountered during the comparison.\r\n\r\n"
                                                      "See the file ERRORLOG.TXT for details.\r\n\r\n"
                                                      "Would you like to view the log file now?",
                                                      MessageIcon::Stop, MessageButtons::YesNo});
    if (answer == MessageAnswer::Yes) host_.ShowErrorLog();
}

void FolderComparison::RemindAboutFileSystems() {
    if (!compare_.RemindAboutFATNTFSIssue || compare_.AlreadyNotifiedAboutFATNTFS) return;
    if (compare_.IgnoreFAT_NTFS_DaylightSavings && compare_.IgnoreFAT_NTFS_TwoSecDiff) return;
    const std::string left = tools_.volumes.GetFileSystemName(dirs_[0].DriveName());
    const std::string right = tools_.volumes.GetFileSystemName(dirs_[1].DriveName());
    if (!(left == "FAT" && right == "NTFS") && !(left == "NTFS" && right == "FAT")) return;
    tools_.messages.ShowInformationMessage(
        "File System Message",
        "Vantrel has detected that you are comparing files between FAT and NTFS drives.\r\n\r\n"
        "These File Systems handle timestamps differently.\r\n"
        "Vantrel provides options to deal with these differences.\r\n\r\n"
        "See the Help file section 'FAT vs NTFS file time' for details.\r\n\r\n"
        "This reminder can be turned off from the Compare tab on the Options window.");
    compare_.AlreadyNotifiedAboutFATNTFS = true;
}

}  // namespace vantrel
