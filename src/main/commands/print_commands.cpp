// What is done to take a result away: on paper or as a text report.
#include "main/application.h"
#include "main/commands/handlers.h"
#include "views/forms/frm_print_options.h"

namespace vantrel {
namespace {

void Print(Application& application) {
    PerSide<PrintedList> shown, all;
    for (const Side side : kBothSides) {
        const std::string& folder = application.results.folders[side];
        shown[side] = {&application.panes.Pane(side).Rows(), folder};
        all[side] = {&application.panes.Hold()[side], folder};
    }
    // The main window starts nothing while the dialog stands.
    const BusyState::Job job(application.busy);
    ShowPrintOptions({.tools = application.tools,
                      .activeWindow = "frmMain",
                      .shown = shown,
                      .all = all,
                      .showHelp = [&application] { OpenHelpPage(application, "printing.html"); }},
                     &application.Window());
}

}  // namespace

void InstallPrintCommands(Application& application) {
    application.GetCommands().SetHandler("mnuFilePrint", [&application] { Print(application); });
}

}  // namespace vantrel
