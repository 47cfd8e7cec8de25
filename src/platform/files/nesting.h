#pragma once

#include <string_view>

#include "platform/files/file_system.h"

namespace vantrel {

// Whether the folder `inner` lies somewhere below the folder `outer`. What the paths lead to counts: links on
// the way are seen through, and so are folders that are mounted at a second place. Links inside the folders
// are not looked for. False for one and the same folder, and where it cannot be told.
bool LiesInside(const FileSystem& files, std::string_view inner, std::string_view outer);

}  // namespace vantrel
