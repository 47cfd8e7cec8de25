// What is done with two files: the difference viewer for the selected pair, and the comparison by all
// methods.
#include "core/row_texts.h"
#include "fileops/forms/frm_properties.h"
#include "filetools/forms/frm_compare_files.h"
#include "filetools/forms/frm_view_file_diff_options.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "platform/names/paths.h"
#include "sync/forms/frm_file_sync.h"

namespace vantrel {
namespace {

using Paths = PerSide<std::string>;

void Tell(Application& application, const char* text) {
    application.around.messages.Ask({.title = "Show File Differences",
                                     .text = text,
                                     .icon = MessageIcon::Information,
                                     .defaultAnswer = {}});
}

// The pair that the selected item of CurrentListview belongs to.
struct SelectedPair {
    Side side;
    std::size_t item;
    PerSide<const ResultRow*> rows{};  // the other one is null where it is not known
};

// Nothing where no item is selected that stands for an object.
std::optional<SelectedPair> SelectedPairOf(const Application& application) {
    const Side side = application.panes.CurrentListview().value_or(Side::Left);
    const PaneList& list = application.panes.Pane(side);
    const ResultRow* row = list.SelectedObject();
    if (row == nullptr) return std::nullopt;
    SelectedPair pair{side, *list.SelectedItem()};
    pair.rows[side] = row;
    pair.rows[Other(side)] = application.panes.CounterpartOf(side, pair.item);
    return pair;
}

bool AreTwoFiles(const SelectedPair& pair) {
    const ResultRow* other = pair.rows[Other(pair.side)];
    return pair.rows[pair.side]->kind == RowKind::File && other != nullptr && other->kind == RowKind::File;
}

Paths PathsOf(const Application& application, const SelectedPair& pair) {
    Paths paths;
    for (const Side side : kBothSides)
        paths[side] = ObjectPath(application.results.folders[side], *pair.rows[side]);
    return paths;
}

void ShowFileDiffs(Application& application) {
    const auto pair = SelectedPairOf(application);
    if (!pair) return Tell(application, "No file is selected");
    if (pair->rows[pair->side]->kind == RowKind::Folder)
        return Tell(application, "Selected object is not a file");
    if (!AreTwoFiles(*pair)) return Tell(application, "The selected file has no counterpart");
    // The main window starts nothing while the viewer stands.
    const BusyState::Job job(application.busy);
    ShowDifferences(application, PathsOf(application, *pair), &application.Window());
}

// What the boxes of the comparison begin with: the file of the selected row in each folder, otherwise the
// folder.
Paths PathsToCompare(const Application& application, const frmMain& window) {
    const auto pair = SelectedPairOf(application);
    const FileSystem& files = application.tools.files;
    Paths paths;
    for (const Side side : kBothSides) {
        const std::string folder = window.PaneFolder(side);
        if (!files.FolderExists(folder)) continue;
        paths[side] = NormalizePath(folder);
        if (!pair || pair->rows[pair->side]->kind != RowKind::File) continue;
        const ResultRow* row = pair->rows[side];
        if (row == nullptr || !row->IsReal()) row = pair->rows[pair->side];
        if (const std::string path = ObjectPath(folder, *row); files.FileExists(path)) paths[side] = path;
    }
    return paths;
}

// The rows of the selected pair, where these are the two files of it.
void BringRowsIntoLine(Application& application, const Paths& paths, const SyncedPair& synced) {
    const auto pair = SelectedPairOf(application);
    if (!pair || !AreTwoFiles(*pair)) return;
    const Paths ofRows = PathsOf(application, *pair);
    for (const Side first : kBothSides) {
        if (paths[Side::Left] != ofRows[first] || paths[Side::Right] != ofRows[Other(first)]) continue;
        ResultPanes::AlikeNow now{SizeByRule(synced.size, application.compare.Sizes), synced.lastWrite,
                                  synced.seen};
        if (first == Side::Right) std::swap(now.seen[Side::Left], now.seen[Side::Right]);
        application.panes.BringIntoLine(pair->side, pair->item, now);
    }
}

void Sync(Application& application, const Paths& paths, QWidget* over) {
    frmFileSync window(application.tools, application.operations->Wrappers(), paths, over);
    if (const auto synced = window.ShowForm()) BringRowsIntoLine(application, paths, *synced);
}

void CompareFiles(Application& application) {
    const BusyState::Job job(application.busy);
    ShowCompareFiles(application, PathsToCompare(application, application.Window()), &application.Window());
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

void ShowCompareFiles(Application& application, const Paths& paths, QWidget* over) {
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
         .sync = [&application](const Paths& two, QWidget* top) { Sync(application, two, top); },
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
