#pragma once

#include <string_view>
#include <vector>

namespace vantrel::cli {

// The sub-commands. Each takes the arguments behind its name and gives the exit status.
int RunCompare(const std::vector<std::string_view>& arguments);
int RunSync(const std::vector<std::string_view>& arguments);
int RunHistory(const std::vector<std::string_view>& arguments);
int RunFiles(const std::vector<std::string_view>& arguments);
int RunHexdump(const std::vector<std::string_view>& arguments);
int RunDupes(const std::vector<std::string_view>& arguments);
int RunDiff(const std::vector<std::string_view>& arguments);

}  // namespace vantrel::cli
