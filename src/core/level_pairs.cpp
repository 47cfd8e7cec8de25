#include "core/level_pairs.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "core/name_pairs.h"

namespace vantrel {
namespace {

using CollidingNames = PerSide<std::vector<CollidingName>>;

std::string_view WithoutFolderMark(std::string_view key) {
    if (key.ends_with('/')) key.remove_suffix(1);
    return key;
}

NameKind KindOf(const FolderListing::Entry& entry) {
    if (entry.reason != UnknownReason::None) return NameKind::Other;
    return entry.isFolder ? NameKind::Folder : NameKind::File;
}

class Pairing {
  public:
    Pairing(const PerSide<FolderListing>& listings, std::vector<LevelItem>& items)
        : listings_(listings), items_(items) {
        for (const Side side : kBothSides) {
            const FolderListing& listing = listings_[side];
            for (std::size_t i = 0; listing.HasOthers() && i < listing.Count(); ++i)
                if (listing.At(i).reason != UnknownReason::None) occupied_[KeyAt(side, i)];
        }
    }

    void Run() {
        PerSide<std::size_t> next;
        while (next[Side::Left] < listings_[Side::Left].Count() ||
               next[Side::Right] < listings_[Side::Right].Count()) {
            const PerSide<std::size_t> first = next;
            TakeKey(FirstKey(first), next);
            Pair(first, next);
        }
        if (occupied_.empty()) return;
        for (const auto& [key, names] : occupied_) Add(names);
        std::stable_sort(items_.begin(), items_.end(),
                         [this](const LevelItem& a, const LevelItem& b) { return KeyOf(a) < KeyOf(b); });
    }

  private:
    std::string_view KeyAt(Side side, std::size_t position) const {
        return listings_[side].Key(listings_[side].At(position));
    }
    std::string_view KeyOf(const LevelItem& item) const {
        const Side side = item.Has(Side::Left) ? Side::Left : Side::Right;
        return KeyAt(side, item.at[side]);
    }

    // The lower one of the keys that come next; there is one.
    std::string_view FirstKey(const PerSide<std::size_t>& next) const {
        const bool left = next[Side::Left] < listings_[Side::Left].Count();
        const bool right = next[Side::Right] < listings_[Side::Right].Count();
        if (!left) return KeyAt(Side::Right, next[Side::Right]);
        const std::string_view key = KeyAt(Side::Left, next[Side::Left]);
        return right ? std::min(key, KeyAt(Side::Right, next[Side::Right])) : key;
    }

    // Moves behind all entries of this key.
    void TakeKey(std::string_view key, PerSide<std::size_t>& next) const {
        for (const Side side : kBothSides)
            while (next[side] < listings_[side].Count() && KeyAt(side, next[side]) == key) ++next[side];
    }

    // The entries of one key. Names that fold like one that is neither file nor folder are set aside, since
    // they may pair with it.
    void Pair(const PerSide<std::size_t>& first, const PerSide<std::size_t>& end) {
        LevelItem item;
        bool collides = false;
        for (const Side side : kBothSides) {
            if (first[side] == end[side]) continue;
            item.at[side] = static_cast<std::uint32_t>(first[side]);
            collides = collides || end[side] - first[side] > 1;
        }
        const auto aside =
            occupied_.empty() ? occupied_.end() : occupied_.find(WithoutFolderMark(KeyOf(item)));
        if (aside != occupied_.end()) {
            Gather(first, end, aside->second);
        } else if (collides) {
            CollidingNames names;
            Gather(first, end, names);
            Add(names);
        } else {
            items_.push_back(item);
        }
    }

    void Gather(const PerSide<std::size_t>& first, const PerSide<std::size_t>& end,
                CollidingNames& names) const {
        for (const Side side : kBothSides) {
            for (std::size_t i = first[side]; i < end[side]; ++i) {
                const FolderListing::Entry& entry = listings_[side].At(i);
                names[side].push_back(
                    {listings_[side].Name(entry), KindOf(entry), static_cast<std::uint32_t>(i)});
            }
        }
    }

    void Add(const CollidingNames& names) {
        for (const NamePair& pair : PairNames(names)) {
            LevelItem item;
            for (const Side side : kBothSides)
                if (pair[side]) item.at[side] = pair[side]->index;
            items_.push_back(item);
        }
    }

    const PerSide<FolderListing>& listings_;
    std::vector<LevelItem>& items_;
    std::map<std::string_view, CollidingNames> occupied_;
};

}  // namespace

void PairEntries(const PerSide<FolderListing>& listings, std::vector<LevelItem>& items) {
    Pairing(listings, items).Run();
}

}  // namespace vantrel
