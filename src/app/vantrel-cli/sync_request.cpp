#include "sync_request.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <unordered_map>

#include "platform/names/names.h"
#include "settings/option_table.h"
#include "settings/settings_file.h"

namespace vantrel::cli {

namespace {

constexpr std::array<std::string_view, 8> kTableKeys = {
    "LeftFolderNewFilesAction",     "LeftFolderOldFilesAction",    "LeftFolderOrphanFilesAction",
    "LeftFolderBinaryFilesAction",  "RightFolderNewFilesAction",   "RightFolderOldFilesAction",
    "RightFolderOrphanFilesAction", "RightFolderBinaryFilesAction"};

const SyncMethodInfo* FindMethod(std::string_view word) {
    const auto& methods = SyncMethods();
    const auto found = std::find_if(methods.begin(), methods.end(),
                                    [=](const SyncMethodInfo& info) { return info.settingsWord == word; });
    return found == methods.end() ? nullptr : &*found;
}

std::string MethodWords() {
    std::string words;
    for (const SyncMethod method : SyncMethodsInDisplayOrder()) {
        if (!words.empty()) words += ", ";
        words += SyncMethods()[static_cast<std::size_t>(method)].settingsWord;
    }
    return words;
}

// A row's name as a person types it: the folder marker stays, other bytes come in the engine's form.
std::string NameOfRow(std::string_view text) {
    std::string name;
    if (text.starts_with(kFolderMarker)) {
        name = kFolderMarker;
        text.remove_prefix(1);
    }
    // What begins with "~/" is no path here.
    return name + (text.starts_with('~') ? "~" + PathFromUser(text.substr(1)) : PathFromUser(text));
}

// The text of the row that a name stands for. No name holds a "/", so that one can only mark a folder.
std::string RowText(std::string name) {
    if (name.starts_with('/') && name.size() > 1) name[0] = kFolderMarker;
    if (name.ends_with('/')) {
        name.pop_back();
        if (!name.starts_with(kFolderMarker)) name.insert(0, 1, kFolderMarker);
    }
    return name;
}

}  // namespace

OptionSpec ProgramFolderOption(std::string& folder) {
    return {"--program-folder", "DIR", "where history and logs are (default: the program's\nown folder)",
            [&folder](std::string_view text) {
                folder = text;
                return !text.empty();
            }};
}

std::vector<OptionSpec> SyncOptions(SyncRequest& request) {
    const auto flag = [](bool& to) { return [&to](std::string_view) { return to = true; }; };
    std::vector<OptionSpec> options = {
        {"--sync-method", "NAME",
         "what is done (default: the method of --settings):\n"
         "MakeRightSameAsLeft, MakeLeftSameAsRight,\n"
         "ReplaceOlderCopyOrphans, AddOrphansToLeft,\n"
         "AddOrphansToRight, ReplaceOlderOnLeft,\n"
         "ReplaceOlderOnRight, or Custom with the action\n"
         "table of --settings",
         [&](std::string_view text) {
             request.method = text;
             return true;
         }},
        {"--plan", "", "print what would be done, and change nothing", flag(request.planOnly)},
        {"--yes", "", "go ahead without asking", flag(request.agreed)},
        {"--keep-going", "", "go on with the rest when an object fails", flag(request.keepGoing)},
        {"--allow-emptied", "",
         "go ahead although a folder is empty, or holds less than\na tenth of what it held, and objects of "
         "the "
         "other are to\nbe deleted",
         flag(request.permits.emptied)},
        {"--max-delete", "N|P%",
         "delete up to N objects, or P percent, of a folder (default\n50%; a share limits nothing below 20 "
         "objects)",
         [&](std::string_view text) {
             const auto limit = ParseDeleteLimit(text);
             if (limit) request.permits.deletes = *limit;
             return limit.has_value();
         }},
        {"--select", "NAME",
         "only this object; may be given several times. A\nsub-folder as '\\Sub', '/Sub' or 'Sub/'",
         [&](std::string_view text) {
             request.select.push_back(NameOfRow(text));
             return !text.empty();
         }},
        ProgramFolderOption(request.programFolder)};
    for (const auto& list : {ComparisonOptions(request.compare), SourceAndFormatOptions(request.compare)})
        options.insert(options.end(), list.begin(), list.end());
    return options;
}

std::string FullProgramFolder(const std::string& given) {
    if (given.empty()) return {};
    const std::filesystem::path path = NameToSystem(PathFromUser(given));
    std::error_code error;
    if (!std::filesystem::is_directory(path, error))
        throw std::runtime_error("'" + DisplayName(PathFromUser(given)) + "' is no folder");
    return NameFromSystem(std::filesystem::absolute(path).native());
}

std::string TakeSyncMethod(const Engine& engine, const SyncRequest& request, CSyncSettings& settings) {
    // A default is good enough for the window, which shows it. Here only what was written down is carried
    // out.
    IniDocument document;
    if (const Error error = ReadSource(engine, request.compare, document); !error.IsOk())
        return error.Description();
    const auto word = request.method ? request.method : document.Get(kOptionsSection, "SyncMethod");
    if (!word) return "no method: --sync-method takes one of " + MethodWords();
    const SyncMethodInfo* const method = FindMethod(*word);
    if (method == nullptr) return "'" + *word + "' is no method. There are " + MethodWords();
    if (method->method != SyncMethod::Custom) {
        settings.SetSyncMethod(method->method);
        return {};
    }
    for (const std::string_view key : kTableKeys)
        if (!document.Get(kOptionsSection, key))
            return "the method Custom needs the action table of --settings: there is no " + std::string(key);
    settings.SetSyncMethod(SyncMethod::Custom);
    return {};
}

std::int32_t HistoryLengthOf(const Toolbox& tools, const Options& options) {
    constexpr std::string_view kKey = "NumSyncLogEntries";
    IniDocument document;
    const std::string path = tools.folders.appPath + "vantrel.ini";
    if (!SettingsFile(tools.files, path).Read(document).IsOk()) return options.numSyncLogEntries;
    const std::string text = ProfileText(document.Get(kOptionsSection, kKey), {});
    if (text.empty()) return options.numSyncLogEntries;
    Options window;
    for (const OptionLine& line : OptionTable())
        if (line.key == kKey) TakeOptionText(line, text, {}, window);
    return window.numSyncLogEntries;
}

SelectedTexts FindSelected(const ComparisonResults& results, const std::vector<std::string>& names,
                           std::string& wrong) {
    if (names.empty()) return std::nullopt;
    // The pairs that a row stands in have one text on both sides.
    std::unordered_map<std::string, std::set<std::string_view>> byFolded;
    for (const Side side : kBothSides)
        for (const ResultRow& row : results.hold[side])
            if (row.IsReal()) byFolded[FoldCase(row.text)].insert(row.text);
    SelectedTexts selected(std::in_place);
    for (const std::string& name : names) {
        const std::string text = RowText(name);
        const auto found = byFolded.find(FoldCase(text));
        if (found == byFolded.end()) {
            wrong = "there is no object '" + name + "' to select";
            return selected;
        }
        const std::set<std::string_view>& texts = found->second;
        if (!texts.contains(text) && texts.size() > 1) {
            wrong =
                "'" + name + "' is more than one object: write it with the letters of the one that is meant";
            return selected;
        }
        selected->emplace(texts.contains(text) ? text : std::string(*texts.begin()));
    }
    return selected;
}

}  // namespace vantrel::cli
