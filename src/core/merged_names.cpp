#include "core/merged_names.h"

#include <algorithm>

#include "core/result_row.h"

namespace vantrel {
namespace {

bool IsUnknown(const PerSide<const CDir*>& dirs, std::string_view key) {
    if (!key.empty() && key.front() == kFolderMarker) key.remove_prefix(1);
    return std::any_of(kBothSides.begin(), kBothSides.end(), [&](Side side) {
        const auto& keys = dirs[side]->UnknownKeys();
        return std::binary_search(keys.begin(), keys.end(), key);
    });
}

// Walks two lists sorted by key at once; `add` gets the two items of each key, one of them possibly nullptr.
template <typename Item, typename Add>
void Merge(const PerSide<const CDir*>& dirs, const PerSide<const std::vector<Item>*>& lists,
           const ComparisonContext& context, const Add& add) {
    const bool anyUnknown =
        !dirs[Side::Left]->UnknownKeys().empty() || !dirs[Side::Right]->UnknownKeys().empty();
    PerSide<std::size_t> next;
    const auto head = [&](Side side) {
        return next[side] < lists[side]->size() ? &(*lists[side])[next[side]] : nullptr;
    };
    while (true) {
        PerSide<const Item*> pair{{head(Side::Left), head(Side::Right)}};
        if (!pair[Side::Left] && !pair[Side::Right]) return;
        if (pair[Side::Left] && pair[Side::Right]) {
            const int order = pair[Side::Left]->Key.compare(pair[Side::Right]->Key);
            if (order != 0) pair[order < 0 ? Side::Right : Side::Left] = nullptr;
        }
        for (const Side side : kBothSides) {
            if (!pair[side]) continue;
            ++next[side];
            context.ThrowIfCancelled();
        }
        const Item* first = pair[Side::Left] ? pair[Side::Left] : pair[Side::Right];
        if (!anyUnknown || !IsUnknown(dirs, first->Key)) add(*first, pair);
    }
}

}  // namespace

std::vector<MergedFile> MergeFiles(const PerSide<const CDir*>& dirs, const ComparisonContext& context) {
    const PerSide<const std::vector<CFile>*> lists{{&dirs[Side::Left]->Files(), &dirs[Side::Right]->Files()}};
    std::vector<MergedFile> merged;
    merged.reserve(std::max(lists[Side::Left]->size(), lists[Side::Right]->size()));
    Merge(dirs, lists, context, [&merged](const CFile& first, const PerSide<const CFile*>& pair) {
        merged.push_back({first.FileName, pair});
    });
    return merged;
}

std::vector<MergedFolder> MergeSubDirs(const PerSide<const CDir*>& dirs, const ComparisonContext& context) {
    const PerSide<const std::vector<CDir::SubDir>*> lists{
        {&dirs[Side::Left]->SubDirs(), &dirs[Side::Right]->SubDirs()}};
    std::vector<MergedFolder> merged;
    Merge(dirs, lists, context,
          [&merged](const CDir::SubDir& first, const PerSide<const CDir::SubDir*>& pair) {
              merged.push_back({first.Name, pair});
          });
    return merged;
}

}  // namespace vantrel
