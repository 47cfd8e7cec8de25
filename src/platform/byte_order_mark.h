#pragma once

#include <string_view>

namespace vantrel {

// What a text in UTF-8 may begin with (the Unicode Standard, section 23.8).
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace vantrel
