#include "main/sub_dir_command_table.h"

namespace vantrel {
namespace {

using enum CommandKind;

constexpr CommandEntry kMenus[] = {
    {Menu, "mnuFile", "", "&File"},
    {Command, "mnuFileShowDifferences", "mnuFile", "Show File Differences"},
    {Command, "mnuFileCompareFiles", "mnuFile", "Compare Two Files...", "compare-files"},
    SeparatorIn("mnuFile"),
    {Menu, "mnuFileSynchronize", "mnuFile", "Synchronize", "sync"},
    {Command, "mnuFileSynchronizeSubFolders", "mnuFileSynchronize", "Synchronize the Sub-Folders", "sync"},
    {Command, "mnuFileSynchronizeSelectedFiles", "mnuFileSynchronize", "Synchronize Selected Files Only"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileCopy", "mnuFile", "Copy the Selected Files", "copy"},
    {Command, "mnuFileMove", "mnuFile", "Move the Selected Files", "move"},
    {Menu, "mnuFileDelete", "mnuFile", "Delete the Selected Files", "delete"},
    {Command, "mnuFileDeleteRecycle", "mnuFileDelete", "Send To Recycle Bin", "delete", "Delete"},
    {Command, "mnuFileDeletePermanently", "mnuFileDelete", "Delete Permanently", "", "Shift+Delete"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFilePrint", "mnuFile", "Print...", "print"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileClose", "mnuFile", "<-- Back to Main Window", "exit", "Ctrl+W"},

    {Menu, "mnuSelect", "", "&Select"},
    {Command, "mnuSelectAll", "mnuSelect", "Select All", "", "Ctrl+A"},
    {Command, "mnuSelectDeselectAll", "mnuSelect", "DeSelect All", "", "Ctrl+D"},
    {Command, "mnuSelectInvert", "mnuSelect", "Invert Selection"},
    SeparatorIn("mnuSelect"),
    {Command, "mnuSelectNewer", "mnuSelect", "Select Newer Files"},
    {Command, "mnuSelectOlder", "mnuSelect", "Select Older Files"},
    {Command, "mnuSelectOrphans", "mnuSelect", "Select Orphan Files"},
    {Command, "mnuSelectBinary", "mnuSelect", "Select Files with Same Date/Time but Different Contents"},

    {Menu, "mnuExtras", "", "E&xtras"},
    {Command, "mnuExtrasFilter", "mnuExtras", "&Filter by Name", "", "Ctrl+F"},
    {Command, "mnuExtrasHelp", "mnuExtras", "&Help", "help", "F1"},
};

constexpr ToolbarEntry kSubDirToolbar[] = {
    {"mnuFileCompareFiles", "compare-files", 1, "Compare", 0, "Compare", "Compare the two files of the row"},
    {"mnuFileSynchronizeSubFolders", "sync", 2, "Sync", 1, "Sync",
     "Automatically synchronize the contents of the two sub-folders"},
    {"mnuFileCopy", "copy", 3, "Copy", 2, "Copy", "Copy the selected files to the other sub-folder"},
    {"mnuFileMove", "move", 4, "Move", 3, "Move", "Move the selected files to the other sub-folder"},
    {kCommandDeleteByButton, "delete", 5, "Delete", 4, "Delete",
     "Send the selected files to the Recycle Bin; with Shift, delete them permanently"},
    {"mnuFilePrint", "print", 6, "Print", 5, "Print", "Print out the differences"},
    {"mnuFileClose", "exit", 7, "Exit", 6, "Exit", "Back to the main window"},
};

}  // namespace

CommandTables SubDirDiffsTables() {
    static constexpr std::string_view kSeparate[]{kCommandDeleteByButton};
    static constexpr std::string_view kBusyMenus[]{"mnuFile", "mnuSelect", "mnuExtras"};
    static constexpr OddRoutine kOddRoutines[]{
        {kCommandDeleteByButton, "frmSubDirDiffs.SubDirDiffsToolbar_ButtonClick"}};
    return {.menuBar = kMenus,
            .popups = {},
            .separate = kSeparate,
            .busyMenus = kBusyMenus,
            .window = "frmSubDirDiffs",
            .oddRoutines = kOddRoutines};
}

std::span<const ToolbarEntry> SubDirDiffsToolbarEntries() {
    return kSubDirToolbar;
}

}  // namespace vantrel
