// What the commands of the menus do.
#include <utility>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_file_diffs.h"
#include "filetools/forms/frm_file_diffs_run.h"
#include "filetools/mod_file_diffs.h"
#include "platform/names/paths.h"
#include "views/forms/frm_print_options.h"

namespace vantrel {

struct frmFileDiffs::Handler {
    std::string_view command;
    void (frmFileDiffs::*run)();
    Needs needs = Needs::Nothing;
};

const std::vector<frmFileDiffs::Handler>& frmFileDiffs::Handlers() {
    using F = frmFileDiffs;
    using enum Needs;
    static const std::vector<Handler> handlers{
        {"mnuFileSelectFileOne", &F::SelectFileOne},
        {"mnuFileSelectFileTwo", &F::SelectFileTwo},
        {"mnuFileCompare", &F::mnuFileCompare_Click},
        {"mnuFileShowFirstDiff", &F::ShowFirstDiff, Result},
        {"mnuFileShowNextDiff", &F::ShowNextDiff, Result},
        {"mnuFileShowPreviousDiff", &F::ShowPreviousDiff, Result},
        {"mnuFileShowLastDiff", &F::ShowLastDiff, Result},
        {"mnuFileFind", &F::AskAndFind, Result},
        {"mnuFileFindNext", &F::FindNext, Found},
        {"mnuFileFindPrevious", &F::FindPrevious, Found},
        {"mnuFileToggleBookmark", &F::ToggleBookmark, Result},
        {"mnuFileNextBookmark", &F::NextBookmark, Bookmark},
        {"mnuFilePreviousBookmark", &F::PreviousBookmark, Bookmark},
        {"mnuFileClearAllBookmarks", &F::ClearAllBookmarks, Bookmark},
        {"mnuFilePrint", &F::mnuFilePrint_Click, Result},
        {"mnuFileGoBack", &F::GoBack},
        {"mnuOptionsIgnoreCase", &F::FlipIgnoreCase},
        {"mnuOptionsIgnoreWhitespace", &F::FlipIgnoreWhitespace},
        {"mnuViewFileOneUseNotepad", &F::ViewFileOneUseNotepad},
        {"mnuViewFileOneUseAssociated", &F::ViewFileOneUseAssociated},
        {"mnuViewFileTwoUseNotepad", &F::ViewFileTwoUseNotepad},
        {"mnuViewFileTwoUseAssociated", &F::ViewFileTwoUseAssociated},
        {"mnuExtrasSaveAsPatch", &F::SaveAsPatch, Result},
        {"mnuExtrasGoToMoved", &F::GoToMoved, Moved},
        {"mnuExtrasInlineDifferences", &F::FlipInlineDifferences},
        {"mnuExtrasWrapLines", &F::FlipWrapLines},
        {"mnuExtrasFoldEqualLines", &F::FlipFoldEqualLines},
        {"mnuExtrasZoomIn", &F::ZoomIn},
        {"mnuExtrasZoomOut", &F::ZoomOut},
        {"mnuExtrasNormalSize", &F::NormalSize},
    };
    return handlers;
}

bool frmFileDiffs::CanRun(Needs needs) const {
    switch (needs) {
        case Needs::Nothing:
            return true;
        case Needs::Result:
            return HasResult();
        case Needs::Bookmark:
            return HasResult() && !contents_.bookmarks.IsEmpty();
        case Needs::Found:
            return HasResult() && found_;
        case Needs::Moved:
            return HasResult() && !contents_.moved.All().empty();
    }
    return false;
}

void frmFileDiffs::EnableCommands() {
    for (const Handler& handler : Handlers())
        commands_.SetHandlerWhere(CanRun(handler.needs), handler.command,
                                  [this, run = handler.run] { (this->*run)(); });
}

void frmFileDiffs::SelectFile(Side side) {
    const std::string now = txtFile[side]->Path();
    FileDialog dialog;
    dialog.title = side == Side::Left ? "Select File One" : "Select File Two";
    dialog.filter = "All Files (*.*)|*.*";
    if (!now.empty() && parts_.tools.files.FileExists(now)) dialog.startFolder = GetParentFolderName(now);
    if (const auto path = parts_.tools.messages.AskForFile(dialog)) txtFile[side]->SetPath(*path);
}

std::int32_t frmFileDiffs::GetNextDiff() const {
    return busy_.IsBusy() || !HasResult() ? kNotNow : contents_.grids.Rows().NextDiff(CurrentRow());
}

std::int32_t frmFileDiffs::GetPreviousDiff() const {
    return busy_.IsBusy() || !HasResult() ? kNotNow : contents_.grids.Rows().PreviousDiff(CurrentRow());
}

std::int32_t frmFileDiffs::GetNextBookmark() const {
    return busy_.IsBusy() ? kNotNow : contents_.bookmarks.Next(CurrentRow());
}

std::int32_t frmFileDiffs::GetPreviousBookmark() const {
    return busy_.IsBusy() ? kNotNow : contents_.bookmarks.Previous(CurrentRow());
}

void frmFileDiffs::GoOrTell(std::int32_t row, const char* title, const char* text) {
    if (row > 0)
        ShowSelectedRows(row);
    else if (isVisible())
        Tell(title, text);
}

void frmFileDiffs::ShowFirstDiff() {
    const auto& blocks = contents_.grids.Rows().Blocks();
    if (!blocks.empty()) ShowSelectedRows(blocks.front().row);
}

void frmFileDiffs::ShowLastDiff() {
    const auto& blocks = contents_.grids.Rows().Blocks();
    if (!blocks.empty()) ShowSelectedRows(blocks.back().row);
}

void frmFileDiffs::ShowNextDiff() {
    GoOrTell(GetNextDiff(), "Next Difference", "No more differences");
}

void frmFileDiffs::ShowPreviousDiff() {
    GoOrTell(GetPreviousDiff(), "Previous Difference", "No more differences");
}

void frmFileDiffs::NextBookmark() {
    GoOrTell(GetNextBookmark(), "Next Bookmark", "No more bookmarks");
}

void frmFileDiffs::PreviousBookmark() {
    GoOrTell(GetPreviousBookmark(), "Previous Bookmark", "No more bookmarks");
}

void frmFileDiffs::ToggleBookmark() {
    contents_.bookmarks.Toggle(CurrentRow());
    MarkCurrentRowInGrid();
    MarkCurrentRowInDiffsBar();
    EnableCommands();
}

void frmFileDiffs::ClearAllBookmarks() {
    contents_.bookmarks.Clear();
    MarkCurrentRowInGrid();
    EnableCommands();
}

bool frmFileDiffs::Find(const std::string& text, FindDirection direction, std::int32_t& foundRow) {
    const Run run(*this);
    const auto found = contents_.grids.Find(text, direction, CurrentRow(), [this] {
        parts_.tools.loop.Yield();
        if (parts_.tools.loop.CancelRequested()) throw Cancelled();
    });
    if (found) foundRow = *found;
    return found.has_value();
}

void frmFileDiffs::mnuFilePrint_Click() {
    PerSide<PrintedGrid> grids;
    for (const Side side : kBothSides)
        grids[side] = {&contents_.grids, side, contents_.grids.Diff()->texts[side].path};
    frmPrintOptions options({.tools = parts_.tools,
                             .activeWindow = "frmFileDiffs",
                             .printGrids =
                                 [&](const PerSide<bool>& wanted, const PrintHeader& header, Paper& paper) {
                                     return PrintFileDiffs(parts_.tools, grids, wanted, header, paper);
                                 },
                             .showHelp = parts_.showHelp},
                            this);
    // What is printed stays until it is.
    const BusyState::Job job(busy_);
    options.ShowForm();
}

void frmFileDiffs::AskAndFind() {
    const auto text = parts_.tools.messages.AskForText(
        "Find", "Enter search text.\r\n\r\nPress OK to begin searching from the current line.",
        findHistory_.empty() ? std::string() : findHistory_.back());
    if (!text || text->empty()) return;
    std::int32_t row = 0;
    found_ = Find(*text, FindDirection::Both, row);
    if (found_) {
        findHistory_.push_back(*text);
        ShowSelectedRows(row);
    } else {
        Tell("Find", CurrentRow() != 1
                         ? "Search text was not found.  Try searching from the beginning of the file."
                         : "Search text was not found.");
    }
    EnableCommands();
}

void frmFileDiffs::FindAgain(FindDirection direction) {
    std::int32_t row = 0;
    if (findHistory_.empty()) return;
    if (Find(findHistory_.back(), direction, row))
        ShowSelectedRows(row);
    else
        Tell("Find", "Search text not found");
}

// The result stays as it is until the next comparison.
void frmFileDiffs::FlipIgnoreCase() {
    parts_.options.SetIgnoreCase(!parts_.options.IgnoreCase());
}

void frmFileDiffs::FlipIgnoreWhitespace() {
    parts_.options.SetIgnoreWhitespace(!parts_.options.IgnoreWhitespace());
}

bool frmFileDiffs::LoadFileInNotepad(const std::string& path) {
    bool started = false;
    parts_.tools.reporter.Guard("modFreeDiff.LoadFileInNotepad",
                                [&] { started = parts_.desktop.OpenInTextEditor(path); });
    return started;
}

void frmFileDiffs::ViewInNotepad(Side side) {
    const std::string path = txtFile[side]->Path();
    if (path.empty() || !parts_.tools.files.FileExists(path))
        return Tell("View File in Notepad",
                    side == Side::Left ? "File One does not exist." : "File Two does not exist.",
                    MessageIcon::Warning);
    if (!LoadFileInNotepad(path)) Tell("View File in Notepad", "Unable to show the file in the Notepad.");
}

bool frmFileDiffs::ShowFileInAssociatedProgram(const std::string& path) {
    bool shown = false;
    parts_.tools.reporter.Guard("frmFileDiffs.ShowFileInAssociatedProgram",
                                [&] { shown = parts_.desktop.OpenFile(path); });
    return shown;
}

void frmFileDiffs::ViewInAssociatedProgram(Side side) {
    const std::string path = txtFile[side]->Path();
    if (path.empty() || !parts_.tools.files.FileExists(path))
        return Tell("View File in Associated Program",
                    side == Side::Left ? "File One does not exist." : "File Two does not exist.",
                    MessageIcon::Warning);
    if (ShowFileInAssociatedProgram(path)) return;
    const MessageAnswer answer = parts_.tools.messages.Ask(
        {.title = "View File in Associated Program",
         .text = "Unable to show the file in the associated program.\r\n"
                 "Make sure that a program has been associated with files of this type.\r\n\r\n"
                 "Would you like to view the file in Notepad?",
         .icon = MessageIcon::Question,
         .buttons = MessageButtons::YesNo});
    if (answer == MessageAnswer::Yes) ViewInNotepad(side);
}

}  // namespace vantrel
