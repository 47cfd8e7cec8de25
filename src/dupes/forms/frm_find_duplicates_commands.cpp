// The commands of the menus and what they do.
#include <QCheckBox>

#include "dupes/dupe_set_up.h"
#include "dupes/forms/dupe_preview.h"
#include "dupes/forms/frm_find_duplicates.h"
#include "dupes/forms/search_folder_list.h"
#include "dupes/protected_folders.h"

namespace vantrel {

struct frmFindDuplicates::Handler {
    std::string_view command;
    void (frmFindDuplicates::*run)();
};

// Each tells by itself what it lacks.
const std::vector<frmFindDuplicates::Handler>& frmFindDuplicates::Handlers() {
    using F = frmFindDuplicates;
    static const std::vector<Handler> handlers{
        {"mnuFileFindDupes", &F::FindDupes},
        {"mnuFileViewFile", &F::ViewFile},
        {"mnuFileRenameFile", &F::RenameFile},
        {"mnuFileCalculateCRC32", &F::CalculateCrc},
        {"mnuFileRemoveFiles", &F::RemoveMarked},
        {"mnuFileAddFileToExcludeList", &F::AddFileToExcludes},
        {"mnuFileProperties", &F::FileProperties},
        {"mnuFileOpenFolder", &F::OpenTheFolder},
        {"mnuFileExportCsv", &F::ExportCsv},
        {"mnuFileExportJson", &F::ExportJson},
        {"mnuFileRestoreFromDupes", &F::RestoreFromDupes},
        {"mnuFileExit", &F::Exit},
        {"mnuOptionsFilesToExclude", &F::FilesToExclude},
        {"mnuMarkAllButNewest", &F::MarkNewest},
        {"mnuMarkAllButOldest", &F::MarkOldest},
        {"mnuMarkAllButFirst", &F::MarkFirst},
        {"mnuMarkAllButShortest", &F::MarkShortest},
        {"mnuMarkByPattern", &F::MarkByPattern},
        {"mnuMarkNothing", &F::UnmarkAll},
        {"mnuMarkKeep", &F::FlipKeepMarks},
        {"mnuMarkProtectFolder", &F::FlipProtection},
        {"mnuViewFilter", &F::FocusFilter},
        {"mnuViewPreview", &F::FlipPreview},
        {"mnuDetailsRemoveFile", &F::RemoveSelected},
        {"mnuFoldersEdit", &F::EditFolder},
        {"mnuFoldersRemove", &F::RemoveFolder},
    };
    return handlers;
}

namespace {

std::string Element(const char* array, std::size_t index) {
    return std::string(array) + "(" + std::to_string(index) + ")";
}

constexpr std::size_t kIgnoreOptions = 4, kRemovalMethods = 4, kHashMethods = 3, kOrders = 3;

}  // namespace

void frmFindDuplicates::BindCommands() {
    for (const Handler& handler : Handlers())
        commands_.SetHandler(handler.command, [this, run = handler.run] { (this->*run)(); });
    if (parts_.compareFiles) commands_.SetHandler("mnuFileCompareFiles", [this] { CompareTwoFiles(); });
    if (parts_.showDifferences) commands_.SetHandler("mnuFileShowFileDiffs", [this] { ShowDifferences(); });
    for (std::size_t i = 0; i < kCriteria; ++i)
        commands_.SetHandler(Element("mnuOptionsDupeCriteriaOption", i),
                             [this, i] { SetCriterion(i, !chkDupeCriteria[i]->isChecked()); });
    for (std::size_t i = 0; i < kIgnoreOptions; ++i)
        commands_.SetHandler(Element("mnuIgnoreOptions", i), [this, i] { FlipIgnored(i); });
    for (std::size_t i = 0; i < kRemovalMethods; ++i)
        commands_.SetHandler(Element("mnuRemovalOptions", i),
                             [this, i] { ChooseRemoval(static_cast<RemovalMethod>(i)); });
    for (std::size_t i = 0; i < kHashMethods; ++i)
        commands_.SetHandler(Element("mnuHashMethodOption", i),
                             [this, i] { settings_.SetHashMethod(static_cast<HashMethod>(i)); });
    for (std::size_t i = 0; i < kOrders; ++i)
        commands_.SetHandler(Element("mnuViewOrder", i), [this, i] { Sort(static_cast<GroupOrder>(i)); });
}

void frmFindDuplicates::BindChecks() {
    for (std::size_t i = 0; i < kCriteria; ++i)
        commands_.BindCheck(Element("mnuOptionsDupeCriteriaOption", i),
                            [this, i] { return chkDupeCriteria[i]->isChecked(); });
    for (std::size_t i = 0; i < kIgnoreOptions; ++i)
        commands_.BindCheck(Element("mnuIgnoreOptions", i),
                            [this, i] { return IsIgnored(settings_, static_cast<IgnoreOption>(i)); });
    for (std::size_t i = 0; i < kRemovalMethods; ++i)
        commands_.BindCheck(Element("mnuRemovalOptions", i),
                            [this, i] { return settings_.RemoveMethod() == static_cast<RemovalMethod>(i); });
    for (std::size_t i = 0; i < kHashMethods; ++i)
        commands_.BindCheck(Element("mnuHashMethodOption", i),
                            [this, i] { return settings_.HashMethod() == static_cast<HashMethod>(i); });
    for (std::size_t i = 0; i < kOrders; ++i)
        commands_.BindCheck(Element("mnuViewOrder", i),
                            [this, i] { return order_ == static_cast<GroupOrder>(i); });
    commands_.BindCheck("mnuMarkKeep", [this] { return keepsMarks_; });
    commands_.BindCheck("mnuViewPreview", [this] { return !picPreview->isHidden(); });
    for (const char* item : {"mnuMarkProtectFolder", "mnuFoldersProtect"})
        commands_.BindCheck(item, [this] {
            const auto selected = lstFolders->SelectedFolder();
            return selected && IsProtectedFolder(settings_, settings_.FolderPaths()[*selected]);
        });
    commands_.RefreshChecks();
}

}  // namespace vantrel
