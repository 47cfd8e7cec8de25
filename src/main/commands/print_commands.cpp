// What is done to take a result away: on paper or as a text report.
#include "main/application.h"
#include "main/commands/handlers.h"
#include "views/forms/frm_print_options.h"
#include "views/forms/frm_save_results.h"

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

void SaveResults(Application& application) {
    if (!application.results.HasResult()) {
        application.around.messages.Ask({.title = "Save Results As",
                                         .text = "There are no results to be saved.",
                                         .icon = MessageIcon::Information,
                                         .defaultAnswer = {}});
        return;
    }
    const auto makeReport = [&application](bool onlyShown) {
        const ComparisonResults& results = application.results;
        return ResultsReport{
            results.folders, onlyShown ? PartsShown(results, application.panes) : AllParts(results),
            application.tools.locale.DateTime(FileTimeToLocalFileTime(application.tools.clock.Now()))};
    };
    const BusyState::Job job(application.busy);
    frmSaveResults({.tools = application.tools,
                    .makeReport = makeReport,
                    .showHelp = [&application] { OpenHelpPage(application, "printing.html"); }},
                   &application.Window())
        .exec();
}

}  // namespace

void InstallPrintCommands(Application& application) {
    application.GetCommands().SetHandler("mnuFilePrint", [&application] { Print(application); });
    application.GetCommands().SetHandler("mnuFileSaveResults", [&application] { SaveResults(application); });
}

}  // namespace vantrel
