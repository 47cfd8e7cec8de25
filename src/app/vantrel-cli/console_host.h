#pragma once

#include <string>

#include "core/comparison_results.h"
#include "core/folder_comparison.h"
#include "engine.h"

namespace vantrel::cli {

// A comparison from the console with its endings there: the errors of the run on standard error, and the
// reminder. `paths` are full paths. The results are those of the report, and there are none after a cancel.
ComparisonReport CompareOnConsole(Engine& engine, const Toolbox& tools, CCompare& compare,
                                  const PerSide<std::string>& paths);

// Prints ERRORLOG.TXT on standard error.
void PrintErrorLog(const Toolbox& tools);

}  // namespace vantrel::cli
