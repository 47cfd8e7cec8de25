#include "settings/options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

#include "platform/locale/numeric_text.h"

namespace vantrel {
namespace {

using O = Options;

constexpr std::string_view kOptions = "Options";
constexpr std::string_view kForm = "Form Dimensions";
constexpr std::string_view kColumns = "ColumnWidths";
constexpr std::string_view kDupes = "Dupe Options";

template <typename Enum>
constexpr OptionWord W(std::string_view text, Enum code) {
    return {text, static_cast<std::int32_t>(code)};
}

constexpr std::array kSyncMethods = {
    W("ReplaceOlderCopyOrphans", O::SyncMethod::ReplaceOlderCopyOrphans),
    W("MakeRightSameAsLeft", O::SyncMethod::MakeRightSameAsLeft),
    W("MakeLeftSameAsRight", O::SyncMethod::MakeLeftSameAsRight),
    W("Custom", O::SyncMethod::Custom),
    W("AddOrphansToLeft", O::SyncMethod::AddOrphansToLeft),
    W("AddOrphansToRight", O::SyncMethod::AddOrphansToRight),
    W("ReplaceOlderOnLeft", O::SyncMethod::ReplaceOlderOnLeft),
    W("ReplaceOlderOnRight", O::SyncMethod::ReplaceOlderOnRight),
};
constexpr std::array kActions = {W("Leave", O::Action::Leave), W("Copy", O::Action::Copy),
                                 W("Replace", O::Action::Replace), W("Delete", O::Action::Delete)};
constexpr std::array kOrphanActions = {W("Leave", O::Action::Leave), W("Copy", O::Action::Copy),
                                       W("Delete", O::Action::Delete)};
constexpr std::array kViewTypes = {W("All", O::ViewType::All), W("Different", O::ViewType::Different),
                                   W("Similar", O::ViewType::Similar), W("Custom", O::ViewType::Custom)};
constexpr std::array kCompareTypes = {W("Quick", O::CompareType::Quick),
                                      W("Thorough", O::CompareType::Thorough), W("CRC", O::CompareType::Crc),
                                      W("SHA", O::CompareType::Sha)};
constexpr std::array kCoolbarStyles = {W("Coolbar", O::CoolbarStyle::Coolbar),
                                       W("Toolbar", O::CoolbarStyle::Toolbar),
                                       W("Hidden", O::CoolbarStyle::Hidden)};
constexpr std::array kWindowStates = {W("Normal", O::WindowState::Normal),
                                      W("Maximized", O::WindowState::Maximized)};
constexpr std::array kRemovalMethods = {W("Delete", O::RemovalMethod::Delete),
                                        W("Recycle", O::RemovalMethod::Recycle),
                                        W("MoveToDupesFolder", O::RemovalMethod::MoveToDupesFolder),
                                        W("MoveToOtherFolder", O::RemovalMethod::MoveToOtherFolder)};
constexpr std::array kHashMethods = {W("CRC16", O::HashMethod::Crc16), W("CRC32", O::HashMethod::Crc32),
                                     W("MD5", O::HashMethod::Md5)};

constexpr std::string_view kExcludeFiles =
    "autoexec.bat?command.com?drvspace.bin?system.dat?user.dat?system.ini?win.ini?protocol.ini?mscreate.dir?"
    "anti-vir.dat?*.drv?*.sys?*.ocx?*.dll";

constexpr OptionLine Flag(std::string_view section, std::string_view key, std::string_view defaultText,
                          bool O::*member) {
    return {section, key, defaultText, OptionKind::Boolean, member};
}

constexpr OptionLine Text(std::string_view section, std::string_view key, std::string_view defaultText,
                          std::string O::*member, OptionKind kind = OptionKind::Text) {
    return {section, key, defaultText, kind, member};
}

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMostTwips = 1'000'000;
constexpr std::int32_t kMostPixels = 32'767;

constexpr OptionLine Number(std::string_view section, std::string_view key, std::string_view defaultText,
                            std::int32_t O::*member, std::int32_t minimum, std::int32_t maximum,
                            OptionKind kind = OptionKind::Number) {
    return {section, key, defaultText, kind, NumberField{member, minimum, maximum}};
}

template <auto Member, std::size_t Size>
constexpr OptionLine Word(std::string_view section, std::string_view key, std::string_view defaultText,
                          const std::array<OptionWord, Size>& words, std::int32_t fallback) {
    using Enum = std::remove_cvref_t<decltype(std::declval<O>().*Member)>;
    return {section, key, defaultText, OptionKind::Word,
            WordField{words, fallback, [](const O& options) { return static_cast<int>(options.*Member); },
                      [](O& options, std::int32_t code) { options.*Member = static_cast<Enum>(code); }}};
}

// An unknown word falls to the default, which is the first word that equals the default text.
template <auto Member, std::size_t Size>
constexpr OptionLine Word(std::string_view section, std::string_view key, std::string_view defaultText,
                          const std::array<OptionWord, Size>& words) {
    std::int32_t fallback = words[0].code;
    for (const OptionWord& word : words)
        if (word.text == defaultText) fallback = word.code;
    return Word<Member>(section, key, defaultText, words, fallback);
}

// A damaged action does nothing to files, whatever the default is.
template <auto Member, std::size_t Size>
constexpr OptionLine ActionLine(std::string_view key, std::string_view defaultText,
                                const std::array<OptionWord, Size>& words) {
    return Word<Member>(kOptions, key, defaultText, words, static_cast<std::int32_t>(O::Action::Leave));
}

constexpr std::array kTable = {
    Number(kOptions, "NumSyncLogEntries", "20", &O::numSyncLogEntries, 0, kMost),
    Flag(kOptions, "SoundOn", "True", &O::soundOn),
    Text(kOptions, "StartSound", "(none)", &O::startSound),
    Text(kOptions, "ExitSound", "(none)", &O::exitSound),
    Text(kOptions, "ComparisonCompleteSound", "", &O::comparisonCompleteSound),
    Text(kOptions, "SyncCompleteSound", "", &O::syncCompleteSound),
    Flag(kOptions, "ViewFileDiffIgnoreCase", "False", &O::viewFileDiffIgnoreCase),
    Flag(kOptions, "ViewFileDiffIgnoreWhitespace", "False", &O::viewFileDiffIgnoreWhitespace),
    Flag(kOptions, "ViewFileDiffPromptForOptions", "True", &O::viewFileDiffPromptForOptions),
    Word<&O::syncMethod>(kOptions, "SyncMethod", "ReplaceOlderCopyOrphans", kSyncMethods),
    ActionLine<&O::leftFolderNewFilesAction>("LeftFolderNewFilesAction", "Copy", kActions),
    ActionLine<&O::leftFolderOldFilesAction>("LeftFolderOldFilesAction", "Replace", kActions),
    ActionLine<&O::leftFolderOrphanFilesAction>("LeftFolderOrphanFilesAction", "Copy", kOrphanActions),
    ActionLine<&O::leftFolderBinaryFilesAction>("LeftFolderBinaryFilesAction", "Leave", kActions),
    ActionLine<&O::rightFolderNewFilesAction>("RightFolderNewFilesAction", "Copy", kActions),
    ActionLine<&O::rightFolderOldFilesAction>("RightFolderOldFilesAction", "Replace", kActions),
    ActionLine<&O::rightFolderOrphanFilesAction>("RightFolderOrphanFilesAction", "Copy", kOrphanActions),
    ActionLine<&O::rightFolderBinaryFilesAction>("RightFolderBinaryFilesAction", "Leave", kActions),
    Flag(kOptions, "ShowCopyConfirmations", "True", &O::showCopyConfirmations),
    Flag(kOptions, "ShowMoveConfirmations", "True", &O::showMoveConfirmations),
    Flag(kOptions, "ShowDeleteConfirmations", "True", &O::showDeleteConfirmations),
    Flag(kOptions, "ShowSynchronizeConfirmations", "True", &O::showSynchronizeConfirmations),
    Flag(kOptions, "ShowDateTimeChangeConfirmations", "True", &O::showDateTimeChangeConfirmations),
    Flag(kOptions, "AutoCompareAfterFilter", "True", &O::autoCompareAfterFilter),
    Flag(kOptions, "AutoCompareAfterFileOp", "True", &O::autoCompareAfterFileOp),
    Flag(kOptions, "AutoCompareAfterSync", "True", &O::autoCompareAfterSync),
    Flag(kOptions, "AutoCompareAfterDateTimeChange", "True", &O::autoCompareAfterDateTimeChange),
    Flag(kOptions, "AutoCompareAfterCreationOfNewFolder", "True", &O::autoCompareAfterCreationOfNewFolder),
    Flag(kOptions, "AutoCompareAfterCompareMethodChange", "True", &O::autoCompareAfterCompareMethodChange),
    Word<&O::viewType>(kOptions, "ViewType", "All", kViewTypes),
    Flag(kOptions, "ViewNewerFiles", "True", &O::viewNewerFiles),
    Flag(kOptions, "ViewOlderFiles", "True", &O::viewOlderFiles),
    Flag(kOptions, "ViewIdenticalFiles", "True", &O::viewIdenticalFiles),
    Flag(kOptions, "ViewOrphanFiles", "True", &O::viewOrphanFiles),
    Flag(kOptions, "ViewBinaryFiles", "True", &O::viewBinaryFiles),
    Flag(kOptions, "ViewDifferentSubFolders", "True", &O::viewDifferentSubFolders),
    Flag(kOptions, "ViewIdenticalSubFolders", "True", &O::viewIdenticalSubFolders),
    Flag(kOptions, "ViewOrphanSubFolders", "True", &O::viewOrphanSubFolders),
    Flag(kOptions, "CompareSubFolders", "True", &O::compareSubFolders),
    Word<&O::compareType>(kOptions, "CompareType", "Quick", kCompareTypes),
    Number(kOptions, "ChunkSize", "500000", &O::chunkSize, 1, kMost),
    Text(kOptions, "IncludeFileTypes", "", &O::includeFileTypes, OptionKind::FilterText),
    Text(kOptions, "ExcludeFileTypes", "", &O::excludeFileTypes, OptionKind::FilterText),
    Flag(kOptions, "SyncScrolling", "True", &O::syncScrolling),
    Flag(kOptions, "ShowGraphAfterCompare", "True", &O::showGraphAfterCompare),
    Flag(kOptions, "PromptForSyncMethod", "True", &O::promptForSyncMethod),
    Flag(kOptions, "ExcludeSystemFiles", "False", &O::excludeSystemFiles),
    Flag(kOptions, "ExcludeHiddenFiles", "False", &O::excludeHiddenFiles),
    Flag(kOptions, "ExcludeSystemFolders", "False", &O::excludeSystemFolders),
    Flag(kOptions, "ExcludeHiddenFolders", "False", &O::excludeHiddenFolders),
    Flag(kOptions, "RemindAboutFATNTFSIssue", "True", &O::remindAboutFATNTFSIssue),
    Flag(kOptions, "Ignore2SecDiff", "True", &O::ignore2SecDiff),
    Flag(kOptions, "IgnoreDaylightSavings", "False", &O::ignoreDaylightSavings),
    Word<&O::coolbarStyle>(kOptions, "CoolbarStyle", "Coolbar", kCoolbarStyles),
    Text(kOptions, "FontName", "", &O::fontName),
    OptionLine{kOptions, "FontSize", "", OptionKind::FontSize, &O::fontSize},
    Flag(kOptions, "AutoCompleteFolderPath", "True", &O::autoCompleteFolderPath),

    Word<&O::windowState>(kForm, "WindowState", "Normal", kWindowStates),
    Number(kForm, "Height", "6945", &O::height, 0, kMostTwips, OptionKind::Extent),
    Number(kForm, "Width", "9435", &O::width, 0, kMostTwips, OptionKind::Extent),
    Number(kForm, "Top", "", &O::top, 0, kMostTwips, OptionKind::Position),
    Number(kForm, "Left", "", &O::left, 0, kMostTwips, OptionKind::Position),

    Number(kColumns, "SourceColumnOne", "159", &O::sourceColumnOne, 0, kMostPixels),
    Number(kColumns, "SourceColumnTwo", "72", &O::sourceColumnTwo, 0, kMostPixels),
    Number(kColumns, "SourceColumnThree", "115", &O::sourceColumnThree, 0, kMostPixels),
    Number(kColumns, "TargetColumnOne", "159", &O::targetColumnOne, 0, kMostPixels),
    Number(kColumns, "TargetColumnTwo", "72", &O::targetColumnTwo, 0, kMostPixels),
    Number(kColumns, "TargetColumnThree", "115", &O::targetColumnThree, 0, kMostPixels),

    Text(kDupes, "FolderPaths", "", &O::folderPaths),
    Flag(kDupes, "IncludeSubFolders", "True", &O::includeSubFolders),
    Flag(kDupes, "DupesFormLoadedPreviously", "False", &O::dupesFormLoadedPreviously),
    Flag(kDupes, "RemoveWarningShown", "False", &O::removeWarningShown),
    Text(kDupes, "ExcludeFiles", kExcludeFiles, &O::excludeFiles),
    Flag(kDupes, "NamesMustMatch", "True", &O::namesMustMatch),
    Flag(kDupes, "SizesMustMatch", "True", &O::sizesMustMatch),
    Flag(kDupes, "CreateTimestampsMustMatch", "False", &O::createTimestampsMustMatch),
    Flag(kDupes, "LastModTimestampsMustMatch", "False", &O::lastModTimestampsMustMatch),
    Flag(kDupes, "AttributesMustMatch", "False", &O::attributesMustMatch),
    Flag(kDupes, "ContentsMustMatch", "False", &O::contentsMustMatch),
    Flag(kDupes, "IgnoreZeroByteFiles", "True", &O::ignoreZeroByteFiles),
    Flag(kDupes, "IgnoreSystemFiles", "True", &O::ignoreSystemFiles),
    Flag(kDupes, "IgnoreHiddenFiles", "True", &O::ignoreHiddenFiles),
    Flag(kDupes, "IgnoreFilesInWindowsDir", "True", &O::ignoreFilesInWindowsDir),
    Word<&O::removalMethod>(kDupes, "RemovalMethod", "MoveToDupesFolder", kRemovalMethods),
    Text(kDupes, "UserDefinedMoveFolderPath", "", &O::userDefinedMoveFolderPath),
    Word<&O::hashMethod>(kDupes, "HashMethod", "CRC16", kHashMethods),
};

std::string PaddedTo(std::size_t length, std::string text) {
    if (text.size() < length) text.insert(0, length - text.size(), '0');
    return text;
}

std::string FontSizeText(double points) {
    char buffer[32];
    const auto [end, fault] = std::to_chars(buffer, buffer + sizeof buffer, points);
    return PaddedTo(2, fault == std::errc() ? std::string(buffer, end) : std::string());
}

std::int32_t Bounded(double value, const NumberField& field) {
    return static_cast<std::int32_t>(std::lround(
        std::clamp(value, static_cast<double>(field.minimum), static_cast<double>(field.maximum))));
}

bool IsTop(const NumberField& field) {
    return field.member == &O::top;
}

std::int32_t Centred(const NumberField& field, const OptionEnvironment& environment, const Options& options) {
    return std::max(0, IsTop(field) ? (environment.screenHeight - options.height) / 2
                                    : (environment.screenWidth - options.width) / 2);
}

void TakeNumber(const OptionLine& line, const NumberField& field, std::string_view text,
                const OptionEnvironment& environment, Options& options) {
    const std::optional<double> value = NumericValue(text);
    if (line.kind != OptionKind::Position) {
        if (value) options.*field.member = Bounded(*value, field);
        return;
    }
    const double edge = IsTop(field) ? std::max(environment.screenHeight, environment.desktopHeight)
                                     : std::max(environment.screenWidth, environment.desktopWidth);
    options.*field.member =
        value && *value > edge ? Centred(field, environment, options) : Bounded(value.value_or(0), field);
}

// The word of a code; that of the fallback where this key has no word for it.
std::string_view WordOf(const WordField& field, std::int32_t code) {
    const auto word = std::find_if(field.words.begin(), field.words.end(),
                                   [code](const OptionWord& each) { return each.code == code; });
    return word != field.words.end() ? word->text : WordOf(field, field.fallback);
}

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};

}  // namespace

