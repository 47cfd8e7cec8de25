// The icons beside the path boxes, and the commands that go to other folders.
#include <QToolButton>
#include <array>
#include <optional>

#include "core/cdir.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr const char* kBrowseTitle = "Browse for Folder";

// Where the folder dialog opens for a box whose text is no folder: at home while nothing was chosen yet.
std::string StartOfSearch(const Application& application, const std::string& text) {
    const std::string home = PathFromUser("~/");
    const bool chosen = !text.empty() && text != kNoFolderPrompt;
    return !chosen && application.tools.files.FolderExists(home) ? home : application.around.folders.appPath;
}

void SelectFolder(Application& application, Side side) {
    frmMain& window = application.Window();
    std::string start = window.PathText(side);
    if (!application.tools.files.FolderExists(start)) start = StartOfSearch(application, start);
    const auto picked = application.around.messages.PickDirectory(
        kBrowseTitle, side == Side::Left ? "Specify the left folder." : "Specify the right folder.", start);
    if (picked) window.SetPathText(side, *picked);
}

void GoUpToParent(Application& application, Side side) {
    frmMain& window = application.Window();
    const std::string parent = CDir::GetParentDir(window.PathText(side));
    if (!parent.empty()) window.SetPathText(side, parent);
}

void Explore(Application& application, const std::string& folder) {
    application.notices.ShowExplorerNotice();
    if (application.tools.files.FolderExists(folder) && application.around.desktop.Explore(folder)) return;
    application.around.messages.Ask({.title = "Explore",
                                     .text = "The folder \"" + folder + "\" could not be opened.",
                                     .icon = MessageIcon::Warning,
                                     .defaultAnswer = {}});
}

// The selected row of CurrentListview when it is a folder.
struct SelectedFolder {
    Side side = Side::Left;
    const ResultRow* row = nullptr;
};

std::optional<SelectedFolder> FindSelectedFolder(const Application& application) {
    const auto side = application.panes.CurrentListview();
    if (!side) return {};
    const ResultRow* row = application.panes.Pane(*side).SelectedObject();
    if (!row || row->kind != RowKind::Folder) return {};
    return SelectedFolder{*side, row};
}

void GoToFolderThisSide(Application& application) {
    if (const auto folder = FindSelectedFolder(application))
        application.Window().SetPathText(folder->side, application.Window().SelectedPath());
}

// The name on the other side is that of the counterpart where there is one, which can differ in letter case.
void GoToFolderBothSides(Application& application) {
    const auto folder = FindSelectedFolder(application);
    if (!folder) return;
    const PaneList& counterparts = application.panes.Pane(Other(folder->side));
    const std::size_t number = *application.panes.Pane(folder->side).SelectedItem();
    const bool paired = number < counterparts.Count() && counterparts[number].IsReal();
    PerSide<std::string> paths;
    paths[folder->side] = application.Window().SelectedPath();
    paths[Other(folder->side)] = JoinPath(application.results.folders[Other(folder->side)],
                                          paired ? counterparts[number].realName : folder->row->realName);
    for (const Side side : kBothSides)
        if (!paths[side].empty()) application.Window().SetPathText(side, paths[side]);
    application.CompareDirs(CompareEnding::Announced);
}

void CompareSubFolderToOtherFolder(Application& application) {
    const auto folder = FindSelectedFolder(application);
    if (!folder) return;
    const std::string path = application.Window().SelectedPath();
    const Side side = folder->side;
    const auto picked = application.around.messages.PickDirectory(kBrowseTitle, "Specify the folder.",
                                                                  GetParentFolderName(path));
    if (!picked) return;
    application.Window().SetPathText(side, path);
    application.Window().SetPathText(Other(side), *picked);
    application.CompareDirs(CompareEnding::Announced);
}

}  // namespace

void OnPathIconClicked(Application& application, Side side, PathIcon icon) {
    switch (icon) {
        case PathIcon::Select:
            return SelectFolder(application, side);
        case PathIcon::UpToParent:
            return GoUpToParent(application, side);
        case PathIcon::Explore:
            return Explore(application, application.Window().PathText(side));
        case PathIcon::CreateSubFolder:
            return;
    }
}

void InstallFolderCommands(Application& application) {
    const auto handle = [&application](const char* command, void (*work)(Application&)) {
        application.GetCommands().SetHandler(command, [&application, work] { work(application); });
    };
    handle("mnuGoToFolderThisSide", GoToFolderThisSide);
    handle("mnuGoToFolderBothSidesRunCompare", GoToFolderBothSides);
    handle("mnuCompareSubFolderToOtherFolder", CompareSubFolderToOtherFolder);
    handle("mnuFolderPopupExplore", [](Application& program) {
        if (FindSelectedFolder(program)) Explore(program, program.Window().SelectedPath());
    });
    // The window for new sub-folders is not there yet.
    for (const Side side : kBothSides)
        application.Window().Box(side).Icon(PathIcon::CreateSubFolder)->setEnabled(false);
}

}  // namespace vantrel
