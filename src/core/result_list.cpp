#include "core/result_list.h"

#include <algorithm>

namespace vantrel {
namespace {

// The types of a pair of real rows, left and right, that can stand together.
constexpr bool AreTypesOfOnePair(ResultType left, ResultType right, RowKind kind) {
    using enum ResultType;
    if (kind == RowKind::Folder) return left == right && (left == IdenticalFolder || left == DifferentFolder);
    return (left == Newer && right == Older) || (left == Older && right == Newer) ||
           (left == right && (left == Same || left == Binary));
}

// What is wrong with the row by itself; nullptr where nothing is.
const char* FaultOfRow(const ResultRow& row) {
    if (row.tag != 0) return "a hold row with a tag";
    switch (row.kind) {
        case RowKind::Placeholder:
        case RowKind::Sentinel:
            if (row.type != ResultType::None) return "a row that is no object has a type";
            if (row.selected) return "a row that is no object is selected";
            if (row.text != (row.kind == RowKind::Sentinel ? kNoComparisonResults : ""))
                return "the text does not fit the kind";
            return nullptr;
        case RowKind::Folder:
            return row.text.empty() || row.text.front() != kFolderMarker ? "a folder without its marker"
                                                                         : nullptr;
        case RowKind::File:
            return row.text.empty() || row.text.front() == kFolderMarker ? "a file that looks like no file"
                                                                         : nullptr;
        case RowKind::Unknown:
            if (row.type != ResultType::None) return "what is not known has a type";
            if (row.selected) return "what is not known is selected";
            return row.text.empty() ? "an unknown object without a name" : nullptr;
    }
    return "an unknown kind";
}

const char* FaultOfPair(const ResultRow& left, const ResultRow& right) {
    if (const char* fault = FaultOfRow(left)) return fault;
    if (const char* fault = FaultOfRow(right)) return fault;
    if (left.kind == RowKind::Sentinel || right.kind == RowKind::Sentinel) return "the sentinel is not alone";
    if (left.IsUnknown() || right.IsUnknown()) {
        if (left.IsReal() || right.IsReal()) return "a counterpart of what is not known";
        const bool paired = left.kind == right.kind;
        return paired && left.text != right.text ? "two names on one line" : nullptr;
    }
    if (!left.IsReal() && !right.IsReal()) return "a pair of two placeholders";
    if (left.IsReal() && right.IsReal()) {
        if (left.kind != right.kind) return "a file opposite a folder";
        if (left.text != right.text) return "two names on one line";
        return AreTypesOfOnePair(left.type, right.type, left.kind) ? nullptr : "types that form no pair";
    }
    const ResultRow& real = left.IsReal() ? left : right;
    const ResultType orphan = real.kind == RowKind::Folder ? ResultType::OrphanFolder : ResultType::Orphan;
    return real.type == orphan ? nullptr : "a row alone that is no orphan";
}

}  // namespace

ResultRow& ResultList::AddCopy(const ResultRow& row) {
    if (!own_) {
        own_ = std::make_shared<TextPool>();
        pools_.push_back(own_);
    }
    ResultRow copy = row;
    copy.text = own_->Add(row.text);
    copy.realName = row.realName == row.text ? copy.text : own_->Add(row.realName);
    if (row.seen) {
        if (!ownSeen_) {
            ownSeen_ = std::make_shared<SeenPool>();
            seen_.push_back(ownSeen_);
        }
        copy.seen = ownSeen_->Add(*row.seen);
    }
    return rows_.emplace_back(copy);
}

void ResultList::ClearFor(std::size_t rows) {
    std::vector<ResultRow> room;
    if (rows_.capacity() / 2 <= rows) room.swap(rows_);
    room.clear();
    Clear();
    rows_.swap(room);
    rows_.reserve(rows);
}

void ResultList::Clear() {
    std::vector<ResultRow>().swap(rows_);
    pools_.clear();
    own_.reset();
    seen_.clear();
    ownSeen_.reset();
}

void ResultList::SetToSentinel() {
    Clear();
    ResultRow row;
    row.text = kNoComparisonResults;
    row.kind = RowKind::Sentinel;
    rows_.push_back(row);
}

void ResultList::ShareTexts(const ResultList& other) {
    for (const auto& pool : other.pools_) SharePool(pool);
    for (const auto& pool : other.seen_) SharePool(pool);
}

namespace {

template <typename Pool>
void AddOnce(std::shared_ptr<const Pool> pool, std::vector<std::shared_ptr<const Pool>>& pools) {
    if (pool && std::find(pools.begin(), pools.end(), pool) == pools.end()) pools.push_back(std::move(pool));
}

}  // namespace

void ResultList::SharePool(std::shared_ptr<const TextPool> pool) {
    AddOnce(std::move(pool), pools_);
}

void ResultList::SharePool(std::shared_ptr<const SeenPool> pool) {
    AddOnce(std::move(pool), seen_);
}

std::size_t ResultList::MemoryUsed() const {
    std::size_t bytes = MemoryOfRows();
    for (const auto& pool : pools_) bytes += pool->Capacity();
    for (const auto& pool : seen_) bytes += pool->Capacity();
    return bytes;
}

void ResultList::Swap(ResultList& other) noexcept {
    rows_.swap(other.rows_);
    pools_.swap(other.pools_);
    own_.swap(other.own_);
    seen_.swap(other.seen_);
    ownSeen_.swap(other.ownSeen_);
}

bool IsConsistent(const HoldLists& lists, std::string* why) {
    const auto fail = [why](std::string fault) {
        if (why) *why = std::move(fault);
        return false;
    };
    const ResultList& left = lists[Side::Left];
    const ResultList& right = lists[Side::Right];
    if (left.Count() != right.Count()) return fail("lists of unequal length");
    if (left.IsSentinel() && right.IsSentinel()) return true;

    bool folders = false;
    for (std::size_t i = 0; i < left.Count(); ++i) {
        if (const char* fault = FaultOfPair(left[i], right[i]))
            return fail("row " + std::to_string(i) + ": " + fault);
        const RowKind kind = left[i].IsReal() ? left[i].kind : right[i].kind;
        if (folders && kind == RowKind::File)
            return fail("row " + std::to_string(i) + ": a file behind folders");
        folders = folders || kind == RowKind::Folder;
    }
    return true;
}

}  // namespace vantrel
