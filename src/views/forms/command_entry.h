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

// A line between the entries of a menu; one that is shown or hidden has a name.
constexpr CommandEntry SeparatorIn(std::string_view parent, std::string_view name = {}) {
    return {CommandKind::Separator, name, parent, {}};
}

// A button that the two strips share.
struct ToolbarEntry {
    std::string_view command;
    std::string_view icon;
    int toolbarIndex;  // VTToolbar
    std::string_view toolbarCaption;
    int coolbarIndex;
    std::string_view coolbarCaption;
    std::string_view tip;
};

// The text name of the routine behind a command, where it is not "<window>.<item>_Click".
struct OddRoutine {
    std::string_view command;
    std::string_view routine;
};

// What the commands of a window are made from.
struct CommandTables {
    std::span<const CommandEntry> menuBar;        // with all that hangs below it
    std::span<const CommandEntry> popups;         // entries without a parent are the menus themselves
    std::span<const std::string_view> separate;   // commands that stand in no menu
    std::span<const std::string_view> busyMenus;  // the menus that are disabled while a job runs
    std::string_view window{};                    // its name, with which the names of the routines begin
    std::span<const OddRoutine> oddRoutines{};
    std::span<const std::string_view> windowKeys{};  // commands whose key acts in the whole window
};

}  // namespace vantrel
