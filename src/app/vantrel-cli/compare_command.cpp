#include <optional>
#include <utility>

#include "commands.h"
#include "compare_output.h"
#include "compare_request.h"
#include "console_host.h"
#include "engine.h"
#include "exit_status.h"
#include "settings/options.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kCompareNotes =
    "Exit status: 0 no differences, 1 differences, 2 trouble (a message is on standard\n"
    "error). Ctrl+C cancels; nothing is printed then.\n"
    "\n"
    "A pair is Unknown where nothing may be concluded from its name: what bears it on a side\n"
    "is no file and no folder (a FIFO, a socket, a device), a link that leads nowhere, or\n"
    "could not be looked at. It is printed in the view 'all', in JSON as \"type\":\"Unknown\"\n"
    "with a \"reason\" (SpecialObject, LeadsNowhere, NotTold; OtherSide where the reason lies\n"
    "there), and counts as a difference. A folder is marked 'incomplete' (\"incomplete\":true)\n"
    "where a part of it or of its counterpart could not be looked into.\n"
    "\n"
    "In the text format a byte of a name that cannot be shown stands as a replacement\n"
    "character. In JSON a byte that is no valid UTF-8, a control character and a backslash\n"
    "of a name on disk stand as the character U+10F800 plus the byte, so that every name is\n"
    "told from every other; a path printed so is understood as LEFT or RIGHT. HTML and CSV\n"
    "show names as the text format does; a field of CSV that a spreadsheet would take for a\n"
    "formula has an apostrophe in front.\n";

// A comparison, and which of its pairs are printed.
struct PrintedComparison {
    CompareRequest compare;
    std::optional<std::int32_t> view;
};

std::vector<OptionSpec> OptionsOf(PrintedComparison& request) {
    std::vector<OptionSpec> options = ComparisonOptions(request.compare);
    options.push_back(ViewOption(request.view));
    options.push_back(SourceOption(request.compare));
    options.push_back(SessionOption(request.compare));
    options.push_back(ReportFormatOption(request.compare.format));
    return options;
}

bool HasDifferences(const ComparisonResults& results) {
    for (const ResultRow& row : results.hold[Side::Left])
        if (row.type != ResultType::Same && row.type != ResultType::IdenticalFolder) return true;
    return false;
}

// Of any but the columns of a terminal.
ResultsFormat FormatOf(OutputFormat format) {
    if (format == OutputFormat::Html) return ResultsFormat::Html;
    return format == OutputFormat::Csv ? ResultsFormat::Csv : ResultsFormat::JsonLines;
}

int Print(const PrintedComparison& request, const ComparisonResults& results, const CViewSelections& view,
          Engine& engine) {
    ConsoleMessages& messages = engine.Messages();
    const Toolbox& tools = engine.Tools();
    const ResultsReport report{results.folders, PartsOf(results, view),
                               tools.locale.DateTime(FileTimeToLocalFileTime(tools.clock.Now()))};
    Output out;
    if (request.compare.format == OutputFormat::Text) {
        WriteTextColumns(report, tools.locale, out);
    } else {
        TextPieces pieces([&out](std::string_view piece) { out << piece; });
        WriteResults(report, FormatOf(request.compare.format), tools.locale, pieces);
    }
    if (const int failure = out.Finish(); failure != 0) {
        messages.Say("cannot write the result: " + GetErrorText(failure));
        return kTrouble;
    }
    return HasDifferences(results) ? kDifferences : kNoDifferences;
}

int Compare(const PrintedComparison& request, const std::vector<std::string_view>& operands) {
    ConsoleLoop::CatchSignals();
    std::optional<PrivateFolder> logs(std::in_place);
    Engine engine(logs->Path());
    ConsoleMessages& messages = engine.Messages();
    Options options;
    Error error = MakeOptions(engine, request.compare, options);
    PerSide<std::string> paths;
    if (error.IsOk()) paths = FoldersOf(engine, request.compare, operands, error);
    if (!error.IsOk()) {
        messages.Say(error.Description());
        return kTrouble;
    }
    CCompare compare(options);
    const ComparisonReport report = CompareOnConsole(engine, engine.Tools(), compare, paths);
    // Whoever reads the result may have enough of it: the signal of that ends the process while it prints.
    logs.reset();
    const bool cancelled = engine.Tools().loop.CancelRequested();
    ConsoleLoop::LeaveSignals();

    if (cancelled) messages.Say("cancelled");
    if (cancelled || report.outcome != CompareOutcome::Completed) return kTrouble;
    const int status = Print(request, report.results, ViewOf(request.view, options), engine);
    return compare.ErrorsDuringCompare ? kTrouble : status;
}

}  // namespace

int RunCompare(const std::vector<std::string_view>& arguments) {
    PrintedComparison request;
    CommandSpec command{
        "compare",     "LEFT RIGHT",       "Compares two folders and prints what is alike and what differs.",
        kCompareNotes, OptionsOf(request), [&request] { return !request.compare.sessionFile.empty(); }};
    const ParsedArguments parsed = ParseArguments(command, arguments, 2);
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    return Compare(request, parsed.operands);
}

}  // namespace vantrel::cli
