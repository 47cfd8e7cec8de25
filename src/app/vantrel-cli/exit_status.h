#pragma once

namespace vantrel::cli {

// Exit statuses in the manner of diff.
enum ExitStatus { kNoDifferences = 0, kDifferences = 1, kTrouble = 2 };

}  // namespace vantrel::cli
