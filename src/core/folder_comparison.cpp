#include "core/folder_comparison.h"

#include <optional>

#include "core/file_rows.h"
#include "core/sub_folder_analysis.h"
#include "platform/files/nesting.h"
#include "platform/files/readers.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::int32_t kChunkForSlowConnections = 10'000;

constexpr PerSide<std::string_view> kExamining{{"Examining the left folder.  Press ESC to cancel...",
                                                "Examining the right folder. Press ESC to cancel..."}};

// What does not answer is waited for no longer than a user waits for a cancel.
constexpr std::chrono::milliseconds kPatience{1'000};
constexpr std::uint32_t kShownAfterMilliseconds = 500;

constexpr std::array<std::string_view, 4> kComparing{
    "Comparing Size and Date/Time.  Press ESC to cancel...",
    "Comparing Contents.  Press ESC to cancel...",
    "Comparing CRC32 values.  Press ESC to cancel...",
    "Comparing SHA-1 values.  Press ESC to cancel...",
};

}  // namespace

ComparisonReport FolderComparison::Compare(const PerSide<std::string>& paths, ComparisonDisplay* display) {
    ComparisonReport report;
    Workers workers(WorkerCount(compare_.Jobs));
    const Run run{paths, {tools_, compare_, progress_, workers, display}};
    // The comparison is worth more than its log.
    const Error notEmptied = tools_.log.Recreate();
    tools_.reporter.Guard("frmMain.CompareDirs", [&] {
        ComparisonResults found;
        bool completed = false;
        try {
            completed = Carry(run, found);
        } catch (const ComparisonCancelled&) {
            // The same ending as that of a failed check.
        }
        if (completed)
            std::swap(report.results, found);
        else
            compare_.CompareCancelled = true;
        report.outcome = completed ? CompareOutcome::Completed : CompareOutcome::NoResult;
    });
    report.leftBehind = workers.End(kPatience);
    if (report.leftBehind > 0) tools_.log.AppendNote(std::string(kLeftBehind));
    const Error notWritten = tools_.log.TakeFailure();
    report.unlogged = notEmptied.IsOk() ? notWritten : notEmptied;
    return report;
}

// False where there is no result.
bool FolderComparison::Carry(const Run& run, ComparisonResults& found) {
    compare_.CompareCancelled = compare_.ErrorsDuringCompare = compare_.MetLargeFiles = false;
    tools_.loop.ResetCancel();
    if (!CheckPaths(run)) return false;

    if (run.context.display) run.context.display->BeginScan();
    tools_.loop.Yield();
    if (compare_.Jobs == 0) {
        const std::array folders{NormalizePath(run.paths[Side::Left]), NormalizePath(run.paths[Side::Right])};
        AddReaders(run.context.workers, tools_.volumes, folders);
    }
    if (!ScanBoth(run)) return false;
    if (!OfferSmallerChunks()) return false;

    if (!CompareContent(run.context, found)) return false;
    run.context.ThrowIfCancelled();
    return true;
}

// Until both folders have answered, the one thread asks them nothing: it would wait for ever for one on a
// mount whose server is gone. What they answer is the check's to find out.
void FolderComparison::AwaitAnswers(const Run& run) const {
    if (run.context.workers.Count() == 0) return;
    const std::uint32_t begin = tools_.clock.GetTickCount();
    for (const Side side : kBothSides) {
        bool shown = false;
        PendingJob<bool> answer(
            run.context.workers,
            [files = tools_.files, path = NormalizePath(run.paths[side])](const StopFlag&) {
                OpenFolder folder;
                const auto stop = [](const FolderEntry&) { return false; };
                return path.starts_with('/') && files.Open(path, folder).IsOk() &&
                       folder.ForEach(stop).IsOk();
            });
        (void)answer.Take([&] {
            run.context.ThrowIfCancelled();
            // It is the progress window that hears ESC.
            if (shown || tools_.clock.GetTickCount() - begin < kShownAfterMilliseconds) return;
            shown = true;
            progress_.Show();
            progress_.SetMessage(kExamining[side]);
            progress_.SetFileName(run.paths[side]);
        });
    }
}

bool FolderComparison::CheckPaths(const Run& run) {
    AwaitAnswers(run);
    for (const Side side : kBothSides)
        if (!Dir(side).IsValidPath(run.paths[side])) return false;
    if (!AreOneFolder(run.paths)) return true;
    tools_.messages.Ask({"Folders Are Same", "Please specify two different folders to compare.",
                         MessageIcon::Warning, MessageButtons::Ok});
    return false;
}

// By the text, or by what the texts lead to: two that differ in letter case only can be two folders.
bool FolderComparison::AreOneFolder(const PerSide<std::string>& paths) const {
    if (NormalizePath(paths[Side::Left]) == NormalizePath(paths[Side::Right])) return true;
    PerSide<FileInfo> info;
    for (const Side side : kBothSides) {
        // One that has just vanished is the scan's to report.
        if (!tools_.files.Stat(paths[side], LinkPolicy::Follow, info[side]).IsOk()) return false;
    }
    return info[Side::Left].id == info[Side::Right].id;
}

