#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/currency.h"

namespace vantrel {

// Text routines on paths in the engine's form. None of them asks the disk.

// The path with exactly one "/" at its end. Empty stays empty.
std::string NormalizePath(std::string_view path);
// The path without "/" at its end; "/" stays "/".
std::string WithoutTrailingSlash(std::string_view path);
// `folder` and `name` joined by one "/".
std::string JoinPath(std::string_view folder, std::string_view name);
// What stands behind the last "/"; empty when the path ends in one, the whole text when it has none.
std::string_view GetLastItemInPath(std::string_view path);
// Position (from 1) of the next "/" at or after position `start` (from 1); 0 where there is none.
std::size_t GetNextSlashPos(std::string_view path, std::size_t start);
// The folder above, without a trailing "/" unless it is "/"; empty for "/" and for a text without a "/".
std::string GetParentFolderName(std::string_view path);
// What remains of `text` behind `head`; all of it when it does not begin so.
std::string_view RemainingString(std::string_view text, std::string_view head);
// Without the dot; empty where there is none. A leading dot begins no extension.
std::string_view GetFilenameExtension(std::string_view name);
// The canonical form of a path: "." and empty parts removed, no change of letters, since names here differ in
// case.
// ".." is kept, because with links it cannot be resolved in the text.
std::string ProperCase(std::string_view path);

// A size with a fitting unit: "0 Bytes", "1 Byte"?, see the source of the steps in paths.cpp.
std::string ConvertBytesToCorrectByteTypeString(Currency size);

}  // namespace vantrel
