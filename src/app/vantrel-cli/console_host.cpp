#include "console_host.h"

#include <algorithm>
#include <cstdio>

#include "core/file_system_reminder.h"
#include "core/unlisted_folders.h"
#include "diagnostics/error_detail.h"
#include "display_width.h"
#include "platform/memory.h"

namespace vantrel::cli {
namespace {

constexpr std::size_t kMostShown = std::size_t{64} << 20;

void Print(const std::string& text) {
    std::fprintf(stderr, "%s\n", DisplayLines(text).c_str());
}

// What a comparison adds to ERR_DETAIL.TXT. The file is the program folder's and may hold old entries, or go
// with that folder.
class AddedDetail {
  public:
    // From now on.
    explicit AddedDetail(const Toolbox& tools)
        : tools_(tools), path_(tools.folders.appPath + std::string(kErrorDetailFile)) {
        ReadFile file;
        if (tools_.files.OpenForReading(path_, file).IsOk()) before_ = file.Size();
    }

    void PrintIfAny() const {
        ReadFile file;
        if (!tools_.files.OpenForReading(path_, file).IsOk() || file.Size() <= before_) return;
        std::string text(std::min<std::uint64_t>(file.Size() - before_, kMostShown), '\0');
        std::size_t got = 0;
        if (!file.ReadAt(before_, text.data(), text.size(), got).IsOk()) return;
        text.resize(got);
        Print(text);
    }

  private:
    const Toolbox& tools_;
    std::string path_;
    std::uint64_t before_ = 0;  // bytes
};

}  // namespace

void PrintErrorLog(const Toolbox& tools) {
    std::string log;
    if (tools.files.ReadWholeFile(tools.log.Path(), kMostShown, log).IsOk()) Print(log);
}

// What is no trouble, and yet is to be known before anything is concluded from the results.
void TellWhatToExpect(ConsoleMessages& messages, const CCompare& compare, const ComparisonResults& results) {
    if (results.inner) messages.ShowInformationMessage("Compare Folders", DescribeNesting(results));
    if (compare.MetLargeFiles && compare.OfferTrueSizes)
        messages.Say(
            "a file has 2 GiB or more: such sizes cannot be trusted, and files of different sizes can be "
            "taken "
            "for equal. Use --true-sizes yes for true sizes, or --true-sizes no to leave it at that");
}

ComparisonReport CompareOnConsole(Engine& engine, const Toolbox& tools, CCompare& compare,
                                  const PerSide<std::string>& paths) {
    KeepNoFreedMemory();
    const AddedDetail detail(tools);
    FolderComparison comparison(tools, compare, engine.Progress());
    ComparisonReport report = comparison.Compare(paths, nullptr);
    engine.Progress().Unload();
    tools.loop.Yield();
    if (!report.unlogged.IsOk()) tools.reporter.ReportError("frmMain.CompareDirs", report.unlogged);
    const Error unrecorded = RecordUnlistedFolders(tools, report.results.unlisted);
    if (!unrecorded.IsOk()) tools.reporter.ReportError("frmMain.CompareDirs", unrecorded);
    if (report.leftBehind > 0)
        engine.Messages().Say("a folder or file did not answer; what was reading it was left behind");
    if (report.outcome == CompareOutcome::Completed) {
        RemindAboutFileSystems(tools, compare, report.results.folders);
        TellWhatToExpect(engine.Messages(), compare, report.results);
    }
    if (compare.ErrorsDuringCompare) PrintErrorLog(tools);
    detail.PrintIfAny();
    return report;
}

}  // namespace vantrel::cli