// With workers both folders are read at the same time from the beginning.
bool FolderComparison::ScanBoth(const Run& run) {
    PerSide<std::optional<FolderReading>> readings;
    for (const Side side : kBothSides) {
        if (run.context.workers.Count() == 0) break;
        readings[side].emplace(
            run.context.workers,
            [files = tools_.files, path = NormalizePath(run.paths[side])](OpenFolder& folder) {
                return files.Open(path, folder);
            },
            StatPolicy::All);
    }
    const auto begun = [&](Side side) { return readings[side] ? &*readings[side] : nullptr; };
    for (const Side side : kBothSides)
        if (!Scan(side, run, begun(side), begun(Other(side)))) return false;
    for (const Side side : kBothSides) Dir(side).AwaitOrder([&run] { run.context.ThrowIfCancelled(); });
    return true;
}

// `other` goes on meanwhile.
bool FolderComparison::Scan(Side side, const Run& run, FolderReading* begun, FolderReading* other) {
    CDir& dir = Dir(side);
    const std::string& path = run.paths[side];
    const ComparisonContext& context = run.context;
    if (side == Side::Left) {
        progress_.Show();
        progress_.SetAnimation("filetreelist.avi");
        progress_.SetBarValue(0);
    }
    progress_.SetMessage(kExamining[side]);
    progress_.SetFileName(path);
    if (side == Side::Left)
        progress_.WaitUntilPainted();
    else
        tools_.loop.Yield();
    dir.Clear();
    dir.SetPath(path);
    if (!path.empty() && context.display) context.display->SetPathText(side, dir.Path());
    if (side == Side::Left) compare_.SlowConnection = false;
    context.ThrowIfCancelled();
    if (other) other->HandIn();
    if (dir.PopulateSelfWithFiles(ScanOptions::Of(compare_), context, begun) != ScanOutcome::Complete)
        return false;
    context.ThrowIfCancelled();
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

// Null where neither folder is on a disk that rotates, or nobody asks.
std::shared_ptr<std::mutex> FolderComparison::TurnsOnDisk(const ComparisonContext& context) const {
    if (context.workers.Count() == 0 || compare_.CompareMethod == CompareMethod::SizeAndDate) return nullptr;
    const std::array folders{dirs_[0].Path(), dirs_[1].Path()};
    return AnyRotates(tools_.volumes, folders) ? std::make_shared<std::mutex>() : nullptr;
}

bool FolderComparison::CompareContent(const ComparisonContext& context, ComparisonResults& found) {
    const PerSide<const CDir*> dirs{{&dirs_[0], &dirs_[1]}};
    PairComparison pairs(context, TurnsOnDisk(context));
    {
        const MergedFiles allFileNames = MergeFiles(dirs, context);
        tools_.loop.Yield();
        progress_.SetMessage(kComparing.at(static_cast<std::size_t>(compare_.CompareMethod)));
        progress_.SetBarValue(0);
        progress_.SetAnimation("scanfiles.avi");
        progress_.SetFileName({});
        context.ThrowIfCancelled();
        if (!tools_.reporter.Guard("frmMain.ShowAllFilesInBothDirs", [&] {
                ShowAllFilesInBothDirs(allFileNames, dirs, pairs, context, found);
            }))
            return false;
    }
    context.ThrowIfCancelled();
    if (compare_.CompareSubFolders()) {
        progress_.SetBarValue(0);
        progress_.SetMessage(kComparingSubFolders);
        progress_.SetFileName({});
        SubFolderAnalysis analysis(context, pairs, dirs);
        if (!tools_.reporter.Guard("frmMain.ShowAllSubFoldersInBothDirs",
                                   [&] { analysis.ShowAllSubFoldersInBothDirs(found); }))
            return false;
    }
    for (const Side side : kBothSides) {
        found.folders[side] = dirs[side]->Path();
        found.folderIds[side] = dirs[side]->Id();
        found.foldersMade[side] = dirs[side]->Made();
        for (const ResultRow& row : found.hold[side])
            if (row.IsReal() || (row.IsUnknown() && !row.realName.empty())) ++found.objects[side];
    }
    for (const Side side : kBothSides)
        if (context.ByWorker(
                [files = tools_.files, inner = found.folders[side], outer = found.folders[Other(side)]] {
                    return LiesInside(files, inner, outer);
                }))
            found.inner = side;
    found.taken = ScanOptions::Of(context.compare);
    found.subFolders = context.compare.CompareSubFolders();
    if (found.specialObjects > 0)
        tools_.log.AppendNote(std::to_string(found.specialObjects) + " special objects passed over");
    return true;
}

}  // namespace vantrel
