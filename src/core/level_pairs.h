#pragma once

#include <cstdint>
#include <vector>

#include "core/folder_listing.h"
#include "core/side.h"

namespace vantrel {

// An entry of a level, or a pair of them, by its positions in the two listings.
struct LevelItem {
    static constexpr std::uint32_t kNone = UINT32_MAX;
    PerSide<std::uint32_t> at{{kNone, kNone}};  // positions in the listings; kNone on a side without one
    bool Has(Side side) const { return at[side] != kNone; }
    bool IsEmpty() const { return !Has(Side::Left) && !Has(Side::Right); }
    bool IsPair() const { return Has(Side::Left) && Has(Side::Right); }
};

// Every entry of both listings once, in the order of their keys, behind what is in `items`. Equal names pair
// first, then one and one that fold alike (name_pairs.h); what is neither file nor folder pairs with either.
void PairEntries(const PerSide<FolderListing>& listings, std::vector<LevelItem>& items);

}  // namespace vantrel
