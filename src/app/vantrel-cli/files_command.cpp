#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "commands.h"
#include "compare_request.h"
#include "console_host.h"
#include "engine.h"
#include "exit_status.h"
#include "filetools/two_file_comparison.h"
#include "json_lines.h"
#include "output.h"
#include "platform/names/names.h"
#include "platform/workers.h"
#include "settings/option_table.h"
#include "settings/options.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kFilesNotes =
    "The methods of --only are size, time, attributes, version, contents, crc and sha, with commas\n"
    "between; the default is all of them. As JSON a line is\n"
    "{\"method\":\"Size\",\"left\":\"1 KB\",\"right\":\"2 KB\",\"result\":\"File 1 is smaller than file "
    "2\"}.\n"
    "\n"
    "Exit status: 0 nothing differs, 1 something does, 2 trouble. Ctrl+C cancels.\n";

constexpr std::array<std::pair<std::string_view, FileMethod>, kFileMethods.size()> kWords = {{
    {"size", FileMethod::Size},
    {"time", FileMethod::DateTime},
    {"attributes", FileMethod::Attributes},
    {"version", FileMethod::Version},
    {"contents", FileMethod::Contents},
    {"crc", FileMethod::Crc32},
    {"sha", FileMethod::Sha1},
}};

bool TakeMethods(std::string_view text, std::vector<FileMethod>& to) {
    std::vector<FileMethod> methods;
    while (true) {
        const std::size_t comma = text.find(',');
        const std::string_view word = text.substr(0, comma);
        const auto* const found =
            std::find_if(kWords.begin(), kWords.end(), [&](const auto& each) { return each.first == word; });
        if (found == kWords.end()) return false;
        methods.push_back(found->second);
        if (comma == std::string_view::npos) break;
        text.remove_prefix(comma + 1);
    }
    to = std::move(methods);
    return true;
}

// The state of the run in the line that a terminal shows.
class ConsoleFilesDisplay : public TwoFileDisplay {
  public:
    explicit ConsoleFilesDisplay(ConsoleProgress& progress) : progress_(progress) {}
    void Begin() override { progress_.Show(); }
    void SetStatus(std::string_view text) override { progress_.SetMessage(text); }
    void SetCancellable(bool on) override {
        progress_.SetBarRange(on ? 100 : 0);
        progress_.SetBarValue(0);
    }
    void SetPercentage(int percentage) override { progress_.SetBarValue(percentage); }
    void ShowFinding(const FileFinding&) override {}

  private:
    ConsoleProgress& progress_;
};

void WriteText(const TwoFileReport& report, Output& out) {
    constexpr std::size_t kResultColumn = 18;
    const auto line = [&](std::string_view head, std::string_view text) {
        out << head;
        out.Fill(kResultColumn - head.size(), ' ');
        out << text;
        out.EndLine();
    };
    for (const FileFinding& finding : report.findings) {
        line(FileMethodCaption(finding.method), finding.result);
        line("  File 1", DisplayName(finding.shown[Side::Left]));
        line("  File 2", DisplayName(finding.shown[Side::Right]));
    }
}

void WriteJson(const TwoFileReport& report, Output& out) {
    for (const FileFinding& finding : report.findings) {
        out << R"({"method":)";
        WriteJsonString(FileMethodCaption(finding.method), out);
        out << R"(,"left":)";
        WriteJsonString(finding.shown[Side::Left], out);
        out << R"(,"right":)";
        WriteJsonString(finding.shown[Side::Right], out);
        out << R"(,"result":)";
        WriteJsonString(finding.result, out);
        out << "}\n";
    }
}

struct FilesRequest {
    std::vector<FileMethod> methods{kFileMethods.begin(), kFileMethods.end()};
    OutputFormat format = OutputFormat::Text;
    bool trueSizes = false;
};

std::optional<TwoFileReport> Find(Engine& engine, const FilesRequest& request,
                                  const PerSide<std::string>& paths) {
    Options options = DefaultOptions({});
    options.trueSizes = request.trueSizes;
    CCompare compare(options);
    // They run while this thread waits, so that it can hear a cancel.
    Workers workers(kBothSides.size());
    ConsoleFilesDisplay display(engine.Progress());
    TwoFileComparison comparison(engine.Tools(), compare, workers, display);
    std::optional<TwoFileReport> report;
    try {
        report = comparison.Compare(paths, request.methods);
    } catch (const ErrorException& error) {
        engine.Progress().Unload();
        engine.Messages().Say(error.Get().Description());
        return std::nullopt;
    }
    engine.Progress().Unload();
    if (!report->unlogged.IsOk()) engine.Messages().Say(report->unlogged.Description());
    if (compare.ErrorsDuringCompare) {
        PrintErrorLog(engine.Tools());
        return std::nullopt;
    }
    if (report->outcome != TwoFileOutcome::Completed) return std::nullopt;
    return report;
}

int CompareFiles(const FilesRequest& request, const PerSide<std::string_view>& operands) {
    ConsoleLoop::CatchSignals();
    std::optional<PrivateFolder> logs(std::in_place);
    Engine engine(logs->Path());
    PerSide<std::string> paths;
    for (const Side side : kBothSides) paths[side] = engine.FullPath(operands[side]);
    const std::optional<TwoFileReport> report = Find(engine, request, paths);
    logs.reset();
    ConsoleLoop::LeaveSignals();
    if (!report) return kTrouble;

    Output out;
    if (request.format == OutputFormat::Json)
        WriteJson(*report, out);
    else
        WriteText(*report, out);
    if (const int failure = out.Finish(); failure != 0) {
        engine.Messages().Say("cannot write the result: " + GetErrorText(failure));
        return kTrouble;
    }
    const bool differ = std::any_of(report->findings.begin(), report->findings.end(),
                                    [](const FileFinding& each) { return each.differs; });
    return differ ? kDifferences : kNoDifferences;
}

}  // namespace

int RunFiles(const std::vector<std::string_view>& arguments) {
    FilesRequest request;
    const CommandSpec command{
        "files",
        "FILE1 FILE2",
        "Compares two files by size, time, attributes, version, contents, CRC-32 and SHA-1.",
        kFilesNotes,
        {{"--only", "LIST", "these methods, as in size,contents",
          [&](std::string_view text) { return TakeMethods(text, request.methods); }},
         {"--true-sizes", "yes|no", "exact sizes for files of 2 GiB and more (default no)",
          [&](std::string_view text) { return TakeYesNo(text, request.trueSizes); }},
         FormatOption(request.format)}};
    const ParsedArguments parsed = ParseArguments(command, arguments, 2);
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    return CompareFiles(request, {{parsed.operands[0], parsed.operands[1]}});
}

}  // namespace vantrel::cli
