#pragma once

#include <vector>

#include "core/comparison_results.h"
#include "diagnostics/error_reporter.h"

namespace vantrel {

// Tells the user of all sub-folders that a comparison could not list, in one message; nothing where there are
// none. The log has each by itself.
void ReportUnlistedFolders(ErrorReporter& reporter, const std::vector<UnlistedFolder>& unlisted);

}  // namespace vantrel
