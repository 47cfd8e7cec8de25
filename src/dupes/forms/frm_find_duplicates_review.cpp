// What is done with the files of the groups.
#include <QLabel>
#include <QTableView>

#include "dupes/forms/dupe_details_model.h"
#include "dupes/forms/dupe_groups_model.h"
#include "dupes/forms/frm_find_duplicates_run.h"

namespace vantrel {

std::optional<std::uint32_t> frmFindDuplicates::FileFor(const char* title) {
    const auto file = SelectedFile();
    if (!file) Tell(title, "No file has been selected.");
    return file;
}

// Of several selected rows all become what the first of them is not.
void frmFindDuplicates::FlipMarksOfSelection() {
    std::vector<int> rows = SelectedRows();
    if (rows.empty() && lvwDupeDetails->currentIndex().isValid())
        rows.push_back(lvwDupeDetails->currentIndex().row());
    if (rows.empty()) return;
    const bool marked = !details_->IsMarked(rows.front());
    details_->Mark(rows, marked);
}

void frmFindDuplicates::CalculateCrc() {
    if (details_->rowCount() == 0) {
        parts_.tools.messages.ShowInformationMessage("Compare Contents", "Select a group of duplicates.");
        return;
    }
    const Run run(*this);
    struct Status {
        frmFindDuplicates& form;
        std::string before = form.status_;
        ~Status() { form.SetStatus(before); }
    } const status{*this};
    const FoundFiles& files = finder_.Results().Files();
    for (int row = 0; row < details_->rowCount(); ++row) {
        SetBar(row, details_->rowCount());
        const std::uint32_t file = *details_->FileAt(row);
        details_->SetCrc32(file, CalculateCrc32(parts_.tools, files, files[file], *this));
    }
}

// With the marks of the open group alone they are those that the user sees; with those of all groups it is
// told how many there are.
std::vector<std::uint32_t> frmFindDuplicates::GroupsToRemoveFrom() {
    if (keepsMarks_) return finder_.Results().GroupsWithMarks();
    return details_->Group() ? std::vector{*details_->Group()} : std::vector<std::uint32_t>();
}

bool frmFindDuplicates::AgreesToGroups(const std::vector<std::uint32_t>& groups) {
    if (groups.size() < 2) return true;
    return parts_.tools.messages.Ask(
               {.title = "Remove Files",
                .text = finder_.Results().Totals().Text() + "\r\n\r\nThe marked files are in " +
                        std::to_string(groups.size()) + " groups.  Do you want to remove all of them?",
                .icon = MessageIcon::Question,
                .buttons = MessageButtons::YesNo,
                .defaultAnswer = MessageAnswer::No}) == MessageAnswer::Yes;
}

void frmFindDuplicates::RemoveMarked() {
    const std::vector<std::uint32_t> groups = GroupsToRemoveFrom();
    if (!AgreesToGroups(groups)) return;
    {
        const Run run(*this);
        const RemovalReport report = removal_.RemoveMarkedFiles(finder_.Results(), groups, settings_);
        if (!report.begun) return;
    }
    details_->Refresh();
    GroupsChanged();
    DetailsChanged();
}

// With any other marks that stand.
void frmFindDuplicates::RemoveSelected() {
    if (!FileFor("Remove File")) return;
    details_->Mark(SelectedRows(), true);
    RemoveMarked();
}

void frmFindDuplicates::ViewFile() {
    if (const auto file = FileFor("View File"))
        OpenFile(parts_.shellCalls, finder_.Results().Files().PathOf(*file));
}

void frmFindDuplicates::RenameFile() {
    const auto file = FileFor("Rename File");
    if (!file) return;
    const BusyState::Job job(busy_);
    DupeResults& results = finder_.Results();
    switch (RenameDupeFile(parts_.tools, parts_.wrappers, results, *details_->Group(), *file)) {
        case DupeRename::NotDone:
            return;
        case DupeRename::Renamed:
            details_->FileChanged(*file);
            return;
        case DupeRename::LeftGroup:
            SetStatus(results.StatusText());
            details_->Refresh();
            GroupsChanged();
            DetailsChanged();
            return;
    }
}

void frmFindDuplicates::AddFileToExcludes() {
    if (const auto file = FileFor("Add File to Exclude List"))
        AddFileToExcludeList(parts_.tools, settings_, finder_.Results().Files()[*file].name);
}

void frmFindDuplicates::FileProperties() {
    if (const auto file = FileFor("Show Property Page"))
        ShowProperties(parts_.shellCalls, finder_.Results().Files().PathOf(*file));
}

}  // namespace vantrel
