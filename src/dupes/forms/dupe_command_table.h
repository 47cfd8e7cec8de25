#pragma once

#include "views/forms/command_entry.h"

namespace vantrel {

// All that the commands of frmFindDuplicates are made from.
CommandTables FindDuplicatesTables();

}  // namespace vantrel
