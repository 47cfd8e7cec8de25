#pragma once

#include <optional>
#include <string_view>

namespace vantrel {

// The value of a text that is a decimal number and nothing else: blanks around it and a sign are allowed, a
// comma, hexadecimal digits, "inf" and "nan" are not. Settings and input boxes are read with it, whatever the
// locale.
std::optional<double> NumericValue(std::string_view text);

}  // namespace vantrel
