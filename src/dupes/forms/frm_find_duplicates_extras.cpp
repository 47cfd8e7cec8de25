// Two files of a group, marks by rules, order and filter of the groups, export, and the way back from DUPES.
#include <QLineEdit>

#include "dupes/box_lines.h"
#include "dupes/forms/dupe_details_model.h"
#include "dupes/forms/dupe_groups_model.h"
#include "dupes/forms/dupe_preview.h"
#include "dupes/forms/frm_find_duplicates_run.h"
#include "dupes/forms/frm_restore_dupes.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr const char* kRestore = "Restore from DUPES";

std::string FailedLines(const DupesFolder::Restored& restored) {
    std::vector<std::string> lines;
    for (const auto& failed : restored.failed)
        lines.push_back(failed.file.original + ": " + failed.error.Description());
    return BoxLines(lines);
}

std::string RestoredText(const DupesFolder::Restored& restored) {
    std::string text = restored.done == 1 ? std::string("1 file was restored.")
                                          : std::to_string(restored.done) + " files were restored.";
    if (restored.cancelled) text += "\r\nThe rest was left in the DUPES folder, as you wished.";
    if (!restored.failed.empty())
        text += "\r\n\r\nThese files could not be restored:" + FailedLines(restored);
    if (!restored.unlogged.IsOk())
        text += "\r\n\r\nThe log of the DUPES folder could not be brought up to date: " +
                restored.unlogged.Description();
    return text;
}

}  // namespace

// Two that are selected; in a group of two either one stands for both.
std::optional<FindDuplicatesParts::Paths> frmFindDuplicates::TwoFilesFor(const char* title) {
    if (!FileFor(title)) return std::nullopt;
    std::vector<int> rows = SelectedRows();
    if (rows.size() < 2 && details_->rowCount() == 2) rows = {0, 1};
    if (rows.size() != 2) {
        Tell(title, "Select two files of the group.");
        return std::nullopt;
    }
    const FoundFiles& files = finder_.Results().Files();
    return FindDuplicatesParts::Paths{
        {files.PathOf(*details_->FileAt(rows[0])), files.PathOf(*details_->FileAt(rows[1]))}};
}

void frmFindDuplicates::CompareTwoFiles() {
    if (const auto paths = TwoFilesFor("Compare Two Files")) parts_.compareFiles(*paths, this);
}

void frmFindDuplicates::ShowDifferences() {
    if (const auto paths = TwoFilesFor("Show File Differences")) parts_.showDifferences(*paths, this);
}

void frmFindDuplicates::OpenTheFolder() {
    const auto file = FileFor("Open the Folder");
    if (!file) return;
    const FoundFiles& files = finder_.Results().Files();
    const std::string folder = WithoutTrailingSlash(files.FolderOf(files[*file]));
    if (!parts_.tools.files.FolderExists(folder) || !parts_.desktop.Explore(folder))
        Tell("Open the Folder", "The folder \"" + folder + "\" could not be opened.", MessageIcon::Warning);
}

void frmFindDuplicates::Export(DupeExportFormat format) {
    if (groups_->rowCount() == 0) return Tell("Export Groups", "There are no groups to be exported.");
    FileDialog dialog;
    dialog.title = "Export Groups";
    dialog.filter =
        format == DupeExportFormat::Csv ? "CSV Files (*.csv)|*.csv" : "JSON Files (*.json)|*.json";
    dialog.save = true;
    const auto path = parts_.tools.messages.AskForFile(dialog);
    if (!path) return;
    ThrowIfFailed(ExportGroups(parts_.tools.files, finder_.Results(), format, *path));
    Tell("Export Groups", std::to_string(finder_.Results().Shown().size()) + " groups have been exported.");
}

void frmFindDuplicates::RestoreFromDupes() {
    std::vector<StoredDupe> stored;
    ThrowIfFailed(removal_.Dupes().Read(stored));
    if (stored.empty())
        return Tell(kRestore, "There are no files in the DUPES folder that could be restored.");
    const std::vector<StoredDupe> chosen = frmRestoreDupes(parts_.tools, std::move(stored), this).ShowForm();
    if (chosen.empty()) return;
    DupesFolder::Restored restored;
    {
        const Run run(*this);
        restored = removal_.Dupes().Restore(chosen, parts_.wrappers.Shell(), *this);
    }
    const bool isWhole = restored.failed.empty() && restored.unlogged.IsOk();
    Tell(kRestore, RestoredText(restored), isWhole ? MessageIcon::Information : MessageIcon::Warning);
}

void frmFindDuplicates::MarkByPattern() {
    const auto pattern = parts_.tools.messages.AskForText(
        "Mark by Pattern",
        "Enter a pattern of file names, as in *.bak or *copy*.\r\n\r\n"
        "A pattern with a \"/\" in it stands for whole paths, as in */backup/*.",
        {});
    if (!pattern || pattern->empty()) return;
    Mark(MarkRule::ByPattern, *pattern);
}

// In the groups that are shown: the filter narrows it down.
void frmFindDuplicates::Mark(MarkRule rule, const std::string& pattern) {
    const MarkOrder order{rule, pattern, settings_.ProtectedFolders()};
    keepsMarks_ = true;
    const MarkReport report = MarkByRule(finder_.Results(), finder_.Results().Shown(), order);
    details_->Refresh();
    DetailsChanged();
    parts_.tools.messages.ShowInformationMessage("Mark Files", report.Text());
}

void frmFindDuplicates::UnmarkAll() {
    finder_.Results().UnmarkAll();
    keepsMarks_ = false;
    details_->Refresh();
    DetailsChanged();
}

// Without it only the group that is open has marks.
void frmFindDuplicates::FlipKeepMarks() {
    keepsMarks_ = !keepsMarks_;
    DupeResults& results = finder_.Results();
    if (!keepsMarks_)
        for (const std::uint32_t group : results.GroupsWithMarks())
            if (group != details_->Group())
                for (const std::uint32_t file : results.Group(group).members) results.Mark(file, false);
    ShowMarks();
}

void frmFindDuplicates::Sort(GroupOrder order) {
    order_ = order;
    finder_.Results().Sort(order);
    GroupsChanged();
}

void frmFindDuplicates::FilterChanged() {
    finder_.Results().Filter(FromQString(txtFilter->text()));
    GroupsChanged();
}

void frmFindDuplicates::FocusFilter() {
    txtFilter->setFocus();
    txtFilter->selectAll();
}

void frmFindDuplicates::FlipPreview() {
    picPreview->setVisible(picPreview->isHidden());
    ShowPreview();
}

}  // namespace vantrel
