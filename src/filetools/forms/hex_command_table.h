#pragma once

#include "views/forms/command_entry.h"

namespace vantrel {

// All that the commands of frmHexDump are made from.
CommandTables HexDumpTables();

}  // namespace vantrel
