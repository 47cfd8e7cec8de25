#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/filters.h"
#include "core/result_list.h"
#include "core/sub_folder_diffs.h"
#include "platform/error.h"

namespace vantrel {

// A folder that could not be opened or listed to its end.
struct UnlistedFolder {
    Error error;
    std::string folder;    // full path
    std::string lastFile;  // the name that was looked at last; may be empty
};

// Everything that one comparison found, as plain data. It changes as a whole: what a row says always belongs
// to these folders, also while another comparison runs or after one that failed.
struct ComparisonResults {
    PerSide<std::string> folders;   // the compared folders, each with "/" at its end; empty before the first
    PerSide<FileId> folderIds;      // which folders these were
    PerSide<FileTime> foldersMade;  // when they were made; 0 where that is not told
    std::optional<Side> inner;      // the folder that lies inside the other one
    HoldLists hold;
    SubFolderDiffsCollection SubFolderDiffs;
    std::size_t specialObjects = 0;          // FIFOs, sockets and devices that were passed over
    std::vector<UnlistedFolder> unlisted{};  // below the sub-folders, each noted in the log
    // Objects that take part, at any depth, as far as they are known; below orphan folders all there are.
    PerSide<std::uint64_t> objects;
    ScanOptions taken{};      // what was taken in
    bool subFolders = false;  // whether the sub-folders were

    bool HasResult() const { return !hold[Side::Left].IsSentinel() && !folders[Side::Left].empty(); }
};

// That one of the compared folders lies inside the other, for the user; lines end in CR LF. There must be an
// inner one.
std::string DescribeNesting(const ComparisonResults& results);

}  // namespace vantrel
