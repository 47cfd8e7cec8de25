#pragma once

#include <cstdint>
#include <string_view>

#include "filetools/cancel_check.h"
#include "platform/files/file_system.h"

namespace vantrel {

// How much of a file is ASCII text, as a whole percentage that is 100 only where all of it is: printable
// characters, tab, LF, vertical tab, form feed and CR. 100 for an empty file. Throws ErrorException where it
// cannot be read.
std::int32_t GetAsciiPercent(const FileSystem& files, std::string_view path, const CancelCheck& check);

}  // namespace vantrel
