// The second look at a plan, for what the comparison did not note: what lies in the folders that go whole.
#include <functional>
#include <unordered_set>

#include "core/filters.h"
#include "fileops/expectations.h"
#include "platform/line_end.h"
#include "platform/workers.h"
#include "sync/sync_plan.h"

namespace vantrel {
namespace {

bool InForce(const ScanOptions& filters) {
    return !filters.HasNoFilters() || filters.excludeHiddenFiles || filters.excludeSystemFiles ||
           filters.excludeHiddenFolders || filters.excludeSystemFolders;
}

// Which entries below a folder the filters leave out, each folder being asked about before what is in it.
class FilteredOut {
  public:
    explicit FilteredOut(const ScanOptions& filters)
        : inForce_(InForce(filters)), filter_(NameFilter::ForWalk(filters)) {}

    bool Has(const std::string& path, const FolderEntry& entry) {
        if (!inForce_) return false;
        const std::size_t slash = path.rfind('/');
        const bool isFolder = entry.kind == EntryKind::Folder && !entry.isLink;
        const bool withFolder = slash != std::string::npos && folders_.contains(path.substr(0, slash));
        const bool kept = isFolder
                              ? filter_.KeepsFolder(kFolderMarker + std::string(entry.name), entry.attributes)
                              : filter_.KeepsFile(entry.name, entry.attributes);
        if (!withFolder && kept) return false;
        if (isFolder) folders_.insert(path);
        return true;
    }

  private:
    bool inForce_;
    NameFilter filter_;
    std::unordered_set<std::string> folders_;
};

// What lies in one folder, and whether all of it is known.
struct Inside {
    FolderContents contents;
    std::shared_ptr<SeenBelow> below;  // of one that is to be deleted
    Error error;
};

// Any thread may call it. `step` is called for each entry, and what it throws comes out.
Inside LookInto(const FileSystem& files, const ScanOptions& filters, const std::string& folder, bool deletes,
                const std::function<void()>& step) {
    FilteredOut filteredOut(filters);
    Inside inside;
    if (deletes) inside.below = std::make_shared<SeenBelow>();
    FolderContents& contents = inside.contents;
    inside.error = WalkBelow(files, folder, [&](const std::string& path, const FolderEntry& entry) {
        step();
        ++contents.objects;
        if (filteredOut.Has(path, entry)) ++contents.filteredOut;
        if (!entry.isLink && entry.reason == UnknownReason::SpecialObject) ++contents.specialObjects;
        if (entry.isLink || entry.kind == EntryKind::File)
            contents.bytes += Currency::FromWhole(static_cast<std::int64_t>(entry.seen.size));
        if (deletes) inside.below->emplace(path, SightingOf(entry));
    });
    return inside;
}

// Looks into the whole folders of a list, several at a time, and takes over what was found in their order.
// For each action of the list: whether all is known of it.
std::vector<bool> LookIntoAll(const Toolbox& tools, Workers& workers, const ScanOptions& filters,
                              const std::function<void()>& yield, std::vector<PlannedAction>& actions) {
    std::vector<bool> isKnown(actions.size(), true);
    JobQueue<Inside> queue(workers, {.jobs = 2 * workers.Count() + 1});
    std::size_t next = 0;
    for (std::size_t i = 0; i < actions.size(); ++i) {
        for (; next < actions.size() && queue.HasRoom(); ++next) {
            if (!actions[next].isWholeFolder) continue;
            const bool deletes = actions[next].action == SyncAction::Delete;
            queue.Add([&yield, files = tools.files, filters, folder = actions[next].source, deletes,
                       alone = workers.Count() == 0](const StopFlag& stop) {
                return LookInto(files, filters, folder, deletes, [&] {
                    if (alone) yield();
                    if (stop.IsRequested()) throw Cancelled();
                });
            });
        }
        PlannedAction& action = actions[i];
        if (!action.isWholeFolder) continue;
        Inside inside = queue.TakeNext(yield);
        isKnown[i] = inside.error.IsOk();
        action.contents = inside.contents;
        action.room = inside.contents.bytes;
        if (inside.below) action.expected.below = std::move(inside.below);
    }
    return isKnown;
}

std::string Counted(std::uint64_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace

void LookAtWholeFolders(const Toolbox& tools, std::int32_t jobs, const ScanOptions& filters, SyncPlan& plan,
                        const std::function<void()>& onYield) {
    const std::function<void()> yield = [&] {
        tools.loop.Yield();
        if (onYield) onYield();
    };
    Workers workers(WorkerCount(jobs));
    for (const Side side : kBothSides) {
        const std::vector<bool> isKnown = LookIntoAll(tools, workers, filters, yield, plan.deletes[side]);
        std::size_t position = 0;
        std::erase_if(plan.deletes[side], [&](const PlannedAction& action) {
            if (isKnown[position++]) return false;
            plan.leftOut.Add(side, LeftOutReason::NotWhollyKnown, action.source);
            return true;
        });
        // What cannot be looked at now is told when it is to be copied.
        static_cast<void>(LookIntoAll(tools, workers, filters, yield, plan.copies[side]));
        for (const PlannedAction& action : plan.copies[side])
            if (action.isWholeFolder) plan.specialObjects += action.contents.specialObjects;
    }
}

std::string DescribeNotes(const SyncPlan& plan) {
    std::uint64_t filteredDeletes = 0, filteredCopies = 0, linksForFiles = 0, filesForLinks = 0;
    plan.ForEach([&](const PlannedAction& action) {
        (action.action == SyncAction::Delete ? filteredDeletes : filteredCopies) +=
            action.contents.filteredOut;
        linksForFiles += action.linkChange == LinkChange::LinkForFile ? 1 : 0;
        filesForLinks += action.linkChange == LinkChange::FileForLink ? 1 : 0;
    });
    std::string text;
    const auto tell = [&](std::uint64_t count, const std::string& sentence) {
        if (count == 0) return;
        if (!text.empty()) text += kLineEnd;
        text += sentence;
    };
    tell(plan.specialObjects, Counted(plan.specialObjects, "special object") + " passed over.");
    tell(filteredDeletes, Counted(filteredDeletes, "object") +
                              " that the filters leave out will be deleted with the folders they lie in.");
    tell(filteredCopies, Counted(filteredCopies, "object") +
                             " that the filters leave out will be copied with the folders they lie in.");
    tell(linksForFiles, "A link is put in a file's place by " + Counted(linksForFiles, "copy action") + ".");
    tell(filesForLinks, "A file is put in a link's place by " + Counted(filesForLinks, "copy action") + ".");
    return text;
}

}  // namespace vantrel
