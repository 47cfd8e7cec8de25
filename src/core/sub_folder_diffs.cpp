#include "core/sub_folder_diffs.h"

#include <algorithm>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

std::string_view WithoutMarker(std::string_view name) {
    if (!name.empty() && name.front() == kFolderMarker) name.remove_prefix(1);
    return name;
}

std::string KeyOf(std::string_view name) {
    return FoldCase(WithoutMarker(name));
}

}  // namespace

std::string SizeText(const SubFolderRecord& record, const LocaleFormats& locale) {
    if (record.IsBlank()) return {};
    return record.size > Currency() ? locale.Number(record.size) : "0";
}

std::string DateText(const SubFolderRecord& record, const LocaleFormats& locale) {
    if (record.IsBlank()) return {};
    return locale.DateTime(FileTimeToLocalFileTime(record.lastWrite));
}

CSubFolderDiffs::CSubFolderDiffs(std::string name, const std::string& folder, std::shared_ptr<TextPool> texts)
    : name_(std::move(name)), folder_(WithoutTrailingSlash(folder)), texts_(std::move(texts)) {
}

SubFolderRecord CSubFolderDiffs::Kept(const SubFolderRecord& record) {
    SubFolderRecord kept = record;
    kept.name = texts_->Add(record.name);
    kept.realName = record.realName == record.name ? kept.name : texts_->Add(record.realName);
    return kept;
}

void CSubFolderDiffs::Put(Side side, std::size_t number, const SubFolderRecord& record) {
    records_[side].at(number - 1) = Kept(record);
}

void CSubFolderDiffs::AddPair(const PerSide<SubFolderRecord>& pair) {
    PerSide<SubFolderRecord> kept;
    for (const Side side : kBothSides) kept[side] = Kept(pair[side]);
    if (kept[Side::Left].name == kept[Side::Right].name) kept[Side::Right].name = kept[Side::Left].name;
    for (const Side side : kBothSides) records_[side].push_back(kept[side]);
}

void SubFolderDiffsCollection::Add(CSubFolderDiffs diffs) {
    const CSubFolderDiffs* const there = Find(diffs.Name());
    if (there && WithoutMarker(there->Name()) == WithoutMarker(diffs.Name())) return;
    std::pair<std::string, std::size_t> entry(KeyOf(diffs.Name()), items_.size());
    const auto at = std::upper_bound(index_.begin(), index_.end(), entry);
    items_.push_back(std::move(diffs));
    index_.insert(at, std::move(entry));
}

const CSubFolderDiffs* SubFolderDiffsCollection::Find(std::string_view name) const {
    const std::string key = KeyOf(name);
    const auto first =
        std::lower_bound(index_.begin(), index_.end(), key,
                         [](const auto& item, const std::string& text) { return item.first < text; });
    if (first == index_.end() || first->first != key) return nullptr;
    for (auto at = first; at != index_.end() && at->first == key; ++at)
        if (WithoutMarker(items_[at->second].Name()) == WithoutMarker(name)) return &items_[at->second];
    return &items_[first->second];
}

void SubFolderDiffsCollection::Clear() {
    std::vector<CSubFolderDiffs>().swap(items_);
    index_.clear();
}

}  // namespace vantrel
