#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/files/file_system.h"

namespace vantrel {

// The short (8.3) names of a folder by the names that its listing shows, all in the engine's form. Only FAT
// tells them, through a request of its own; every other file system has none, which is no error.
Error ReadShortNames(const FileSystem& files, std::string_view folder,
                     std::unordered_map<std::string, std::string>& shortNames);

}  // namespace vantrel
