#include "filetools/forms/hex_command_table.h"

namespace vantrel {
namespace {

using enum CommandKind;

constexpr CommandEntry kHexMenus[] = {
    {Menu, "mnuFile", "", "&File"},
    {Command, "mnuFileOpen", "mnuFile", "&Open", "", "Ctrl+O"},
    {Command, "mnuFileSaveHexDump", "mnuFile", "&Save Hex Dump", "", "Ctrl+S"},
    {Command, "mnuFileExit", "mnuFile", "E&xit", "exit", "Ctrl+W"},

    {Menu, "mnuEdit", "", "&Edit"},
    {Command, "mnuEditCopyDigits", "mnuEdit", "Copy &Hex Digits", "copy", "Ctrl+C"},
    {Command, "mnuEditCopyText", "mnuEdit", "Copy &Text", "", "Ctrl+Shift+C"},
    {Command, "mnuEditCopyDump", "mnuEdit", "Copy &Dump", "", "Ctrl+Alt+C"},
    SeparatorIn("mnuEdit"),
    {Command, "mnuEditSelectAll", "mnuEdit", "Select &All", "", "Ctrl+A"},

    {Menu, "mnuSearch", "", "&Search"},
    {Command, "mnuSearchFindText", "mnuSearch", "&Find Text...", "find", "Ctrl+F"},
    {Command, "mnuSearchFindBytes", "mnuSearch", "Find &Bytes...", "", "Ctrl+B"},
    {Command, "mnuSearchFindNext", "mnuSearch", "Find &Next", "find-next", "F3"},
    {Command, "mnuSearchFindPrevious", "mnuSearch", "Find &Previous", "find-previous", "Shift+F3"},
    {Check, "mnuSearchIgnoreCase", "mnuSearch", "Ignore &Case of Text"},
    SeparatorIn("mnuSearch"),
    {Command, "mnuSearchGoToOffset", "mnuSearch", "&Go to Offset...", "", "Ctrl+G"},
    SeparatorIn("mnuSearch"),
    {Command, "mnuSearchFirstDiff", "mnuSearch", "First Difference", "", "Ctrl+F7"},
    {Command, "mnuSearchNextDiff", "mnuSearch", "Next &Difference", "next-difference", "F7"},
    {Command, "mnuSearchPreviousDiff", "mnuSearch", "P&revious Difference", "previous-difference",
     "Shift+F7"},
    {Command, "mnuSearchLastDiff", "mnuSearch", "Last Difference", "", "Ctrl+Shift+F7"},

    {Menu, "mnuExtras", "", "E&xtras"},
    {Command, "mnuExtrasReadAgain", "mnuExtras", "&Read Again", "", "F5"},
    SeparatorIn("mnuExtras"),
    {Command, "mnuExtrasOpenBeside", "mnuExtras", "Open a File &Beside...", "", "Ctrl+Shift+O"},
    {Command, "mnuExtrasCloseBeside", "mnuExtras", "&Close the File Beside", "", "Ctrl+Shift+W"},
    SeparatorIn("mnuExtras"),
    {Command, "mnuExtrasZoomIn", "mnuExtras", "Zoom &In", "", "Ctrl++"},
    {Command, "mnuExtrasZoomOut", "mnuExtras", "Zoom &Out", "", "Ctrl+-"},
    {Command, "mnuExtrasNormalSize", "mnuExtras", "&Normal Size", "", "Ctrl+0"},
};

}  // namespace

CommandTables HexDumpTables() {
    static constexpr std::string_view kBusyMenus[]{"mnuFile", "mnuEdit", "mnuSearch", "mnuExtras"};
    static constexpr OddRoutine kOddRoutines[]{{"mnuFileOpen", "frmHexDump.mnuFileOpenFile_Click"}};
    return {.menuBar = kHexMenus,
            .popups = {},
            .separate = {},
            .busyMenus = kBusyMenus,
            .window = "frmHexDump",
            .oddRoutines = kOddRoutines};
}

}  // namespace vantrel
