#include "main/option_boxes.h"

#include <array>
#include <stdexcept>
#include <string>

namespace vantrel {
namespace {

using enum OptionTab;

constexpr OptionTabInfo kTabs[] = {
    {General, "General", "options.html#general"},
    {Compare, "Compare", "options.html#method"},
    {IncludeExclude, "Include/Exclude", "options.html#filters"},
    {Synchronize, "Synchronize", "options.html#custom-table"},
    {Sounds, "Sounds", "options.html#sounds"},
    {Appearance, "Appearance", "options.html#appearance"},
    {ViewFileDiffs, "View File Diffs", "options.html#file-differences"},
    {FindDupes, "Find Dupes", "options.html#duplicates"},
    {Extras, "Extras", "options.html#extras"},
};
static_assert(std::size(kTabs) == kOptionTabs);

// A toggle of the menu: the rest stands in its line of the option table.
constexpr OptionBox Toggle(OptionTab tab, std::string_view key, std::string_view control,
                           std::string_view tip) {
    return {key, tab, control, {}, {}, tip};
}

constexpr OptionBox Extra(std::string_view key, std::string_view control, std::string_view caption,
                          std::string_view tip) {
    return {key, Extras, control, caption, "options.html#extras", tip};
}

constexpr OptionBox Cell(std::string_view key, std::string_view control, std::string_view caption,
                         std::string_view tip) {
    return {key, Synchronize, control, caption, "options.html#custom-table", tip};
}

constexpr OptionBox Sound(std::string_view key, std::string_view event, std::string_view tip) {
    return {key, Sounds, "lvwEvents", event, "options.html#sounds", tip};
}

constexpr std::string_view kNewTip = "What is done with files that are newer than their counterparts.";
constexpr std::string_view kOldTip = "What is done with files that are older than their counterparts.";
constexpr std::string_view kOrphanTip = "What is done with files and sub-folders that have no counterpart.";
constexpr std::string_view kBinaryTip =
    "What is done with files that have the same date and other contents than their counterparts.";

constexpr auto kBoxes = std::to_array<OptionBox>({
    Toggle(General, "ShowCopyConfirmations", "chkConfirmCopy", "Asks before objects are copied."),
    Toggle(General, "ShowMoveConfirmations", "chkConfirmMove", "Asks before objects are moved."),
    Toggle(General, "ShowDeleteConfirmations", "chkConfirmDelete",
           "Asks before objects are deleted or sent to the Recycle Bin."),
    Toggle(General, "ShowSynchronizeConfirmations", "chkConfirmSynchronize",
           "Shows all that a synchronisation will do before it does it."),
    Toggle(General, "ShowDateTimeChangeConfirmations", "chkConfirmDateTimeChange",
           "Asks before the date and time of files is changed."),
    Toggle(General, "AutoCompareAfterFilter", "chkAutoCompareAfterFilterChange",
           "Compares again once the filters are others; otherwise the result goes away."),
    Toggle(General, "AutoCompareAfterFileOp", "chkAutoCompareAfterFileOp",
           "Compares again after objects were copied, moved or deleted; otherwise the result goes away."),
    Toggle(General, "AutoCompareAfterSync", "chkAutoCompareAfterSynchronization",
           "Compares again after a synchronisation; otherwise the result goes away."),
    Toggle(General, "AutoCompareAfterDateTimeChange", "chkAutoCompareAfterDateTimeChange",
           "Compares again after names, dates or times were changed; otherwise the result goes away."),
    Toggle(General, "AutoCompareAfterCreationOfNewFolder", "chkAutoCompareAfterNewSubFolder",
           "Compares again after a sub-folder was made; otherwise the result goes away."),
    Toggle(General, "AutoCompareAfterCompareMethodChange", "chkAutoCompareAfterCompareMethodChange",
           "Compares again once files are compared in another way; otherwise the result goes away."),
    Toggle(General, "SyncScrolling", "chkSyncScrolling",
           "Keeps both panes at the same rows, whichever of them is scrolled."),
    Toggle(General, "ShowGraphAfterCompare", "chkAutoShowGraphAfterCompare",
           "Shows the summary of a comparison at its end."),
    Toggle(General, "PromptForSyncMethod", "chkPromptForSyncMethod",
           "Asks for the method before each synchronisation."),
    Toggle(General, "AutoCompleteFolderPath", "chkAutoCompleteFolderPath",
           "Proposes the folder that begins with what is typed in a path box."),

    {"CompareType", Compare, "optComparisonMethod", "Comparison Method", "options.html#method",
     "How two files of the same name are found to be alike."},
    {"ChunkSize", Compare, "txtChunkSize", "Chunk Size", "options.html#chunk-size",
     "How many bytes of each file are read at a time, from 1 to 10,000,000."},
    Toggle(Compare, "CompareSubFolders", "chkCompareSubFolders",
           "Compares all that is below the sub-folders as well."),
    Toggle(Compare, "RemindAboutFATNTFSIssue", "chkRemindAboutFATNTFSIssue",
           "Tells when the file systems of the two folders keep file times differently."),
    Toggle(Compare, "Ignore2SecDiff", "chkIgnore2SecDiff",
           "Takes times that are up to 2 seconds apart for equal between such file systems."),
    Toggle(Compare, "IgnoreDaylightSavings", "chkIgnoreDaylightSavings",
           "Takes times that are an hour apart for equal between such file systems."),

    {"IncludeFileTypes", IncludeExclude, "lstIncludeFilters", "File Types to Include", "options.html#filters",
     "Only what one of these patterns fits is compared; with none, everything is."},
    {"ExcludeFileTypes", IncludeExclude, "lstExcludeFilters", "File Types to Exclude", "options.html#filters",
     "What one of these patterns fits is left out of a comparison."},
    Toggle(IncludeExclude, "ExcludeSystemFiles", "chkExcludeSystemFiles",
           "Leaves files with the system attribute out of a comparison."),
    Toggle(IncludeExclude, "ExcludeHiddenFiles", "chkExcludeHiddenFiles",
           "Leaves hidden files out of a comparison; a name with a dot in front is hidden."),
    Toggle(IncludeExclude, "ExcludeSystemFolders", "chkExcludeSystemFolders",
           "Leaves folders with the system attribute out of a comparison."),
    Toggle(IncludeExclude, "ExcludeHiddenFolders", "chkExcludeHiddenFolders",
           "Leaves hidden folders out of a comparison; a name with a dot in front is hidden."),

    {"SyncMethod", Synchronize, "cboSyncMethod", "Sync Methods", "options.html#custom-table",
     "What a synchronisation does with the objects of both folders."},
    Cell("LeftFolderNewFilesAction", "cboNew(0)", "Newer files", kNewTip),
    Cell("RightFolderNewFilesAction", "cboNew(1)", "Newer files", kNewTip),
    Cell("LeftFolderOldFilesAction", "cboOld(0)", "Older files", kOldTip),
    Cell("RightFolderOldFilesAction", "cboOld(1)", "Older files", kOldTip),
    Cell("LeftFolderOrphanFilesAction", "cboOrphan(0)", "Orphan files and sub-folders", kOrphanTip),
    Cell("RightFolderOrphanFilesAction", "cboOrphan(1)", "Orphan files and sub-folders", kOrphanTip),
    Cell("LeftFolderBinaryFilesAction", "cboBinary(0)", "Files with the same date and different contents",
         kBinaryTip),
    Cell("RightFolderBinaryFilesAction", "cboBinary(1)", "Files with the same date and different contents",
         kBinaryTip),

    Toggle(Sounds, "SoundOn", "chkSoundsOn", "Plays the sounds of the four events below."),
    Sound("StartSound", "Start Vantrel", "Played when the program starts."),
    Sound("ExitSound", "Exit Vantrel", "Played when the program ends."),
    Sound("ComparisonCompleteSound", "Comparison Completed", "Played at the end of a comparison."),
    Sound("SyncCompleteSound", "Synchronization Completed", "Played at the end of a synchronisation."),

    {"FontName", Appearance, "cmdChangeFont", "Current Font", "options.html#appearance",
     "The font of the panes and path boxes, of up to 50 points."},
    {"FontSize", Appearance, "cmdChangeFont", "Current Font", "options.html#appearance",
     "The font of the panes and path boxes, of up to 50 points."},
    {"CoolbarStyle", Appearance, "optToolbarStyle", "Toolbar", "options.html#appearance",
     "The strip of buttons below the menus."},

    Toggle(ViewFileDiffs, "ViewFileDiffPromptForOptions", "chkShowOptionsDialog",
           "Asks for the files and the options each time before differences are shown."),
    Toggle(ViewFileDiffs, "ViewFileDiffIgnoreWhitespace", "chkIgnoreWhiteSpace",
           "Takes lines that differ in blanks and tabs only for equal."),
    Toggle(ViewFileDiffs, "ViewFileDiffIgnoreCase", "chkIgnoreCase",
           "Takes lines that differ in upper and lower case only for equal."),

    Toggle(FindDupes, "NamesMustMatch", "chkDupeCriteria(0)", "Duplicates must have the same name."),
    Toggle(FindDupes, "SizesMustMatch", "chkDupeCriteria(1)", "Duplicates must have the same size."),
    Toggle(FindDupes, "CreateTimestampsMustMatch", "chkDupeCriteria(2)",
           "Duplicates must have been created at the same time."),
    Toggle(FindDupes, "LastModTimestampsMustMatch", "chkDupeCriteria(3)",
           "Duplicates must have been changed last at the same time."),
    Toggle(FindDupes, "AttributesMustMatch", "chkDupeCriteria(4)",
           "Duplicates must have the same attributes."),
    Toggle(FindDupes, "ContentsMustMatch", "chkDupeCriteria(5)", "Duplicates must hold the same bytes."),
    Toggle(FindDupes, "IgnoreZeroByteFiles", "chkIgnoreZeroByteFiles",
           "Leaves empty files out of the search for duplicates."),
    Toggle(FindDupes, "IgnoreSystemFiles", "chkIgnoreSystemFiles",
           "Leaves files with the system attribute out of the search for duplicates."),
    Toggle(FindDupes, "IgnoreHiddenFiles", "chkIgnoreHiddenFiles",
           "Leaves hidden files out of the search for duplicates."),
    Toggle(FindDupes, "IgnoreFilesInWindowsDir", "chkIgnoreFilesInWinDirTree",
           "Leaves the folders of the operating system out of the search for duplicates."),
    {"RemovalMethod", FindDupes, "optRemovalMethods", "Removal Methods", "options.html#removal",
     "Where the duplicates that are removed go to."},
    {"UserDefinedMoveFolderPath", FindDupes, "optRemovalMethods", "Move to Other Folder...",
     "options.html#removal", "The folder that the duplicates are moved to."},
    {"HashMethod", FindDupes, "optHashMethods", "Hash Method for Content Search", "options.html#removal",
     "The sum that is shown for files with the same contents."},
    {"ExcludeFiles", FindDupes, "cmdFilesToExclude", "Files To Exclude...", "options.html#removal",
     "Names of files that are never taken for duplicates."},

    Extra("TrueSizes", "chkTrueSizes", "Use true sizes for files of 2 GiB and more",
          "Shows and compares large files by their true size, and reads their contents whole."),
    Extra("GoOnAfterFailure", "chkGoOnAfterFailure", "Go on with the rest when an object fails",
          "Carries out the rest of a synchronisation when an object in it fails."),
    Extra("CoupleAllScrolling", "chkCoupleAllScrolling", "Scroll both panes by wheel and keys too",
          "While both panes scroll together, wheel, touchpad and keys move both as the scroll bar does."),
    Extra("InlineDifferences", "chkInlineDifferences", "Mark the characters that differ",
          "Marks the characters that differ within the lines of the difference viewer."),
    Extra("CheckBeforeRemoval", "chkCheckBeforeRemoval", "Compare before a duplicate is removed",
          "Removes a duplicate only when a file that stays was seen to hold the same bytes."),
    Extra("Jobs", "txtJobs", "Files looked at at the same time",
          "How many files and folders are read side by side; 0: as suits the processors, disks and servers."),
    Extra(
        "ProtectedDupeFolders", "txtProtectedDupeFolders", "Folders whose duplicates no rule marks",
        "Files below these folders are marked for removal by hand only; a \"?\" stands between two folders."),
});

std::span<const OptionBox> AllBoxes() {
    static const auto boxes = [] {
        auto all = kBoxes;
        for (OptionBox& box : all)
            for (const OptionLine& line : OptionTable())
                if (line.key == box.key && box.caption.empty()) {
                    box.caption = line.toggle.caption;
                    box.help = line.toggle.help;
                }
        return all;
    }();
    return boxes;
}

}  // namespace

std::span<const OptionTabInfo> OptionTabs() {
    return kTabs;
}

std::span<const OptionBox> OptionBoxes() {
    return AllBoxes();
}

const OptionBox* FindBox(std::string_view key) {
    for (const OptionBox& box : AllBoxes())
        if (box.key == key) return &box;
    return nullptr;
}

const OptionBox& BoxOf(std::string_view key) {
    if (const OptionBox* box = FindBox(key)) return *box;
    throw std::logic_error("no box for the option " + std::string(key));
}

}  // namespace vantrel
