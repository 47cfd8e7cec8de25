#pragma once

#include <string_view>

#include "output.h"

namespace vantrel::cli {

// A text of the engine as a JSON string, with its quotes.
void WriteJsonString(std::string_view text, Output& out);

}  // namespace vantrel::cli
