#include "compare_request.h"

#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include "core/mod_sha1_hash.h"
#include "platform/names/names.h"
#include "settings/option_table.h"
#include "settings/session_file.h"
#include "settings/settings_file.h"
#include "views/cview_selections.h"

namespace vantrel::cli {

namespace {

template <typename Value, std::size_t N, typename Target>
bool TakeWord(std::string_view text, const std::array<std::pair<std::string_view, Value>, N>& words,
              Target& to) {
    for (const auto& [word, value] : words) {
        if (word != text) continue;
        to = value;
        return true;
    }
    return false;
}

constexpr std::array<std::pair<std::string_view, CompareMethod>, 4> kMethods = {{
    {"quick", CompareMethod::SizeAndDate},
    {"contents", CompareMethod::Contents},
    {"crc", CompareMethod::Crc32},
    {"sha", CompareMethod::Sha1},
}};
constexpr std::array<std::pair<std::string_view, std::int32_t>, 3> kViews = {{
    {"all", kViewAll},
    {"different", kViewDifferent},
    {"similar", kViewSimilar},
}};
constexpr std::array<std::pair<std::string_view, OutputFormat>, 2> kFormats = {{
    {"text", OutputFormat::Text},
    {"json", OutputFormat::Json},
}};
constexpr std::array<std::pair<std::string_view, OutputFormat>, 4> kReportFormats = {{
    {"text", OutputFormat::Text},
    {"json", OutputFormat::Json},
    {"html", OutputFormat::Html},
    {"csv", OutputFormat::Csv},
}};

bool TakeCount(std::string_view text, std::optional<std::int32_t>& to) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1) return false;
    to = number;
    return true;
}

std::function<bool(std::string_view)> YesNo(std::optional<bool>& to) {
    return [&to](std::string_view text) {
        bool value = false;
        if (!TakeYesNo(text, value)) return false;
        to = value;
        return true;
    };
}

std::function<bool(std::string_view)> Flag(bool& to) {
    return [&to](std::string_view) { return to = true; };
}

// Patterns may hold a folder marker, so that they are no names, but other bytes come in the same form.
std::string PatternFromUser(std::string_view text) {
    std::string pattern;
    while (true) {
        const std::size_t marker = text.find(kFolderMarker);
        pattern += NameFromSystem(text.substr(0, marker));
        if (marker == std::string_view::npos) return pattern;
        pattern += kFolderMarker;
        text.remove_prefix(marker + 1);
    }
}

std::function<bool(std::string_view)> Patterns(std::optional<std::string>& to) {
    return [&to](std::string_view text) {
        to = PatternFromUser(text);
        return true;
    };
}

// Defaults, with what the file of the request has.
Error ReadSettings(const Engine& engine, const CompareRequest& request, Options& options) {
    const OptionEnvironment environment;
    options = DefaultOptions(environment);
    IniDocument document;
    if (Error error = ReadSource(engine, request, document); !error.IsOk()) return error;
    for (const OptionLine& line : OptionTable()) {
        const std::string fallback = DefaultText(line, environment, options);
        TakeOptionText(line, ProfileText(document.Get(line.section, line.key), fallback), environment,
                       options);
    }
    return {};
}

void PutOver(const CompareRequest& request, Options& options) {
    options.compareType = request.method.value_or(options.compareType);
    options.compareSubFolders = request.subFolders.value_or(options.compareSubFolders);
    options.includeFileTypes = request.include.value_or(options.includeFileTypes);
    options.excludeFileTypes = request.exclude.value_or(options.excludeFileTypes);
    options.excludeHiddenFiles |= request.excludeHiddenFiles;
    options.excludeSystemFiles |= request.excludeSystemFiles;
    options.excludeHiddenFolders |= request.excludeHiddenFolders;
    options.excludeSystemFolders |= request.excludeSystemFolders;
    options.ignore2SecDiff = request.ignoreTwoSeconds.value_or(options.ignore2SecDiff);
    options.ignoreDaylightSavings = request.ignoreDaylight.value_or(options.ignoreDaylightSavings);
    options.trueSizes = request.trueSizes.value_or(options.trueSizes);
    options.trueSizesOffered |= request.trueSizes.has_value();
    options.chunkSize = request.chunkSize.value_or(options.chunkSize);
    options.jobs = request.jobs.value_or(options.jobs);
}

}  // namespace

