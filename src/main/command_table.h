#pragma once

#include <span>
#include <string_view>

#include "views/forms/command_entry.h"

namespace vantrel {

// The menu bar with all that hangs below it.
std::span<const CommandEntry> MainMenuEntries();
// The two pop-up menus of the panes and the two menus of a double click. Entries without a parent are the
// menus themselves.
std::span<const CommandEntry> PopupMenuEntries();
// The buttons of the two strips, in their order.
std::span<const ToolbarEntry> ToolbarEntries();

// All that the commands of the main window are made from.
CommandTables MainWindowTables();

// Commands that stand in no menu: what the buttons "Properties" and "Help" of the strips do.
inline constexpr std::string_view kCommandOpenOptions = "ShowOptions";
inline constexpr std::string_view kCommandOpenHelp = "OpenHelpFile";

}  // namespace vantrel
