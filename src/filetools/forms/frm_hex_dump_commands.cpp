// What the commands of the menus do.
#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_hex_dump.h"
#include "filetools/forms/frm_hex_dump_run.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

struct frmHexDump::Handler {
    std::string_view command;
    void (frmHexDump::*run)();
    Needs needs = Needs::Nothing;
};

const std::vector<frmHexDump::Handler>& frmHexDump::Handlers() {
    using F = frmHexDump;
    using enum Needs;
    static const std::vector<Handler> handlers{
        {"mnuFileOpen", &F::mnuFileOpen_Click},
        {"mnuFileSaveHexDump", &F::mnuFileSaveHexDump_Click, File},
        {"mnuFileExit", &F::Exit},
        {"mnuEditCopyDigits", &F::CopyDigits, File},
        {"mnuEditCopyText", &F::CopyText, File},
        {"mnuEditCopyDump", &F::CopyDump, File},
        {"mnuEditSelectAll", &F::SelectAll, Bytes},
        {"mnuSearchFindText", &F::AskForTextAndFind, File},
        {"mnuSearchFindBytes", &F::AskForBytesAndFind, File},
        {"mnuSearchFindNext", &F::FindNext, Found},
        {"mnuSearchFindPrevious", &F::FindPrevious, Found},
        {"mnuSearchIgnoreCase", &F::FlipIgnoreCase},
        {"mnuSearchGoToOffset", &F::AskAndGoToOffset, Bytes},
        {"mnuSearchFirstDiff", &F::FirstDiff, Pair},
        {"mnuSearchNextDiff", &F::NextDiff, Pair},
        {"mnuSearchPreviousDiff", &F::PreviousDiff, Pair},
        {"mnuSearchLastDiff", &F::LastDiff, Pair},
        {"mnuExtrasReadAgain", &F::ReadAgain},
        {"mnuExtrasOpenBeside", &F::OpenBeside},
        {"mnuExtrasCloseBeside", &F::CloseBeside, Beside},
        {"mnuExtrasZoomIn", &F::ZoomIn},
        {"mnuExtrasZoomOut", &F::ZoomOut},
        {"mnuExtrasNormalSize", &F::NormalSize},
    };
    return handlers;
}

bool frmHexDump::CanRun(Needs needs) {
    switch (needs) {
        case Needs::Nothing:
            return true;
        case Needs::Bytes:
            return !contents_.IsEmpty();
        case Needs::File:
            return CurrentFile().Size() > 0;
        case Needs::Found:
            return CurrentFile().Size() > 0 && !wanted_.bytes.empty();
        case Needs::Pair:
            return contents_.IsPair();
        case Needs::Beside:
            return isBesideShown_;
    }
    return false;
}

void frmHexDump::EnableCommands() {
    for (const Handler& handler : Handlers())
        commands_.SetHandlerWhere(CanRun(handler.needs), handler.command,
                                  [this, run = handler.run] { (this->*run)(); });
}

void frmHexDump::AskAndOpen(Side side) {
    FileDialog dialog;
    dialog.title = "Load File";
    dialog.filter = "All Files (*.*)|*.*";
    const auto path = parts_.tools.messages.AskForFile(dialog);
    if (!path) return;
    OpenFile(side, *path);
    if (contents_.IsPair()) GoToDifference(0, SearchDirection::Forward, false);
}

bool frmHexDump::IsShownFile(const std::string& path) {
    FileInfo target;
    if (!parts_.tools.files.Stat(path, LinkPolicy::Follow, target).IsOk()) return false;
    for (const Side side : kBothSides)
        if (contents_.Has(side) && contents_.Files()[side].SeenAtOpening().id == target.id) return true;
    return false;
}

void frmHexDump::mnuFileSaveHexDump_Click() {
    FileDialog dialog;
    dialog.title = "Save Hex Dump";
    dialog.filter = "Text File (*.txt)|*.txt";
    dialog.save = true;
    const auto path = parts_.tools.messages.AskForFile(dialog);
    if (!path) return;
    if (IsShownFile(*path))
        return Tell("Save Hex Dump", "The dump cannot replace a file that is shown.", MessageIcon::Warning);
    {
        Run run(*this);
        ThrowIfFailed(SaveHexDump(parts_.tools, CurrentFile(), *path, run.Progress()));
    }
    Tell("Save", "The Hex Dump of the file has been saved.");
}

bool frmHexDump::CanCopy() {
    if (contents_.Selection().size <= kMostCopied) return true;
    Tell("Copy",
         "More than 4 MB are selected, which is too much for the clipboard.  Save the hex dump to a file.");
    return false;
}

void frmHexDump::CopyDigits() {
    if (!CanCopy()) return;
    QGuiApplication::clipboard()->setText(
        ToQString(HexDigitsOf(ReadBytes(CurrentFile(), contents_.Selection()))));
}

void frmHexDump::CopyText() {
    if (!CanCopy()) return;
    QGuiApplication::clipboard()->setText(
        ToQString(TextOfBytes(ReadBytes(CurrentFile(), contents_.Selection()))));
}

void frmHexDump::CopyDump() {
    if (!CanCopy()) return;
    const Run run(*this);
    QGuiApplication::clipboard()->setText(
        ToQString(DumpOfBytes(CurrentFile(), contents_.Selection(), parts_.tools.loop)));
}

