#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrel::cli {

// Columns that a text takes on a terminal: wide characters two, combining ones none.
std::size_t DisplayWidth(std::string_view text);
// The head of the text that fits into `width` columns.
std::string CutToWidth(std::string_view text, std::size_t width);
// DisplayName for a text of several lines: its line ends stay.
std::string DisplayLines(std::string_view text);

}  // namespace vantrel::cli
