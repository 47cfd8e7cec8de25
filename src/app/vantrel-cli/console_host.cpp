#include "console_host.h"

#include <cstdio>

#include "core/file_system_reminder.h"
#include "display_width.h"

namespace vantrel::cli {
namespace {

void PrintErrorLog(const Toolbox& tools) {
    constexpr std::size_t kMostShown = std::size_t{64} << 20;
    std::string log;
    if (tools.files.ReadWholeFile(tools.log.Path(), kMostShown, log).IsOk())
        std::fprintf(stderr, "%s\n", DisplayLines(log).c_str());
}

}  // namespace

ComparisonReport CompareOnConsole(Engine& engine, const Toolbox& tools, CCompare& compare,
                                  const PerSide<std::string>& paths) {
    FolderComparison comparison(tools, compare, engine.Progress());
    ComparisonReport report = comparison.Compare(paths, nullptr);
    engine.Progress().Unload();
    tools.loop.Yield();
    if (!report.unlogged.IsOk()) tools.reporter.ReportError("frmMain.CompareDirs", report.unlogged);
    if (report.outcome == CompareOutcome::Completed)
        RemindAboutFileSystems(tools, compare, report.results.folders);
    if (compare.ErrorsDuringCompare) PrintErrorLog(tools);
    return report;
}

}  // namespace vantrel::cli