void frmHexDump::SelectAll() {
    contents_.Select({0, contents_.Size()});
    SelectionChanged(Placing::AsFarAsItMust);
}

void frmHexDump::AskForTextAndFind() {
    const auto text = parts_.tools.messages.AskForText(
        "Find Text", "Enter search text.\r\n\r\nPress OK to begin searching from the current byte.",
        wanted_.isText ? wanted_.bytes : std::string());
    if (!text || text->empty()) return;
    wanted_ = {.title = "Find Text", .noun = "text", .bytes = *text, .isText = true};
    EnableCommands();
    Find(contents_.Cursor(), SearchDirection::Forward);
}

void frmHexDump::AskForBytesAndFind() {
    const auto digits =
        parts_.tools.messages.AskForText("Find Bytes",
                                         "Enter the bytes in hexadecimal digits, as in 48 65 6c.\r\n\r\n"
                                         "Press OK to begin searching from the current byte.",
                                         wanted_.isText ? std::string() : HexDigitsOf(wanted_.bytes));
    if (!digits || digits->empty()) return;
    const auto bytes = BytesFromHexDigits(*digits);
    if (!bytes)
        return Tell("Find Bytes", "Each byte is two hexadecimal digits, as in 48 65 6c.",
                    MessageIcon::Warning);
    wanted_ = {.title = "Find Bytes", .noun = "bytes", .bytes = *bytes};
    EnableCommands();
    Find(contents_.Cursor(), SearchDirection::Forward);
}

void frmHexDump::FindAgain(SearchDirection direction) {
    const std::uint64_t now = contents_.Cursor();
    if (direction == SearchDirection::Forward)
        Find(now + 1, direction);
    else if (now > 0)
        Find(now - 1, direction);
    else
        TellNotFound(direction);
}

void frmHexDump::Find(std::uint64_t from, SearchDirection direction) {
    std::optional<std::uint64_t> found;
    {
        Run run(*this);
        const bool exact = !wanted_.isText || !ignoresCase_;
        found = FindBytes(CurrentFile(), wanted_.bytes, from, direction,
                          exact ? SearchCase::Exact : SearchCase::Ignored, parts_.tools.loop, run.Progress());
    }
    if (!found) return TellNotFound(direction);
    contents_.Select({*found, wanted_.bytes.size()});
    SelectionChanged(Placing::Middle);
}

void frmHexDump::TellNotFound(SearchDirection direction) {
    const char* end = direction == SearchDirection::Forward ? "end" : "beginning";
    Tell(wanted_.title, std::string("The ") + wanted_.noun + " cannot be found between here and the " + end +
                            " of the file.");
}

void frmHexDump::AskAndGoToOffset() {
    const auto text = parts_.tools.messages.AskForText(
        "Go to Offset", "Enter the offset: decimal, or hexadecimal as in 0x1F.", {});
    if (!text || text->empty()) return;
    const auto offset = OffsetFromText(*text);
    if (!offset)
        return Tell("Go to Offset", "This is no offset.  Write it as 31 or as 0x1F.", MessageIcon::Warning);
    if (*offset >= contents_.Size())
        return Tell("Go to Offset",
                    "The last byte stands at offset " + std::to_string(contents_.Size() - 1) + ".");
    GoTo(*offset, SelectionStep::Move, Placing::Middle);
}

bool frmHexDump::GoToDifference(std::uint64_t from, SearchDirection direction, bool stepsOver) {
    std::optional<std::uint64_t> found;
    {
        Run run(*this);
        PerSide<BytesOfFile>& files = contents_.Files();
        EventLoopPort& loop = parts_.tools.loop;
        found = stepsOver ? FindOtherStretch(files, from, direction, loop, run.Progress())
                          : FindDifference(files, from, direction, loop, run.Progress());
    }
    if (found) GoTo(*found, SelectionStep::Move, Placing::Middle);
    return found.has_value();
}

void frmHexDump::FirstDiff() {
    if (!GoToDifference(0, SearchDirection::Forward, false))
        Tell("First Difference", "The files are identical");
}

void frmHexDump::NextDiff() {
    if (!GoToDifference(contents_.Cursor(), SearchDirection::Forward, true))
        Tell("Next Difference", "No more differences");
}

void frmHexDump::PreviousDiff() {
    if (!GoToDifference(contents_.Cursor(), SearchDirection::Backward, true))
        Tell("Previous Difference", "No more differences");
}

// Behind the last byte no stretch is stepped over.
void frmHexDump::LastDiff() {
    if (!GoToDifference(contents_.Size(), SearchDirection::Backward, true))
        Tell("Last Difference", "The files are identical");
}

void frmHexDump::ReadAgain() {
    const ByteRange selection = contents_.Selection();
    const Side current = CurrentSide();
    for (const Side side : kBothSides)
        if (const std::string path = txtFile[side]->Path(); !path.empty()) OpenFile(side, path);
    rtfHexDump[current]->setFocus();
    if (contents_.IsEmpty()) return;
    contents_.Select(selection);
    SelectionChanged(Placing::Middle);
}

void frmHexDump::CloseBeside() {
    ShowBeside(false);
    ContentsChanged();
    rtfHexDump[Side::Left]->setFocus();
}

}  // namespace vantrel