std::span<const OptionLine> OptionTable() {
    return kTable;
}

const OptionLine* FindOption(std::string_view section, std::string_view key) {
    const auto same = [](std::string_view a, std::string_view b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](char x, char y) { return (x | 0x20) == (y | 0x20); });
    };
    const auto found = std::find_if(kTable.begin(), kTable.end(), [&](const OptionLine& line) {
        return same(line.section, section) && same(line.key, key);
    });
    return found == kTable.end() ? nullptr : &*found;
}

std::string DefaultText(const OptionLine& line, const OptionEnvironment& environment, const Options& loaded) {
    if (line.kind == OptionKind::Position)
        return std::to_string(Centred(std::get<NumberField>(line.field), environment, loaded));
    if (line.kind == OptionKind::FontSize) return FontSizeText(environment.fontSize);
    if (const auto* text = std::get_if<std::string O::*>(&line.field)) {
        if (*text == &O::fontName) return environment.fontName;
        if (*text == &O::comparisonCompleteSound || *text == &O::syncCompleteSound)
            return environment.doneSound;
    }
    return std::string(line.defaultText);
}

void TakeOptionText(const OptionLine& line, std::string_view text, const OptionEnvironment& environment,
                    Options& options) {
    std::visit(
        Overloaded{[&](bool O::*member) { options.*member = text == "True"; },
                   [&](std::string O::*member) { options.*member = text; },
                   [&](double O::*member) {
                       const std::optional<double> points = NumericValue(text);
                       if (points && *points > 0) options.*member = *points > 50 ? 8 : *points;
                   },
                   [&](const NumberField& field) { TakeNumber(line, field, text, environment, options); },
                   [&](const WordField& field) {
                       const auto word =
                           std::find_if(field.words.begin(), field.words.end(),
                                        [&](const OptionWord& each) { return each.text == text; });
                       field.set(options, word == field.words.end() ? field.fallback : word->code);
                   }},
        line.field);
}

std::string OptionText(const OptionLine& line, const Options& options) {
    return std::visit(
        Overloaded{[&](bool O::*member) { return std::string(options.*member ? "True" : "False"); },
                   [&](std::string O::*member) { return options.*member; },
                   [&](double O::*member) { return FontSizeText(options.*member); },
                   [&](const NumberField& field) {
                       return PaddedTo(10, std::to_string(Bounded(options.*field.member, field)));
                   },
                   [&](const WordField& field) { return std::string(WordOf(field, field.get(options))); }},
        line.field);
}

Options DefaultOptions(const OptionEnvironment& environment) {
    Options options;
    for (const OptionLine& line : kTable)
        TakeOptionText(line, DefaultText(line, environment, options), environment, options);
    return options;
}

}  // namespace vantrel
