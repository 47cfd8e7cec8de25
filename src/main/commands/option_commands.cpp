// The toggles and choices of the Options menu. Each is bound to where its option lives while the program
// runs; the menu shows what stands there.
#include <variant>

#include "main/application.h"
#include "main/commands/handlers.h"

namespace vantrel {
namespace {

// Where a toggle lives. The option of the sub-folders is a property of its own.
struct CompareSubFolders {};
struct Toggle {
    const char* item;
    std::variant<bool Options::*, bool CCompare::*, bool CSoundSettings::*, CompareSubFolders> place;
};

constexpr Toggle kToggles[] = {
    {"mnuOptionsCompareSubFolders", CompareSubFolders{}},
    {"mnuOptionsRemindAboutFATNTFSIssue", &CCompare::RemindAboutFATNTFSIssue},
    {"mnuOptionsIgnore2Sec", &CCompare::IgnoreFAT_NTFS_TwoSecDiff},
    {"mnuOptionsIgnoreDaylightSavings", &CCompare::IgnoreFAT_NTFS_DaylightSavings},
    {"mnuOptionsExcludeSystemFiles", &CCompare::ExcludeSystemFiles},
    {"mnuOptionsExcludeHiddenFiles", &CCompare::ExcludeHiddenFiles},
    {"mnuOptionsExcludeSystemFolders", &CCompare::ExcludeSystemFolders},
    {"mnuOptionsExcludeHiddenFolders", &CCompare::ExcludeHiddenFolders},
    {"mnuOptionsAutoCompareAfterFilter", &Options::autoCompareAfterFilter},
    {"mnuOptionsAutoCompareAfterFileOp", &Options::autoCompareAfterFileOp},
    {"mnuOptionsAutoCompareAfterSync", &Options::autoCompareAfterSync},
    {"mnuOptionsAutoCompareAfterDateTimeChange", &Options::autoCompareAfterDateTimeChange},
    {"mnuOptionsAutoCompareAfterCreationOfNewFolder", &Options::autoCompareAfterCreationOfNewFolder},
    {"mnuOptionsAutoCompareAfterCompareMethodChange", &Options::autoCompareAfterCompareMethodChange},
    {"mnuOptionsConfirmCopy", &Options::showCopyConfirmations},
    {"mnuOptionsConfirmMove", &Options::showMoveConfirmations},
    {"mnuOptionsConfirmDelete", &Options::showDeleteConfirmations},
    {"mnuOptionsConfirmSynchronize", &Options::showSynchronizeConfirmations},
    {"mnuOptionsConfirmDateTimeChange", &Options::showDateTimeChangeConfirmations},
    {"mnuOptionsViewFileDiffsPromptForOptions", &Options::viewFileDiffPromptForOptions},
    {"mnuOptionsViewFileDiffsIgnoreWhitespace", &Options::viewFileDiffIgnoreWhitespace},
    {"mnuOptionsViewFileDiffsIgnoreCase", &Options::viewFileDiffIgnoreCase},
    {"mnuOptionsFindDupesCriteriaOpt(0)", &Options::namesMustMatch},
    {"mnuOptionsFindDupesCriteriaOpt(1)", &Options::sizesMustMatch},
    {"mnuOptionsFindDupesCriteriaOpt(2)", &Options::createTimestampsMustMatch},
    {"mnuOptionsFindDupesCriteriaOpt(3)", &Options::lastModTimestampsMustMatch},
    {"mnuOptionsFindDupesCriteriaOpt(4)", &Options::attributesMustMatch},
    {"mnuOptionsFindDupesCriteriaOpt(5)", &Options::contentsMustMatch},
    {"mnuOptionsFindDupesIgnoreOpt(0)", &Options::ignoreZeroByteFiles},
    {"mnuOptionsFindDupesIgnoreOpt(1)", &Options::ignoreSystemFiles},
    {"mnuOptionsFindDupesIgnoreOpt(2)", &Options::ignoreHiddenFiles},
    {"mnuOptionsFindDupesIgnoreOpt(3)", &Options::ignoreFilesInWindowsDir},
    {"mnuOptionsSoundOn", &CSoundSettings::SoundOn},
    {"mnuOptionsPromptForSyncMethod", &Options::promptForSyncMethod},
    {"mnuOptionsSyncScrolling", &Options::syncScrolling},
    {"mnuOptionsShowGraphAfterCompare", &Options::showGraphAfterCompare},
    {"mnuOptionsAutoCompleteFolderPath", &Options::autoCompleteFolderPath},
};

bool Read(const Application& program, const Toggle& toggle) {
    struct Reader {
        const Application& from;
        bool operator()(bool Options::*field) const { return from.options.*field; }
        bool operator()(bool CCompare::*field) const { return from.compare.*field; }
        bool operator()(bool CSoundSettings::*field) const { return from.sounds.*field; }
        bool operator()(CompareSubFolders) const { return from.compare.CompareSubFolders(); }
    };
    return std::visit(Reader{program}, toggle.place);
}

void Flip(Application& program, const Toggle& toggle) {
    struct Flipper {
        Application& in;
        void operator()(bool Options::*field) const { in.options.*field = !(in.options.*field); }
        void operator()(bool CCompare::*field) const { in.compare.*field = !(in.compare.*field); }
        void operator()(bool CSoundSettings::*field) const { in.sounds.*field = !(in.sounds.*field); }
        void operator()(CompareSubFolders) const {
            in.compare.SetCompareSubFolders(!in.compare.CompareSubFolders());
        }
    };
    std::visit(Flipper{program}, toggle.place);
}

// The items of an exclusive group and the values that they stand for.
template <typename Value>
struct Choice {
    const char* item;
    Value value;
};

constexpr Choice<CompareMethod> kMethods[] = {
    {"mnuOptionsCompareTypeQuick", CompareMethod::SizeAndDate},
    {"mnuOptionsCompareTypeThoroughString", CompareMethod::Contents},
    {"mnuOptionsCompareTypeThoroughCRC", CompareMethod::Crc32},
    {"mnuOptionsCompareTypeSHA", CompareMethod::Sha1},
};

constexpr Choice<Options::CoolbarStyle> kStrips[] = {
    {"mnuOptionsToolbarHide", Options::CoolbarStyle::Hidden},
    {"mnuOptionsToolbarShowCoolbar", Options::CoolbarStyle::Coolbar},
    {"mnuOptionsToolbarShowToolbar", Options::CoolbarStyle::Toolbar},
};

constexpr Choice<Options::RemovalMethod> kRemovals[] = {
    {"mnuOptionsFindDupesRemovalOpt(0)", Options::RemovalMethod::Delete},
    {"mnuOptionsFindDupesRemovalOpt(1)", Options::RemovalMethod::Recycle},
    {"mnuOptionsFindDupesRemovalOpt(2)", Options::RemovalMethod::MoveToDupesFolder},
    {"mnuOptionsFindDupesRemovalOpt(3)", Options::RemovalMethod::MoveToOtherFolder},
};

constexpr Choice<Options::HashMethod> kHashes[] = {
    {"mnuOptionsFindDupesHashMethodOpt(0)", Options::HashMethod::Crc16},
    {"mnuOptionsFindDupesHashMethodOpt(1)", Options::HashMethod::Crc32},
    {"mnuOptionsFindDupesHashMethodOpt(2)", Options::HashMethod::Md5},
};

// Binds the checks of a group to `value`, and makes each item call `choose` with its own.
template <typename Value, std::size_t Count, typename Choose>
void InstallChoices(Commands& commands, const Choice<Value> (&choices)[Count], const Value& value,
                    Choose choose) {
    for (const Choice<Value>& choice : choices) {
        commands.BindCheck(choice.item, [&value, &choice] { return value == choice.value; });
        commands.SetHandler(choice.item, [choose, &choice] { choose(choice.value); });
    }
}

void ChooseMethod(Application& application, CompareMethod method) {
    application.compare.CompareMethod = method;
    application.AutoCompareStep(application.options.autoCompareAfterCompareMethodChange);
}

}  // namespace

void InstallOptionCommands(Application& application) {
    Commands& commands = application.GetCommands();
    for (const Toggle& toggle : kToggles) {
        commands.BindCheck(toggle.item, [&application, &toggle] { return Read(application, toggle); });
        commands.SetHandler(toggle.item, [&application, &toggle] {
            Flip(application, toggle);
            application.Window().ShowOptions();
        });
    }
    Options& options = application.options;
    InstallChoices(commands, kMethods, application.compare.CompareMethod,
                   [&application](CompareMethod method) { ChooseMethod(application, method); });
    InstallChoices(commands, kStrips, options.coolbarStyle, [&application](Options::CoolbarStyle style) {
        application.options.coolbarStyle = style;
        application.Window().ShowOptions();
    });
    InstallChoices(commands, kRemovals, options.removalMethod,
                   [&options](Options::RemovalMethod method) { options.removalMethod = method; });
    InstallChoices(commands, kHashes, options.hashMethod,
                   [&options](Options::HashMethod method) { options.hashMethod = method; });
    // This one asks for a folder, in a window that is not there yet.
    commands.SetHandler("mnuOptionsFindDupesRemovalOpt(3)", nullptr);

    for (const char* item : {"mnuOptionsRestoreDefaults", "mnuFileRestoreDefaultSessionSettings"})
        commands.SetHandler(item, [&application] { application.RestoreDefaults(); });
}

}  // namespace vantrel
