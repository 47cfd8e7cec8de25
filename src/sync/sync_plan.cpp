#include "sync/sync_plan.h"

#include <algorithm>
#include <unordered_map>

#include "core/row_texts.h"
#include "fileops/expectations.h"
#include "platform/line_end.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

bool IsSelected(const SelectedTexts& selected, std::string_view text) {
    return !selected || selected->contains(std::string(text));
}

// The trash of a volume stands in its top folder. What was put there is no part of what is kept in line: it
// would be deleted for good, and a trash cannot be put into itself.
bool IsTrash(const ResultRow& row) {
    constexpr std::string_view kTrash = ".Trash";
    if (row.kind != RowKind::Folder || !row.realName.starts_with(kTrash)) return false;
    const std::string_view user = row.realName.substr(kTrash.size());
    return user.empty() || (user.size() > 1 && user.front() == '-' &&
                            user.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

// What is expected of an object and of what stands at its target. What this plan does itself before it comes
// to the action is foreseen: deletes come before copies, copies from the left before those from the right.
template <typename Half>
Expectation Expected(Side side, SyncAction otherAction, const Half& own, const Half& other) {
    Expectation expected{SightingOf(own), SightingOf(other), {}};
    if (otherAction == SyncAction::Delete) expected.target = Sighting::Nothing();
    if (otherAction == SyncAction::Copy && side == Side::Right) expected.source = {};
    return expected;
}

// Puts `planned` where it belongs, if it is something that is done at all. A copy goes over its counterpart,
// by the name that this one bears; where there is none (`counterpart` is empty) it goes to `newPath`.
void PlanHalf(PlannedAction planned, const std::string& counterpart, const std::string& newPath,
              std::vector<PlannedAction>& deletes, std::vector<PlannedAction>& copies) {
    if (planned.action == SyncAction::Delete) {
        planned.replacedSize = {};
        deletes.push_back(std::move(planned));
    } else if (planned.action == SyncAction::Copy) {
        planned.target = counterpart.empty() ? newPath : counterpart;
        copies.push_back(std::move(planned));
    }
}

void PlanRows(const PerSide<ResultList>& lists, const CSyncSettings& settings, const SelectedTexts& selected,
              SyncPlan& plan) {
    const std::size_t count = lists[Side::Left].Count();
    for (Side side : kBothSides) {
        const std::string& folder = plan.folders[side];
        const std::string& otherFolder = plan.folders[Other(side)];
        for (std::size_t i = 0; i < count; ++i) {
            const ResultRow& row = lists[side][i];
            const SyncAction action = settings.ActionFor(side, row.type);
            if (action != SyncAction::Copy && action != SyncAction::Delete) continue;
            if (!row.IsReal() || !IsSelected(selected, row.text)) continue;
            // What could not be looked into is not known, and what is not known is not deleted.
            if (row.incomplete && action == SyncAction::Delete) {
                ++plan.notWhollyKnown[side];
                continue;
            }
            if (row.holdsOtherFolder) {
                ++plan.spared[side];
                continue;
            }
            if (IsTrash(row)) continue;
            const ResultRow& other = lists[Other(side)][i];
            PlannedAction planned{
                .side = side,
                .action = action,
                .type = row.type,
                .name = std::string(row.text),
                .source = ObjectPath(folder, row),
                .number = static_cast<std::uint32_t>(i),
                .size = row.size,
                .replacedSize = other.size,
                .expected = Expected(side, settings.ActionFor(Other(side), other.type), row, other),
                .isWholeFolder = row.kind == RowKind::Folder && !row.isLink};
            PlanHalf(std::move(planned), other.IsReal() ? ObjectPath(otherFolder, other) : std::string(),
                     JoinPath(otherFolder, row.realName), plan.deletes[side], plan.copies[side]);
        }
    }
}

// Where the folder rows are, by their texts.
using FolderRows = std::unordered_map<std::string_view, std::size_t>;

FolderRows DifferentFolderRows(const HoldLists& hold) {
    FolderRows rows;
    for (std::size_t i = 0; i < hold[Side::Left].Count(); ++i)
        if (hold[Side::Left][i].type == ResultType::DifferentFolder)
            rows.emplace(hold[Side::Left][i].text, i);
    return rows;
}

// The two roots of a sub-folder pair, by the names that it bears on each side.
PerSide<std::string> SubFolderRoots(const ComparisonResults& results, std::size_t row) {
    PerSide<std::string> roots;
    for (Side side : kBothSides)
        roots[side] = NormalizePath(ObjectPath(results.folders[side], results.hold[side][row]));
    return roots;
}

// A size that cannot be told counts as nothing, as the panes show it.
Currency Shown(Currency size) {
    return size > Currency() ? size : Currency();
}

// What lies behind a link belongs to neither folder, and what is done to one of the two folders is never done
// to the other with it.
bool IsSpared(SyncAction action, const SubFolderRecord& record, const SubFolderRecord& other) {
    if (action != SyncAction::Delete && action != SyncAction::Copy) return false;
    if (record.elsewhere != Elsewhere::No) return true;
    return action == SyncAction::Copy && other.elsewhere != Elsewhere::No;
}

SyncPlan::SubFolder PlanSubFolder(const CSubFolderDiffs& diffs, const PerSide<std::string>& roots,
                                  const CSyncSettings& settings, PerSide<std::size_t>& spared) {
    SyncPlan::SubFolder plan{diffs.Name(), {}, {}};
    for (Side side : kBothSides) {
        const auto& records = diffs.Records(side);
        const auto& otherRecords = diffs.Records(Other(side));
        for (std::size_t i = 0; i < records.size(); ++i) {
            const SubFolderRecord& record = records[i];
            if (record.IsBlank() || record.unknown) continue;
            const SubFolderRecord& other = otherRecords[i];
            if (IsSpared(settings.ActionFor(side, record.type), record, other)) {
                ++spared[side];
                continue;
            }
            PlannedAction planned{
                .side = side,
                .action = settings.ActionFor(side, record.type),
                .type = record.type,
                .name = std::string(record.name),
                .folder = diffs.Name(),
                .source = roots[side] + std::string(record.realName),
                .number = static_cast<std::uint32_t>(i),
                .size = Shown(record.size),
                .replacedSize = Shown(other.size),
                .expected = Expected(side, settings.ActionFor(Other(side), other.type), record, other)};
            PlanHalf(std::move(planned),
                     other.IsBlank() ? std::string() : roots[Other(side)] + std::string(other.realName),
                     roots[Other(side)] + std::string(record.realName), plan.deletes[side],
                     plan.copies[side]);
        }
    }
    return plan;
}

Currency NetSize(const std::vector<PlannedAction>& copies) {
    Currency sum;
    for (const PlannedAction& action : copies) sum += action.size - action.replacedSize;
    return sum;
}

}  // namespace

bool SyncPlan::LeavesOut() const {
    return std::ranges::any_of(kBothSides,
                               [&](Side side) { return spared[side] != 0 || notWhollyKnown[side] != 0; });
}

bool SyncPlan::IsEmpty() const {
    bool empty = true;
    ForEach([&](const PlannedAction&) { empty = false; });
    return empty;
}

void SyncPlan::ForEach(const std::function<void(const PlannedAction&)>& visit) const {
    const auto visitAll = [&](const PerSide<std::vector<PlannedAction>>& actions) {
        for (Side side : kBothSides)
            for (const PlannedAction& action : actions[side]) visit(action);
    };
    visitAll(deletes);
    visitAll(copies);
    for (const SubFolder& folder : subFolders) {
        visitAll(folder.deletes);
        visitAll(folder.copies);
    }
}

SyncPlan GetListOfFilesAffectedBySync(const ComparisonResults& results, const CSyncSettings& settings,
                                      const SelectedTexts& selected) {
    SyncPlan plan = GetListOfFilesAffectedBySync(results.hold, results.folders, settings, selected);
    plan.roots = RootsOf(results);
    const FolderRows rows = DifferentFolderRows(results.hold);
    for (const CSubFolderDiffs& diffs : results.SubFolderDiffs) {
        const auto row = rows.find(diffs.Name());
        if (row == rows.end() || !IsSelected(selected, diffs.Name())) continue;
        if (IsTrash(results.hold[Side::Left][row->second])) continue;
        const PerSide<std::string> roots = SubFolderRoots(results, row->second);
        plan.subFolders.push_back(PlanSubFolder(diffs, roots, settings, plan.spared));
    }
    return plan;
}

SyncPlan GetListOfFilesAffectedBySync(const PerSide<ResultList>& lists, const PerSide<std::string>& folders,
                                      const CSyncSettings& settings, const SelectedTexts& selected) {
    SyncPlan plan;
    plan.folders = folders;
    PlanRows(lists, settings, selected, plan);
    return plan;
}

void LookAtWholeFolders(const FileSystem& files, SyncPlan& plan) {
    for (const Side side : kBothSides) {
        std::erase_if(plan.deletes[side], [&](PlannedAction& action) {
            if (!action.isWholeFolder) return false;
            if (LookBelow(files, action.source, action.expected.below).IsOk()) return false;
            ++plan.notWhollyKnown[side];
            return true;
        });
    }
}

std::string DescribeSpared(const SyncPlan& plan) {
    std::string text;
    const auto tell = [&](Side side, std::size_t count, const char* what, const char* why) {
        if (count == 0) return;
        if (!text.empty()) text += kLineEnd;
        text += "Left alone: " + std::to_string(count) + what + (side == Side::Left ? "left" : "right") + why;
    };
    for (const Side side : kBothSides) {
        tell(side, plan.spared[side], " object(s) of the ",
             " folder.  They, or what they would replace, lie behind a link to a folder, or belong to both "
             "folders.");
        tell(side, plan.notWhollyKnown[side], " folder(s) of the ",
             " folder.  They could not be looked into wholly, and what is not known is not deleted.");
    }
    return text;
}

SyncSpaceNeed SpaceNeededBySync(const SyncPlan& plan) {
    SyncSpaceNeed need;
    for (Side side : kBothSides) {
        for (const PlannedAction& action : plan.copies[side]) {
            need.outgoing[side] += action.size;
            need.replaced[side] += action.replacedSize;
        }
        // Of the sub-folders only the last one counts: the check is no more than a warning.
        if (!plan.subFolders.empty()) need.outgoing[side] += NetSize(plan.subFolders.back().copies[side]);
    }
    return need;
}

SyncSpaceAnswer EnoughSpaceForSync(const SyncSpaceNeed& need, const PerSide<std::string>& drives,
                                   const PerSide<Currency>& available) {
    PerSide<Currency> net;  // what the other side's copies add to this side
    for (Side side : kBothSides) net[side] = need.outgoing[Other(side)] - need.replaced[Other(side)];
    const bool oneDrive = drives[Side::Left] == drives[Side::Right];
    for (Side side : kBothSides) {
        const Currency required = oneDrive ? net[Side::Left] + net[Side::Right] : net[side];
        const Currency free = oneDrive ? available[Side::Left] : available[side];
        if (free - required < Currency()) return {false, drives[side], required, free};
    }
    return {};
}

}  // namespace vantrel
