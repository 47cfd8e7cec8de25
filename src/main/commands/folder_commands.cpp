// The icons beside the path boxes, and the commands that go to other folders.
#include <QToolButton>
#include <array>
#include <optional>

#include "core/cdir.h"
#include "fileops/forms/frm_create_sub_folder.h"
#include "fileops/new_sub_folder.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/forms/frm_maintain_folder_lists.h"
#include "main/running_command.h"
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

// The name of the folder that was made; empty where there is none.
std::string MakeNewSubFolder(Application& application, Side side) {
    constexpr const char* kFailed = "Unable to Create New Folder";
    MessagePort& messages = application.around.messages;
    const auto fail = [&messages](const std::string& text) {
        messages.Ask({.title = kFailed, .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
        return std::string();
    };
    const std::string parent = application.Window().PathText(side);
    if (!application.tools.files.FolderExists(parent))
        return fail("The folder \"" + parent + "\" was not found.");
    const std::string typed = frmCreateSubFolder(application.tools, &application.Window()).ShowForm(parent);
    if (typed.empty()) return {};
    std::string name = NameFromUser(typed);
    if (const std::string wrong = MakeSubFolder(application.tools.files, parent, name); !wrong.empty())
        return fail(wrong);
    CDir& dir = application.Comparison().Dir(side);
    if (dir.Path() == NormalizePath(parent)) dir.AddSubDir(kFolderMarker + name);
    messages.Ask({.title = "New Folder Created",
                  .text = "The folder \"" + name + "\" was created.",
                  .icon = MessageIcon::Information,
                  .defaultAnswer = {}});
    application.AutoCompareStep(application.options.autoCompareAfterCreationOfNewFolder);
    return name;
}

// Where a comparison shows the new folder it is selected, as by a click.
void CreateSubFolder(Application& application, Side side) {
    std::string name;
    {
        const RunningCommand running(application, "");
        name = MakeNewSubFolder(application, side);
    }
    if (name.empty()) return;
    const PaneList& list = application.panes.Pane(side);
    for (std::size_t row = 0; row < list.Count(); ++row) {
        if (list[row].kind != RowKind::Folder || list[row].realName != name) continue;
        application.panes.SetCurrentListview(side);
        application.panes.Click(side, row, {});
        application.Window().Panes().View(side).EnsureVisible(row);
        return;
    }
}

// A path box that shows another folder now is as one that was edited.
void SaveFoldersListsToIniAndCombos(Application& application, const PathHistory::Lists& lists) {
    ThrowIfFailed(application.history.SaveFolderLists(lists));
    frmMain& window = application.Window();
    PerSide<std::string> before;
    for (const Side side : kBothSides) before[side] = window.PathText(side);
    window.PopulateDirComboBoxesFromIniFile();
    bool changed = false;
    for (const Side side : kBothSides) {
        changed |= window.PathText(side) != before[side];
        application.Comparison().Dir(side).SetPath(window.PathText(side));
    }
    if (changed) application.panes.RemoveListItemsAndShowNoCompareMsg();
}

void MaintainFolderLists(Application& application) {
    const RunningCommand running(application, "");
    PathHistory::Lists lists;
    // Lists that could not be read would be overwritten by empty ones.
    ThrowIfFailed(application.history.PopulateDirComboBoxesFromIniFile(lists));
    frmMaintainFolderLists(
        application.tools, lists,
        [&application](const PathHistory::Lists& edited) {
            SaveFoldersListsToIniAndCombos(application, edited);
        },
        &application.Window())
        .exec();
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
            return CreateSubFolder(application, side);
    }
}

void InstallFolderCommands(Application& application) {
    const auto handle = [&application](const char* command, void (*work)(Application&)) {
        application.GetCommands().SetHandler(command, [&application, work] { work(application); });
    };
    handle("mnuGoToFolderThisSide", GoToFolderThisSide);
    handle("mnuGoToFolderBothSidesRunCompare", GoToFolderBothSides);
    handle("mnuCompareSubFolderToOtherFolder", CompareSubFolderToOtherFolder);
    handle("frmOptionsMaintainFolderLists", MaintainFolderLists);
    handle("mnuFolderPopupExplore", [](Application& program) {
        if (FindSelectedFolder(program)) Explore(program, program.Window().SelectedPath());
    });
}

}  // namespace vantrel
