// What is done before a search, and the search itself.
#include <QCheckBox>
#include <QLineEdit>

#include "dupes/dupe_set_up.h"
#include "dupes/forms/frm_dupe_exclusions.h"
#include "dupes/forms/frm_find_duplicates_run.h"
#include "dupes/forms/search_folder_list.h"
#include "dupes/protected_folders.h"
#include "filetools/forms/file_path_box.h"
#include "platform/forms/qt_text.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr bool DupeCriteria::*kCriterion[] = {&DupeCriteria::names,       &DupeCriteria::sizes,
                                              &DupeCriteria::createTimes, &DupeCriteria::lastModTimes,
                                              &DupeCriteria::attributes,  &DupeCriteria::contents};

// A path as a person typed it; without a "/" at its head it begins where the program was started.
std::string FullPath(const Toolbox& tools, const std::string& typed) {
    const std::string path = PathFromUser(typed);
    return path.starts_with('/') ? path : JoinPath(tools.folders.startDir, path);
}

}  // namespace

void frmFindDuplicates::AddFolder() {
    MessagePort& messages = parts_.tools.messages;
    const std::vector<std::string> folders = settings_.FolderPaths();
    std::string path = txtPath->Path();
    if (path.empty()) {
        const auto picked = messages.PickDirectory("Browse for Folder", "Specify the folder to be searched.",
                                                   folders.empty() ? std::string() : folders.back());
        if (!picked || picked->empty()) return;
        path = *picked;
    }
    if (!AddSearchFolder(messages, settings_, FullPath(parts_.tools, path))) return;
    txtPath->SetPath({});
    ShowFolders();
    lstFolders->setCurrentRow(lstFolders->count() - 1);
}

void frmFindDuplicates::RemoveFolder() {
    const auto selected = lstFolders->SelectedFolder();
    if (!selected)
        return Tell("Remove Folder from List", "Select one of the folders from the list.",
                    MessageIcon::Warning);
    RemoveSearchFolder(settings_, *selected);
    ShowFolders();
}

void frmFindDuplicates::EditFolder() {
    const auto selected = lstFolders->SelectedFolder();
    if (!selected) return;
    const std::string before = settings_.FolderPaths()[*selected];
    if (!EditSearchFolder(parts_.tools.messages, settings_, *selected)) return;
    std::vector<std::string> folders = settings_.FolderPaths();
    folders[*selected] = FullPath(parts_.tools, folders[*selected]);
    settings_.SetFolderPaths(folders);
    MoveProtection(settings_, before, folders[*selected]);
    ShowFolders();
}

void frmFindDuplicates::FoldersDropped(const std::vector<std::string>& paths) {
    if (busy_.IsBusy()) return;
    for (const std::string& path : paths)
        if (parts_.tools.files.FolderExists(path)) AddSearchFolder(parts_.tools.messages, settings_, path);
    ShowFolders();
}

void frmFindDuplicates::FlipProtection() {
    const auto selected = lstFolders->SelectedFolder();
    if (!selected)
        return Tell("Protect Folder", "Select one of the folders from the list.", MessageIcon::Warning);
    const std::string folder = settings_.FolderPaths()[*selected];
    SetProtectedFolder(settings_, folder, !IsProtectedFolder(settings_, folder));
    ShowFolders();
}

void frmFindDuplicates::SetCriterion(std::size_t index, bool on) {
    DupeCriteria criteria = settings_.Criteria();
    criteria.*kCriterion[index] = on;
    settings_.SetCriteria(criteria);
    ShowSettings();
    ClearListBoxAndListview();
}

void frmFindDuplicates::SetIncludeSubFolders(bool on) {
    settings_.SetIncludeSubFolders(on);
    ShowSettings();
    ClearListBoxAndListview();
}

void frmFindDuplicates::FlipIgnored(std::size_t index) {
    FlipIgnoreOption(parts_.tools.messages, settings_, static_cast<IgnoreOption>(index));
}

void frmFindDuplicates::ChooseRemoval(RemovalMethod method) {
    ChooseRemoveMethod(parts_.tools.messages, settings_, method);
}

void frmFindDuplicates::FilesToExclude() {
    frmDupeExclusions(parts_.tools, settings_, parts_.saveOptions, this).exec();
}

// The result does not fit what is asked for any more.
void frmFindDuplicates::ClearListBoxAndListview() {
    parts_.tools.reporter.GuardRun("frmFindDuplicates.ClearListBoxAndListview", [&] {
        const BusyState::Job job(busy_);
        finder_.Clear();
        ListsChanged();
        ShowFigures();
    });
}

void frmFindDuplicates::FindDupes() {
    Run run(*this);
    const DupeOutcome outcome = finder_.Find(DupeSearchOrder::Of(parts_.options));
    // A search that was refused has left everything as it was.
    if (outcome == DupeOutcome::Refused) return;
    finder_.Results().Sort(order_);
    finder_.Results().Filter(FromQString(txtFilter->text()));
    ListsChanged();
}

}  // namespace vantrel
