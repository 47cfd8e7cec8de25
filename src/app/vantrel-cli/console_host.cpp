#include "console_host.h"

#include <cstdio>

#include "core/file_system_reminder.h"
#include "core/unlisted_folders.h"
#include "diagnostics/error_detail.h"
#include "display_width.h"

namespace vantrel::cli {
namespace {

void PrintWhole(const Toolbox& tools, const std::string& path) {
    constexpr std::size_t kMostShown = std::size_t{64} << 20;
    std::string text;
    if (tools.files.ReadWholeFile(path, kMostShown, text).IsOk())
        std::fprintf(stderr, "%s\n", DisplayLines(text).c_str());
}

}  // namespace

ComparisonReport CompareOnConsole(Engine& engine, const Toolbox& tools, CCompare& compare,
                                  const PerSide<std::string>& paths) {
    FolderComparison comparison(tools, compare, engine.Progress());
    ComparisonReport report = comparison.Compare(paths, nullptr);
    engine.Progress().Unload();
    tools.loop.Yield();
    if (!report.unlogged.IsOk()) tools.reporter.ReportError("frmMain.CompareDirs", report.unlogged);
    const Error unrecorded = RecordUnlistedFolders(tools, report.results.unlisted);
    if (!unrecorded.IsOk()) tools.reporter.ReportError("frmMain.CompareDirs", unrecorded);
    if (report.outcome == CompareOutcome::Completed)
        RemindAboutFileSystems(tools, compare, report.results.folders);
    if (compare.ErrorsDuringCompare) PrintWhole(tools, tools.log.Path());
    return report;
}

void PrintErrorDetail(const Toolbox& tools) {
    PrintWhole(tools, tools.folders.appPath + std::string(kErrorDetailFile));
}

}  // namespace vantrel::cli
