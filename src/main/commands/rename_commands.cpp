// New names and new times for the selected objects.
#include "fileops/forms/frm_file_date_times.h"
#include "fileops/forms/frm_rename_multiple.h"
#include "fileops/new_sub_folder.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/running_command.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// The compared folder of a side, as it was when it was compared.
ShellRoot RootOf(Application& application, Side side) {
    const ComparisonResults& results = application.results;
    return {application.Window().PaneFolder(side), results.folderIds[side], results.foldersMade[side]};
}

bool RenameMany(Application& application, Side side) {
    const PaneList& list = application.panes.Pane(side);
    std::vector<ObjectToRename> objects;
    for (const std::size_t row : list.SelectedRows()) objects.push_back(ObjectToRename::Of(list[row]));
    frmRenameMultiple window({.tools = application.tools,
                              .rename = application.multipleRename,
                              .requestCancel = [&application] { application.around.events.RequestCancel(); }},
                             RootOf(application, side), std::move(objects), &application.Window());
    return window.ShowForm();
}

// A name with a "/" would be another place.
bool IsName(const std::string& text) {
    return text.find('/') == std::string::npos && text != "." && text != "..";
}

bool RenameOne(Application& application, Side side, const ResultRow& row) {
    const std::string present(row.realName);
    const auto answer = application.around.messages.AskForText("Rename File/Folder",
                                                               "Enter the new name for the object.", present);
    if (!answer || answer->empty() || *answer == present) return false;
    const std::string name = NameFromUser(*answer);
    if (!IsName(name)) {
        application.around.messages.Ask(
            {.title = "Rename File/Folder",
             .text = "A name cannot contain \"/\", and cannot be \".\" or \"..\".",
             .icon = MessageIcon::Warning,
             .defaultAnswer = {}});
        return false;
    }
    const std::string folder = application.Window().PaneFolder(side);
    return application.operations->Wrappers()
        .RenameFile(JoinPath(folder, present), JoinPath(folder, name), {.confirm = false, .showErrors = true})
        .AllDone();
}

void Rename(Application& application) {
    const auto side = application.panes.CurrentListview();
    const std::size_t count = side ? application.panes.Pane(*side).SelectedCount() : 0;
    const RunningCommand running(application, "renaming");
    if (count == 0) {
        application.around.messages.Ask(
            {.title = "Unable to Rename",
             .text = "No object selected. Please select a folder or a file and try again.",
             .icon = MessageIcon::Warning,
             .defaultAnswer = {}});
        return;
    }
    const PaneList& list = application.panes.Pane(*side);
    const bool renamed = count > 1 ? RenameMany(application, *side)
                                   : RenameOne(application, *side, list[list.SelectedRows().front()]);
    if (renamed) application.AutoCompareStep(application.options.autoCompareAfterDateTimeChange);
}

void SetDateTime(Application& application) {
    const RunningCommand running(application, "date/time change");
    const Side side = application.panes.CurrentListview().value_or(Side::Left);
    std::vector<FileToStamp> files;
    application.reporter.Guard("frmFileDateTimes.PopulateListviewWithSelectedFiles", [&] {
        files = SelectedFiles(application.tools, application.panes.Pane(side).Rows(),
                              application.Window().PaneFolder(side));
    });
    frmFileDateTimes window(
        application.tools, std::move(files), application.options.showDateTimeChangeConfirmations,
        [&application] { OpenHelpPage(application, "renaming.html"); }, &application.Window());
    if (window.ShowForm()) application.AutoCompareStep(application.options.autoCompareAfterDateTimeChange);
}

void SyncDateTime(Application& application) {
    const RunningCommand running(application, "date/time change");
    StampPair pair;
    pair.confirm = application.options.showDateTimeChangeConfirmations;
    if (const auto side = application.panes.CurrentListview()) {
        const PaneList& list = application.panes.Pane(*side);
        pair.row = list.SelectedObject();
        if (pair.row) pair.counterpart = application.panes.CounterpartOf(*side, *list.SelectedItem());
        pair.folder = application.Window().PaneFolder(*side);
        pair.otherFolder = application.Window().PaneFolder(Other(*side));
    }
    if (SyncTimeStamp(application.tools, pair))
        application.AutoCompareStep(application.options.autoCompareAfterDateTimeChange);
}

}  // namespace

void OfferRenameRepair(Application& application) {
    application.GuardRun("frmRenameMultiple.OfferRepair",
                         [&application] { application.multipleRename.OfferRepair(); });
}

void InstallRenameCommands(Application& application) {
    Commands& commands = application.GetCommands();
    commands.SetHandler("mnuFileChangeFilename", [&application] { Rename(application); });
    commands.SetHandler("mnuSetDateTimeStamp", [&application] { SetDateTime(application); });
    commands.SetHandler("mnuSyncTimeStamp", [&application] { SyncDateTime(application); });
}

}  // namespace vantrel
