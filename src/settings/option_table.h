#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "settings/options.h"

namespace vantrel {

// The sections of the settings file that hold options.
inline constexpr std::string_view kOptionsSection = "Options";
inline constexpr std::string_view kFormSection = "Form Dimensions";
inline constexpr std::string_view kColumnsSection = "ColumnWidths";
inline constexpr std::string_view kDupesSection = "Dupe Options";
inline constexpr std::string_view kExtrasSection = "Extras";

// What "NumSyncLogEntries" may be: 1 to this.
inline constexpr std::int32_t kMostSyncLogEntries = 32'000;

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

// What must follow at once when an option changes.
enum class ShownBy {
    CheckMark,  // nothing but the mark of its menu item, where it has one: what it governs asks when it runs
    SubFolderRecords,  // the last analysis of sub-folders, which is dropped
    ViewToggles,       // the strip between the panes, and the marks of the View menu
    Geometry,          // window and columns
    Strips,
    PaneLooks,
    Scrolling,  // the two panes, coupled or each for itself
    PathBoxes,  // ask with every key that is typed
};
// Each but CheckMark, in the order in which loaded options are brought onto the screen.
inline constexpr std::array kShownAtOnce{ShownBy::SubFolderRecords, ShownBy::ViewToggles, ShownBy::Geometry,
                                         ShownBy::Strips,           ShownBy::PaneLooks,   ShownBy::Scrolling,
                                         ShownBy::PathBoxes};

// The menu item that flips an option. The menus take the caption from here.
struct MenuToggle {
    std::string_view item;     // name; empty: the option has no such item
    std::string_view caption;  // with the mark of its access key
    std::string_view help;     // file and anchor below docs/help, where the caption stands
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

enum class TooSmall {
    BecomesMinimum,
    IsNoNumber,  // where the minimum would throw away what is kept: a text like "-5" is damage, no wish
};

struct NumberField {
    std::int32_t Options::*member;
    std::int32_t minimum, maximum;  // what lies outside becomes the nearest of them
    TooSmall tooSmall = TooSmall::BecomesMinimum;
};

struct OptionLine {
    std::string_view section;
    std::string_view key;
    std::string_view defaultText;  // empty where DefaultText asks the environment
    OptionKind kind;
    std::variant<bool Options::*, std::string Options::*, double Options::*, NumberField, WordField> field;
    ShownBy shownBy;
    MenuToggle toggle;  // of a Boolean
};

// One line for each key, in the order of loading and saving.
std::span<const OptionLine> OptionTable();

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
