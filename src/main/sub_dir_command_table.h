#pragma once

#include <span>

#include "views/forms/command_entry.h"

namespace vantrel {

// All that the commands of frmSubDirDiffs are made from, and the buttons of SubDirDiffsToolbar.
CommandTables SubDirDiffsTables();
std::span<const ToolbarEntry> SubDirDiffsToolbarEntries();

// What the button "Delete" does; it stands in no menu.
inline constexpr std::string_view kCommandDeleteByButton = "SubDirDiffsToolbarDelete";

}  // namespace vantrel
