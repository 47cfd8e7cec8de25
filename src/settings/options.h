#pragma once

#include <cstdint>
#include <string>

#include "diagnostics/sound_options.h"
#include "settings/option_values.h"

namespace vantrel {

// Every option of the settings file as a plain value, and their one home: the program has one object of this
// kind that is live, menus and windows show what stands there, and a run takes from it what it needs. Each
// member has a line in the table of option_table.cpp, and bears the name of its key. The sounds come from
// below: the floor that plays them knows no settings.
struct Options : SoundOptions {
    // With the defaults of the table. Those that depend on the machine are empty, or 0.
    Options();

    // [Options]
    std::int32_t numSyncLogEntries{};
    bool viewFileDiffIgnoreCase{};
    bool viewFileDiffIgnoreWhitespace{};
    bool viewFileDiffPromptForOptions{};
    SyncMethod syncMethod{};
    SyncAction leftFolderNewFilesAction{};
    SyncAction leftFolderOldFilesAction{};
    SyncAction leftFolderOrphanFilesAction{};
    SyncAction leftFolderBinaryFilesAction{};
    SyncAction rightFolderNewFilesAction{};
    SyncAction rightFolderOldFilesAction{};
    SyncAction rightFolderOrphanFilesAction{};
    SyncAction rightFolderBinaryFilesAction{};
    bool showCopyConfirmations{};
    bool showMoveConfirmations{};
    bool showDeleteConfirmations{};
    bool showSynchronizeConfirmations{};
    bool showDateTimeChangeConfirmations{};
    bool autoCompareAfterFilter{};
    bool autoCompareAfterFileOp{};
    bool autoCompareAfterSync{};
    bool autoCompareAfterDateTimeChange{};
    bool autoCompareAfterCreationOfNewFolder{};
    bool autoCompareAfterCompareMethodChange{};
    ViewType viewType{};
    bool viewNewerFiles{};
    bool viewOlderFiles{};
    bool viewIdenticalFiles{};
    bool viewOrphanFiles{};
    bool viewBinaryFiles{};
    bool viewDifferentSubFolders{};
    bool viewIdenticalSubFolders{};
    bool viewOrphanSubFolders{};
    bool compareSubFolders{};
    CompareMethod compareType{};
    std::int32_t chunkSize{};      // bytes
    std::string includeFileTypes;  // comma-separated patterns
    std::string excludeFileTypes;
    bool syncScrolling{};
    bool showGraphAfterCompare{};
    bool promptForSyncMethod{};
    bool excludeSystemFiles{};
    bool excludeHiddenFiles{};
    bool excludeSystemFolders{};
    bool excludeHiddenFolders{};
    bool remindAboutFATNTFSIssue{};
    bool ignore2SecDiff{};
    bool ignoreDaylightSavings{};
    CoolbarStyle coolbarStyle{};
    std::string fontName;
    double fontSize{};  // points
    bool autoCompleteFolderPath{};

    // [Form Dimensions], of the main window while it is neither maximised nor minimised; in twips
    WindowState windowState{};
    std::int32_t height{};
    std::int32_t width{};
    std::int32_t top{};
    std::int32_t left{};

    // [ColumnWidths], in pixels
    std::int32_t sourceColumnOne{};
    std::int32_t sourceColumnTwo{};
    std::int32_t sourceColumnThree{};
    std::int32_t targetColumnOne{};
    std::int32_t targetColumnTwo{};
    std::int32_t targetColumnThree{};

    // [Dupe Options]; lists are joined with "?"
    std::string folderPaths;
    bool includeSubFolders{};
    bool dupesFormLoadedPreviously{};
    bool removeWarningShown{};
    std::string excludeFiles;
    bool namesMustMatch{};
    bool sizesMustMatch{};
    bool createTimestampsMustMatch{};
    bool lastModTimestampsMustMatch{};
    bool attributesMustMatch{};
    bool contentsMustMatch{};
    bool ignoreZeroByteFiles{};
    bool ignoreSystemFiles{};
    bool ignoreHiddenFiles{};
    bool ignoreFilesInWindowsDir{};
    RemovalMethod removalMethod{};
    std::string userDefinedMoveFolderPath;
    HashMethod hashMethod{};

    // [Extras]
    bool trueSizes{};           // sizes of 2 GiB and more as they are
    bool trueSizesOffered{};    // the user was asked about that
    bool goOnAfterFailure{};    // of an object, with the phases of a synchronisation that follow
    std::int32_t jobs{};        // files and folders looked at at the same time; 0: as suits
    bool coupleAllScrolling{};  // beside the scroll bars, wheel, keys and touch move both panes
    bool inlineDifferences{};
    bool checkBeforeRemoval{};  // of a duplicate: compared with one that stays, whatever made the group
    std::string protectedDupeFolders;  // whose duplicates no rule marks; joined with "?"
};

}  // namespace vantrel
