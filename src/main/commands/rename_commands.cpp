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

constexpr const char* kRenaming = "renaming";
constexpr const char* kStamping = "date/time change";

// The compared folder of a side, as it was when it was compared.
ShellRoot RootOf(Application& application, Side side) {
    const ComparisonResults& results = application.results;
    return {application.Window().PaneFolder(side), results.folderIds[side], results.foldersMade[side]};
}

void TellEnd(Application& application, const char* what, const OperationSummary& summary) {
    if (!summary.IsEmpty()) application.operations->TellEnd(what, summary);
}

bool RenameMany(Application& application, Side side) {
    const PaneList& list = application.panes.Pane(side);
    std::vector<ObjectToRename> objects;
    for (const std::size_t row : list.SelectedRows()) objects.push_back(ObjectToRename::Of(list[row]));
    frmRenameMultiple window({.tools = application.tools,
                              .rename = application.multipleRename,
                              .requestCancel = [&application] { application.around.events.RequestCancel(); }},
                             RootOf(application, side), std::move(objects), &application.Window());
    const bool renamed = window.ShowForm();
    TellEnd(application, kRenaming, window.Summary());
    return renamed;
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
    const ShellResult result = application.operations->Wrappers().RenameFile(
        JoinPath(folder, present), JoinPath(folder, name), {.confirm = false, .showErrors = true});
    TellEnd(application, kRenaming, SummaryOf(result));
    return result.AllDone();
}

void Rename(Application& application) {
    const auto side = application.panes.CurrentListview();
    const std::size_t count = side ? application.panes.Pane(*side).SelectedCount() : 0;
    const RunningCommand running(application, kRenaming);
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
    const RunningCommand running(application, kStamping);
    const Side side = application.panes.CurrentListview().value_or(Side::Left);
    std::vector<FileToStamp> files;
    application.reporter.Guard("frmFileDateTimes.PopulateListviewWithSelectedFiles", [&] {
        files = SelectedFiles(application.tools, application.panes.Pane(side).Rows(),
                              application.Window().PaneFolder(side));
    });
    frmFileDateTimes window(
        application.tools, std::move(files), application.options.showDateTimeChangeConfirmations,
        [&application] { OpenHelpPage(application, "renaming.html"); }, &application.Window());
    const bool stamped = window.ShowForm();
    TellEnd(application, kStamping, window.Summary());
    if (stamped) application.AutoCompareStep(application.options.autoCompareAfterDateTimeChange);
}

void SyncDateTime(Application& application) {
    const RunningCommand running(application, kStamping);
    StampPair pair;
    pair.confirm = application.options.showDateTimeChangeConfirmations;
    if (const auto side = application.panes.CurrentListview()) {
        const PaneList& list = application.panes.Pane(*side);
        pair.row = list.SelectedObject();
        if (pair.row) pair.counterpart = application.panes.CounterpartOf(*side, *list.SelectedItem());
        pair.folder = application.Window().PaneFolder(*side);
        pair.otherFolder = application.Window().PaneFolder(Other(*side));
    }
    if (!SyncTimeStamp(application.tools, pair)) return;
    OperationSummary summary;
    summary.stamped = 1;
    TellEnd(application, kStamping, summary);
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
