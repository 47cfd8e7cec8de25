#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/currency.h"

namespace vantrel {

// Text routines on paths in the engine's form. None of them asks the disk.

// The path with exactly one "/" at its end. Empty stays empty.
std::string NormalizePath(std::string_view path);
// The path without "/" at its end; "/" stays "/". Empty stays empty.
std::string WithoutTrailingSlash(std::string_view path);
// `folder` and `name` joined by one "/"; the other one alone where one is empty.
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
// case. ".." is kept, because with links it cannot be resolved in the text; so is the "/" at either end.
std::string ProperCase(std::string_view path);

// A size with a fitting unit. Below 1,024 it counts bytes: "0 Bytes", "1 Byte", "1023 Bytes". From there on
// KB, MB, GB and TB, each 1,024 of the one before, with at most two decimals, rounded half up, without zeros
// at their end: "1 KB", "1.5 KB", "2.25 MB". What rounds up to 1,024 of a unit is written as 1 of the next.
// The decimal sign is a dot. A negative size has a "-" before it.
std::string ConvertBytesToCorrectByteTypeString(Currency size);

}  // namespace vantrel
