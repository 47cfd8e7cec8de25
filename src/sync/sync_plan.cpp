#include "sync/sync_plan.h"

#include <unordered_map>

#include "core/row_texts.h"
#include "fileops/expectations.h"
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
Expectation Expected(Side side, SyncAction action, SyncAction otherAction, const Half& own,
                     const Half& other) {
    Expectation expected{SightingOf(own), SightingOf(other), {}};
    if (otherAction == SyncAction::Delete) expected.target = Sighting::Nothing();
    const bool isReplacedBefore = action == SyncAction::Copy && otherAction == SyncAction::Copy;
    if (isReplacedBefore && side == Side::Right) expected.source = {};
    return expected;
}

// What an object takes by itself: a link its own size.
Currency Room(const Seen* seen, Currency shown) {
    return seen ? Currency::FromWhole(static_cast<std::int64_t>(seen->size)) : shown;
}

LinkChange ChangeOfLink(bool isLink, bool otherIsThere, bool otherIsLink) {
    if (!otherIsThere || isLink == otherIsLink) return LinkChange::None;
    return isLink ? LinkChange::LinkForFile : LinkChange::FileForLink;
}

// Puts `planned` where it belongs, if it is something that is done at all. A copy goes over its counterpart,
// by the name that this one bears; where there is none (`counterpart` is empty) it goes to `newPath`.
void PlanHalf(PlannedAction planned, const std::string& counterpart, const std::string& newPath,
              std::vector<PlannedAction>& deletes, std::vector<PlannedAction>& copies) {
    if (planned.action == SyncAction::Delete) {
        planned.replacedSize = planned.replacedRoom = {};
        planned.linkChange = LinkChange::None;
        deletes.push_back(std::move(planned));
    } else if (planned.action == SyncAction::Copy) {
        planned.target = counterpart.empty() ? newPath : counterpart;
        copies.push_back(std::move(planned));
    }
}

bool Acts(SyncAction action) {
    return action == SyncAction::Copy || action == SyncAction::Delete;
}

// What lies behind a link belongs to neither folder, and what is done to one of the two folders is never done
// to the other with it.
bool IsElsewhere(Elsewhere object, Elsewhere other, SyncAction action) {
    return object != Elsewhere::No || (action == SyncAction::Copy && other != Elsewhere::No);
}

// Why nothing is done with the object of a row that the table speaks of; `other` is the row opposite.
std::optional<LeftOutReason> ReasonToLeave(Side side, const ResultRow& row, const ResultRow& other,
                                           SyncAction action, const TrashFolders& trash) {
    if (IsElsewhere(row.elsewhere, other.elsewhere, action)) return LeftOutReason::Elsewhere;
    // What could not be looked into is not known, and what is not known is not deleted.
    if (row.incomplete && action == SyncAction::Delete) return LeftOutReason::NotWhollyKnown;
    if (row.holdsOtherFolder) return LeftOutReason::HoldsOtherFolder;
    if (IsTrash(row) || trash.Is(row)) return LeftOutReason::Trash;
    if (!row.isLink && trash.Touches(side, row.realName)) return LeftOutReason::Trash;
    if (action == SyncAction::Copy &&
        trash.Touches(Other(side), other.IsReal() ? other.realName : row.realName))
        return LeftOutReason::Trash;
    return std::nullopt;
}

// Names that a file bears in one folder and a folder in the other. They have a row each, which does not know
// of the other one: by the name, what is on each side.
using TwoKinds = std::unordered_map<std::string_view, PerSide<const ResultRow*>>;

TwoKinds NamesOfTwoKinds(const PerSide<ResultList>& lists) {
    TwoKinds names;
    for (const Side side : kBothSides) {
        std::unordered_map<std::string_view, const ResultRow*> folders;
        for (const ResultRow& row : lists[side])
            if (row.kind == RowKind::Folder) folders.emplace(row.realName, &row);
        if (folders.empty()) continue;
        for (const ResultRow& row : lists[Other(side)]) {
            if (row.kind != RowKind::File) continue;
            const auto found = folders.find(row.realName);
            if (found == folders.end()) continue;
            PerSide<const ResultRow*>& rows = names[found->second->realName];
            rows[side] = found->second;
            rows[Other(side)] = &row;
        }
    }
    return names;
}

// What stands at the target of a copy over an object of the other kind when the run comes to it.
Sighting SightingOfOtherKind(const ResultRow& row, Side side, const CSyncSettings& settings) {
    return settings.ActionFor(side, row.type) == SyncAction::Delete ? Sighting::Nothing() : SightingOf(row);
}

