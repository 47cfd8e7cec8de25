#include "core/walk_level.h"

namespace vantrel {

void WalkLevel::Clear() {
    contents.reset();
    for (const Side side : kBothSides) listing[side].Clear();
    items.clear();
    next = ahead = 0;
    nextForSize = nextAside = branchLength = {};
    elsewhere = {};
    folder = nullptr;
    isPrepared = false;
}

bool WalkLevel::IsOccupied(const LevelItem& item) const {
    return std::any_of(kBothSides.begin(), kBothSides.end(), [&](Side side) {
        return item.Has(side) && EntryOf(item, side).reason != UnknownReason::None;
    });
}

bool WalkLevel::IsFolder(const LevelItem& item) const {
    return EntryOf(item, item.Has(Side::Left) ? Side::Left : Side::Right).isFolder;
}

void WalkLevel::BeginContents(ContentsAhead& all) {
    PerSide<std::shared_ptr<const OpenFolder>> folders;
    for (const Side side : kBothSides) {
        if (!listing[side].From().IsOpen()) return;
        folders[side] = listing[side].From().folder;
    }
    contents = std::make_unique<LevelContents>(
        all, std::move(folders), items.size(),
        [this, rule = all.Sizes()](std::size_t position, PairToRead& pair) {
            const LevelItem& item = items[position];
            if (!item.IsPair() || IsOccupied(item) || IsFolder(item)) return false;
            for (const Side side : kBothSides) {
                const FolderListing::Entry& entry = EntryOf(item, side);
                pair[side] = {listing[side].Name(entry), entry.inode, entry.isLink, {}};
                if (entry.hasStat) pair[side].listed = SizeByRule(listing[side].Size(entry), rule);
            }
            return !pair[Side::Left].listed || pair[Side::Left].listed == pair[Side::Right].listed ||
                   !pair[Side::Right].listed;
        });
}

}  // namespace vantrel
