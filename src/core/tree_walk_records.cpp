// What a walk puts down: the differences that it found, and what it could not find out.
#include <utility>

#include "core/occupied_names.h"
#include "core/tree_walk.h"
#include "platform/names/paths.h"

namespace vantrel {

// A name that is occupied on a side by what is no file and no folder. A folder opposite it only counts in the
// size.
void TreeWalk::JudgeOccupied(Level& level, const Item& item) {
    OccupiedName name;
    PerSide<UnknownReason> reasons;
    for (const Side side : kBothSides) {
        if (!item.Has(side)) continue;
        const FolderListing::Entry& entry = EntryOf(level, item, side);
        name.halves[side] = {true, entry.reason, entry.isLink, entry.keptAsFile};
        reasons[side] = entry.reason;
    }
    const OccupiedVerdict verdict = Judge(name, [&] {
        static const OpenFolder kNone;
        PerSide<const OpenFolder*> folders;
        PerSide<std::string_view> names;
        for (const Side side : kBothSides) {
            FolderListing& listing = level.listing[side];
            if (!listing.From().IsOpen()) (void)Reopen(side, listing.From());
            folders[side] = listing.From().IsOpen() ? listing.From().folder.get() : &kNone;
            names[side] = listing.Name(EntryOf(level, item, side));
        }
        return HoldSameText(folders, names);
    });
    switch (verdict) {
        case OccupiedVerdict::Ignored:
            outcome_.specialObjects += SpecialObjects(name);
            break;
        case OccupiedVerdict::OrphanLink:
            Record(level, item, {ResultType::Orphan, ResultType::Orphan});
            break;
        case OccupiedVerdict::EqualLinks:
            break;
        case OccupiedVerdict::Unknown:
            RecordUnknown(level, item, reasons);
            for (const Side side : kBothSides) {
                if (!item.Has(side) || !EntryOf(level, item, side).isFolder) continue;
                const FolderListing::Entry entry = EntryOf(level, item, side);
                DescendAside(level, side, entry, Mode::AsideSize, nullptr);
            }
            break;
    }
}

void TreeWalk::RecordUnknown(Level& level, const Item& item, const PerSide<UnknownReason>& reasons) {
    Record(level, item, {}, &reasons);
    for (const Side side : kBothSides)
        if (item.Has(side)) MarkUnknownEntry(side, level, EntryOf(level, item, side), reasons[side]);
}

// With `unknown` nothing is to be concluded from either half.
void TreeWalk::Record(const Level& level, const Item& item, const PairTypes& types,
                      const PerSide<UnknownReason>* unknown) {
    const PerSide<ScannedFile> files = FilesOf(level, item);
    PerSide<SubFolderRecord> records;
    std::string_view shown;
    for (const Side side : kBothSides) {
        SubFolderRecord& record = records[side];
        record.elsewhere = level.elsewhere[side];
        if (!item.Has(side)) continue;
        const FolderListing::Entry& entry = EntryOf(level, item, side);
        // A link to a folder stands for itself.
        record.size = entry.isFolder || entry.reason != UnknownReason::None ? Currency() : files[side].size;
        record.lastWrite = entry.isFolder ? entry.seen.lastWrite : files[side].lastWrite;
        record.isLink = entry.isLink;
        if (entry.seen != Seen()) record.seen = entry.seen;
        record.type = side == Side::Left ? types.left : types.right;
        if (unknown) {
            record.unknown = true;
            record.reason = (*unknown)[side];
        }
        level.listing[side].PathOf(entry, pathScratch_[side]);
        if (shown.empty()) shown = pathScratch_[side];
        record.realName = pathScratch_[side];
        record.name = shown;
    }
    diffs_->AddPair(records);
}

void TreeWalk::MarkUnlisted(Side side, Mode mode, const std::string& path, Error error,
                            std::string lastFile) {
    const std::string folder = WithoutTrailingSlash(FullPath(side, path));
    if (mode == Mode::AsideSize) {
        context_.tools.log.AppendNote("Not in the size of its folder, since it could not be listed: " +
                                      folder);
        return;
    }
    outcome_.complete = false;
    context_.compare.ErrorsDuringCompare = true;
    context_.tools.log.Append(
        {"File Name: " + folder, "Process: Listing the folder", "Error: " + error.Description()});
    diffs_->AddUnknownPlace({side, std::string(WithoutTrailingSlash(path))});
    unlisted_.push_back({std::move(error), folder, std::move(lastFile)});
}

// Of a level of which nothing is recorded.
void TreeWalk::MarkUnknownEntries(const Level& level) {
    if (level.mode == Mode::AsideSize) return;
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        for (std::size_t i = 0; i < listing.Count(); ++i)
            if (listing.At(i).reason == UnknownReason::NotTold)
                MarkUnknownEntry(side, level, listing.At(i), UnknownReason::NotTold);
    }
}

void TreeWalk::MarkUnknownEntry(Side side, const Level& level, const FolderListing::Entry& entry,
                                UnknownReason reason) {
    if (reason == UnknownReason::None) return;
    std::string path;
    level.listing[side].PathOf(entry, path);
    NoteUnknown(context_, FullPath(side, path), reason);
    if (reason != UnknownReason::NotTold) return;
    outcome_.complete = false;
    diffs_->AddUnknownPlace({side, path});
}

}  // namespace vantrel
