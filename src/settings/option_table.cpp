#include "settings/option_table.h"

#include <array>
#include <limits>
#include <type_traits>
#include <utility>

namespace vantrel {
namespace {

using O = Options;

template <typename Enum>
constexpr OptionWord W(std::string_view text, Enum code) {
    return {text, static_cast<std::int32_t>(code)};
}

constexpr std::array kSyncMethods = {
    W("ReplaceOlderCopyOrphans", SyncMethod::ReplaceOlderCopyOrphans),
    W("MakeRightSameAsLeft", SyncMethod::MakeRightSameAsLeft),
    W("MakeLeftSameAsRight", SyncMethod::MakeLeftSameAsRight),
    W("Custom", SyncMethod::Custom),
    W("AddOrphansToLeft", SyncMethod::AddOrphansToLeft),
    W("AddOrphansToRight", SyncMethod::AddOrphansToRight),
    W("ReplaceOlderOnLeft", SyncMethod::ReplaceOlderOnLeft),
    W("ReplaceOlderOnRight", SyncMethod::ReplaceOlderOnRight),
};
constexpr std::array kActions = {W("Leave", SyncAction::Leave), W("Copy", SyncAction::Copy),
                                 W("Replace", SyncAction::Replace), W("Delete", SyncAction::Delete)};
constexpr std::array kOrphanActions = {W("Leave", SyncAction::Leave), W("Copy", SyncAction::Copy),
                                       W("Delete", SyncAction::Delete)};
constexpr std::array kViewTypes = {W("All", ViewType::All), W("Different", ViewType::Different),
                                   W("Similar", ViewType::Similar), W("Custom", ViewType::Custom)};
constexpr std::array kCompareTypes = {W("Quick", CompareMethod::SizeAndDate),
                                      W("Thorough", CompareMethod::Contents), W("CRC", CompareMethod::Crc32),
                                      W("SHA", CompareMethod::Sha1)};
constexpr std::array kCoolbarStyles = {W("Coolbar", CoolbarStyle::Coolbar),
                                       W("Toolbar", CoolbarStyle::Toolbar),
                                       W("Hidden", CoolbarStyle::Hidden)};
constexpr std::array kWindowStates = {W("Normal", WindowState::Normal),
                                      W("Maximized", WindowState::Maximized)};
constexpr std::array kRemovalMethods = {W("Delete", RemovalMethod::Delete),
                                        W("Recycle", RemovalMethod::Recycle),
                                        W("MoveToDupesFolder", RemovalMethod::MoveToDupesFolder),
                                        W("MoveToOtherFolder", RemovalMethod::MoveToOtherFolder)};
constexpr std::array kHashMethods = {W("CRC16", HashMethod::Crc16), W("CRC32", HashMethod::Crc32),
                                     W("MD5", HashMethod::Md5)};

constexpr std::string_view kExcludeFiles =
    "autoexec.bat?command.com?drvspace.bin?system.dat?user.dat?system.ini?win.ini?protocol.ini?mscreate.dir?"
    "anti-vir.dat?*.drv?*.sys?*.ocx?*.dll";

constexpr OptionLine Flag(std::string_view section, std::string_view key, std::string_view defaultText,
                          bool O::*member, ShownBy shownBy = ShownBy::CheckMark) {
    return {section, key, defaultText, OptionKind::Boolean, member, shownBy, {}};
}

constexpr OptionLine Toggle(std::string_view section, std::string_view key, std::string_view defaultText,
                            bool O::*member, const MenuToggle& toggle, ShownBy shownBy = ShownBy::CheckMark) {
    return {section, key, defaultText, OptionKind::Boolean, member, shownBy, toggle};
}

constexpr OptionLine Text(std::string_view section, std::string_view key, std::string_view defaultText,
                          std::string O::*member, OptionKind kind = OptionKind::Text,
                          ShownBy shownBy = ShownBy::CheckMark) {
    return {section, key, defaultText, kind, member, shownBy, {}};
}

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMostTwips = 1'000'000;
constexpr std::int32_t kMostPixels = 32'767;

constexpr OptionLine Number(std::string_view key, std::string_view defaultText, std::int32_t O::*member,
                            std::int32_t minimum) {
    return {kOptionsSection,    key, defaultText, OptionKind::Number, NumberField{member, minimum, kMost},
            ShownBy::CheckMark, {}};
}

// How many records the history of synchronizations keeps.
constexpr OptionLine HistoryLength(std::string_view key, std::string_view defaultText,
                                   std::int32_t O::*member) {
    return {kOptionsSection,
            key,
            defaultText,
            OptionKind::Number,
            NumberField{member, 1, kMostSyncLogEntries, TooSmall::IsNoNumber},
            ShownBy::CheckMark,
            {}};
}

constexpr OptionLine Place(std::string_view key, std::string_view defaultText, std::int32_t O::*member,
                           OptionKind kind) {
    return {kFormSection, key, defaultText, kind, NumberField{member, 0, kMostTwips}, ShownBy::Geometry, {}};
}

constexpr OptionLine Column(std::string_view key, std::string_view defaultText, std::int32_t O::*member) {
    return {kColumnsSection,   key, defaultText, OptionKind::Number, NumberField{member, 0, kMostPixels},
            ShownBy::Geometry, {}};
}

template <auto Member>
constexpr WordField FieldOf(std::span<const OptionWord> words, std::int32_t fallback) {
    using Enum = std::remove_cvref_t<decltype(std::declval<O>().*Member)>;
    return {words, fallback, [](const O& options) { return static_cast<std::int32_t>(options.*Member); },
            [](O& options, std::int32_t code) { options.*Member = static_cast<Enum>(code); }};
}

// An unknown word falls to the default, which is the first word that equals the default text.
template <auto Member>
constexpr OptionLine Word(std::string_view section, std::string_view key, std::string_view defaultText,
                          std::span<const OptionWord> words, ShownBy shownBy = ShownBy::CheckMark) {
    std::int32_t fallback = words[0].code;
    for (const OptionWord& word : words)
        if (word.text == defaultText) fallback = word.code;
    return {section, key, defaultText, OptionKind::Word, FieldOf<Member>(words, fallback), shownBy, {}};
}

// A damaged action does nothing to files, whatever the default is.
template <auto Member>
constexpr OptionLine ActionLine(std::string_view key, std::string_view defaultText,
                                std::span<const OptionWord> words) {
    return {kOptionsSection,
            key,
            defaultText,
            OptionKind::Word,
            FieldOf<Member>(words, static_cast<std::int32_t>(SyncAction::Leave)),
            ShownBy::CheckMark,
            {}};
}

// A new option is a line here and a member of Options; a toggle of the menu is also an entry of the menu
// table.
constexpr auto kTable = std::to_array<OptionLine>({
    HistoryLength("NumSyncLogEntries", "20", &O::numSyncLogEntries),
    Toggle(kOptionsSection, "SoundOn", "True", &O::soundOn,
           {"mnuOptionsSoundOn", "Sounds On", "options.html#other"}),
    Text(kOptionsSection, "StartSound", "(none)", &O::startSound),
    Text(kOptionsSection, "ExitSound", "(none)", &O::exitSound),
    Text(kOptionsSection, "ComparisonCompleteSound", "", &O::comparisonCompleteSound),
    Text(kOptionsSection, "SyncCompleteSound", "", &O::syncCompleteSound),
    Toggle(kOptionsSection, "ViewFileDiffIgnoreCase", "False", &O::viewFileDiffIgnoreCase,
           {"mnuOptionsViewFileDiffsIgnoreCase", "Ignore Case", "options.html#file-differences"}),
    Toggle(kOptionsSection, "ViewFileDiffIgnoreWhitespace", "False", &O::viewFileDiffIgnoreWhitespace,
           {"mnuOptionsViewFileDiffsIgnoreWhitespace", "Ignore Whitespace", "options.html#file-differences"}),
    Toggle(
        kOptionsSection, "ViewFileDiffPromptForOptions", "True", &O::viewFileDiffPromptForOptions,
        {"mnuOptionsViewFileDiffsPromptForOptions", "Prompt For Options", "options.html#file-differences"}),
    Word<&O::syncMethod>(kOptionsSection, "SyncMethod", "ReplaceOlderCopyOrphans", kSyncMethods),
    ActionLine<&O::leftFolderNewFilesAction>("LeftFolderNewFilesAction", "Copy", kActions),
    ActionLine<&O::leftFolderOldFilesAction>("LeftFolderOldFilesAction", "Replace", kActions),
    ActionLine<&O::leftFolderOrphanFilesAction>("LeftFolderOrphanFilesAction", "Copy", kOrphanActions),
    ActionLine<&O::leftFolderBinaryFilesAction>("LeftFolderBinaryFilesAction", "Leave", kActions),
    ActionLine<&O::rightFolderNewFilesAction>("RightFolderNewFilesAction", "Copy", kActions),
    ActionLine<&O::rightFolderOldFilesAction>("RightFolderOldFilesAction", "Replace", kActions),
    ActionLine<&O::rightFolderOrphanFilesAction>("RightFolderOrphanFilesAction", "Copy", kOrphanActions),
    ActionLine<&O::rightFolderBinaryFilesAction>("RightFolderBinaryFilesAction", "Leave", kActions),
    Toggle(kOptionsSection, "ShowCopyConfirmations", "True", &O::showCopyConfirmations,
           {"mnuOptionsConfirmCopy", "Confirm Before Copy", "options.html#confirmations"}),
    Toggle(kOptionsSection, "ShowMoveConfirmations", "True", &O::showMoveConfirmations,
           {"mnuOptionsConfirmMove", "Confirm Before Move", "options.html#confirmations"}),
    Toggle(kOptionsSection, "ShowDeleteConfirmations", "True", &O::showDeleteConfirmations,
           {"mnuOptionsConfirmDelete", "Confirm Before Delete", "options.html#confirmations"}),
    Toggle(kOptionsSection, "ShowSynchronizeConfirmations", "True", &O::showSynchronizeConfirmations,
           {"mnuOptionsConfirmSynchronize", "Confirm Before Synchronize", "options.html#confirmations"}),
    Toggle(
        kOptionsSection, "ShowDateTimeChangeConfirmations", "True", &O::showDateTimeChangeConfirmations,
        {"mnuOptionsConfirmDateTimeChange", "Confirm Before Date/Time Change", "options.html#confirmations"}),
    Toggle(kOptionsSection, "AutoCompareAfterFilter", "True", &O::autoCompareAfterFilter,
           {"mnuOptionsAutoCompareAfterFilter", "Auto Compare After Filter Change",
            "options.html#auto-compare"}),
    Toggle(kOptionsSection, "AutoCompareAfterFileOp", "True", &O::autoCompareAfterFileOp,
           {"mnuOptionsAutoCompareAfterFileOp", "Auto Compare After Copy, Move, Delete",
            "options.html#auto-compare"}),
    Toggle(kOptionsSection, "AutoCompareAfterSync", "True", &O::autoCompareAfterSync,
           {"mnuOptionsAutoCompareAfterSync", "Auto Compare After Synchronize", "options.html#auto-compare"}),
    Toggle(kOptionsSection, "AutoCompareAfterDateTimeChange", "True", &O::autoCompareAfterDateTimeChange,
           {"mnuOptionsAutoCompareAfterDateTimeChange", "Auto Compare After Filename or Date/Time Change",
            "options.html#auto-compare"}),
    Toggle(kOptionsSection, "AutoCompareAfterCreationOfNewFolder", "True",
           &O::autoCompareAfterCreationOfNewFolder,
           {"mnuOptionsAutoCompareAfterCreationOfNewFolder", "Auto Compare After Creation of New Sub-Folder",
            "options.html#auto-compare"}),
    Toggle(kOptionsSection, "AutoCompareAfterCompareMethodChange", "True",
           &O::autoCompareAfterCompareMethodChange,
           {"mnuOptionsAutoCompareAfterCompareMethodChange", "Auto Compare After Compare Method Change",
            "options.html#auto-compare"}),
    Word<&O::viewType>(kOptionsSection, "ViewType", "All", kViewTypes, ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewNewerFiles", "True", &O::viewNewerFiles, ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewOlderFiles", "True", &O::viewOlderFiles, ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewIdenticalFiles", "True", &O::viewIdenticalFiles, ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewOrphanFiles", "True", &O::viewOrphanFiles, ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewBinaryFiles", "True", &O::viewBinaryFiles, ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewDifferentSubFolders", "True", &O::viewDifferentSubFolders,
         ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewIdenticalSubFolders", "True", &O::viewIdenticalSubFolders,
         ShownBy::ViewToggles),
    Flag(kOptionsSection, "ViewOrphanSubFolders", "True", &O::viewOrphanSubFolders, ShownBy::ViewToggles),
    Toggle(kOptionsSection, "CompareSubFolders", "True", &O::compareSubFolders,
           {"mnuOptionsCompareSubFolders", "Compare Sub-Folders", "options.html#comparison"},
           ShownBy::SubFolderRecords),
    Word<&O::compareType>(kOptionsSection, "CompareType", "Quick", kCompareTypes),
    Number("ChunkSize", "500000", &O::chunkSize, 1),
    Text(kOptionsSection, "IncludeFileTypes", "", &O::includeFileTypes, OptionKind::FilterText),
    Text(kOptionsSection, "ExcludeFileTypes", "", &O::excludeFileTypes, OptionKind::FilterText),
    Toggle(kOptionsSection, "SyncScrolling", "True", &O::syncScrolling,
           {"mnuOptionsSyncScrolling", "Sy&nc Folder Contents Scrolling", "views.html#scrolling"},
           ShownBy::Scrolling),
    Toggle(kOptionsSection, "ShowGraphAfterCompare", "True", &O::showGraphAfterCompare,
           {"mnuOptionsShowGraphAfterCompare", "Show Summary After Compare", "options.html#other"}),
    Toggle(kOptionsSection, "PromptForSyncMethod", "True", &O::promptForSyncMethod,
           {"mnuOptionsPromptForSyncMethod", "Prompt for Sync Method", "synchronising.html#method"}),
    Toggle(kOptionsSection, "ExcludeSystemFiles", "False", &O::excludeSystemFiles,
           {"mnuOptionsExcludeSystemFiles", "Exclude System Files", "options.html#exclude"}),
    Toggle(kOptionsSection, "ExcludeHiddenFiles", "False", &O::excludeHiddenFiles,
           {"mnuOptionsExcludeHiddenFiles", "Exclude Hidden Files", "options.html#exclude"}),
    Toggle(kOptionsSection, "ExcludeSystemFolders", "False", &O::excludeSystemFolders,
           {"mnuOptionsExcludeSystemFolders", "Exclude System Folders", "options.html#exclude"}),
    Toggle(kOptionsSection, "ExcludeHiddenFolders", "False", &O::excludeHiddenFolders,
           {"mnuOptionsExcludeHiddenFolders", "Exclude Hidden Folders", "options.html#exclude"}),
    Toggle(kOptionsSection, "RemindAboutFATNTFSIssue", "True", &O::remindAboutFATNTFSIssue,
           {"mnuOptionsRemindAboutFATNTFSIssue", "Remind About FAT/NTFS Issue", "options.html#comparison"}),
    Toggle(kOptionsSection, "Ignore2SecDiff", "True", &O::ignore2SecDiff,
           {"mnuOptionsIgnore2Sec", "Ignore FAT/NTFS 2 sec. Difference", "options.html#comparison"}),
    Toggle(kOptionsSection, "IgnoreDaylightSavings", "False", &O::ignoreDaylightSavings,
           {"mnuOptionsIgnoreDaylightSavings", "Ignore FAT/NTFS Daylight Savings Time",
            "options.html#comparison"}),
    Word<&O::coolbarStyle>(kOptionsSection, "CoolbarStyle", "Coolbar", kCoolbarStyles, ShownBy::Strips),
    Text(kOptionsSection, "FontName", "", &O::fontName, OptionKind::Text, ShownBy::PaneLooks),
    OptionLine{kOptionsSection, "FontSize", "", OptionKind::FontSize, &O::fontSize, ShownBy::PaneLooks, {}},
    Toggle(
        kOptionsSection, "AutoCompleteFolderPath", "True", &O::autoCompleteFolderPath,
        {"mnuOptionsAutoCompleteFolderPath", "Auto Complete Folder Path While Typing", "options.html#other"},
        ShownBy::PathBoxes),

    Word<&O::windowState>(kFormSection, "WindowState", "Normal", kWindowStates, ShownBy::Geometry),
    Place("Height", "6945", &O::height, OptionKind::Extent),
    Place("Width", "9435", &O::width, OptionKind::Extent),
    Place("Top", "", &O::top, OptionKind::Position),
    Place("Left", "", &O::left, OptionKind::Position),

    Column("SourceColumnOne", "159", &O::sourceColumnOne),
    Column("SourceColumnTwo", "72", &O::sourceColumnTwo),
    Column("SourceColumnThree", "115", &O::sourceColumnThree),
    Column("TargetColumnOne", "159", &O::targetColumnOne),
    Column("TargetColumnTwo", "72", &O::targetColumnTwo),
    Column("TargetColumnThree", "115", &O::targetColumnThree),

    Text(kDupesSection, "FolderPaths", "", &O::folderPaths),
    Flag(kDupesSection, "IncludeSubFolders", "True", &O::includeSubFolders),
    Flag(kDupesSection, "DupesFormLoadedPreviously", "False", &O::dupesFormLoadedPreviously),
    Flag(kDupesSection, "RemoveWarningShown", "False", &O::removeWarningShown),
    Text(kDupesSection, "ExcludeFiles", kExcludeFiles, &O::excludeFiles),
    Toggle(kDupesSection, "NamesMustMatch", "True", &O::namesMustMatch,
           {"mnuOptionsFindDupesCriteriaOpt(0)", "Names Match", "options.html#duplicates"}),
    Toggle(kDupesSection, "SizesMustMatch", "True", &O::sizesMustMatch,
           {"mnuOptionsFindDupesCriteriaOpt(1)", "Sizes Match", "options.html#duplicates"}),
    Toggle(kDupesSection, "CreateTimestampsMustMatch", "False", &O::createTimestampsMustMatch,
           {"mnuOptionsFindDupesCriteriaOpt(2)", "Create Date/Times Match", "options.html#duplicates"}),
    Toggle(
        kDupesSection, "LastModTimestampsMustMatch", "False", &O::lastModTimestampsMustMatch,
        {"mnuOptionsFindDupesCriteriaOpt(3)", "Last Modified Date/Times Match", "options.html#duplicates"}),
    Toggle(kDupesSection, "AttributesMustMatch", "False", &O::attributesMustMatch,
           {"mnuOptionsFindDupesCriteriaOpt(4)", "Attributes Match", "options.html#duplicates"}),
    Toggle(kDupesSection, "ContentsMustMatch", "False", &O::contentsMustMatch,
           {"mnuOptionsFindDupesCriteriaOpt(5)", "Contents Match", "options.html#duplicates"}),
    Toggle(kDupesSection, "IgnoreZeroByteFiles", "True", &O::ignoreZeroByteFiles,
           {"mnuOptionsFindDupesIgnoreOpt(0)", "Ignore Zero Byte Files", "options.html#duplicates"}),
    Toggle(kDupesSection, "IgnoreSystemFiles", "True", &O::ignoreSystemFiles,
           {"mnuOptionsFindDupesIgnoreOpt(1)", "Ignore System Files", "options.html#duplicates"}),
    Toggle(kDupesSection, "IgnoreHiddenFiles", "True", &O::ignoreHiddenFiles,
           {"mnuOptionsFindDupesIgnoreOpt(2)", "Ignore Hidden Files", "options.html#duplicates"}),
    Toggle(kDupesSection, "IgnoreFilesInWindowsDir", "True", &O::ignoreFilesInWindowsDir,
           {"mnuOptionsFindDupesIgnoreOpt(3)", "Ignore Files In the Windows Folder Tree",
            "options.html#duplicates"}),
    Word<&O::removalMethod>(kDupesSection, "RemovalMethod", "MoveToDupesFolder", kRemovalMethods),
    Text(kDupesSection, "UserDefinedMoveFolderPath", "", &O::userDefinedMoveFolderPath),
    Word<&O::hashMethod>(kDupesSection, "HashMethod", "CRC16", kHashMethods),

    Flag(kExtrasSection, "TrueSizes", "False", &O::trueSizes),
    Flag(kExtrasSection, "TrueSizesOffered", "False", &O::trueSizesOffered),
    Flag(kExtrasSection, "GoOnAfterFailure", "False", &O::goOnAfterFailure),
    OptionLine{kExtrasSection,
               "Jobs",
               "0",
               OptionKind::Number,
               NumberField{&O::jobs, 0, kMost},
               ShownBy::CheckMark,
               {}},
    Flag(kExtrasSection, "CoupleAllScrolling", "True", &O::coupleAllScrolling, ShownBy::Scrolling),
    Flag(kExtrasSection, "InlineDifferences", "True", &O::inlineDifferences),
    Flag(kExtrasSection, "CheckBeforeRemoval", "True", &O::checkBeforeRemoval),
    Text(kExtrasSection, "ProtectedDupeFolders", "", &O::protectedDupeFolders),
});

}  // namespace

std::span<const OptionLine> OptionTable() {
    return kTable;
}

}  // namespace vantrel
