#pragma once

#include <optional>
#include <string>
#include <vector>

#include "compare_request.h"
#include "core/comparison_results.h"
#include "sync/csync_settings.h"
#include "sync/emptying.h"
#include "sync/sync_plan.h"

namespace vantrel::cli {

// What the options of a synchronization say.
struct SyncRequest {
    CompareRequest compare;
    std::optional<std::string> method;  // as given
    bool planOnly = false;
    bool agreed = false;     // --yes
    bool keepGoing = false;  // after a failure
    EmptyingPermits permits{};
    std::vector<std::string> select;  // as given, with other bytes in the engine's form
    std::string programFolder;        // as given; empty: the program's own
};

// They write to `request`, which must outlive them.
std::vector<OptionSpec> SyncOptions(SyncRequest& request);
// "--program-folder DIR", which other commands have as well.
OptionSpec ProgramFolderOption(std::string& folder);

// The full path of an existing folder that was given for --program-folder, in the engine's form; empty for an
// empty one. Throws std::runtime_error where there is no such folder.
std::string FullProgramFolder(const std::string& given);

// The method of the request or of its settings file into `settings`, which stand on the options of that file.
// Not empty: what is wrong.
std::string TakeSyncMethod(const Engine& engine, const SyncRequest& request, CSyncSettings& settings);

// How many records the history in the program folder keeps: what the window's settings there say, and without
// such a settings file, or its key, those of this run.
std::int32_t HistoryLengthOf(const Toolbox& tools, const Options& options);

// The rows that the user named, by their texts; nothing where none was named. A name that is written as it
// stands is that one; letter case is ignored where no row is, and one alone comes into question. `wrong` says
// what is the matter with a name, and is empty where each was found.
SelectedTexts FindSelected(const ComparisonResults& results, const std::vector<std::string>& names,
                           std::string& wrong);

}  // namespace vantrel::cli
