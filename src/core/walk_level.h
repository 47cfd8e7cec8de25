#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/folder_listing.h"
#include "core/level_contents.h"
#include "core/level_pairs.h"
#include "core/side.h"
#include "core/sub_folder_diffs.h"

namespace vantrel {

struct AheadFolder;

// What a walk wants to know of the folders of a level.
enum class WalkMode : std::uint8_t {
    Compare,
    Size,       // no records; what cannot be listed makes the walk incomplete
    AsideSize,  // in a folder that the options exclude: its troubles are only noted
};

// One level of a walk: what its folder holds on both sides. It belongs to the one thread, and does not move
// while workers compare its files.
struct WalkLevel {
    PerSide<FolderListing> listing;
    std::vector<LevelItem> items;  // with WalkMode::Compare: every entry of both listings once
    std::size_t next = 0;
    std::size_t ahead = 0;  // how far pairs were prefetched; never beyond the next folder
    PerSide<std::size_t> nextForSize, nextAside;
    PerSide<std::size_t> branchLength;  // before this level
    PerSide<Elsewhere> elsewhere;       // that of all that is in it, or would be made in it
    WalkMode mode = WalkMode::Compare;
    AheadFolder* folder = nullptr;            // what is listed ahead below it, if anything is
    bool isPrepared = false;                  // listed ahead: the listings and the items are there
    std::unique_ptr<LevelContents> contents;  // where workers compare the files

    void Clear();
    const FolderListing::Entry& EntryOf(const LevelItem& item, Side side) const {
        return listing[side].At(item.at[side]);
    }
    // Whether it is no file and no folder on a side.
    bool IsOccupied(const LevelItem& item) const;
    bool IsFolder(const LevelItem& item) const;  // of what is not occupied
    // Lets workers compare the files of the items from now on. Their folders are open.
    void BeginContents(ContentsAhead& all);
};

}  // namespace vantrel
