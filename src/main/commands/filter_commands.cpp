// The four commands that add to a filter.
#include <algorithm>

#include "core/filter_patterns.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/running_command.h"
#include "platform/names/paths.h"
#include "settings/ini_document.h"

namespace vantrel {
namespace {

struct Addition {
    const char* command;
    std::string Options::*list;
    const char* title;
    const char* noSelection;
    bool isExtension;
};

constexpr const char* kNoObjects =
    "No objects to add to filter. Please select files and/or folders and try again.";

constexpr Addition kAdditions[] = {
    {"mnuFileAddToIncludeFilter", &Options::includeFileTypes, "Add to Include Filter", kNoObjects, false},
    {"mnuFileAddToExcludeFilter", &Options::excludeFileTypes, "Add to Exclude Filter", kNoObjects, false},
    {"mnuFileAddExtensionToIncludeFilter", &Options::includeFileTypes, "Add Extension to Include Filter",
     "No file extensions to add to the Include filter. Please select a file and try again.", true},
    {"mnuFileAddExtensionToExcludeFilter", &Options::excludeFileTypes, "Add Extension to Exclude Filter",
     "No file extensions to add to the Exclude filter. Please select a file and try again.", true},
};

void Warn(Application& application, const Addition& addition, const char* text) {
    application.around.messages.Ask(
        {.title = addition.title, .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
}

std::vector<std::string> SelectedTextsOf(const Application& application) {
    std::vector<std::string> texts;
    const auto side = application.panes.CurrentListview();
    if (!side) return texts;
    const PaneList& list = application.panes.Pane(*side);
    for (const std::size_t row : list.SelectedRows()) texts.emplace_back(list[row].text);
    return texts;
}

// The new filter is in force and in the file, and the result follows it. A file that could not be written is
// reported at the end of that.
void TakeFilter(Application& application, const Addition& addition, std::string filter) {
    Options& options = application.options;
    options.*addition.list = std::move(filter);
    const Error unsaved = application.store.SaveFilters(options.includeFileTypes, options.excludeFileTypes);
    if (ProfileText(options.*addition.list, {}) != options.*addition.list)
        Warn(application, addition,
             "This filter is longer than the 255 characters that are kept for the next start, or has a "
             "single character.  It is in force now; save it as a filter list to keep it.");
    application.AutoCompareStep(options.autoCompareAfterFilter);
    ThrowIfFailed(unsaved);
}

void AddToFilter(Application& application, const Addition& addition) {
    const RunningCommand running(application, "");
    const std::vector<std::string> selected = SelectedTextsOf(application);
    if (selected.empty()) return Warn(application, addition, addition.noSelection);
    std::string filter = application.options.*addition.list;
    if (addition.isExtension) {
        if (selected.size() > 1)
            return Warn(application, addition, "More than one file selected.  Please select only one file.");
        const std::string_view extension = GetFilenameExtension(selected.front());
        if (extension.empty()) return;
        AddPattern(filter, PatternForExtension(extension));
    } else {
        for (const std::string& text : selected) AddPattern(filter, PatternFor(text));
    }
    TakeFilter(application, addition, std::move(filter));
}

}  // namespace

void InstallFilterCommands(Application& application) {
    for (const Addition& addition : kAdditions)
        application.GetCommands().SetHandler(
            addition.command, [&application, &addition] { AddToFilter(application, addition); });
}

}  // namespace vantrel
