#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vantrel {

// As many lines as a message box or a tool tip has room for.
inline constexpr std::size_t kMostBoxLines = 20;

// The lines, each behind a line end; of many only the first, and how many more there are.
std::string BoxLines(const std::vector<std::string>& lines);

}  // namespace vantrel
