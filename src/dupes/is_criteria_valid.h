#pragma once

#include "core/toolbox.h"
#include "dupes/cls_dupe_settings.h"
#include "platform/workers.h"

namespace vantrel {

// Whether a search can begin; a box tells what is wrong. Folders that do not answer are waited for as long as
// the user does: Cancelled is thrown.
bool IsCriteriaValid(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order);

}  // namespace vantrel
