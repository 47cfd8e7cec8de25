#include <array>
#include <optional>
#include <string>
#include <utility>

#include "commands.h"
#include "compare_request.h"
#include "console_host.h"
#include "dupes/dupe_collecting.h"
#include "dupes/dupe_export.h"
#include "dupes/duplicate_finder.h"
#include "engine.h"
#include "exit_status.h"
#include "output.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "settings/option_table.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kDupesNotes =
    "Files are duplicates where they agree in all that is asked for; names or sizes must be\n"
    "among it. Files of equal contents were compared byte by byte. As JSON a line is a group:\n"
    "{\"label\":\"a.txt\",\"size\":12,\"files\":[{\"path\":\"/x/a.txt\",\"size\":12,\n"
    "\"modified\":\"2020-09-13T12:26:40.0000000Z\",\"otherNames\":[]}]}, where the size is that of the\n"
    "first file, and other names are those of the same file (hard links, or folders that can\n"
    "be reached in several ways). Nothing is removed.\n"
    "\n"
    "Exit status: 0 no duplicates, 1 duplicates, 2 trouble. Ctrl+C cancels.\n";

struct DupesRequest {
    DupeSearchOrder order;
    bool zeroBytes = false, hidden = false, system = false, systemFolders = false;
    OutputFormat format = OutputFormat::Text;
    std::optional<std::int32_t> jobs;
};

bool TakeHash(std::string_view text, HashMethod& to) {
    constexpr std::array<std::pair<std::string_view, HashMethod>, 3> kWords{
        {{"crc16", HashMethod::Crc16}, {"crc32", HashMethod::Crc32}, {"md5", HashMethod::Md5}}};
    for (const auto& [word, method] : kWords) {
        if (word != text) continue;
        to = method;
        return true;
    }
    return false;
}

void TakeList(std::string_view text, std::vector<std::string>& to) {
    to.clear();
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        if (comma != 0) to.push_back(PathFromUser(text.substr(0, comma)));
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
}

OptionSpec YesNoOption(std::string_view name, std::string_view help, bool& to) {
    return {name, "yes|no", help, [&to](std::string_view text) { return TakeYesNo(text, to); }};
}

std::vector<OptionSpec> DupesOptions(DupesRequest& request) {
    DupeCriteria& criteria = request.order.criteria;
    return {
        YesNoOption("--sub-folders", "search sub-folders as well (default yes)",
                    request.order.includeSubFolders),
        YesNoOption("--names", "names must be the same, letter case ignored\n(default yes)", criteria.names),
        YesNoOption("--sizes", "sizes must be the same (default yes)", criteria.sizes),
        YesNoOption("--create-times", "so must the times of creation (default no)", criteria.createTimes),
        YesNoOption("--modified-times", "and the times of the last change (default no)",
                    criteria.lastModTimes),
        YesNoOption("--attributes", "and the attributes (default no)", criteria.attributes),
        YesNoOption("--contents", "and the contents (default no)", criteria.contents),
        {"--hash", "crc16|crc32|md5", "by which equal contents are ordered\n(default crc16)",
         [&](std::string_view text) { return TakeHash(text, request.order.hashMethod); }},
        YesNoOption("--zero-byte", "files without contents as well (default no)", request.zeroBytes),
        YesNoOption("--hidden", "hidden files and folders as well (default no)", request.hidden),
        YesNoOption("--system", "system files and folders as well (default no)", request.system),
        YesNoOption("--system-folders", "the system's own folders as well (default no)",
                    request.systemFolders),
        {"--exclude", "LIST",
         "names of files to leave out, as in *.tmp,core\n(default: those of the settings)",
         [&](std::string_view text) {
             TakeList(text, request.order.excludeFiles);
             return true;
         }},
        FormatOption(request.format),
        JobsOption(request.jobs)};
}

