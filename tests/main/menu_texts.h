#pragma once

namespace vantrel::testing {

// The menus as a fresh program shows them: one line an item, with its name and caption, indented below its
// menu. "[x]" and "[ ]" are toggles, "(*)" and "( )" items that exclude each other.
inline constexpr const char* kMenus = R"(
mnuFile &File
  mnuFileCompareDirectories Compare &Folders
  mnuFileCompareParents Compare the Parent Folders
  mnuFileCompareFiles Compare F&iles...
  mnuFileFindDuplicateFiles Find Duplicate Files...
  mnuFileShowSubDirDiffs Show Sub-Folder Differences...
  mnuFileShowFileDiffs Show File Differences
  mnuFileSynchronize Synchronize
    mnuFileAutoSynch &Synchronize Folder Contents
    mnuFileSyncSelectedObjects Synchronize Selected Object(s) Only
  mnuFileCopyRoot Copy
    mnuFileCopySelectedFilesToTargetDirectory &Copy Selected Object(s) to Other Folder
    mnuFileCopySelectedFilesToSpecifiedDirectory Copy Selected Object(s) to Any Folder...
  mnuFileMoveRoot Move
    mnuFileMoveSelectedFilesToTargetDirectory &Move Selected Object(s) to Other Folder
    mnuFileMoveSelectedFilesToSpecifiedDirectory Move Selected Object(s) to Any Folder...
  mnuFileDeleteRoot Delete
    mnuFileSendSelectedFilesToRecycleBin Send to Recycle &Bin
    mnuFileDeletePermanently Delete Permanently
  mnuFileOpenFile &Open Object
  mnuFileHexDump View Hex Dump of File
  mnuFileShowFileProperties P&roperties
  mnuFileChangeFilename Re&name File(s)/Folder(s)...
  mnuSetDateTimeStamp Set Date/Time of Selected File(s)
  mnuSyncTimeStamp Synchronize &Date/Time of Selected File with its Counterpart
  mnuFileAddToIncludeFilter Add Selected Objects to Include Filter
  mnuFileAddToExcludeFilter Add Selected Objects to Exclude Filter
  mnuFileAddExtensionToIncludeFilter Add this File Extension to the Include Filter
  mnuFileAddExtensionToExcludeFilter Add this File Extension to the Exclude Filter
  mnuFileLoadSessionSettings Load Session Settings...
  mnuFileSaveSessionSettings Save Session Settings As...
  mnuFileRestoreDefaultSessionSettings Restore Default Session Settings
  mnuFileRecentSessions Recent Sessions
    mnuFileRecentSession(0)
    mnuFileRecentSession(1)
    mnuFileRecentSession(2)
    mnuFileRecentSession(3)
    mnuFileRecentSession(4)
  mnuFilePreviousSettings Return to Previous Settings...
  mnuFilePrint &Print...
  mnuFileSaveResults Save Resul&ts As...
  mnuFileExit E&xit
mnuOptions O&ptions
  mnuOptionsCompareType Comparison Method
    (*) mnuOptionsCompareTypeQuick Size and Date/Time
    ( ) mnuOptionsCompareTypeThoroughString Contents
    ( ) mnuOptionsCompareTypeThoroughCRC Cyclical Redundancy Check
    ( ) mnuOptionsCompareTypeSHA SHA-1 Message Digest
  mnuOtherCompareOptions Other Comparison Options
    [x] mnuOptionsCompareSubFolders Compare Sub-Folders
    [x] mnuOptionsRemindAboutFATNTFSIssue Remind About FAT/NTFS Issue
    [x] mnuOptionsIgnore2Sec Ignore FAT/NTFS 2 sec. Difference
    [ ] mnuOptionsIgnoreDaylightSavings Ignore FAT/NTFS Daylight Savings Time
    mnuOptionsChunkSize Chunk Size...
  mnuOptionsIncludeExcludeMain Include/Exclude
    [ ] mnuOptionsExcludeSystemFiles Exclude System Files
    [ ] mnuOptionsExcludeHiddenFiles Exclude Hidden Files
    [ ] mnuOptionsExcludeSystemFolders Exclude System Folders
    [ ] mnuOptionsExcludeHiddenFolders Exclude Hidden Folders
    mnuOptionsFilters Include/Exclude Filters...
  mnuOptionsSynchronizeMethod Synchronization Method
    ( ) mnuOptionsSyncMakeRightSameAsLeft Make Right Folder Same as Left Folder
    ( ) mnuOptionsSyncMakeLeftSameAsRight Make Left Folder Same as Right Folder
    (*) mnuOptionsSyncReplaceOlderCopyOrphans Replace Older Files and Copy Orphan Objects (bi-directional)
    ( ) mnuOptionsSyncAddOrphansToLeft Add Orphan Objects to Left Folder
    ( ) mnuOptionsSyncAddOrphansToRight Add Orphan Objects to Right Folder
    ( ) mnuOptionsSyncReplaceOlderInLeft Replace Older Files in Left Folder
    ( ) mnuOptionsSyncReplaceOlderInRight Replace Older Files in Right Folder
    ( ) mnuOptionsSyncCustomize Custom...
  mnuOptionsAutoCompare Auto Compare
    [x] mnuOptionsAutoCompareAfterFilter Auto Compare After Filter Change
    [x] mnuOptionsAutoCompareAfterFileOp Auto Compare After Copy, Move, Delete
    [x] mnuOptionsAutoCompareAfterSync Auto Compare After Synchronize
    [x] mnuOptionsAutoCompareAfterDateTimeChange Auto Compare After Filename or Date/Time Change
    [x] mnuOptionsAutoCompareAfterCreationOfNewFolder Auto Compare After Creation of New Sub-Folder
    [x] mnuOptionsAutoCompareAfterCompareMethodChange Auto Compare After Compare Method Change
  mnuOptionsConfirmations Confirmations
    [x] mnuOptionsConfirmCopy Confirm Before Copy
    [x] mnuOptionsConfirmMove Confirm Before Move
    [x] mnuOptionsConfirmDelete Confirm Before Delete
    [x] mnuOptionsConfirmSynchronize Confirm Before Synchronize
    [x] mnuOptionsConfirmDateTimeChange Confirm Before Date/Time Change
  mnuOptionsViewFileDiffs View File Difference Options
    [x] mnuOptionsViewFileDiffsPromptForOptions Prompt For Options
    [ ] mnuOptionsViewFileDiffsIgnoreWhitespace Ignore Whitespace
    [ ] mnuOptionsViewFileDiffsIgnoreCase Ignore Case
  mnuOptionsFindDupes Find Duplicate Files Options
    mnuOptionsFindDupesCriteria Duplicate Criteria
      [x] mnuOptionsFindDupesCriteriaOpt(0) Names Match
      [x] mnuOptionsFindDupesCriteriaOpt(1) Sizes Match
      [ ] mnuOptionsFindDupesCriteriaOpt(2) Create Date/Times Match
      [ ] mnuOptionsFindDupesCriteriaOpt(3) Last Modified Date/Times Match
      [ ] mnuOptionsFindDupesCriteriaOpt(4) Attributes Match
      [ ] mnuOptionsFindDupesCriteriaOpt(5) Contents Match
    mnuOptionsFindDupesIgnore Ignore Options
      [x] mnuOptionsFindDupesIgnoreOpt(0) Ignore Zero Byte Files
      [x] mnuOptionsFindDupesIgnoreOpt(1) Ignore System Files
      [x] mnuOptionsFindDupesIgnoreOpt(2) Ignore Hidden Files
      [x] mnuOptionsFindDupesIgnoreOpt(3) Ignore Files In the Windows Folder Tree
    mnuOptionsFindDupesRemoval Removal Methods
      ( ) mnuOptionsFindDupesRemovalOpt(0) Delete Permanently
      ( ) mnuOptionsFindDupesRemovalOpt(1) Send To Recycle Bin
      (*) mnuOptionsFindDupesRemovalOpt(2) Move to DUPES Folder
      ( ) mnuOptionsFindDupesRemovalOpt(3) Move to Other Folder...
    mnuOptionsFindDupesHashMethod Hash Method for Content Search
      (*) mnuOptionsFindDupesHashMethodOpt(0) CRC-16
      ( ) mnuOptionsFindDupesHashMethodOpt(1) CRC-32
      ( ) mnuOptionsFindDupesHashMethodOpt(2) MD5
    mnuOptionsFindDupesFilesToExclude Files To Exclude...
  [x] mnuOptionsSoundOn Sounds On
  mnuOptionsChangeSounds Change Sounds...
  [x] mnuOptionsPromptForSyncMethod Prompt for Sync Method
  [x] mnuOptionsSyncScrolling Sy&nc Folder Contents Scrolling
  [x] mnuOptionsShowGraphAfterCompare Show Summary After Compare
  [x] mnuOptionsAutoCompleteFolderPath Auto Complete Folder Path While Typing
  frmOptionsMaintainFolderLists Maintain Folder Lists...
  mnuOptionsAppearance Appearance...
  mnuOptionsToolbar Toolbar
    ( ) mnuOptionsToolbarHide Hide Toolbar
    (*) mnuOptionsToolbarShowCoolbar Show Toolbar (Large Icons)
    ( ) mnuOptionsToolbarShowToolbar Show Toolbar (Smaller Icons)
  mnuOptionsRestoreDefaults Restore Default Options
mnuSelect &Select
  mnuSelectAll &Select All Objects
  mnuDeSelectAll &DeSelect All Objects
  mnuInvertSelection &Invert Selection
  mnuSelectOther &Other...
  mnuSelectShowNext Show &Next Selected Item
  mnuSelectShowOnlySelected Show Only Selected Objects
mnuView &View
  mnuViewCompareResultsSummary Comparison &Results Summary
  mnuViewErrorLog View Error Log
  mnuViewSyncHistory &Synchronization History
  (*) mnuViewViewAll View All Files and Folders
  ( ) mnuViewDifferences View Differences Only
  ( ) mnuViewSimilarities View Similiarities Only
  ( ) mnuViewOther Other...
mnuHelp &Help
  mnuHelpContents &Contents
  mnuHelpTroubleshooting &Troubleshooting
  mnuHelpVantrelOntheWeb Vantrel on the &Web
    mnuHelpWebNews &Product News
    mnuHelpWebFAQs Frequently Asked &Questions
    mnuHelpWebFeedback Send Us Feedbac&k
  mnuHelpAboutBox &About...
mnuFilePopup
  mnuFilePopupShowDifferences Show File Differences
  mnuFilePopupCompareFiles Compare Files...
  mnuFilePopupSync Synchronize Selected Object(s)
  mnuFilePopupCopy Copy
    mnuFilePopupCopyToOtherFolder Copy to Other Folder
    mnuFilePopupCopyToAnyFolder Copy to Any Folder...
  mnuFilePopupMove Move
    mnuFilePopupMoveToOtherFolder Move to Other Folder
    mnuFilePopupMoveToAnyFolder Move to Any Folder...
  mnuFilePopupDelete Delete
    mnuFilePopupRecycleBin Send to Recycle Bin
    mnuFilePopupDeletePermanently Delete Permanently
  mnuFilePopupOpen &Open Object
  mnuFilePopupHexDump View Hex Dump of File
  mnuFilePopupRename Rename File(s)
  mnuFilePopupSetDateTime Set Date/Time of Selected File(s)
  mnuFilePopupSyncFileDateTime Synchronize &Date/Time of Selected File with its Counterpart
  mnuFilePopupAddToIncludeFilter Add Selected Objects to Include Filter
  mnuFilePopupAddToExcludeFilter Add Selected Objects to Exclude Filter
  mnuFilePopupAddExtToIncludeFilter Add this File Extension to the Include Filter
  mnuFilePopupAddExtToExcludeFilter Add this File Extension to the Exclude Filter
  mnuFilePopupProperties Properties
mnuFolderPopup
  mnuFolderPopupViewDifferences Show Sub-Folder Differences
  mnuGoToFolderThisSide Change this side's folder to 
  mnuGoToFolderBothSidesRunCompare Compare this sub-folder to 
  mnuCompareSubFolderToOtherFolder Compare this sub-folder with another folder...
  mnuFolderPopupSync Synchronize Selected Object(s)
  mnuFolderPopupCopy Copy
    mnuFolderPopupCopyToOtherFolder Copy to Other Folder
    mnuFolderPopupCopyToAnyFolder Copy to Any Folder...
  mnuFolderPopupMove Move
    mnuFolderPopupMoveToOtherFolder Move to Other Folder
    mnuFolderPopupMoveToAnyFolder Move to Any Folder...
  mnuFolderPopupDelete Delete
    mnuFolderPopupRecycleBin Send to Recycle Bin
    mnuFolderPopupDeletePermanently Delete Permanently
  mnuFolderPopupRename Rename Folder(s)
  mnuFolderPopupAddToIncludeFilter Add Selected Objects to Include Filter
  mnuFolderPopupAddToExcludeFilter Add Selected Objects to Exclude Filter
  mnuFolderPopupExplore Explore this sub-folder
  mnuFolderPopupProperties Properties
mnuDiffFileDblClick DiffFileDblClick
  mnuDblClickShowFileDiffs Show File Differences
  mnuDblClickFileOpen Open File
mnuDiffSubDirDblClick DiffSubDirDblClick
  mnuDblClickShowDiffs Show Sub-Folder Differences
  mnuDblClickExplore Explore this sub-folder
)";

}  // namespace vantrel::testing
