#include "dupes/forms/dupe_command_table.h"

namespace vantrel {
namespace {

using enum CommandKind;

constexpr CommandEntry kMenus[] = {
    {Menu, "mnuFile", "", "Fil&e"},
    {Command, "mnuFileFindDupes", "mnuFile", "&Find Duplicates", "dupes", "F5"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileViewFile", "mnuFile", "&View File", "", "Ctrl+O"},
    {Command, "mnuFileRenameFile", "mnuFile", "Re&name File...", "", "F2"},
    {Command, "mnuFileCalculateCRC32", "mnuFile", "&Calculate CRC-32"},
    {Command, "mnuFileRemoveFiles", "mnuFile", "&Remove Checkmarked Files", "delete"},
    {Command, "mnuFileAddFileToExcludeList", "mnuFile", "&Add File to Exclude List"},
    {Command, "mnuFileProperties", "mnuFile", "File &Properties", "", "Alt+Return"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileCompareFiles", "mnuFile", "Compare &Two Files...", "compare-files"},
    {Command, "mnuFileShowFileDiffs", "mnuFile", "Show File &Differences", "", "Ctrl+D"},
    {Command, "mnuFileOpenFolder", "mnuFile", "&Open the Folder", "explore"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileExportCsv", "mnuFile", "&Export Groups as CSV..."},
    {Command, "mnuFileExportJson", "mnuFile", "Export Groups as &JSON..."},
    {Command, "mnuFileRestoreFromDupes", "mnuFile", "Re&store from DUPES..."},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileExit", "mnuFile", "E&xit", "exit", "Ctrl+W"},

    {Menu, "mnuOptions", "", "&Options"},
    {Menu, "mnuOptionsDupeCriteria", "mnuOptions", "Duplicate &Criteria"},
    {Check, "mnuOptionsDupeCriteriaOption(0)", "mnuOptionsDupeCriteria", "Names Match"},
    {Check, "mnuOptionsDupeCriteriaOption(1)", "mnuOptionsDupeCriteria", "Sizes Match"},
    {Check, "mnuOptionsDupeCriteriaOption(2)", "mnuOptionsDupeCriteria", "Create Date/Times Match"},
    {Check, "mnuOptionsDupeCriteriaOption(3)", "mnuOptionsDupeCriteria", "Last Modified Date/Times Match"},
    {Check, "mnuOptionsDupeCriteriaOption(4)", "mnuOptionsDupeCriteria", "Attributes Match"},
    {Check, "mnuOptionsDupeCriteriaOption(5)", "mnuOptionsDupeCriteria", "Contents Match"},
    {Menu, "mnuOptionsIgnore", "mnuOptions", "Ignore Options"},
    {Check, "mnuIgnoreOptions(0)", "mnuOptionsIgnore", "Ignore Zero Byte Files"},
    {Check, "mnuIgnoreOptions(1)", "mnuOptionsIgnore", "Ignore System Files"},
    {Check, "mnuIgnoreOptions(2)", "mnuOptionsIgnore", "Ignore Hidden Files"},
    {Check, "mnuIgnoreOptions(3)", "mnuOptionsIgnore", "Ignore Files in Windows Folder Tree"},
    {Menu, "mnuOptionsRemoval", "mnuOptions", "Removal Options"},
    {Exclusive, "mnuRemovalOptions(0)", "mnuOptionsRemoval", "Delete Permanently"},
    {Exclusive, "mnuRemovalOptions(1)", "mnuOptionsRemoval", "Send To Recycle Bin"},
    {Exclusive, "mnuRemovalOptions(2)", "mnuOptionsRemoval",
     "Move to DUPES Folder  (Original Path Info is Retained)"},
    {Exclusive, "mnuRemovalOptions(3)", "mnuOptionsRemoval", "Move to Other Folder..."},
    {Menu, "mnuOptionsHashMethod", "mnuOptions", "Hash Method for Content Search"},
    {Exclusive, "mnuHashMethodOption(0)", "mnuOptionsHashMethod", "CRC-16    [Fastest, Least Accurate]"},
    {Exclusive, "mnuHashMethodOption(1)", "mnuOptionsHashMethod", "CRC-32"},
    {Exclusive, "mnuHashMethodOption(2)", "mnuOptionsHashMethod", "MD5         [Slowest, Most Accurate]"},
    {Command, "mnuOptionsFilesToExclude", "mnuOptions", "Files to Exclude..."},

    {Menu, "mnuMark", "", "&Mark"},
    {Command, "mnuMarkAllButNewest", "mnuMark", "All but the &Newest"},
    {Command, "mnuMarkAllButOldest", "mnuMark", "All but the &Oldest"},
    {Command, "mnuMarkAllButFirst", "mnuMark", "All but the First in the Order of the &Folders"},
    {Command, "mnuMarkAllButShortest", "mnuMark", "All but the &Shortest Path"},
    {Command, "mnuMarkByPattern", "mnuMark", "By &Pattern..."},
    SeparatorIn("mnuMark"),
    {Command, "mnuMarkNothing", "mnuMark", "&Unmark All", "", "Ctrl+Shift+A"},
    {Check, "mnuMarkKeep", "mnuMark", "&Keep Marks in All Groups"},
    SeparatorIn("mnuMark"),
    {Check, "mnuMarkProtectFolder", "mnuMark", "P&rotect the Selected Folder of the List"},

    {Menu, "mnuView", "", "&View"},
    {Exclusive, "mnuViewOrder(0)", "mnuView", "Groups as &Found"},
    {Exclusive, "mnuViewOrder(1)", "mnuView", "Groups with the &Most Bytes First"},
    {Exclusive, "mnuViewOrder(2)", "mnuView", "Groups with the F&ewest Bytes First"},
    SeparatorIn("mnuView"),
    {Command, "mnuViewFilter", "mnuView", "Fil&ter the Groups", "find", "Ctrl+F"},
    {Check, "mnuViewPreview", "mnuView", "&Preview", "", "F11"},
};

constexpr CommandEntry Same(std::string_view name, std::string_view parent, std::string_view caption,
                            std::string_view sameAs) {
    return {Command, name, parent, caption, {}, {}, sameAs};
}

constexpr CommandEntry kPopups[] = {
    {Menu, "mnuDetails", "", ""},
    Same("mnuDetailsViewFile", "mnuDetails", "View File", "mnuFileViewFile"),
    Same("mnuDetailsRenameFile", "mnuDetails", "Rename File...", "mnuFileRenameFile"),
    {Command, "mnuDetailsRemoveFile", "mnuDetails", "Remove File"},
    Same("mnuDetailsAddFile", "mnuDetails", "Add File to Exclude List", "mnuFileAddFileToExcludeList"),
    Same("mnuDetailsProperties", "mnuDetails", "Properties", "mnuFileProperties"),
    SeparatorIn("mnuDetails"),
    Same("mnuDetailsCompareFiles", "mnuDetails", "Compare Two Files...", "mnuFileCompareFiles"),
    Same("mnuDetailsShowFileDiffs", "mnuDetails", "Show File Differences", "mnuFileShowFileDiffs"),
    Same("mnuDetailsOpenFolder", "mnuDetails", "Open the Folder", "mnuFileOpenFolder"),

    {Menu, "mnuFolders", "", ""},
    {Command, "mnuFoldersEdit", "mnuFolders", "Edit Folder Path..."},
    {Command, "mnuFoldersRemove", "mnuFolders", "Remove Selected Folder from List"},
    {Check,
     "mnuFoldersProtect",
     "mnuFolders",
     "Protect Folder (No Rule Marks a File in It)",
     {},
     {},
     "mnuMarkProtectFolder"},
};

}  // namespace

CommandTables FindDuplicatesTables() {
    static constexpr std::string_view kBusyMenus[]{"mnuFile", "mnuOptions", "mnuMark", "mnuView"};
    static constexpr OddRoutine kOddRoutines[]{{"mnuFileFindDupes", "frmFindDuplicates.cmdFindDupes_Click"},
                                               {"mnuFileCalculateCRC32", "frmFindDuplicates.cmdCRC32_Click"},
                                               {"mnuFoldersEdit", "frmFindDuplicates.lstFolders_DblClick"}};
    return {.menuBar = kMenus,
            .popups = kPopups,
            .separate = {},
            .busyMenus = kBusyMenus,
            .window = "frmFindDuplicates",
            .oddRoutines = kOddRoutines};
}

}  // namespace vantrel
