#pragma once

#include <string>
#include <string_view>

namespace vantrel {

// A text for the eye alone: control characters but tab as their pictures (U+2400 and on, U+2421 for DEL), the
// other invisible ones that change how a line runs (C1, marks of direction, line separators) and bytes that
// are no UTF-8 as U+FFFD. A terminal executes nothing of it, and what it shows runs from left to right as it
// is stored.
std::string VisibleText(std::string_view text);

}  // namespace vantrel
