// The second look at a plan, for what the comparison did not note: what lies in the folders that go whole.
#include <unordered_set>

#include "core/filters.h"
#include "fileops/expectations.h"
#include "platform/line_end.h"
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

Error LookInto(const Toolbox& tools, const ScanOptions& filters, PlannedAction& action) {
    FilteredOut filteredOut(filters);
    const bool deletes = action.action == SyncAction::Delete;
    auto below = std::make_shared<SeenBelow>();
    FolderContents& contents = action.contents;
    Error error =
        WalkBelow(tools.files, action.source, [&](const std::string& path, const FolderEntry& entry) {
            tools.loop.Yield();
            ++contents.objects;
            if (filteredOut.Has(path, entry)) ++contents.filteredOut;
            if (!entry.isLink && entry.reason == UnknownReason::SpecialObject) ++contents.specialObjects;
            if (entry.isLink || entry.kind == EntryKind::File)
                contents.bytes += Currency::FromWhole(static_cast<std::int64_t>(entry.seen.size));
            if (deletes) below->emplace(path, SightingOf(entry));
        });
    if (deletes) action.expected.below = std::move(below);
    action.room = contents.bytes;
    return error;
}

std::string Counted(std::uint64_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace

void LookAtWholeFolders(const Toolbox& tools, const ScanOptions& filters, SyncPlan& plan) {
    for (const Side side : kBothSides) {
        std::erase_if(plan.deletes[side], [&](PlannedAction& action) {
            if (!action.isWholeFolder || LookInto(tools, filters, action).IsOk()) return false;
            plan.leftOut.Add(side, LeftOutReason::NotWhollyKnown, action.source);
            return true;
        });
        for (PlannedAction& action : plan.copies[side]) {
            if (!action.isWholeFolder) continue;
            // What cannot be looked at now is told when it is to be copied.
            static_cast<void>(LookInto(tools, filters, action).IsOk());
            plan.specialObjects += action.contents.specialObjects;
        }
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
