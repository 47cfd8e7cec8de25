#pragma once

#include <string_view>

#include "core/toolbox.h"
#include "sync/sync_plan.h"

namespace vantrel {

// Whether the drives of both folders have room for the plan; where one has not, whether the user goes on all
// the same. A drive that is gone is told, and is a no; a permission denied stops nothing. Other errors are
// reported under `routineName` and stop nothing.
bool SpaceSufficesOrUserGoesOn(const Toolbox& tools, const SyncPlan& plan, std::string_view routineName);

}  // namespace vantrel
