#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "output.h"
#include "sync/sync_execution.h"
#include "sync/sync_plan.h"

namespace vantrel::cli {

using Actions = std::vector<const PlannedAction*>;

Actions ActionsOf(const SyncPlan& plan);
// Those that were done.
Actions ActionsDone(const SyncReport& report);

// One JSON object a line.
void WriteJsonLines(const Actions& actions, Output& out);

enum class Told { Planned, Done };
// Aligned columns, and a line of totals.
void WriteTextColumns(const Actions& actions, Told told, Output& out);

// What was not done, each with its full path and reason, for `say`; of what was not reached only the first
// few are named. And how many times could not be kept.
void TellNotDone(const SyncReport& report, bool cancelledByUser,
                 const std::function<void(const std::string&)>& say);

}  // namespace vantrel::cli
