#pragma once

#include <string_view>

#include "output.h"
#include "platform/locale/file_time.h"

namespace vantrel::cli {

// A text of the engine as a JSON string, with its quotes.
void WriteJsonString(std::string_view text, Output& out);

// As in "2020-09-13T12:26:40.0000000Z", with its quotes.
void WriteJsonTime(FileTime utc, Output& out);

}  // namespace vantrel::cli
