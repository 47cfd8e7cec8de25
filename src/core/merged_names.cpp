#include "core/merged_names.h"

#include <algorithm>
#include <map>

#include "core/name_pairs.h"
#include "core/result_row.h"
#include "platform/fetch_ahead.h"

namespace vantrel {
namespace {

using Names = PerSide<std::vector<CollidingName>>;
// The names that fold like one that is occupied by what is no file and no folder, by their key.
using OccupiedKeys = std::map<std::string_view, Names>;

std::string_view MergeKeyOf(const CFile& file) {
    return file.Key();
}
std::string_view MergeKeyOf(const CDir::SubDir& folder) {
    return folder.Key.substr(1);
}
std::string_view MergedNameOf(const CFile& file) {
    return file.FileName();
}
std::string_view MergedNameOf(const CDir::SubDir& folder) {
    return folder.RealName();
}

template <typename Item>
void AddToOccupied(const std::vector<Item>& items, Side side, NameKind kind, OccupiedKeys& keys) {
    for (auto& [key, names] : keys) {
        auto at =
            std::lower_bound(items.begin(), items.end(), key,
                             [](const Item& item, std::string_view text) { return MergeKeyOf(item) < text; });
        for (; at != items.end() && MergeKeyOf(*at) == key; ++at)
            names[side].push_back({MergedNameOf(*at), kind, static_cast<std::uint32_t>(at - items.begin())});
    }
}

OccupiedKeys FindOccupiedKeys(const PerSide<const CDir*>& dirs) {
    OccupiedKeys keys;
    for (const Side side : kBothSides) {
        const auto& others = dirs[side]->Others();
        for (std::uint32_t i = 0; i < others.size(); ++i)
            keys[others[i].key][side].push_back({others[i].name, NameKind::Other, i});
    }
    for (const Side side : kBothSides) {
        AddToOccupied(dirs[side]->Files(), side, NameKind::File, keys);
        AddToOccupied(dirs[side]->SubDirs(), side, NameKind::Folder, keys);
    }
    return keys;
}

// Walks two lists sorted by key and name at once; `add` gets the items of each pair, one of them possibly
// nullptr. Keys in `occupied` are passed over.
template <typename Item, typename Add>
void Merge(const PerSide<const std::vector<Item>*>& lists, const OccupiedKeys& occupied, NameKind kind,
           const ComparisonContext& context, const Add& add) {
    PerSide<std::size_t> next;
    while (true) {
        PerSide<const Item*> head;
        for (const Side side : kBothSides) {
            const std::vector<Item>& list = *lists[side];
            head[side] = next[side] < list.size() ? &list[next[side]] : nullptr;
            if (next[side] + kStepsAhead < list.size())
                FetchAhead(MergeKeyOf(list[next[side] + kStepsAhead]).data());
        }
        if (!head[Side::Left] && !head[Side::Right]) return;
        if (head[Side::Left] && head[Side::Right]) {
            const int order = MergeKeyOf(*head[Side::Left]).compare(MergeKeyOf(*head[Side::Right]));
            if (order != 0) head[order < 0 ? Side::Right : Side::Left] = nullptr;
        }
        const std::string_view key = MergeKeyOf(head[Side::Left] ? *head[Side::Left] : *head[Side::Right]);
        Names names;
        bool collides = false;
        for (const Side side : kBothSides) {
            if (!head[side]) continue;
            const std::size_t first = next[side];
            while (next[side] < lists[side]->size() && MergeKeyOf((*lists[side])[next[side]]) == key) {
                ++next[side];
                context.ThrowIfCancelled();
            }
            collides = collides || next[side] - first > 1;
        }
        if (!occupied.empty() && occupied.contains(key)) continue;
        if (!collides) {
            add(head);
            continue;
        }
        for (const Side side : kBothSides) {
            if (!head[side]) continue;
            const Item* const first = lists[side]->data();
            for (const Item* item = head[side]; item != first + next[side]; ++item)
                names[side].push_back({MergedNameOf(*item), kind, static_cast<std::uint32_t>(item - first)});
        }
        for (const NamePair& pair : PairNames(names)) {
            PerSide<const Item*> items{};
            for (const Side side : kBothSides)
                if (pair[side]) items[side] = lists[side]->data() + pair[side]->index;
            add(items);
        }
    }
}

// Brings what was added at the end, from `first` on, to where its keys belong.
template <typename Merged, typename KeyOfMerged>
void MergeTail(std::vector<Merged>& merged, std::size_t first, const KeyOfMerged& keyOf) {
    std::inplace_merge(merged.begin(), merged.begin() + static_cast<std::ptrdiff_t>(first), merged.end(),
                       [&](const Merged& a, const Merged& b) { return keyOf(a) < keyOf(b); });
}

template <typename Item>
const Item* Take(const CollidingName* name, NameKind kind, const std::vector<Item>& items) {
    return name && name->kind == kind ? &items[name->index] : nullptr;
}

}  // namespace

MergedFiles::MergedFiles(const PerSide<const CDir*>& dirs)
    : files_{{&dirs[Side::Left]->Files(), &dirs[Side::Right]->Files()}},
      others_{{&dirs[Side::Left]->Others(), &dirs[Side::Right]->Others()}} {
}

MergedFile MergedFiles::operator[](std::size_t position) const {
    MergedFile merged;
    for (const Side side : {Side::Right, Side::Left}) {
        const std::uint32_t place = places_[position][side];
        if (place == kNone) continue;
        if ((place & kOther) != 0) {
            merged.other[side] = &(*others_[side])[place - kOther];
            merged.text = merged.other[side]->name;
        } else {
            merged.file[side] = &(*files_[side])[place];
            merged.text = merged.file[side]->FileName();
        }
    }
    return merged;
}

PerSide<const CFile*> MergedFiles::FilesAt(std::size_t position) const {
    PerSide<const CFile*> files{};
    for (const Side side : kBothSides)
        if (const std::uint32_t place = places_[position][side]; (place & kOther) == 0)
            files[side] = &(*files_[side])[place];
    return files;
}

void MergedFiles::Add(const MergedFile& file) {
    Place& place = places_.emplace_back();
    for (const Side side : kBothSides) {
        place[side] = kNone;
        if (file.file[side]) place[side] = static_cast<std::uint32_t>(file.file[side] - files_[side]->data());
        if (file.other[side])
            place[side] = static_cast<std::uint32_t>(file.other[side] - others_[side]->data()) | kOther;
    }
}

std::string_view MergedFiles::KeyOf(const Place& place) const {
    const Side side = place[Side::Left] != kNone ? Side::Left : Side::Right;
    const std::uint32_t at = place[side];
    return (at & kOther) != 0 ? (*others_[side])[at - kOther].key : (*files_[side])[at].Key();
}

void MergedFiles::PutInOrder(std::size_t first) {
    MergeTail(places_, first, [this](const Place& place) { return KeyOf(place); });
}

MergedFiles MergeFiles(const PerSide<const CDir*>& dirs, const ComparisonContext& context) {
    const PerSide<const std::vector<CFile>*> lists{{&dirs[Side::Left]->Files(), &dirs[Side::Right]->Files()}};
    const OccupiedKeys occupied = FindOccupiedKeys(dirs);
    MergedFiles merged(dirs);
    merged.Reserve(std::max(lists[Side::Left]->size(), lists[Side::Right]->size()));
    Merge(lists, occupied, NameKind::File, context, [&merged](const PerSide<const CFile*>& pair) {
        merged.Add({{}, pair, {}});
    });
    const std::size_t first = merged.Count();
    for (const auto& [key, names] : occupied) {
        for (const NamePair& pair : PairNames(names)) {
            MergedFile file;
            bool folder = false;
            for (const Side side : kBothSides) {
                folder = folder || (pair[side] && pair[side]->kind == NameKind::Folder);
                file.file[side] = Take(pair[side], NameKind::File, *lists[side]);
                file.other[side] = Take(pair[side], NameKind::Other, dirs[side]->Others());
            }
            if (!folder) merged.Add(file);
        }
    }
    merged.PutInOrder(first);
    return merged;
}

std::vector<MergedFolder> MergeSubDirs(const PerSide<const CDir*>& dirs, const ComparisonContext& context) {
    const PerSide<const std::vector<CDir::SubDir>*> lists{
        {&dirs[Side::Left]->SubDirs(), &dirs[Side::Right]->SubDirs()}};
    const OccupiedKeys occupied = FindOccupiedKeys(dirs);
    std::vector<MergedFolder> merged;
    Merge(lists, occupied, NameKind::Folder, context, [&merged](const PerSide<const CDir::SubDir*>& pair) {
        merged.push_back({(pair[Side::Left] ? pair[Side::Left] : pair[Side::Right])->Name, pair});
    });
    const std::size_t first = merged.size();
    for (const auto& [key, names] : occupied) {
        for (const NamePair& pair : PairNames(names)) {
            MergedFolder folder;
            for (const Side side : kBothSides) {
                folder.folder[side] = Take(pair[side], NameKind::Folder, *lists[side]);
                folder.other[side] = Take(pair[side], NameKind::Other, dirs[side]->Others());
                if (folder.folder[side] && folder.text.empty()) folder.text = folder.folder[side]->Name;
            }
            if (!folder.text.empty()) merged.push_back(folder);
        }
    }
    MergeTail(merged, first, [](const MergedFolder& folder) {
        return (folder.folder[Side::Left] ? folder.folder[Side::Left] : folder.folder[Side::Right])->Key;
    });
    return merged;
}

}  // namespace vantrel
