#pragma once

#include <vector>

#include "core/comparison_results.h"
#include "core/toolbox.h"

namespace vantrel {

// Tells the user of all sub-folders that a comparison could not list, in one message; nothing where there are
// none. The log has each by itself.
void ReportUnlistedFolders(ErrorReporter& reporter, const std::vector<UnlistedFolder>& unlisted);
// Writes the same to ERR_DETAIL.TXT alone, for a comparison that is not to stop anyone with a box.
[[nodiscard]] Error RecordUnlistedFolders(const Toolbox& tools, const std::vector<UnlistedFolder>& unlisted);

}  // namespace vantrel
