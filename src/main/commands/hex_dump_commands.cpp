// The hex dump of the selected file.
#include "core/row_texts.h"
#include "filetools/forms/frm_hex_dump.h"
#include "main/application.h"
#include "main/commands/handlers.h"

namespace vantrel {
namespace {

void ShowHexDump(Application& application) {
    const auto side = application.panes.CurrentListview();
    const ResultRow* row = side ? application.panes.Pane(*side).SelectedObject() : nullptr;
    if (row == nullptr || row->kind != RowKind::File) {
        application.around.messages.Ask({.title = "Unable to Show Hex Dump",
                                         .text = "No file selected.  Please select a file and try again.",
                                         .icon = MessageIcon::Information,
                                         .defaultAnswer = {}});
        return;
    }
    ShowHexDumps(application, {{ObjectPath(application.results.folders[*side], *row), {}}},
                 &application.Window());
}

}  // namespace

void ShowHexDumps(Application& application, const PerSide<std::string>& paths, QWidget* over) {
    // The main window starts nothing while the viewer stands.
    const BusyState::Job job(application.busy);
    frmHexDump viewer({.tools = application.tools,
                       .completesPaths = application.options.autoCompleteFolderPath,
                       .requestCancel = [&application] { application.around.events.RequestCancel(); }},
                      over);
    viewer.ShowForm(paths);
}

void InstallHexDumpCommands(Application& application) {
    application.GetCommands().SetHandler("mnuFileHexDump", [&application] { ShowHexDump(application); });
}

}  // namespace vantrel
