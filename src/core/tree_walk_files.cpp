// How a walk compares the files of a level.
#include <utility>

#include "core/tree_walk.h"

namespace vantrel {

void TreeWalk::Prefetch(Level& level) {
    while (pairs_.WantsPrefetch() && level.ahead < level.items.size()) {
        const Item& item = level.items[level.ahead];
        const bool occupied = level.IsOccupied(item);
        if (!occupied && level.IsFolder(item)) return;
        // Any number of pairs can be opened here of which none needs its contents.
        context_.ThrowIfCancelled();
        ++level.ahead;
        if (!item.IsPair() || occupied) continue;
        PerSide<ReadFile> files;
        bool known = true;
        for (const Side side : kBothSides)
            known = known &&
                    (EntryOf(level, item, side).hasStat || LearnByOpening(level, item, side, files[side]));
        // What does not open is known at when its turn comes.
        if (!known) continue;
        if (!pairs_.NeedsContents(FilesOf(level, item))) {
            pairs_.LetGo(std::move(files));
            continue;
        }
        // What cannot be opened now is tried again by its path, and its error told then.
        for (const Side side : kBothSides)
            if (!files[side].IsOpen()) (void)OpenFile(level, item, side, files[side]);
        pairs_.Prefetch(FilePath(level, item, Side::Left), FilePath(level, item, Side::Right),
                        std::move(files));
    }
}

bool TreeWalk::OpenFile(const Level& level, const Item& item, Side side, ReadFile& file) {
    const FolderListing& listing = level.listing[side];
    return listing.From().IsOpen() &&
           listing.From().folder->OpenScannedFile(listing.Name(EntryOf(level, item, side)), file).IsOk();
}

bool TreeWalk::LearnByOpening(Level& level, const Item& item, Side side, ReadFile& file) {
    if (!OpenFile(level, item, side, file)) return false;
    Learn(level, item, side, file.Seen());
    return true;
}

void TreeWalk::Learn(Level& level, const Item& item, Side side, const Seen& seen) {
    level.listing[side].Learn(item.at[side], seen);
    outcome_.size[side] += Currency::FromWhole(static_cast<std::int64_t>(seen.size));
}

// Most pairs of a tree are small and alike, and that is all there is to know of them. Where it does not turn
// out so the files are handed on, open and looked at, to be compared as any others.
bool TreeWalk::AreAlikeAtOnce(Level& level, const Item& item) {
    if (!pairs_.ReadsContents() || pairs_.ReadingWaits() || !item.IsPair()) return false;
    for (const Side side : kBothSides)
        if (EntryOf(level, item, side).hasStat || !level.listing[side].From().IsOpen()) return false;
    PerSide<UnstatedFile> unstated;
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        const std::string_view name = listing.Name(EntryOf(level, item, side));
        if (!listing.From().folder->OpenUnstatedFile(name, unstated[side]).IsOk()) return false;
    }
    std::uint64_t size = 0;
    const FolderListing& left = level.listing[Side::Left];
    if (pairs_.AreAlikeAtOnce(unstated, left.Name(EntryOf(level, item, Side::Left)), size)) {
        for (const Side side : kBothSides)
            outcome_.size[side] += Currency::FromWhole(static_cast<std::int64_t>(size));
        pairs_.LetGo(std::move(unstated));
        return true;
    }
    PerSide<ReadFile> files;
    for (const Side side : kBothSides)
        if (!std::move(unstated[side]).Stat(files[side]).IsOk()) return false;
    for (const Side side : kBothSides) Learn(level, item, side, files[side].Seen());
    if (pairs_.NeedsContents(FilesOf(level, item)))
        pairs_.Prefetch(FilePath(level, item, Side::Left), FilePath(level, item, Side::Right),
                        std::move(files));
    else
        pairs_.LetGo(std::move(files));
    return false;
}

// The same of what a worker found out; false where it is to be looked at here.
bool TreeWalk::TakeVerdict(Level& level, const Item& item) {
    constexpr std::size_t kVerdictsBetween = 16;
    if (!item.IsPair()) return false;
    if (++sinceAdvance_ >= kVerdictsBetween) {
        sinceAdvance_ = 0;
        Advance();
    }
    const std::string_view shown = level.listing[Side::Left].Name(EntryOf(level, item, Side::Left));
    const PairVerdict verdict = pairs_.Take(*level.contents, level.next - 1, shown, whileWaiting_);
    if (verdict.kind == PairVerdict::Kind::LookCloser) return false;
    for (const Side side : kBothSides) {
        if (EntryOf(level, item, side).hasStat) continue;
        if (verdict.hasSeen)
            Learn(level, item, side, verdict.seen[side]);
        else
            outcome_.size[side] += Currency::FromWhole(static_cast<std::int64_t>(verdict.size));
    }
    if (verdict.kind == PairVerdict::Kind::Alike) return true;
    const PairTypes types =
        pairs_.ClassifyRead(FilesOf(level, item), verdict.kind == PairVerdict::Kind::Differ);
    if (types != PairTypes{ResultType::Same, ResultType::Same}) Record(level, item, types);
    return true;
}

// Looks at those files of the item that were not opened, and takes from it what is not there any more.
void TreeWalk::LookAtFiles(Level& level, Item& item) {
    for (const Side side : kBothSides) {
        if (!item.Has(side)) continue;
        FolderListing& listing = level.listing[side];
        if (EntryOf(level, item, side).hasStat) continue;
        if (!listing.From().IsOpen()) (void)Reopen(side, listing.From());
        const Currency before = listing.TotalSize();
        const bool there = listing.LookAt(item.at[side]);
        outcome_.size[side] += listing.TotalSize() - before;
        if (!there) item.at[side] = Item::kNone;
    }
}

void TreeWalk::CompareFiles(Level& level, const Item& item) {
    PairTypes types{ResultType::Orphan, ResultType::Orphan};
    if (item.IsPair())
        types = pairs_.Classify(FilesOf(level, item), [&](Side side) { return FilePath(level, item, side); });
    if (types != PairTypes{ResultType::Same, ResultType::Same}) Record(level, item, types);
}

}  // namespace vantrel
