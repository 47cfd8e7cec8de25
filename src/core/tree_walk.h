#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/folder_listing.h"
#include "core/pair_comparison.h"
#include "core/side.h"
#include "core/sub_folder_diffs.h"

namespace vantrel {

// A folder that could not be opened or listed to its end.
struct UnlistedFolder {
    Error error;
    std::string folder;    // full path
    std::string lastFile;  // the name that was looked at last; may be empty
};

// Walks the trees below two folders of one name at once, each tree once, and gives from that one walk what
// the sizes and the analysis need.
//
// Links are followed, for the sizes as well, but a folder that is already on the branch is not entered again.
// What cannot be listed to its end is unknown: below it nothing is recorded for either side. Folders of one
// side that differ in letter case only count as one folder.
//
// The walk keeps its levels itself, so its depth is bounded by memory alone, and holds few folders open.
class TreeWalk {
  public:
    // One side's folder above the sub-folder, open, with its path.
    struct Root {
        OpenFolder folder;
        std::string path;  // with "/" at its end
    };
    // `filter` is that of a walk. All must outlive the object.
    TreeWalk(const ComparisonContext& context, PairComparison& pairs, const NameFilter& filter,
             const PerSide<Root>& roots);

    struct Outcome {
        PerSide<Currency> size;  // bytes of all files, whatever the filters say, as far as they are known
        bool complete = true;
        // One of the compared folders lies below this sub-folder of the other, not through a link.
        bool holdsOtherFolder = false;
    };
    // `names` are the real names of the sub-folder, empty on a side that lacks it. With both sides there the
    // differences go to `diffs`, otherwise only the size is found. Throws ComparisonCancelled.
    Outcome Walk(const PerSide<std::string_view>& names, CSubFolderDiffs& diffs);

    // Of the walks since the last call, each already noted in the log.
    std::vector<UnlistedFolder> TakeUnlistedFolders() { return std::exchange(unlisted_, {}); }

  private:
    enum class Mode : std::uint8_t {
        Compare,
        Size,       // no records; what cannot be listed makes the walk incomplete
        AsideSize,  // in a folder that the options exclude: its troubles are only noted
    };
    struct Range {
        std::size_t begin = 0, end = 0;
        bool IsEmpty() const { return begin == end; }
    };
    struct Item {
        PerSide<Range> at;  // positions in the listings; empty on a side that lacks the key
        bool isFolder = false;
        bool IsEmpty() const { return at[Side::Left].IsEmpty() && at[Side::Right].IsEmpty(); }
        bool IsPair() const { return !at[Side::Left].IsEmpty() && !at[Side::Right].IsEmpty(); }
    };
    struct Level {
        PerSide<FolderListing> listing;
        PerSide<std::size_t> next, nextAside;
        PerSide<std::size_t> ahead;         // how far pairs were prefetched; never beyond the next folder
        PerSide<std::size_t> branchLength;  // before this level
        PerSide<Elsewhere> elsewhere;       // that of all that is in it
        Mode mode = Mode::Compare;
    };
    static constexpr std::size_t kLevelsHeldOpen = 64;

    Level& Push(Mode mode);
    void Pop();
    bool Step(Level& level);
    bool NextItem(const Level& level, PerSide<std::size_t>& cursor, Item& item) const;
    void Descend(Level& level, const Item& item, Mode mode);
    void DescendAside(Level& level, Side side, const FolderListing::Entry& entry, Mode mode);
    void Finish(Level& child);
    bool OpenInto(Level& child, Side side, Level& parent, const FolderListing::Entry& entry);
    bool AddSource(Level& child, Side side, Error error, OpenFolder folder, std::string path);
    Error Reopen(Side side, FolderListing::Source& source) const;
    bool IsUnknown(const Level& level, const Item& item) const;
    void Prefetch(Level& level);
    static bool HasStat(const Level& level, const Item& item, Side side);
    static const OpenFolder& FolderOf(const Level& level, const Item& item, Side side);
    static bool OpenFile(const Level& level, const Item& item, Side side, ReadFile& file);
    bool LearnByOpening(Level& level, const Item& item, Side side, ReadFile& file);
    bool AreAlikeAtOnce(Level& level, const Item& item);
    void Learn(Level& level, const Item& item, Side side, const ReadFile& file);
    void LookAtFiles(Level& level, Item& item);
    PerSide<ScannedFile> FilesOf(const Level& level, const Item& item) const;
    std::string FilePath(const Level& level, const Item& item, Side side) const;
    void CompareFiles(Level& level, const Item& item);
    void NoteTwins(Side side, const FolderListing& listing, const Range& range);
    void MarkUnlisted(Side side, Mode mode, const std::string& path, Error error, std::string lastFile);
    void MarkUnknownEntries(Side side, const Level& level);
    void MarkUnknownEntry(Side side, const Level& level, const FolderListing::Entry& entry);
    std::string FullPath(Side side, std::string_view below) const;

    const ComparisonContext& context_;
    PairComparison& pairs_;
    const NameFilter& filter_;
    const PerSide<Root>& roots_;
    PerSide<std::string> base_;  // full path of the sub-folder, with "/" at its end
    PerSide<std::vector<FileId>> branch_;
    std::vector<std::unique_ptr<Level>> levels_;
    std::size_t depth_ = 0;
    Outcome outcome_;
    CSubFolderDiffs* diffs_ = nullptr;
    std::vector<UnlistedFolder> unlisted_;
    PerSide<std::string> pathScratch_;
};

}  // namespace vantrel