// The state of the search in the line that a terminal shows.
class ConsoleDupeProgress : public DupeProgress {
  public:
    explicit ConsoleDupeProgress(ConsoleProgress& progress) : progress_(progress) { progress_.Show(); }
    void SetStatus(std::string_view text) override { progress_.SetMessage(text); }
    void SetFigures(const DupeFigures& figures) override {
        progress_.SetBarRange(static_cast<std::int64_t>(figures.bytesTotal));
        progress_.SetBarValue(
            static_cast<std::int64_t>(figures.bytesTotal > 0 ? figures.bytesDone : figures.files));
    }
    void SetBar(std::int64_t, std::int64_t) override {}
    void SetSearching(bool) override {}

  private:
    ConsoleProgress& progress_;
};

void WriteText(const DupeResults& results, Output& out) {
    for (const std::uint32_t number : results.Shown()) {
        const DupeGroup& group = results.Group(number);
        out << DisplayName(group.Line());
        out << '\n';
        for (const std::uint32_t member : group.members) {
            const FoundFiles& files = results.Files();
            out << "  " << DisplayName(files.PathOf(member)) << '\n';
            for (const std::string& other : files.OtherNamesOf(files[member]))
                out << "    also " << DisplayName(other) << '\n';
        }
    }
    out << results.StatusText() << '\n';
}

int TellOutcome(const DuplicateFinder& finder, DupeOutcome outcome, ConsoleMessages& messages) {
    for (const UnsearchedFolder& folder : finder.Unsearched())
        messages.Say(DisplayName(folder.path) + ": " + folder.error.Description());
    if (outcome == DupeOutcome::Cancelled) messages.Say("cancelled");
    if (outcome != DupeOutcome::Completed || !finder.Unsearched().empty()) return kTrouble;
    return finder.Results().GroupCount() > 0 ? kDifferences : kNoDifferences;
}

int FindDupes(DupesRequest& request, const std::vector<std::string_view>& operands) {
    ConsoleLoop::CatchSignals();
    std::optional<PrivateFolder> logs(std::in_place);
    Engine engine(logs->Path());
    for (const std::string_view operand : operands)
        request.order.folders.push_back(WithoutTrailingSlash(ProperCase(engine.FullPath(operand))));
    request.order.dupesFolder =
        DupesFolderPath(FindProgramFolders(engine.Tools().files, {}, MissingFolder::Left));
    ConsoleDupeProgress progress(engine.Progress());
    DuplicateFinder finder(engine.Tools(), progress);
    const DupeOutcome outcome = finder.Find(request.order);
    engine.Progress().Unload();
    logs.reset();
    ConsoleLoop::LeaveSignals();
    const int status = TellOutcome(finder, outcome, engine.Messages());
    if (outcome != DupeOutcome::Completed) return status;

    Output out;
    if (request.format == OutputFormat::Json)
        WriteGroups(finder.Results(), DupeExportFormat::Json, [&](std::string_view text) { out << text; });
    else
        WriteText(finder.Results(), out);
    const int failure = out.Finish();
    if (failure != 0) engine.Messages().Say("cannot write the result: " + GetErrorText(failure));
    return failure != 0 ? kTrouble : status;
}

}  // namespace

int RunDupes(const std::vector<std::string_view>& arguments) {
    DupesRequest request;
    request.order = DupeSearchOrder::Of(DefaultOptions({}));
    const CommandSpec command{"dupes", "FOLDER...",
                              "Finds the files that there are more than once in some folders.", kDupesNotes,
                              DupesOptions(request)};
    const ParsedArguments parsed = ParseArguments(command, arguments, kOneOrMore);
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    request.order.ignoreZeroByteFiles = !request.zeroBytes;
    request.order.ignoreHiddenFiles = !request.hidden;
    request.order.ignoreSystemFiles = !request.system;
    request.order.ignoreFilesInWindowsDir = !request.systemFolders;
    request.order.jobs = request.jobs.value_or(request.order.jobs);
    return FindDupes(request, parsed.operands);
}

}  // namespace vantrel::cli
