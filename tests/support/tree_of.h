#pragma once

#include <map>
#include <string>

namespace vantrel::testing {

// What is below a folder, which ends in "/": path to "d", "l:" and where it leads, "f:" and the content, or
// "s" (special).
std::map<std::string, std::string> TreeOf(const std::string& folder);

}  // namespace vantrel::testing
