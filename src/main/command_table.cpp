#include "main/command_table.h"

#include <array>
#include <stdexcept>
#include <string>

#include "settings/option_table.h"

namespace vantrel {
namespace {

using enum CommandKind;

// Its caption stands in the option table.
constexpr CommandEntry Toggle(std::string_view item, std::string_view parent) {
    return {Check, item, parent, {}};
}

constexpr CommandEntry kMainMenu[] = {
    {Menu, "mnuFile", "", "&File"},
    {Command, "mnuFileCompareDirectories", "mnuFile", "Compare &Folders", "compare-folders", "F5"},
    {Command, "mnuFileCompareParents", "mnuFile", "Compare the Parent Folders", "", "Alt+Up"},
    {Command, "mnuFileCompareFiles", "mnuFile", "Compare F&iles...", "compare-files"},
    {Command, "mnuFileFindDuplicateFiles", "mnuFile", "Find Duplicate Files...", "dupes"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileShowSubDirDiffs", "mnuFile", "Show Sub-Folder Differences..."},
    {Command, "mnuFileShowFileDiffs", "mnuFile", "Show File Differences"},
    SeparatorIn("mnuFile"),
    {Menu, "mnuFileSynchronize", "mnuFile", "Synchronize", "sync"},
    {Command, "mnuFileAutoSynch", "mnuFileSynchronize", "&Synchronize Folder Contents", "sync"},
    {Command, "mnuFileSyncSelectedObjects", "mnuFileSynchronize", "Synchronize Selected Object(s) Only"},
    {Menu, "mnuFileCopyRoot", "mnuFile", "Copy", "copy"},
    {Command, "mnuFileCopySelectedFilesToTargetDirectory", "mnuFileCopyRoot",
     "&Copy Selected Object(s) to Other Folder", "copy"},
    {Command, "mnuFileCopySelectedFilesToSpecifiedDirectory", "mnuFileCopyRoot",
     "Copy Selected Object(s) to Any Folder..."},
    {Menu, "mnuFileMoveRoot", "mnuFile", "Move", "move"},
    {Command, "mnuFileMoveSelectedFilesToTargetDirectory", "mnuFileMoveRoot",
     "&Move Selected Object(s) to Other Folder", "move"},
    {Command, "mnuFileMoveSelectedFilesToSpecifiedDirectory", "mnuFileMoveRoot",
     "Move Selected Object(s) to Any Folder..."},
    {Menu, "mnuFileDeleteRoot", "mnuFile", "Delete", "delete"},
    {Command, "mnuFileSendSelectedFilesToRecycleBin", "mnuFileDeleteRoot", "Send to Recycle &Bin", "delete",
     "Delete"},
    {Command, "mnuFileDeletePermanently", "mnuFileDeleteRoot", "Delete Permanently", "", "Shift+Delete"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileOpenFile", "mnuFile", "&Open Object"},
    {Command, "mnuFileHexDump", "mnuFile", "View Hex Dump of File"},
    {Command, "mnuFileShowFileProperties", "mnuFile", "P&roperties"},
    {Command, "mnuFileChangeFilename", "mnuFile", "Re&name File(s)/Folder(s)..."},
    {Command, "mnuSetDateTimeStamp", "mnuFile", "Set Date/Time of Selected File(s)"},
    {Command, "mnuSyncTimeStamp", "mnuFile", "Synchronize &Date/Time of Selected File with its Counterpart"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileAddToIncludeFilter", "mnuFile", "Add Selected Objects to Include Filter"},
    {Command, "mnuFileAddToExcludeFilter", "mnuFile", "Add Selected Objects to Exclude Filter"},
    {Command, "mnuFileAddExtensionToIncludeFilter", "mnuFile",
     "Add this File Extension to the Include Filter"},
    {Command, "mnuFileAddExtensionToExcludeFilter", "mnuFile",
     "Add this File Extension to the Exclude Filter"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileLoadSessionSettings", "mnuFile", "Load Session Settings..."},
    {Command, "mnuFileSaveSessionSettings", "mnuFile", "Save Session Settings As..."},
    {Command, "mnuFileRestoreDefaultSessionSettings", "mnuFile", "Restore Default Session Settings"},
    // Their captions are the paths of the sessions.
    {Menu, "mnuFileRecentSessions", "mnuFile", "Recent Sessions"},
    {Command, "mnuFileRecentSession(0)", "mnuFileRecentSessions", ""},
    {Command, "mnuFileRecentSession(1)", "mnuFileRecentSessions", ""},
    {Command, "mnuFileRecentSession(2)", "mnuFileRecentSessions", ""},
    {Command, "mnuFileRecentSession(3)", "mnuFileRecentSessions", ""},
    {Command, "mnuFileRecentSession(4)", "mnuFileRecentSessions", ""},
    {Command, "mnuFilePreviousSettings", "mnuFile", "Return to Previous Settings..."},
    SeparatorIn("mnuFile"),
    {Command, "mnuFilePrint", "mnuFile", "&Print...", "print"},
    {Command, "mnuFileSaveResults", "mnuFile", "Save Resul&ts As..."},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileExit", "mnuFile", "E&xit", "exit", "Ctrl+Q"},

    {Menu, "mnuOptions", "", "O&ptions"},
    {Menu, "mnuOptionsCompareType", "mnuOptions", "Comparison Method"},
    {Exclusive, "mnuOptionsCompareTypeQuick", "mnuOptionsCompareType", "Size and Date/Time"},
    {Exclusive, "mnuOptionsCompareTypeThoroughString", "mnuOptionsCompareType", "Contents"},
    {Exclusive, "mnuOptionsCompareTypeThoroughCRC", "mnuOptionsCompareType", "Cyclical Redundancy Check"},
    {Exclusive, "mnuOptionsCompareTypeSHA", "mnuOptionsCompareType", "SHA-1 Message Digest"},
    {Menu, "mnuOtherCompareOptions", "mnuOptions", "Other Comparison Options"},
    Toggle("mnuOptionsCompareSubFolders", "mnuOtherCompareOptions"),
    Toggle("mnuOptionsRemindAboutFATNTFSIssue", "mnuOtherCompareOptions"),
    Toggle("mnuOptionsIgnore2Sec", "mnuOtherCompareOptions"),
    Toggle("mnuOptionsIgnoreDaylightSavings", "mnuOtherCompareOptions"),
    SeparatorIn("mnuOtherCompareOptions"),
    {Command, "mnuOptionsChunkSize", "mnuOtherCompareOptions", "Chunk Size..."},
    {Menu, "mnuOptionsIncludeExcludeMain", "mnuOptions", "Include/Exclude"},
    Toggle("mnuOptionsExcludeSystemFiles", "mnuOptionsIncludeExcludeMain"),
    Toggle("mnuOptionsExcludeHiddenFiles", "mnuOptionsIncludeExcludeMain"),
    Toggle("mnuOptionsExcludeSystemFolders", "mnuOptionsIncludeExcludeMain"),
    Toggle("mnuOptionsExcludeHiddenFolders", "mnuOptionsIncludeExcludeMain"),
    SeparatorIn("mnuOptionsIncludeExcludeMain"),
    {Command, "mnuOptionsFilters", "mnuOptionsIncludeExcludeMain", "Include/Exclude Filters..."},
    {Menu, "mnuOptionsSynchronizeMethod", "mnuOptions", "Synchronization Method"},
    {Exclusive, "mnuOptionsSyncMakeRightSameAsLeft", "mnuOptionsSynchronizeMethod",
     "Make Right Folder Same as Left Folder"},
    {Exclusive, "mnuOptionsSyncMakeLeftSameAsRight", "mnuOptionsSynchronizeMethod",
     "Make Left Folder Same as Right Folder"},
    {Exclusive, "mnuOptionsSyncReplaceOlderCopyOrphans", "mnuOptionsSynchronizeMethod",
     "Replace Older Files and Copy Orphan Objects (bi-directional)"},
    {Exclusive, "mnuOptionsSyncAddOrphansToLeft", "mnuOptionsSynchronizeMethod",
     "Add Orphan Objects to Left Folder"},
    {Exclusive, "mnuOptionsSyncAddOrphansToRight", "mnuOptionsSynchronizeMethod",
     "Add Orphan Objects to Right Folder"},
    {Exclusive, "mnuOptionsSyncReplaceOlderInLeft", "mnuOptionsSynchronizeMethod",
     "Replace Older Files in Left Folder"},
    {Exclusive, "mnuOptionsSyncReplaceOlderInRight", "mnuOptionsSynchronizeMethod",
     "Replace Older Files in Right Folder"},
    {Exclusive, "mnuOptionsSyncCustomize", "mnuOptionsSynchronizeMethod", "Custom..."},
    {Menu, "mnuOptionsAutoCompare", "mnuOptions", "Auto Compare"},
    Toggle("mnuOptionsAutoCompareAfterFilter", "mnuOptionsAutoCompare"),
    Toggle("mnuOptionsAutoCompareAfterFileOp", "mnuOptionsAutoCompare"),
    Toggle("mnuOptionsAutoCompareAfterSync", "mnuOptionsAutoCompare"),
    Toggle("mnuOptionsAutoCompareAfterDateTimeChange", "mnuOptionsAutoCompare"),
    Toggle("mnuOptionsAutoCompareAfterCreationOfNewFolder", "mnuOptionsAutoCompare"),
    Toggle("mnuOptionsAutoCompareAfterCompareMethodChange", "mnuOptionsAutoCompare"),
    {Menu, "mnuOptionsConfirmations", "mnuOptions", "Confirmations"},
    Toggle("mnuOptionsConfirmCopy", "mnuOptionsConfirmations"),
    Toggle("mnuOptionsConfirmMove", "mnuOptionsConfirmations"),
    Toggle("mnuOptionsConfirmDelete", "mnuOptionsConfirmations"),
    Toggle("mnuOptionsConfirmSynchronize", "mnuOptionsConfirmations"),
    Toggle("mnuOptionsConfirmDateTimeChange", "mnuOptionsConfirmations"),
    {Menu, "mnuOptionsViewFileDiffs", "mnuOptions", "View File Difference Options"},
    Toggle("mnuOptionsViewFileDiffsPromptForOptions", "mnuOptionsViewFileDiffs"),
    Toggle("mnuOptionsViewFileDiffsIgnoreWhitespace", "mnuOptionsViewFileDiffs"),
    Toggle("mnuOptionsViewFileDiffsIgnoreCase", "mnuOptionsViewFileDiffs"),
    {Menu, "mnuOptionsFindDupes", "mnuOptions", "Find Duplicate Files Options"},
    {Menu, "mnuOptionsFindDupesCriteria", "mnuOptionsFindDupes", "Duplicate Criteria"},
    Toggle("mnuOptionsFindDupesCriteriaOpt(0)", "mnuOptionsFindDupesCriteria"),
    Toggle("mnuOptionsFindDupesCriteriaOpt(1)", "mnuOptionsFindDupesCriteria"),
    Toggle("mnuOptionsFindDupesCriteriaOpt(2)", "mnuOptionsFindDupesCriteria"),
    Toggle("mnuOptionsFindDupesCriteriaOpt(3)", "mnuOptionsFindDupesCriteria"),
    Toggle("mnuOptionsFindDupesCriteriaOpt(4)", "mnuOptionsFindDupesCriteria"),
    Toggle("mnuOptionsFindDupesCriteriaOpt(5)", "mnuOptionsFindDupesCriteria"),
    {Menu, "mnuOptionsFindDupesIgnore", "mnuOptionsFindDupes", "Ignore Options"},
    Toggle("mnuOptionsFindDupesIgnoreOpt(0)", "mnuOptionsFindDupesIgnore"),
    Toggle("mnuOptionsFindDupesIgnoreOpt(1)", "mnuOptionsFindDupesIgnore"),
    Toggle("mnuOptionsFindDupesIgnoreOpt(2)", "mnuOptionsFindDupesIgnore"),
    Toggle("mnuOptionsFindDupesIgnoreOpt(3)", "mnuOptionsFindDupesIgnore"),
    {Menu, "mnuOptionsFindDupesRemoval", "mnuOptionsFindDupes", "Removal Methods"},
    {Exclusive, "mnuOptionsFindDupesRemovalOpt(0)", "mnuOptionsFindDupesRemoval", "Delete Permanently"},
    {Exclusive, "mnuOptionsFindDupesRemovalOpt(1)", "mnuOptionsFindDupesRemoval", "Send To Recycle Bin"},
    {Exclusive, "mnuOptionsFindDupesRemovalOpt(2)", "mnuOptionsFindDupesRemoval", "Move to DUPES Folder"},
    {Exclusive, "mnuOptionsFindDupesRemovalOpt(3)", "mnuOptionsFindDupesRemoval", "Move to Other Folder..."},
    {Menu, "mnuOptionsFindDupesHashMethod", "mnuOptionsFindDupes", "Hash Method for Content Search"},
    {Exclusive, "mnuOptionsFindDupesHashMethodOpt(0)", "mnuOptionsFindDupesHashMethod", "CRC-16"},
    {Exclusive, "mnuOptionsFindDupesHashMethodOpt(1)", "mnuOptionsFindDupesHashMethod", "CRC-32"},
    {Exclusive, "mnuOptionsFindDupesHashMethodOpt(2)", "mnuOptionsFindDupesHashMethod", "MD5"},
    {Command, "mnuOptionsFindDupesFilesToExclude", "mnuOptionsFindDupes", "Files To Exclude..."},
    SeparatorIn("mnuOptions"),
    Toggle("mnuOptionsSoundOn", "mnuOptions"),
    {Command, "mnuOptionsChangeSounds", "mnuOptions", "Change Sounds..."},
    SeparatorIn("mnuOptions"),
    Toggle("mnuOptionsPromptForSyncMethod", "mnuOptions"),
    Toggle("mnuOptionsSyncScrolling", "mnuOptions"),
    Toggle("mnuOptionsShowGraphAfterCompare", "mnuOptions"),
    Toggle("mnuOptionsAutoCompleteFolderPath", "mnuOptions"),
    SeparatorIn("mnuOptions"),
    {Command, "frmOptionsMaintainFolderLists", "mnuOptions", "Maintain Folder Lists..."},
    {Command, "mnuOptionsAppearance", "mnuOptions", "Appearance..."},
    {Menu, "mnuOptionsToolbar", "mnuOptions", "Toolbar"},
    {Exclusive, "mnuOptionsToolbarHide", "mnuOptionsToolbar", "Hide Toolbar"},
    {Exclusive, "mnuOptionsToolbarShowCoolbar", "mnuOptionsToolbar", "Show Toolbar (Large Icons)"},
    {Exclusive, "mnuOptionsToolbarShowToolbar", "mnuOptionsToolbar", "Show Toolbar (Smaller Icons)"},
    SeparatorIn("mnuOptions"),
    {Command, "mnuOptionsRestoreDefaults", "mnuOptions", "Restore Default Options"},

    {Menu, "mnuSelect", "", "&Select"},
    {Command, "mnuSelectAll", "mnuSelect", "&Select All Objects", "", "Ctrl+A"},
    {Command, "mnuDeSelectAll", "mnuSelect", "&DeSelect All Objects", "", "Ctrl+D"},
    {Command, "mnuInvertSelection", "mnuSelect", "&Invert Selection"},
    {Command, "mnuSelectOther", "mnuSelect", "&Other..."},
    SeparatorIn("mnuSelect"),
    {Command, "mnuSelectShowNext", "mnuSelect", "Show &Next Selected Item"},
    {Command, "mnuSelectShowOnlySelected", "mnuSelect", "Show Only Selected Objects"},

    {Menu, "mnuView", "", "&View"},
    {Command, "mnuViewCompareResultsSummary", "mnuView", "Comparison &Results Summary"},
    {Command, "mnuViewErrorLog", "mnuView", "View Error Log"},
    {Command, "mnuViewSyncHistory", "mnuView", "&Synchronization History"},
    SeparatorIn("mnuView"),
    {Exclusive, "mnuViewViewAll", "mnuView", "View All Files and Folders"},
    {Exclusive, "mnuViewDifferences", "mnuView", "View Differences Only"},
    {Exclusive, "mnuViewSimilarities", "mnuView", "View Similiarities Only"},
    {Exclusive, "mnuViewOther", "mnuView", "Other..."},

    {Menu, "mnuHelp", "", "&Help"},
    {Command, "mnuHelpContents", "mnuHelp", "&Contents", "help", "F1"},
    {Command, "mnuHelpTroubleshooting", "mnuHelp", "&Troubleshooting"},
    {Menu, "mnuHelpVantrelOntheWeb", "mnuHelp", "Vantrel on the &Web"},
    {Command, "mnuHelpWebNews", "mnuHelpVantrelOntheWeb", "&Product News"},
    {Command, "mnuHelpWebFAQs", "mnuHelpVantrelOntheWeb", "Frequently Asked &Questions"},
    {Command, "mnuHelpWebFeedback", "mnuHelpVantrelOntheWeb", "Send Us Feedbac&k"},
    SeparatorIn("mnuHelp"),
    {Command, "mnuHelpAboutBox", "mnuHelp", "&About..."},
};

constexpr CommandEntry kPopups[] = {
    {Menu, "mnuFilePopup", "", ""},
    {Command, "mnuFilePopupShowDifferences", "mnuFilePopup", "Show File Differences", "", "",
     "mnuFileShowFileDiffs"},
    {Command, "mnuFilePopupCompareFiles", "mnuFilePopup", "Compare Files...", "compare-files", "",
     "mnuFileCompareFiles"},
    SeparatorIn("mnuFilePopup"),
    {Command, "mnuFilePopupSync", "mnuFilePopup", "Synchronize Selected Object(s)", "sync", "",
     "mnuFileSyncSelectedObjects"},
    {Menu, "mnuFilePopupCopy", "mnuFilePopup", "Copy", "copy"},
    {Command, "mnuFilePopupCopyToOtherFolder", "mnuFilePopupCopy", "Copy to Other Folder", "", "",
     "mnuFileCopySelectedFilesToTargetDirectory"},
    {Command, "mnuFilePopupCopyToAnyFolder", "mnuFilePopupCopy", "Copy to Any Folder...", "", "",
     "mnuFileCopySelectedFilesToSpecifiedDirectory"},
    {Menu, "mnuFilePopupMove", "mnuFilePopup", "Move", "move"},
    {Command, "mnuFilePopupMoveToOtherFolder", "mnuFilePopupMove", "Move to Other Folder", "", "",
     "mnuFileMoveSelectedFilesToTargetDirectory"},
    {Command, "mnuFilePopupMoveToAnyFolder", "mnuFilePopupMove", "Move to Any Folder...", "", "",
     "mnuFileMoveSelectedFilesToSpecifiedDirectory"},
    {Menu, "mnuFilePopupDelete", "mnuFilePopup", "Delete", "delete"},
    {Command, "mnuFilePopupRecycleBin", "mnuFilePopupDelete", "Send to Recycle Bin", "", "",
     "mnuFileSendSelectedFilesToRecycleBin"},
    {Command, "mnuFilePopupDeletePermanently", "mnuFilePopupDelete", "Delete Permanently", "", "",
     "mnuFileDeletePermanently"},
    SeparatorIn("mnuFilePopup"),
    {Command, "mnuFilePopupOpen", "mnuFilePopup", "&Open Object", "", "", "mnuFileOpenFile"},
    {Command, "mnuFilePopupHexDump", "mnuFilePopup", "View Hex Dump of File", "", "", "mnuFileHexDump"},
    {Command, "mnuFilePopupRename", "mnuFilePopup", "Rename File(s)", "", "", "mnuFileChangeFilename"},
    {Command, "mnuFilePopupSetDateTime", "mnuFilePopup", "Set Date/Time of Selected File(s)", "", "",
     "mnuSetDateTimeStamp"},
    {Command, "mnuFilePopupSyncFileDateTime", "mnuFilePopup",
     "Synchronize &Date/Time of Selected File with its Counterpart", "", "", "mnuSyncTimeStamp"},
    SeparatorIn("mnuFilePopup"),
    {Command, "mnuFilePopupAddToIncludeFilter", "mnuFilePopup", "Add Selected Objects to Include Filter", "",
     "", "mnuFileAddToIncludeFilter"},
    {Command, "mnuFilePopupAddToExcludeFilter", "mnuFilePopup", "Add Selected Objects to Exclude Filter", "",
     "", "mnuFileAddToExcludeFilter"},
    {Command, "mnuFilePopupAddExtToIncludeFilter", "mnuFilePopup",
     "Add this File Extension to the Include Filter", "", "", "mnuFileAddExtensionToIncludeFilter"},
    {Command, "mnuFilePopupAddExtToExcludeFilter", "mnuFilePopup",
     "Add this File Extension to the Exclude Filter", "", "", "mnuFileAddExtensionToExcludeFilter"},
    SeparatorIn("mnuFilePopup"),
    {Command, "mnuFilePopupProperties", "mnuFilePopup", "Properties", "", "", "mnuFileShowFileProperties"},

    {Menu, "mnuFolderPopup", "", ""},
    {Command, "mnuFolderPopupViewDifferences", "mnuFolderPopup", "Show Sub-Folder Differences"},
    SeparatorIn("mnuFolderPopup", "mnuFolderPopupHyphen0"),
    // The captions of the next two are completed when the menu pops up.
    {Command, "mnuGoToFolderThisSide", "mnuFolderPopup", "Change this side's folder to "},
    {Command, "mnuGoToFolderBothSidesRunCompare", "mnuFolderPopup", "Compare this sub-folder to "},
    {Command, "mnuCompareSubFolderToOtherFolder", "mnuFolderPopup",
     "Compare this sub-folder with another folder..."},
    SeparatorIn("mnuFolderPopup"),
    {Command, "mnuFolderPopupSync", "mnuFolderPopup", "Synchronize Selected Object(s)", "sync", "",
     "mnuFileSyncSelectedObjects"},
    {Menu, "mnuFolderPopupCopy", "mnuFolderPopup", "Copy", "copy"},
    {Command, "mnuFolderPopupCopyToOtherFolder", "mnuFolderPopupCopy", "Copy to Other Folder", "", "",
     "mnuFileCopySelectedFilesToTargetDirectory"},
    {Command, "mnuFolderPopupCopyToAnyFolder", "mnuFolderPopupCopy", "Copy to Any Folder...", "", "",
     "mnuFileCopySelectedFilesToSpecifiedDirectory"},
    {Menu, "mnuFolderPopupMove", "mnuFolderPopup", "Move", "move"},
    {Command, "mnuFolderPopupMoveToOtherFolder", "mnuFolderPopupMove", "Move to Other Folder", "", "",
     "mnuFileMoveSelectedFilesToTargetDirectory"},
    {Command, "mnuFolderPopupMoveToAnyFolder", "mnuFolderPopupMove", "Move to Any Folder...", "", "",
     "mnuFileMoveSelectedFilesToSpecifiedDirectory"},
    {Menu, "mnuFolderPopupDelete", "mnuFolderPopup", "Delete", "delete"},
    {Command, "mnuFolderPopupRecycleBin", "mnuFolderPopupDelete", "Send to Recycle Bin", "", "",
     "mnuFileSendSelectedFilesToRecycleBin"},
    {Command, "mnuFolderPopupDeletePermanently", "mnuFolderPopupDelete", "Delete Permanently", "", "",
     "mnuFileDeletePermanently"},
    SeparatorIn("mnuFolderPopup"),
    {Command, "mnuFolderPopupRename", "mnuFolderPopup", "Rename Folder(s)", "", "", "mnuFileChangeFilename"},
    SeparatorIn("mnuFolderPopup"),
    {Command, "mnuFolderPopupAddToIncludeFilter", "mnuFolderPopup", "Add Selected Objects to Include Filter",
     "", "", "mnuFileAddToIncludeFilter"},
    {Command, "mnuFolderPopupAddToExcludeFilter", "mnuFolderPopup", "Add Selected Objects to Exclude Filter",
     "", "", "mnuFileAddToExcludeFilter"},
    SeparatorIn("mnuFolderPopup"),
    {Command, "mnuFolderPopupExplore", "mnuFolderPopup", "Explore this sub-folder", "explore"},
    {Command, "mnuFolderPopupProperties", "mnuFolderPopup", "Properties", "", "",
     "mnuFileShowFileProperties"},

    {Menu, "mnuDiffFileDblClick", "", "DiffFileDblClick"},
    {Command, "mnuDblClickShowFileDiffs", "mnuDiffFileDblClick", "Show File Differences", "", "",
     "mnuFileShowFileDiffs"},
    {Command, "mnuDblClickFileOpen", "mnuDiffFileDblClick", "Open File", "", "", "mnuFileOpenFile"},

    {Menu, "mnuDiffSubDirDblClick", "", "DiffSubDirDblClick"},
    {Command, "mnuDblClickShowDiffs", "mnuDiffSubDirDblClick", "Show Sub-Folder Differences", "", "",
     "mnuFolderPopupViewDifferences"},
    {Command, "mnuDblClickExplore", "mnuDiffSubDirDblClick", "Explore this sub-folder", "explore", "",
     "mnuFolderPopupExplore"},
};

constexpr ToolbarEntry kToolbar[] = {
    {"mnuFileCompareDirectories", "compare-folders", 1, "Compare", 0, "Compare",
     "Compare the contents of two folders"},
    {"mnuFileCompareFiles", "compare-files", 2, "Compare Files", 1, "Compare", "Compare two files"},
    {"mnuFileFindDuplicateFiles", "dupes", 3, "Dupes", 10, "Dupes", "Find Duplicate Files"},
    {"mnuFileAutoSynch", "sync", 4, "Sync", 2, "Sync",
     "Automatically synchronize the contents of the two folders"},
    {"mnuFileCopySelectedFilesToTargetDirectory", "copy", 5, "Copy", 3, "Copy",
     "Copy the selected object(s) to the other folder"},
    {"mnuFileMoveSelectedFilesToTargetDirectory", "move", 6, "Move", 4, "Move",
     "Move the selected object(s) to the other folder"},
    {"mnuFileSendSelectedFilesToRecycleBin", "delete", 7, "Delete", 5, "Delete",
     "Send the selected object(s) to the Recycle Bin "},
    {kCommandOpenOptions, "options", 8, "Properties", 6, "Options", "View/Change program Options"},
    {"mnuFilePrint", "print", 9, "Print", 7, "Print", "Print out the compare results"},
    {"mnuFileExit", "exit", 10, "Exit", 8, "Exit", "Exit Vantrel"},
    {kCommandOpenHelp, "help", 11, "Help", 9, "Help",
     "Everything you ever wanted to know about Vantrel and Life"},
};

std::string_view CaptionOfToggle(std::string_view item) {
    for (const OptionLine& line : OptionTable())
        if (line.toggle.item == item) return line.toggle.caption;
    throw std::logic_error("no option has the item " + std::string(item));
}

}  // namespace

std::span<const CommandEntry> MainMenuEntries() {
    static const auto entries = [] {
        auto all = std::to_array(kMainMenu);
        for (CommandEntry& entry : all)
            if (entry.kind == Check) entry.caption = CaptionOfToggle(entry.name);
        return all;
    }();
    return entries;
}

std::span<const CommandEntry> PopupMenuEntries() {
    return kPopups;
}

std::span<const ToolbarEntry> ToolbarEntries() {
    return kToolbar;
}

CommandTables MainWindowTables() {
    static constexpr std::string_view kSeparate[]{kCommandOpenOptions, kCommandOpenHelp};
    static constexpr std::string_view kBusyMenus[]{"mnuFile", "mnuOptions", "mnuSelect", "mnuView",
                                                   "mnuHelp"};
    // F1 is heard in every window of the program (HelpKey).
    static constexpr std::string_view kWindowKeys[]{"mnuFileCompareDirectories", "mnuFileCompareParents",
                                                    "mnuFileExit"};
    static constexpr OddRoutine kOddRoutines[]{
        {kCommandOpenOptions, "frmMain.VTToolbar_ButtonClick"},
        {kCommandOpenHelp, "frmMain.VTToolbar_ButtonClick"},
        {"mnuFileChangeFilename", "frmMain.mnuFileChangeFilename"},
        {"mnuFileAddToIncludeFilter", "frMain.mnuFileAddToIncludeFilter"},
        {"mnuFileAddToExcludeFilter", "frMain.mnuFileAddToExcludeFilter"},
        {"mnuFileAddExtensionToIncludeFilter", "frMain.mnuFileAddExtensionToIncludeFilter"},
        {"mnuFileAddExtensionToExcludeFilter", "frMain.mnuFileAddExtensionToExcludeFilter"},
    };
    return {.menuBar = MainMenuEntries(),
            .popups = PopupMenuEntries(),
            .separate = kSeparate,
            .busyMenus = kBusyMenus,
            .window = "frmMain",
            .oddRoutines = kOddRoutines,
            .windowKeys = kWindowKeys};
}

}  // namespace vantrel
