#pragma once

#include <string_view>

namespace vantrel {

// Line end of every text shown or written.
inline constexpr std::string_view kLineEnd = "\r\n";

}  // namespace vantrel
