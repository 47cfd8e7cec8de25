// The differences inside one pair of sub-folders.
#include "core/row_texts.h"
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/forms/frm_specify_sub_folder.h"
#include "main/forms/frm_sub_dir_diffs.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// The selected item of CurrentListview, where it is a sub-folder that differs.
struct DifferentFolder {
    Side side;
    std::size_t item;
    const ResultRow& row;
};

std::optional<DifferentFolder> SelectedDifferentFolder(const ResultPanes& panes) {
    const auto side = panes.CurrentListview();
    const ResultRow* row = side ? panes.Pane(*side).SelectedObject() : nullptr;
    if (row == nullptr || row->type != ResultType::DifferentFolder) return std::nullopt;
    return DifferentFolder{*side, *panes.Pane(*side).SelectedItem(), *row};
}

// The two sub-folders by the names that they bear on each side.
PerSide<std::string> FoldersOf(const Application& application, const DifferentFolder& folder) {
    PerSide<std::string> paths;
    const ResultRow* other = application.panes.CounterpartOf(folder.side, folder.item);
    for (const Side side : kBothSides) {
        const ResultRow& named = side == folder.side || other == nullptr ? folder.row : *other;
        paths[side] = ObjectPath(application.results.folders[side], named);
    }
    return paths;
}

void ViewDifferences(Application& application) {
    const auto folder = SelectedDifferentFolder(application.panes);
    if (!folder) return;
    const std::string name(folder->row.text);
    const CSubFolderDiffs* diffs = application.results.SubFolderDiffs.Find(name);
    if (diffs == nullptr) {
        application.around.messages.Ask(
            {.title = "View Sub-Folder Differences",
             .text = "What differs inside \"" + name.substr(1) +
                     "\" is not known.  Compare the folders again, with their sub-folders.",
             .icon = MessageIcon::Information,
             .defaultAnswer = {}});
        return;
    }
    bool changed = false;
    {
        frmSubDirDiffs window(application, &application.Window());
        changed = window.ShowForm(*diffs, FoldersOf(application, *folder));
    }
    if (changed) application.AutoCompareStep(application.options.autoCompareAfterFileOp);
}

void ShowSubDirDiffs(Application& application) {
    ResultPanes& panes = application.panes;
    if (!SelectedDifferentFolder(panes)) {
        const Side side = panes.CurrentListview().value_or(Side::Left);
        const auto row =
            frmSpecifySubFolder(panes.Pane(side), application.around.messages, &application.Window())
                .ShowForm();
        if (!row) return;
        panes.Click(side, *row, {});
        application.Window().Panes().View(side).EnsureVisible(*row);
    }
    application.GetCommands().Run("mnuFolderPopupViewDifferences");
}

}  // namespace

void InstallSubFolderCommands(Application& application) {
    Commands& commands = application.GetCommands();
    commands.SetHandler("mnuFileShowSubDirDiffs", [&application] { ShowSubDirDiffs(application); });
    commands.SetHandler("mnuFolderPopupViewDifferences", [&application] { ViewDifferences(application); });
}

}  // namespace vantrel
