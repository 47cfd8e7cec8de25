#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vantrel {

enum class CommandKind : std::uint8_t {
    Command,
    Check,      // flips an option
    Exclusive,  // one of the Exclusive entries of its menu is checked
    Menu,
    Separator,
};

// One line of a menu. The order of the entries is the order in their menus.
struct CommandEntry {
    CommandKind kind = CommandKind::Command;
    std::string_view name;    // of the item; elements of an array bear their index, as in "name(0)"
    std::string_view parent;  // menu that the entry stands in; empty: the menu bar, or a pop-up menu
    std::string_view caption;
    std::string_view icon{};    // name of the picture, where it has one
    std::string_view key{};     // acts in the panes
    std::string_view sameAs{};  // pop-ups: the command that it stands for
};

// The menu bar with all that hangs below it.
std::span<const CommandEntry> MainMenuEntries();
// The two pop-up menus of the panes and the two menus of a double click. Entries without a parent are the
// menus themselves.
std::span<const CommandEntry> PopupMenuEntries();
// In both tables; null where there is none.
const CommandEntry* FindCommand(std::string_view name);

// The buttons that the two strips share, in their order.
struct ToolbarEntry {
    std::string_view command;
    std::string_view icon;
    int toolbarIndex;  // VTToolbar
    std::string_view toolbarCaption;
    int coolbarIndex;
    std::string_view coolbarCaption;
    std::string_view tip;
};
std::span<const ToolbarEntry> ToolbarEntries();

// Commands that stand in no menu: what the buttons "Properties" and "Help" of the strips do.
inline constexpr std::string_view kCommandOpenOptions = "ShowOptions";
inline constexpr std::string_view kCommandOpenHelp = "OpenHelpFile";

// The four pictures beside each path box: imgSelectSource(0..3) and imgSelectTarget(0..3).
enum class PathIcon : std::uint8_t { Select = 0, UpToParent = 1, CreateSubFolder = 2, Explore = 3 };
inline constexpr int kPathIconCount = 4;

}  // namespace vantrel
