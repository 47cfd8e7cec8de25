#pragma once

#include <string_view>

namespace vantrel {

// Whether this is UTF-8 without control characters but line ends and tabs. No program writes others into
// settings or lists, and nearly every other kind of file has some.
bool IsPlainText(std::string_view text);

}  // namespace vantrel
