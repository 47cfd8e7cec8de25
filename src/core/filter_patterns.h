#pragma once

#include <string>
#include <string_view>

namespace vantrel {

// The pattern that a filter takes for this one object: it matches `text` and, but for letter case, nothing
// else. `text` is a name, or that of a folder with the marker at its head; what a pattern gives a meaning, a
// comma among it, stands in brackets. Blanks at its ends do so too, as they are cut off elsewhere.
std::string PatternFor(std::string_view text);

// The pattern of all files with this extension, which is without its dot.
std::string PatternForExtension(std::string_view extension);

// `list` with one more pattern, a comma between them.
void AddPattern(std::string& list, std::string_view pattern);

}  // namespace vantrel
