#include "dupes/dupe_results.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

Currency SizeOf(const DupeFile& file) {
    return Currency::FromWhole(std::max<std::int64_t>(file.size, 0));
}

std::string LabelOf(const DupeFile& file, const DupeCriteria& criteria) {
    return criteria.names ? std::string(file.name) : std::to_string(file.size);
}

}  // namespace

std::string DupeGroup::Line() const {
    return label + " - (" + std::to_string(members.size()) + " files)";
}

std::string MarkTotals::Text() const {
    return std::to_string(marked) + " files marked, " + ConvertBytesToCorrectByteTypeString(toWin) +
           " to win, " + std::to_string(kept) + " kept";
}

DupeResults::DupeResults(FoundFiles files, const std::vector<DupeRun>& runs, const DupeCriteria& criteria)
    : files_(std::move(files)), criteria_(criteria), marked_(files_.Count()) {
    groups_.reserve(std::min(runs.size(), kMostGroups));
    for (const DupeRun& run : runs) {
        if (groups_.size() == kMostGroups) break;
        DupeGroup& group = groups_.emplace_back();
        group.label = LabelOf(files_[run.first], criteria);
        group.members.resize(run.count);
        std::iota(group.members.begin(), group.members.end(), static_cast<std::uint32_t>(run.first));
        for (const std::uint32_t member : group.members) group.bytes += SizeOf(files_[member]);
        duplicateCount_ += run.count;
        duplicateBytes_ += group.bytes;
        shown_.push_back(groupCount_++);
    }
}

std::string DupeResults::StatusText() const {
    return std::to_string(duplicateCount_) + " duplicates found in " + std::to_string(groupCount_) +
           " groups.  (" + ConvertBytesToCorrectByteTypeString(duplicateBytes_) + ")";
}

void DupeResults::Sort(GroupOrder order) {
    order_ = order;
    ShowAgain();
}

void DupeResults::Filter(std::string_view text) {
    filter_ = FoldCase(text);
    ShowAgain();
}

bool DupeResults::Holds(const DupeGroup& group, std::string_view foldedText) const {
    static thread_local std::string folded;
    const auto holds = [&](std::string_view text) {
        folded.clear();
        AppendFolded(text, folded);
        return folded.find(foldedText) != std::string::npos;
    };
    return holds(group.label) ||
           std::any_of(group.members.begin(), group.members.end(),
                       [&](std::uint32_t member) { return holds(files_.PathOf(member)); });
}

void DupeResults::ShowAgain() {
    shown_.clear();
    for (std::uint32_t i = 0; i < groups_.size(); ++i)
        if (!groups_[i].members.empty() && (filter_.empty() || Holds(groups_[i], filter_)))
            shown_.push_back(i);
    if (order_ == GroupOrder::AsFound) return;
    // Of equal bytes the one that was found first stands first.
    std::stable_sort(shown_.begin(), shown_.end(), [this](std::uint32_t a, std::uint32_t b) {
        const Currency left = groups_[a].bytes, right = groups_[b].bytes;
        return order_ == GroupOrder::MostBytesFirst ? left > right : left < right;
    });
}

void DupeResults::UnmarkAll() {
    std::fill(marked_.begin(), marked_.end(), std::uint8_t{0});
}

MarkTotals DupeResults::Totals() const {
    MarkTotals totals;
    for (const std::uint32_t number : GroupsWithMarks()) {
        for (const std::uint32_t member : groups_[number].members) {
            if (!IsMarked(member)) {
                ++totals.kept;
                continue;
            }
            ++totals.marked;
            if (files_[member].otherNames == 0) totals.toWin += SizeOf(files_[member]);
        }
    }
    return totals;
}

std::vector<std::uint32_t> DupeResults::GroupsWithMarks() const {
    std::vector<std::uint32_t> found;
    for (std::uint32_t i = 0; i < groups_.size(); ++i) {
        const std::vector<std::uint32_t>& members = groups_[i].members;
        if (std::any_of(members.begin(), members.end(),
                        [this](std::uint32_t file) { return IsMarked(file); }))
            found.push_back(i);
    }
    return found;
}

void DupeResults::Subtract(std::uint32_t file) {
    --duplicateCount_;
    duplicateBytes_ -= SizeOf(files_[file]);
    Mark(file, false);
}

void DupeResults::Forget(std::uint32_t group, const std::vector<std::uint32_t>& files) {
    DupeGroup& its = groups_[group];
    if (files.empty()) return;
    std::vector<std::uint32_t> gone = files;
    std::sort(gone.begin(), gone.end());
    std::erase_if(its.members, [&](std::uint32_t member) {
        if (!std::binary_search(gone.begin(), gone.end(), member)) return false;
        Subtract(member);
        its.bytes -= SizeOf(files_[member]);
        return true;
    });
    if (its.members.size() > 1) return;
    for (const std::uint32_t last : its.members) Subtract(last);
    its.members.clear();
    its.bytes = {};
    --groupCount_;
    std::erase(shown_, group);
}

bool DupeResults::IsConsistent() const {
    std::uint64_t count = 0;
    std::uint32_t groups = 0;
    Currency bytes;
    std::vector<std::uint8_t> isMember(files_.Count());
    for (const DupeGroup& group : groups_) {
        if (group.members.size() == 1) return false;
        groups += group.members.empty() ? 0 : 1;
        Currency held;
        for (const std::uint32_t member : group.members) {
            if (member >= files_.Count() || isMember[member]++ != 0) return false;
            held += SizeOf(files_[member]);
            ++count;
        }
        if (held != group.bytes) return false;
        bytes += held;
    }
    for (std::size_t i = 0; i < isMember.size(); ++i)
        if (marked_[i] != 0 && isMember[i] == 0) return false;
    return count == duplicateCount_ && groups == groupCount_ && bytes == duplicateBytes_ &&
           std::all_of(shown_.begin(), shown_.end(),
                       [this](std::uint32_t group) { return !groups_[group].members.empty(); });
}

}  // namespace vantrel
