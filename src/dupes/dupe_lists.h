#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// Lists inside a setting, joined with "?". A "?" that belongs to an item has a backslash before it, which no
// name holds. Empty items are dropped.
std::vector<std::string> SplitDupeList(std::string_view text);
std::string JoinDupeList(const std::vector<std::string>& items);

}  // namespace vantrel