PlannedAction PlanOfRow(const PerSide<ResultList>& lists, Side side, std::size_t i, SyncAction action,
                        const CSyncSettings& settings, const std::string& folder) {
    const ResultRow &row = lists[side][i], &other = lists[Other(side)][i];
    const bool isWholeFolder = row.kind == RowKind::Folder && !row.isLink;
    return {.side = side,
            .action = action,
            .type = row.type,
            .name = std::string(row.text),
            .source = ObjectPath(folder, row),
            .number = static_cast<std::uint32_t>(i),
            .size = row.size,
            .replacedSize = other.size,
            .room = isWholeFolder ? row.size : Room(row.seen, row.size),
            .replacedRoom = Room(other.seen, other.size),
            .linkChange = ChangeOfLink(row.isLink, other.IsReal(), other.isLink),
            .expected = Expected(side, action, settings.ActionFor(Other(side), other.type), row, other),
            .isWholeFolder = isWholeFolder};
}

void PlanRows(const PerSide<ResultList>& lists, const CSyncSettings& settings, const SelectedTexts& selected,
              const TrashFolders& trash, SyncPlan& plan) {
    const std::size_t count = lists[Side::Left].Count();
    const TwoKinds namesOfTwoKinds = NamesOfTwoKinds(lists);
    for (Side side : kBothSides) {
        const std::string& folder = plan.folders[side];
        const std::string& otherFolder = plan.folders[Other(side)];
        for (std::size_t i = 0; i < count; ++i) {
            const ResultRow& row = lists[side][i];
            if (row.IsUnknown() && row.reason != UnknownReason::None && IsSelected(selected, row.text))
                plan.leftOut.Add(side, LeftOutReason::Unknown, ObjectPath(folder, row));
            const SyncAction action = settings.ActionFor(side, row.type);
            if (!Acts(action) || !row.IsReal() || !IsSelected(selected, row.text)) continue;
            const ResultRow& other = lists[Other(side)][i];
            if (const auto reason = ReasonToLeave(side, row, other, action, trash)) {
                plan.leftOut.Add(side, *reason, ObjectPath(folder, row));
                continue;
            }
            PlannedAction planned = PlanOfRow(lists, side, i, action, settings, folder);
            if (const auto kinds = namesOfTwoKinds.find(row.realName); kinds != namesOfTwoKinds.end())
                planned.expected.target =
                    SightingOfOtherKind(*kinds->second[Other(side)], Other(side), settings);
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

// A pair of sub-folders: where it is, and its names there.
struct SubFolderPair {
    const CSubFolderDiffs& diffs;
    PerSide<std::string> roots;  // full paths with "/" at the end
    PerSide<std::string> names;  // real ones
};

// Why nothing is done with a record that the table speaks of.
std::optional<LeftOutReason> ReasonToLeave(Side side, const SubFolderPair& pair, std::size_t i,
                                           SyncAction action, const TrashFolders& trash) {
    const SubFolderRecord& record = pair.diffs.Records(side)[i];
    const SubFolderRecord& other = pair.diffs.Records(Other(side))[i];
    if (IsElsewhere(record.elsewhere, other.elsewhere, action)) return LeftOutReason::Elsewhere;
    for (const Side half : kBothSides) {
        if (trash.below[half].empty()) continue;
        const SubFolderRecord& named = half == side || other.IsBlank() ? record : other;
        if (trash.Touches(half, JoinPath(pair.names[half], named.realName))) return LeftOutReason::Trash;
    }
    return std::nullopt;
}

// What is known neither of the sub-folder nor of what is in it.
void LeaveUnknown(const SubFolderPair& pair, LeftOut& leftOut) {
    for (const UnknownPlace& place : pair.diffs.UnknownPlaces())
        leftOut.Add(place.side, LeftOutReason::Unknown, JoinPath(pair.roots[place.side], place.path));
    for (const Side side : kBothSides) {
        for (const SubFolderRecord& record : pair.diffs.Records(side)) {
            // Where the system would not tell, the place is among those above.
            if (!record.unknown || record.reason == UnknownReason::None ||
                record.reason == UnknownReason::NotTold)
                continue;
            leftOut.Add(side, LeftOutReason::Unknown, pair.roots[side] + std::string(record.realName));
        }
    }
}

PlannedAction PlanOfRecord(const SubFolderPair& pair, Side side, std::size_t i, SyncAction action,
                           const CSyncSettings& settings) {
    const SubFolderRecord& record = pair.diffs.Records(side)[i];
    const SubFolderRecord& other = pair.diffs.Records(Other(side))[i];
    const auto seen = [](const SubFolderRecord& of) { return of.seen ? &*of.seen : nullptr; };
    return {.side = side,
            .action = action,
            .type = record.type,
            .name = std::string(record.name),
            .folder = pair.diffs.Name(),
            .source = pair.roots[side] + std::string(record.realName),
            .number = static_cast<std::uint32_t>(i),
            .size = Shown(record.size),
            .replacedSize = Shown(other.size),
            .room = Room(seen(record), Shown(record.size)),
            .replacedRoom = Room(seen(other), Shown(other.size)),
            .linkChange = ChangeOfLink(record.isLink, !other.IsBlank(), other.isLink),
            .expected = Expected(side, action, settings.ActionFor(Other(side), other.type), record, other)};
}

SyncPlan::SubFolder PlanSubFolder(const SubFolderPair& pair, const CSyncSettings& settings,
                                  const TrashFolders& trash, LeftOut& leftOut) {
    SyncPlan::SubFolder plan{pair.diffs.Name(), {}, {}};
    for (Side side : kBothSides) {
        const auto& records = pair.diffs.Records(side);
        const std::string& otherRoot = pair.roots[Other(side)];
        for (std::size_t i = 0; i < records.size(); ++i) {
            const SubFolderRecord& record = records[i];
            const SyncAction action = settings.ActionFor(side, record.type);
            if (record.IsBlank() || record.unknown || !Acts(action)) continue;
            if (const auto reason = ReasonToLeave(side, pair, i, action, trash)) {
                leftOut.Add(side, *reason, pair.roots[side] + std::string(record.realName));
                continue;
            }
            const SubFolderRecord& other = pair.diffs.Records(Other(side))[i];
            PlanHalf(PlanOfRecord(pair, side, i, action, settings),
                     other.IsBlank() ? std::string() : otherRoot + std::string(other.realName),
                     otherRoot + std::string(record.realName), plan.deletes[side], plan.copies[side]);
        }
    }
    LeaveUnknown(pair, leftOut);
    return plan;
}

Currency NetSize(const std::vector<PlannedAction>& copies) {
    Currency sum;
    for (const PlannedAction& action : copies) sum += action.room - action.replacedRoom;
    return sum;
}

}  // namespace

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
                                      const SelectedTexts& selected, const TrashFolders& trash) {
    SyncPlan plan;
    plan.folders = results.folders;
    plan.roots = RootsOf(results);
    plan.specialObjects = results.specialObjects;
    plan.objects = results.objects;
    PlanRows(results.hold, settings, selected, trash, plan);
    const FolderRows rows = DifferentFolderRows(results.hold);
    for (const CSubFolderDiffs& diffs : results.SubFolderDiffs) {
        const auto row = rows.find(diffs.Name());
        if (row == rows.end() || !IsSelected(selected, diffs.Name())) continue;
        SubFolderPair pair{diffs, SubFolderRoots(results, row->second), {}};
        bool isTrash = false;
        for (const Side side : kBothSides) {
            const ResultRow& half = results.hold[side][row->second];
            pair.names[side] = half.realName;
            if (!IsTrash(half) && !trash.Is(half)) continue;
            plan.leftOut.Add(side, LeftOutReason::Trash, ObjectPath(results.folders[side], half));
            isTrash = true;
        }
        if (!isTrash) plan.subFolders.push_back(PlanSubFolder(pair, settings, trash, plan.leftOut));
    }
    return plan;
}

SyncPlan GetListOfFilesAffectedBySync(const PerSide<ResultList>& lists, const PerSide<std::string>& folders,
                                      const CSyncSettings& settings, const SelectedTexts& selected,
                                      const TrashFolders& trash) {
    SyncPlan plan;
    plan.folders = folders;
    PlanRows(lists, settings, selected, trash, plan);
    for (const Side side : kBothSides)
        for (PlannedAction& action : plan.deletes[side]) action.forGood = true;
    return plan;
}

SyncSpaceNeed SpaceNeededBySync(const SyncPlan& plan) {
    SyncSpaceNeed need;
    for (Side side : kBothSides) {
        for (const PlannedAction& action : plan.copies[side]) {
            need.outgoing[side] += action.room;
            need.replaced[side] += action.replacedRoom;
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
