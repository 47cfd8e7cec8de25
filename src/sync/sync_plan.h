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
#include "sync/left_out.h"
#include "sync/trash_folders.h"

namespace vantrel {

// Whether a copy changes what the object at its target is.
enum class LinkChange : std::uint8_t { None, LinkForFile, FileForLink };

// What lies in a folder, not through links.
struct FolderContents {
    std::uint64_t objects = 0;
    std::uint64_t filteredOut = 0;     // of these, left out by the filters of the comparison
    std::uint64_t specialObjects = 0;  // of these, FIFOs, sockets and devices
    Currency bytes;                    // of files and of links themselves
};

// One thing that a synchronisation does: it copies an object from `side` to the other, or deletes it from
// `side`.
struct PlannedAction {
    Side side = Side::Left;
    SyncAction action = SyncAction::Leave;  // Copy or Delete
    ResultType type = ResultType::None;
    std::string name{};               // as shown: the row's text, or the path below the sub-folder
    std::string folder{};             // sub-folder, as its row shows it; empty for a row of the panes
    std::string source{};             // full path of the object on `side`
    std::string target{};             // Copy: the full path that it gets on the other side
    std::uint32_t number = 0;         // of its row, or of its record in the sub-folder, from 0
    Currency size{};                  // of the object, as shown
    Currency replacedSize{};          // Copy: of what stands at the target, 0 where nothing does
    Currency room{}, replacedRoom{};  // the same as they are on the disk, of links themselves
    LinkChange linkChange = LinkChange::None;
    Expectation expected{};      // what the two were when they were compared
    bool isWholeFolder = false;  // a folder that goes with everything in it
    bool forGood = false;        // Delete: of a list whose objects do not go to the bin
    FolderContents contents{};   // of a whole folder, once it was looked into
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

    // What the table speaks of and nothing is done with.
    LeftOut leftOut;

    std::size_t specialObjects = 0;  // without a counterpart, passed over; no trouble
    PerSide<std::uint64_t> objects;  // that the comparison found on each side, at any depth

    bool IsEmpty() const;
    // All actions in the order of execution: deletes left, deletes right, copies left, copies right, then the
    // same four passes for each sub-folder.
    void ForEach(const std::function<void(const PlannedAction&)>& visit) const;
};

// The texts of rows that a run is limited to ("Synchronize Selected Object(s) Only"); nothing: all rows.
using SelectedTexts = std::optional<std::unordered_set<std::string>>;

// The plan for `results` under `settings`. Nothing is asked of the disk. Only Copy and Delete cells act. What
// the comparison does not know (a folder that could not be listed) is in no record, so it is in no plan.
// Neither is a trash folder, by its name in the top folder of a volume or by what `trash` says.
SyncPlan GetListOfFilesAffectedBySync(const ComparisonResults& results, const CSyncSettings& settings,
                                      const SelectedTexts& selected, const TrashFolders& trash = {});

// Looks into the folders that are to go whole: what lies in those that are to be deleted is noted, so that
// only what is there now is deleted, and counted in all of them. Those that are to be deleted and cannot be
// looked into wholly leave the plan. Asked before the plan is shown; yields. `jobs` as WorkerCount takes
// them: several folders are looked into at a time. `onYield` is called meanwhile, and ends it by an
// exception.
void LookAtWholeFolders(const Toolbox& tools, std::int32_t jobs, const ScanOptions& filters, SyncPlan& plan,
                        const std::function<void()>& onYield = nullptr);

// What a user is told with the plan, beside its actions and what is left out, a line each: objects that were
// passed over, objects that go although the filters leave them out, links in the place of files. May be
// empty.
std::string DescribeNotes(const SyncPlan& plan);

// The same for any aligned pair of lists, such as those of the window of sub-folder differences. There are no
// sub-folders in it. `trash` as it is seen from `folders`.
SyncPlan GetListOfFilesAffectedBySync(const PerSide<ResultList>& lists, const PerSide<std::string>& folders,
                                      const CSyncSettings& settings, const SelectedTexts& selected,
                                      const TrashFolders& trash = {});

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
