// The difference viewer for the selected pair of files.
#include "core/row_texts.h"
#include "filetools/forms/frm_view_file_diff_options.h"
#include "main/application.h"
#include "main/commands/handlers.h"

namespace vantrel {
namespace {

void Tell(Application& application, const char* text) {
    application.around.messages.Ask({.title = "Show File Differences",
                                     .text = text,
                                     .icon = MessageIcon::Information,
                                     .defaultAnswer = {}});
}

// Both paths of the pair that the selected item of CurrentListview belongs to, into the options of the
// viewer.
void StorePaths(Application& application, std::size_t row) {
    PerSide<std::string> paths;
    for (const Side side : kBothSides)
        paths[side] = ObjectPath(application.results.folders[side], application.panes.Pane(side)[row]);
    application.viewFileDiffs.FileOne = paths[Side::Left];
    application.viewFileDiffs.FileTwo = paths[Side::Right];
    application.viewFileDiffs.Encodings = {};
}

void ShowFileDiffs(Application& application) {
    const auto side = application.panes.CurrentListview();
    const PaneList* list = side ? &application.panes.Pane(*side) : nullptr;
    const ResultRow* row = list != nullptr ? list->SelectedObject() : nullptr;
    if (row == nullptr) return Tell(application, "No file is selected");
    if (row->kind == RowKind::Folder) return Tell(application, "Selected object is not a file");
    const std::size_t item = *list->SelectedItem();
    if (row->type == ResultType::Orphan || application.panes.Pane(Other(*side))[item].kind != RowKind::File)
        return Tell(application, "The selected file has no counterpart");
    StorePaths(application, item);
    // The main window starts nothing while the viewer stands.
    const BusyState::Job job(application.busy);
    ShowFileDifferences({.tools = application.tools,
                         .settings = application.options,
                         .options = application.viewFileDiffs,
                         .globalDiffObject = application.globalDiffObject,
                         .desktop = application.around.desktop,
                         .requestCancel = [&application] { application.around.events.RequestCancel(); },
                         .showHelp = [&application] { OpenHelpPage(application, "differences.html"); }},
                        application.results.folders, &application.Window());
}

}  // namespace

void InstallFileDiffCommands(Application& application) {
    application.GetCommands().SetHandler("mnuFileShowFileDiffs",
                                         [&application] { ShowFileDiffs(application); });
}

}  // namespace vantrel
