#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel {

// Every option of the settings file as a plain value. The members bear the names of their keys; those of an
// enumeration have the codes that their holders use, so that a holder converts with a cast.
struct Options {
    enum class SyncMethod : std::int32_t {
        MakeRightSameAsLeft = 0,
        MakeLeftSameAsRight = 1,
        ReplaceOlderCopyOrphans = 2,
        Custom = 3,
        AddOrphansToLeft = 4,
        AddOrphansToRight = 5,
        ReplaceOlderOnLeft = 6,
        ReplaceOlderOnRight = 7,
    };
    enum class Action : std::int32_t { Leave = 0, Copy = 1, Replace = 2, Delete = 3 };
    enum class ViewType : std::int32_t { All = 0, Different = 1, Similar = 2, Custom = 3 };
    enum class CompareType : std::int32_t { Quick = 0, Thorough = 1, Crc = 2, Sha = 3 };
    enum class CoolbarStyle : std::int32_t { Coolbar, Toolbar, Hidden };
    enum class WindowState : std::int32_t { Normal, Maximized };
    enum class RemovalMethod : std::int32_t {
        Delete = 0,
        Recycle = 1,
        MoveToDupesFolder = 2,
        MoveToOtherFolder = 3
    };
    enum class HashMethod : std::int32_t { Crc16 = 0, Crc32 = 1, Md5 = 2 };

    // [Options]
    std::int32_t numSyncLogEntries = 20;
    bool soundOn = true;
    std::string startSound = "(none)";
    std::string exitSound = "(none)";
    std::string comparisonCompleteSound;
    std::string syncCompleteSound;
    bool viewFileDiffIgnoreCase = false;
    bool viewFileDiffIgnoreWhitespace = false;
    bool viewFileDiffPromptForOptions = true;
    SyncMethod syncMethod = SyncMethod::ReplaceOlderCopyOrphans;
    Action leftFolderNewFilesAction = Action::Copy;
    Action leftFolderOldFilesAction = Action::Replace;
    Action leftFolderOrphanFilesAction = Action::Copy;
    Action leftFolderBinaryFilesAction = Action::Leave;
    Action rightFolderNewFilesAction = Action::Copy;
    Action rightFolderOldFilesAction = Action::Replace;
    Action rightFolderOrphanFilesAction = Action::Copy;
    Action rightFolderBinaryFilesAction = Action::Leave;
    bool showCopyConfirmations = true;
    bool showMoveConfirmations = true;
    bool showDeleteConfirmations = true;
    bool showSynchronizeConfirmations = true;
    bool showDateTimeChangeConfirmations = true;
    bool autoCompareAfterFilter = true;
    bool autoCompareAfterFileOp = true;
    bool autoCompareAfterSync = true;
    bool autoCompareAfterDateTimeChange = true;
    bool autoCompareAfterCreationOfNewFolder = true;
    bool autoCompareAfterCompareMethodChange = true;
    ViewType viewType = ViewType::All;
    bool viewNewerFiles = true;
    bool viewOlderFiles = true;
    bool viewIdenticalFiles = true;
    bool viewOrphanFiles = true;
    bool viewBinaryFiles = true;
    bool viewDifferentSubFolders = true;
    bool viewIdenticalSubFolders = true;
    bool viewOrphanSubFolders = true;
    bool compareSubFolders = true;
    CompareType compareType = CompareType::Quick;
    std::int32_t chunkSize = 500'000;  // bytes
    std::string includeFileTypes;      // comma-separated patterns
    std::string excludeFileTypes;
    bool syncScrolling = true;
    bool showGraphAfterCompare = true;
    bool promptForSyncMethod = true;
    bool excludeSystemFiles = false;
    bool excludeHiddenFiles = false;
    bool excludeSystemFolders = false;
    bool excludeHiddenFolders = false;
    bool remindAboutFATNTFSIssue = true;
    bool ignore2SecDiff = true;
    bool ignoreDaylightSavings = false;
    CoolbarStyle coolbarStyle = CoolbarStyle::Coolbar;
    std::string fontName;
    double fontSize = 0;  // points
    bool autoCompleteFolderPath = true;