std::vector<OptionSpec> ComparisonOptions(CompareRequest& request) {
    return {
        {"--method", "quick|contents|crc|sha",
         "how files are compared: by size and date (default),\nby contents, by CRC-32, by SHA-1",
         [&](std::string_view text) { return TakeWord(text, kMethods, request.method); }},
        {"--sub-folders", "yes|no", "compare what is below the sub-folders (default yes)",
         YesNo(request.subFolders)},
        {"--include", "LIST", "patterns, with commas between: only these, as in '*.txt,*.c'",
         Patterns(request.include)},
        {"--exclude", "LIST", "patterns: not these; one that begins with '\\' or '/'\nis for sub-folders",
         Patterns(request.exclude)},
        {"--exclude-hidden-files", "", "leave out hidden files", Flag(request.excludeHiddenFiles)},
        {"--exclude-system-files", "", "leave out system files", Flag(request.excludeSystemFiles)},
        {"--exclude-hidden-folders", "", "leave out hidden sub-folders", Flag(request.excludeHiddenFolders)},
        {"--exclude-system-folders", "", "leave out system sub-folders", Flag(request.excludeSystemFolders)},
        {"--ignore-two-seconds", "yes|no", "take times 1 or 2 seconds apart as equal (default yes)",
         YesNo(request.ignoreTwoSeconds)},
        {"--ignore-daylight", "yes|no", "take times an hour apart as equal (default no)",
         YesNo(request.ignoreDaylight)},
        {"--chunk-size", "N", "bytes compared at a time (default 500000)",
         [&](std::string_view text) { return TakeCount(text, request.chunkSize); }},
        {"--true-sizes", "yes|no",
         "use true sizes for files of 2 GiB and more; otherwise\nsuch sizes cannot be trusted (default no)",
         YesNo(request.trueSizes)},
        JobsOption(request.jobs),
    };
}

std::vector<OptionSpec> SourceAndFormatOptions(CompareRequest& request) {
    return {SourceOption(request), SessionOption(request), FormatOption(request.format)};
}

OptionSpec SourceOption(CompareRequest& request) {
    return {"--settings", "FILE", "an INI file whose options hold where none is given",
            [&](std::string_view text) {
                request.settingsFile = text;
                return !text.empty();
            }};
}

OptionSpec SessionOption(CompareRequest& request) {
    return {"--session", "FILE",
            "a saved session, whose options hold in the same way;\nwithout LEFT and RIGHT its folders too",
            [&](std::string_view text) {
                request.sessionFile = text;
                return !text.empty();
            }};
}

OptionSpec ReportFormatOption(OutputFormat& format) {
    return {"--format", "text|json|html|csv",
            "aligned columns (default), one JSON object a line,\na page for a browser, or a table for a "
            "spreadsheet",
            [&format](std::string_view text) { return TakeWord(text, kReportFormats, format); }};
}

OptionSpec FormatOption(OutputFormat& format) {
    return {"--format", "text|json", "aligned columns (default), or one JSON object a line",
            [&format](std::string_view text) { return TakeWord(text, kFormats, format); }};
}

OptionSpec JobsOption(std::optional<std::int32_t>& jobs) {
    return {
        "--jobs", "N",
        "files and folders looked at at the same time\n(default: one for each processor, up to 16 where a\n"
        "server or a disk is waited for; 1: one after the\nother)",
        [&jobs](std::string_view text) { return TakeCount(text, jobs); }};
}

OptionSpec ViewOption(std::optional<std::int32_t>& view) {
    return {"--view", "all|different|similar", "which pairs are printed (default all)",
            [&view](std::string_view text) { return TakeWord(text, kViews, view); }};
}

Error ReadSource(const Engine& engine, const CompareRequest& request, IniDocument& document) {
    const FileSystem& files = engine.Tools().files;
    if (!request.sessionFile.empty()) {
        if (!request.settingsFile.empty())
            return {ErrorNumber::Raised, "--settings and --session exclude each other"};
        const std::string path = engine.FullPath(request.sessionFile);
        std::string bytes;
        if (const Error error = ReadSession(files, path, bytes); !error.IsOk())
            return error.WithDescription(DescribeSessionError(path, error));
        document = IniDocument(std::move(bytes));
        return {};
    }
    if (request.settingsFile.empty()) return {};
    const std::string path = engine.FullPath(request.settingsFile);
    if (!files.FileExists(path)) return Error(ErrorNumber::FileNotFound, "File not found \"" + path + "\"");
    return SettingsFile(files, path).Read(document);
}

PerSide<std::string> FoldersOf(const Engine& engine, const CompareRequest& request,
                               const std::vector<std::string_view>& operands, Error& error) {
    constexpr PerSide<const char*> kSections{{"Source", "Target"}};
    PerSide<std::string> folders;
    IniDocument session;
    if (operands.empty()) error = ReadSource(engine, request, session);
    for (const Side side : kBothSides) {
        folders[side] = operands.empty() ? FolderOfSession(session, kSections[side])
                                         : engine.FullPath(operands[Index(side)]);
        if (operands.empty() && folders[side].empty() && error.IsOk())
            error = Error(ErrorNumber::PathNotFound, "the session has no folders: give LEFT and RIGHT");
    }
    return folders;
}

Error MakeOptions(const Engine& engine, const CompareRequest& request, Options& options) {
    if (Error error = ReadSettings(engine, request, options); !error.IsOk()) return error;
    PutOver(request, options);
    // Another method in its place would answer what was not asked.
    if (options.compareType == CompareMethod::Sha1 && !IsSHA1Available())
        return Error(ErrorNumber::Raised,
                     "this machine's library offers no SHA-1: choose another method of comparison");
    return {};
}

CViewSelections ViewOf(std::optional<std::int32_t> chosen, Options& options) {
    CViewSelections view(options);
    view.SetViewType(chosen.value_or(view.ViewType()));
    return view;
}

}  // namespace vantrel::cli
