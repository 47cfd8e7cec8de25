#pragma once

#include <string>
#include <string_view>

#include "platform/files/file_system.h"

namespace vantrel {

// The attributes of a file, or of what a link leads to, as one text: type and permissions as "ls -l" writes
// them, then those of "read-only", "hidden", "system", "immutable" and "append-only" that it has. Two texts
// are equal where all of these are.
Error GetAttributeText(const FileSystem& files, std::string_view path, std::string& out);

}  // namespace vantrel
