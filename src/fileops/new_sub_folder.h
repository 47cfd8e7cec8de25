#pragma once

#include <string>
#include <string_view>

#include "platform/files/file_system.h"

namespace vantrel {

// Makes the folder `name`, in the engine's form, in the folder `parent`: one level, and nothing that stands
// there is touched. Empty where it was made; otherwise why not, as the user is told.
std::string MakeSubFolder(const FileSystem& files, std::string_view parent, std::string_view name);

// The engine's form of a name that a person typed.
std::string NameFromUser(std::string_view typed);

}  // namespace vantrel
