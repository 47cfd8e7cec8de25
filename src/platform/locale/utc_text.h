#pragma once

#include <array>
#include <string_view>

#include "platform/locale/file_time.h"

namespace vantrel {

// UtcText in the caller's room, for a great many of them.
using UtcChars = std::array<char, 32>;
std::string_view UtcText(FileTime utc, UtcChars& room);

}  // namespace vantrel