    // [Form Dimensions], of the main window while it is neither maximised nor minimised; in twips
    WindowState windowState = WindowState::Normal;
    std::int32_t height = 6945;
    std::int32_t width = 9435;
    std::int32_t top = 0;
    std::int32_t left = 0;

    // [ColumnWidths], in pixels
    std::int32_t sourceColumnOne = 159;
    std::int32_t sourceColumnTwo = 72;
    std::int32_t sourceColumnThree = 115;
    std::int32_t targetColumnOne = 159;
    std::int32_t targetColumnTwo = 72;
    std::int32_t targetColumnThree = 115;

    // [Dupe Options]; lists are joined with "?"
    std::string folderPaths;
    bool includeSubFolders = true;
    bool dupesFormLoadedPreviously = false;
    bool removeWarningShown = false;
    std::string excludeFiles;
    bool namesMustMatch = true;
    bool sizesMustMatch = true;
    bool createTimestampsMustMatch = false;
    bool lastModTimestampsMustMatch = false;
    bool attributesMustMatch = false;
    bool contentsMustMatch = false;
    bool ignoreZeroByteFiles = true;
    bool ignoreSystemFiles = true;
    bool ignoreHiddenFiles = true;
    bool ignoreFilesInWindowsDir = true;
    RemovalMethod removalMethod = RemovalMethod::MoveToDupesFolder;
    std::string userDefinedMoveFolderPath;
    HashMethod hashMethod = HashMethod::Crc16;
};

// What the defaults need to know of this machine.
struct OptionEnvironment {
    std::string doneSound;       // full path of "vtdone.wav"
    std::string fontName;        // the font that the path boxes have of themselves
    double fontSize = 10;        // points
    std::int32_t screenWidth{};  // of the main screen, in twips
    std::int32_t screenHeight{};
    std::int32_t desktopWidth{};   // right and bottom edge of all screens together, in twips; not less than
    std::int32_t desktopHeight{};  // the main screen's
};

enum class OptionKind {
    Boolean,   // "True" and "False"; only exactly "True" is true
    Word,      // one of a list, exactly; any other text is the line's fallback
    Number,    // written with ten digits; a text that is no number leaves the value that is there
    Extent,    // a Number that belongs to the window's geometry
    Position,  // the same; centred by default and beyond the desktop, 0 for a text that is no number
    FontSize,  // points; above 50 becomes 8; written with two digits at least, as one could not be read back
    Text,
    FilterText,  // a Text that is written by SaveFilters only
};

struct OptionWord {
    std::string_view text;
    std::int32_t code;
};

struct WordField {
    std::span<const OptionWord> words;
    std::int32_t fallback;
    std::int32_t (*get)(const Options&);
    void (*set)(Options&, std::int32_t code);
};

struct NumberField {
    std::int32_t Options::*member;
    std::int32_t minimum, maximum;  // what lies outside becomes the nearest of them
};

struct OptionLine {
    std::string_view section;
    std::string_view key;
    std::string_view defaultText;  // empty where DefaultText asks the environment
    OptionKind kind;
    std::variant<bool Options::*, std::string Options::*, double Options::*, NumberField, WordField> field;
};

// One line for each key, in the order of loading and saving.
std::span<const OptionLine> OptionTable();
// The line of a key, without regard to letter case; null where there is none.
const OptionLine* FindOption(std::string_view section, std::string_view key);

// The text that stands for a missing key. `loaded` holds the lines before this one: the place of the window
// follows from its size.
std::string DefaultText(const OptionLine& line, const OptionEnvironment& environment, const Options& loaded);
// Takes a text of the settings file by the rule of the line's kind.
void TakeOptionText(const OptionLine& line, std::string_view text, const OptionEnvironment& environment,
                    Options& options);
// The text to be written.
std::string OptionText(const OptionLine& line, const Options& options);

Options DefaultOptions(const OptionEnvironment& environment);

}  // namespace vantrel
