#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/comparison_results.h"
#include "core/listings_ahead.h"
#include "core/pair_comparison.h"
#include "core/side.h"
#include "core/sub_folder_diffs.h"
#include "core/walk_level.h"

namespace vantrel {

// Walks the trees below two folders of one name at once, each tree once, and gives from that one walk what
// the sizes and the analysis need.
//
// Links are followed, for the sizes as well, but a folder that is already on the branch is not entered again.
// What cannot be listed to its end is unknown: below it nothing is recorded for either side. So is an entry
// that is no file and no folder, with its counterpart. A link without a counterpart is one object, whatever
// it leads to.
//
// The walk keeps its levels itself, so its depth is bounded by memory alone, and holds few folders open. It
// belongs to the one thread; workers list folders and compare files ahead of it, and it takes what they found
// in its own order.
class TreeWalk {
  public:
    // One side's folder above the sub-folder, open, with its path.
    struct Root {
        std::shared_ptr<OpenFolder> folder;
        std::string path;  // with "/" at its end
    };
    // `filter` is that of a walk. The rest must outlive the object.
    TreeWalk(const ComparisonContext& context, PairComparison& pairs,
             std::shared_ptr<const NameFilter> filter, const PerSide<Root>& roots);

    // The names of the walks that will follow, in this order, for those who read ahead.
    void Announce(const std::vector<PerSide<std::string>>& names);

    struct Outcome {
        PerSide<Currency> size;  // bytes of all files, whatever the filters say, as far as they are known
        bool complete = true;
        // One of the compared folders lies below this sub-folder of the other, not through a link.
        bool holdsOtherFolder = false;
        std::size_t specialObjects = 0;  // FIFOs, sockets and devices that were passed over
        // Objects below the sub-folder that take part, not through a link; without a counterpart all.
        PerSide<std::uint64_t> objects;
    };
    // `names` are the real names of the sub-folder, empty on a side that lacks it. With both sides there the
    // differences go to `diffs`, otherwise only the size is found. Throws ComparisonCancelled.
    Outcome Walk(const PerSide<std::string_view>& names, CSubFolderDiffs& diffs);

    // Of the walks since the last call, each already noted in the log.
    std::vector<UnlistedFolder> TakeUnlistedFolders() { return std::exchange(unlisted_, {}); }

  private:
    using Item = LevelItem;
    using Mode = WalkMode;
    using Level = WalkLevel;
    static constexpr std::size_t kLevelsHeldOpen = 64;

    AheadFolder* Enter(AheadFolder* above, const PerSide<std::string_view>& names, Mode mode);
    Level& Push(Mode mode, AheadFolder* folder);
    void Pop();
    bool Step(Level& level);
    void TakeItem(Level& level, Item item);
    void TakeFolders(Level& level, const Item& item);
    bool StepForSize(Level& level);
    void Descend(Level& level, const Item& item, Mode mode);
    void DescendAside(Level& level, Side side, const FolderListing::Entry& entry, Mode mode,
                      AheadFolder* above);
    void Finish(Level& child);
    void CountObjects(const Level& child);
    PerSide<bool> List(Level& child);
    void Advance();
    enum class Opening { Opened, OnBranch, Failed };
    Opening OpenFirst(Level& first, Side side, std::string_view name);
    Opening OpenInto(Level& child, Side side, Level& parent, const FolderListing::Entry& entry);
    Opening AddSource(Level& child, Side side, Error error, OpenFolder folder, std::string path);
    bool JoinBranch(Level& child, Side side, FileId id);
    Error Reopen(Side side, FolderListing::Source& source) const;
    void Prefetch(Level& level);
    static const FolderListing::Entry& EntryOf(const Level& level, const Item& item, Side side) {
        return level.EntryOf(item, side);
    }
    static bool OpenFile(const Level& level, const Item& item, Side side, ReadFile& file);
    bool LearnByOpening(Level& level, const Item& item, Side side, ReadFile& file);
    bool AreAlikeAtOnce(Level& level, const Item& item);
    bool TakeVerdict(Level& level, const Item& item);
    void Learn(Level& level, const Item& item, Side side, const Seen& seen);
    void LookAtFiles(Level& level, Item& item);
    std::string FilePath(const Level& level, const Item& item, Side side) const;
    PerSide<ScannedFile> FilesOf(const Level& level, const Item& item) const;
    void CompareFiles(Level& level, const Item& item);
    void JudgeOccupied(Level& level, const Item& item);
    void RecordUnknown(Level& level, const Item& item, const PerSide<UnknownReason>& reasons);
    void Record(const Level& level, const Item& item, const PairTypes& types,
                const PerSide<UnknownReason>* unknown = nullptr);
    void MarkUnlisted(Side side, Mode mode, const std::string& path, Error error, std::string lastFile);
    void MarkUnknownEntries(const Level& level);
    void MarkUnknownEntry(Side side, const Level& level, const FolderListing::Entry& entry,
                          UnknownReason reason);
    std::string FullPath(Side side, std::string_view below) const;

    const ComparisonContext& context_;
    PairComparison& pairs_;
    std::shared_ptr<const NameFilter> filter_;
    const PerSide<Root>& roots_;
    // Called for each entry, and while something is waited for. Both throw ComparisonCancelled.
    std::function<void()> check_, whileWaiting_;
    PerSide<std::string> base_;  // full path of the sub-folder, with "/" at its end
    PerSide<std::vector<FileId>> branch_;
    std::vector<std::unique_ptr<Level>> levels_;
    std::size_t depth_ = 0;
    Outcome outcome_;
    CSubFolderDiffs* diffs_ = nullptr;
    std::vector<UnlistedFolder> unlisted_;
    PerSide<std::string> pathScratch_;
    std::unique_ptr<ListingsAhead> ahead_;  // none without workers
    std::size_t sinceAdvance_ = 0;          // verdicts taken
};

}  // namespace vantrel
