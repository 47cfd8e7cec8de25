#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/comparison_results.h"
#include "core/result_row.h"
#include "shell/shell_operations.h"
#include "sync/csync_settings.h"

namespace vantrel {

// One thing that a synchronisation does: it copies an object from `side` to the other, or deletes it from
// `side`.
struct PlannedAction {
    Side side = Side::Left;
    SyncAction action = SyncAction::Leave;  // Copy or Delete
    ResultType type = ResultType::None;
    std::string name{};          // as shown: the row's text, or the path below the sub-folder
    std::string folder{};        // sub-folder, as its row shows it; empty for a row of the panes
    std::string source{};        // full path of the object on `side`
    std::string target{};        // Copy: the full path that it gets on the other side
    std::uint32_t number = 0;    // of its row, or of its record in the sub-folder, from 0
    Currency size{};             // of the object, as shown
    Currency replacedSize{};     // Copy: of what stands at the target, 0 where nothing does
    Expectation expected{};      // what the two were when they were compared
    bool isWholeFolder = false;  // a folder that goes with everything in it
};

// What a synchronisation will do, as plain data, made from the rows of the last comparison and the action
// table alone. What the user confirms and what is carried out are this one object.
struct SyncPlan {
    PerSide<std::string> folders;  // of the comparison, with "/" at the end
    std::vector<ShellRoot> roots;  // which folders these were

    // Rows of the panes, in list order. Deletes come before copies, left before right.
    PerSide<std::vector<PlannedAction>> deletes;
    PerSide<std::vector<PlannedAction>> copies;

    // The files inside one differing sub-folder; in the order of its records.
    struct SubFolder {
        std::string folder{};  // with its marker
        PerSide<std::vector<PlannedAction>> deletes;
        PerSide<std::vector<PlannedAction>> copies;
    };
    // Every differing sub-folder that the run takes in, also one in which nothing is to be done.
    std::vector<SubFolder> subFolders;

    // How many of the table's actions are left out because they would reach too far: what lies behind a link
    // to a folder is neither deleted nor copied nor copied over, and no more is what is or holds the other of
    // the two folders.
    PerSide<std::size_t> spared;

    // How many folders are left out because a part of what is in them is not known.
    PerSide<std::size_t> notWhollyKnown;

    bool LeavesOut() const;  // anything of the two above
    bool IsEmpty() const;
    // All actions in the order of execution: deletes left, deletes right, copies left, copies right, then the
    // same four passes for each sub-folder.
    void ForEach(const std::function<void(const PlannedAction&)>& visit) const;
};

// The texts of rows that a run is limited to ("Synchronize Selected Object(s) Only"); nothing: all rows.
using SelectedTexts = std::optional<std::unordered_set<std::string>>;

// The plan for `results` under `settings`. Nothing is asked of the disk. Only Copy and Delete cells act. What
// the comparison does not know (a folder that could not be listed) is in no record, so it is in no plan.
// Neither is the trash of a volume.
SyncPlan GetListOfFilesAffectedBySync(const ComparisonResults& results, const CSyncSettings& settings,
                                      const SelectedTexts& selected);

// Notes what lies below the folders that are to be deleted whole, so that only what is there now is deleted.
// Those that cannot be looked at wholly leave the plan. Asked before the plan is shown.
void LookAtWholeFolders(const FileSystem& files, SyncPlan& plan);

// What is told of what is left out, a line for each side; empty where there is nothing to tell.
std::string DescribeSpared(const SyncPlan& plan);

// The same for any aligned pair of lists, such as those of the window of sub-folder differences. There are no
// sub-folders in it.
SyncPlan GetListOfFilesAffectedBySync(const PerSide<ResultList>& lists, const PerSide<std::string>& folders,
                                      const CSyncSettings& settings, const SelectedTexts& selected);

// The arithmetic of the space check. Deletes free space but are left out on purpose.
struct SyncSpaceNeed {
    PerSide<Currency> outgoing;  // bytes that the copies from this side take over there
    PerSide<Currency> replaced;  // bytes of this side's copies' counterparts, which they replace
};
SyncSpaceNeed SpaceNeededBySync(const SyncPlan& plan);

struct SyncSpaceAnswer {
    bool enough = true;
    std::string drive;  // of the first side that has not enough
    Currency required;
    Currency available;
};
// `drives` and `available` are those of the two folders. With one drive for both, one sum serves both sides.
SyncSpaceAnswer EnoughSpaceForSync(const SyncSpaceNeed& need, const PerSide<std::string>& drives,
                                   const PerSide<Currency>& available);

}  // namespace vantrel
