// What is done with two files: the difference viewer for the selected pair, and the comparison by all
// methods.
#include "fileops/forms/frm_properties.h"
#include "filetools/forms/frm_compare_files.h"
#include "filetools/forms/frm_view_file_diff_options.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/selected_pair.h"
#include "sync/forms/frm_file_sync.h"

namespace vantrel {
namespace {

using Paths = PerSide<std::string>;

void ShowFileDiffs(Application& application) {
    const auto pair = PairToShow(application.panes, application.around.messages);
    if (!pair) return;
    // The main window starts nothing while the viewer stands.
    const BusyState::Job job(application.busy);
    ShowDifferences(application, PathsOf(*pair, application.results.folders), &application.Window());
}

void Sync(Application& application, const Paths& paths, const WhenSynced& whenSynced, QWidget* over) {
    frmFileSync window(application.tools, application.operations->Wrappers(), paths, over);
    if (const auto synced = window.ShowForm()) whenSynced(paths, *synced);
}

void CompareFiles(Application& application) {
    const BusyState::Job job(application.busy);
    Paths folders;
    for (const Side side : kBothSides) folders[side] = application.Window().PaneFolder(side);
    ShowCompareFiles(application, PathsToCompare(application.tools.files, application.panes, folders),
                     &application.Window());
}

}  // namespace

void ShowDifferences(Application& application, const Paths& paths, QWidget* over) {
    application.viewFileDiffs.FileOne = paths[Side::Left];
    application.viewFileDiffs.FileTwo = paths[Side::Right];
    application.viewFileDiffs.Encodings = {};
    ShowFileDifferences({.tools = application.tools,
                         .settings = application.options,
                         .options = application.viewFileDiffs,
                         .globalDiffObject = application.globalDiffObject,
                         .desktop = application.around.desktop,
                         .requestCancel = [&application] { application.around.events.RequestCancel(); },
                         .showHelp = [&application] { OpenHelpPage(application, "differences.html"); }},
                        application.results.folders, over);
}

void BringRowsIntoLine(const Application& application, AlignedPanes& panes, const Paths& folders,
                       const Paths& paths, const SyncedPair& synced) {
    const auto pair = SelectedPairOf(panes);
    if (!pair || !AreTwoFiles(*pair)) return;
    const Paths ofRows = PathsOf(*pair, folders);
    for (const Side first : kBothSides) {
        if (paths[Side::Left] != ofRows[first] || paths[Side::Right] != ofRows[Other(first)]) continue;
        AlignedPanes::AlikeNow now{SizeByRule(synced.size, application.compare.Sizes), synced.lastWrite,
                                   synced.seen};
        if (first == Side::Right) std::swap(now.seen[Side::Left], now.seen[Side::Right]);
        panes.BringIntoLine(pair->side, pair->item, now);
    }
}

void ShowCompareFiles(Application& application, const Paths& paths, QWidget* over) {
    ShowCompareFiles(application, paths, over, [&application](const Paths& two, const SyncedPair& synced) {
        BringRowsIntoLine(application, application.panes, application.results.folders, two, synced);
    });
}

void ShowCompareFiles(Application& application, const Paths& paths, QWidget* over,
                      const WhenSynced& whenSynced) {
    frmCompareFiles window(
        {.tools = application.tools,
         .options = application.options,
         .requestCancel = [&application] { application.around.events.RequestCancel(); },
         .openFile =
             [&application](const std::string& path) {
                 QtShellCalls shell(application.tools, application.around.desktop);
                 OpenFile(shell, path);
             },
         .showDifferences = [&application](const Paths& two,
                                           QWidget* top) { ShowDifferences(application, two, top); },
         .showBytes = [&application](const Paths& two, QWidget* top) { ShowHexDumps(application, two, top); },
         .sync = [&application, &whenSynced](const Paths& two,
                                             QWidget* top) { Sync(application, two, whenSynced, top); },
         .showErrorLog = [&application](QWidget* top) { ShowErrorLog(application, *top); },
         .showHelp = [&application] { OpenHelpPage(application, "two-files.html"); }},
        over);
    window.ShowForm(paths);
}

void InstallFileDiffCommands(Application& application) {
    Commands& commands = application.GetCommands();
    commands.SetHandler("mnuFileShowFileDiffs", [&application] { ShowFileDiffs(application); });
    commands.SetHandler("mnuFileCompareFiles", [&application] { CompareFiles(application); });
}

}  // namespace vantrel
