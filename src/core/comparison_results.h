#pragma once

#include <string>

#include "core/result_list.h"
#include "core/sub_folder_diffs.h"

namespace vantrel {

// Everything that one comparison found, as plain data. It changes as a whole: what a row says always belongs
// to these folders, also while another comparison runs or after one that failed.
struct ComparisonResults {
    PerSide<std::string> folders;  // the compared folders, each with "/" at its end; empty before the first
    HoldLists hold;
    SubFolderDiffsCollection SubFolderDiffs;

    bool HasResult() const { return !hold[Side::Left].IsSentinel() && !folders[Side::Left].empty(); }
};

}  // namespace vantrel
