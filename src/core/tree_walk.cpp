#include "core/tree_walk.h"

#include <algorithm>
#include <utility>

#include "core/cfile.h"
#include "core/occupied_names.h"
#include "platform/names/paths.h"

namespace vantrel {

TreeWalk::TreeWalk(const ComparisonContext& context, PairComparison& pairs, const NameFilter& filter,
                   const PerSide<Root>& roots)
    : context_(context), pairs_(pairs), filter_(filter), roots_(roots) {
}

TreeWalk::Outcome TreeWalk::Walk(const PerSide<std::string_view>& names, CSubFolderDiffs& diffs) {
    outcome_ = Outcome();
    diffs_ = &diffs;
    depth_ = 0;
    const bool onBothSides = !names[Side::Left].empty() && !names[Side::Right].empty();
    Level& first = Push(onBothSides ? Mode::Compare : Mode::Size);
    for (const Side side : kBothSides) {
        branch_[side].assign(1, roots_[side].folder.Id());
        first.branchLength[side] = 1;
        if (names[side].empty()) continue;
        FolderEntry entry;
        if (!roots_[side].folder.LookAt(names[side], entry) || entry.kind == EntryKind::Other || entry.isLink)
            first.elsewhere[side] = Elsewhere::BehindLink;
        base_[side] = roots_[side].path + std::string(names[side]) + "/";
        OpenFolder folder;
        Error error = roots_[side].folder.OpenSub(names[side], folder);
        if (AddSource(first, side, std::move(error), std::move(folder), {}) == Opening::Failed &&
            first.mode == Mode::Compare)
            first.mode = Mode::Size;
    }
    Finish(first);
    while (depth_ > 0) {
        if (!Step(*levels_[depth_ - 1])) Pop();
    }
    return outcome_;
}

TreeWalk::Level& TreeWalk::Push(Mode mode) {
    if (depth_ == levels_.size()) levels_.push_back(std::make_unique<Level>());
    Level& level = *levels_[depth_++];
    for (const Side side : kBothSides) {
        level.listing[side].Clear();
        level.branchLength[side] = branch_[side].size();
    }
    level.items.clear();
    level.next = level.ahead = 0;
    level.nextForSize = level.nextAside = {};
    level.elsewhere = {};
    level.mode = mode;
    return level;
}

void TreeWalk::Pop() {
    Level& level = *levels_[--depth_];
    for (const Side side : kBothSides) {
        branch_[side].resize(level.branchLength[side]);
        level.listing[side].Clear();
    }
    if (depth_ >= kLevelsHeldOpen) levels_.pop_back();
}

// One item of the level; false when there is none left.
bool TreeWalk::Step(Level& level) {
    if (level.mode == Mode::Compare) {
        if (pairs_.ReadsContents() && pairs_.ReadingWaits()) Prefetch(level);
        if (level.next < level.items.size()) {
            const Item item = level.items[level.next++];
            level.ahead = std::max(level.ahead, level.next);
            context_.ThrowIfCancelled();
            TakeItem(level, item);
            return true;
        }
    }
    return StepForSize(level);
}

void TreeWalk::TakeItem(Level& level, Item item) {
    if (!IsOccupied(level, item)) {
        if (IsFolder(level, item)) return TakeFolders(level, item);
        if (AreAlikeAtOnce(level, item)) return;
        LookAtFiles(level, item);
        if (item.IsEmpty()) return;  // gone since it was listed
    }
    if (IsOccupied(level, item))
        JudgeOccupied(level, item);
    else
        CompareFiles(level, item);
}

// A link without a counterpart is an object by itself: what it leads to only counts in the size.
void TreeWalk::TakeFolders(Level& level, const Item& item) {
    if (item.IsPair()) return Descend(level, item, Mode::Compare);
    const Side side = item.Has(Side::Left) ? Side::Left : Side::Right;
    const FolderListing::Entry entry = EntryOf(level, item, side);
    if (!entry.isLink) return Descend(level, item, Mode::Compare);
    Record(level, item, {ResultType::Orphan, ResultType::Orphan});
    DescendAside(level, side, entry, Mode::AsideSize);
}

// One folder that is only walked for its size.
bool TreeWalk::StepForSize(Level& level) {
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        while (level.mode != Mode::Compare && level.nextForSize[side] < listing.Count()) {
            const FolderListing::Entry entry = listing.At(level.nextForSize[side]++);
            if (!entry.isFolder) continue;
            DescendAside(level, side, entry, level.mode);
            return true;
        }
        if (level.nextAside[side] < listing.FoldersAside().size()) {
            const bool excluded = level.mode == Mode::Compare;
            const FolderListing::Entry entry = listing.FoldersAside()[level.nextAside[side]++];
            DescendAside(level, side, entry, excluded ? Mode::AsideSize : level.mode);
            return true;
        }
    }
    return false;
}

void TreeWalk::Descend(Level& level, const Item& item, Mode mode) {
    Level& child = Push(mode);
    PerSide<bool> onBranch;
    for (const Side side : kBothSides) {
        child.elsewhere[side] = level.elsewhere[side];
        if (!item.Has(side)) continue;
        const Opening opening = OpenInto(child, side, level, EntryOf(level, item, side));
        if (opening == Opening::Failed && child.mode == Mode::Compare) child.mode = Mode::Size;
        onBranch[side] = opening == Opening::OnBranch;
    }
    // What it holds is seen further up, on that side, and not as what the other side has here.
    if (item.IsPair() && child.mode == Mode::Compare && onBranch[Side::Left] != onBranch[Side::Right]) {
        PerSide<UnknownReason> reasons;
        reasons[onBranch[Side::Left] ? Side::Left : Side::Right] = UnknownReason::LeadsNowhere;
        RecordUnknown(level, item, reasons);
        child.mode = Mode::Size;
    }
    Finish(child);
}

void TreeWalk::DescendAside(Level& level, Side side, const FolderListing::Entry& entry, Mode mode) {
    Level& child = Push(mode);
    OpenInto(child, side, level, entry);
    Finish(child);
}

TreeWalk::Opening TreeWalk::OpenInto(Level& child, Side side, Level& parent,
                                     const FolderListing::Entry& entry) {
    FolderListing& listing = parent.listing[side];
    child.elsewhere[side] =
        std::max(parent.elsewhere[side], entry.isLink ? Elsewhere::BehindLink : Elsewhere::No);
    FolderListing::Source& source = listing.From();
    OpenFolder folder;
    Error error = source.folder.IsOpen() ? Error() : Reopen(side, source);
    if (error.IsOk()) error = source.folder.OpenSub(listing.Name(entry), folder);
    std::string path = source.path;
    path.append(listing.Name(entry)).push_back('/');
    return AddSource(child, side, std::move(error), std::move(folder), std::move(path));
}

// One that is on the branch already is left out: what it holds is seen there.
TreeWalk::Opening TreeWalk::AddSource(Level& child, Side side, Error error, OpenFolder folder,
                                      std::string path) {
    if (!error.IsOk()) {
        MarkUnlisted(side, child.mode, path, std::move(error), {});
        return Opening::Failed;
    }
    const FileId id = folder.Id();
    std::vector<FileId>& branch = branch_[side];
    if (std::find(branch.begin(), branch.end(), id) != branch.end()) return Opening::OnBranch;
    branch.push_back(id);
    if (id == roots_[Other(side)].folder.Id()) {
        if (child.elsewhere[side] == Elsewhere::No) outcome_.holdsOtherFolder = true;
        child.elsewhere[side] = Elsewhere::InOtherFolder;
    }
    child.listing[side].From() = {std::move(folder), std::move(path), id, true};
    return Opening::Opened;
}

Error TreeWalk::Reopen(Side side, FolderListing::Source& source) const {
    Error error = context_.tools.files.Open(FullPath(side, source.path), source.folder);
    if (error.IsOk() && source.folder.Id() != source.id) {
        source.folder = OpenFolder();
        return Error(ErrorNumber::PathNotFound, "The folder was replaced by another during the comparison");
    }
    return error;
}

// Lists a level whose sources are open, and lets go of folders that are not needed for a while.
void TreeWalk::Finish(Level& child) {
    PerSide<bool> known{{true, true}};
    for (const Side side : kBothSides) {
        FolderListing& listing = child.listing[side];
        if (!listing.From().isThere) continue;
        context_.progress.SetFileName(WithoutTrailingSlash(FullPath(side, listing.From().path)));
        std::string lastName;
        const bool compares = child.mode == Mode::Compare;
        const StatPolicy statPolicy =
            compares && pairs_.ReadsContents() ? StatPolicy::NonFilesOnly : StatPolicy::All;
        Error error = listing.List(compares ? &filter_ : nullptr, statPolicy, context_, lastName);
        if (error.IsOk()) continue;
        known[side] = false;
        MarkUnlisted(side, child.mode, listing.From().path, std::move(error), std::move(lastName));
    }
    const bool bothKnown = known[Side::Left] && known[Side::Right];
    for (const Side side : kBothSides) {
        // Their pairs are not going to be opened.
        if (!bothKnown) child.listing[side].LookAtRest(context_);
        outcome_.size[side] += child.listing[side].TotalSize();
    }
    CountObjects(child);
    for (const Side side : kBothSides)
        if (!known[side]) child.listing[side].Clear();
    if (!bothKnown && child.mode == Mode::Compare) child.mode = Mode::Size;
    if (child.mode == Mode::Compare)
        PairEntries(child.listing, child.items);
    else
        MarkUnknownEntries(child);
    if (depth_ > kLevelsHeldOpen) {
        Level& parent = *levels_[depth_ - 2];
        for (const Side side : kBothSides) parent.listing[side].From().folder = OpenFolder();
    }
}

void TreeWalk::CountObjects(const Level& child) {
    if (child.mode == Mode::AsideSize) return;
    for (const Side side : kBothSides) {
        const FolderListing& listing = child.listing[side];
        if (child.elsewhere[side] != Elsewhere::No) continue;
        outcome_.objects[side] += child.mode == Mode::Compare ? listing.Count() : listing.Named();
    }
}

bool TreeWalk::IsOccupied(const Level& level, const Item& item) {
    return std::any_of(kBothSides.begin(), kBothSides.end(), [&](Side side) {
        return item.Has(side) && EntryOf(level, item, side).reason != UnknownReason::None;
    });
}

bool TreeWalk::IsFolder(const Level& level, const Item& item) {
    return EntryOf(level, item, item.Has(Side::Left) ? Side::Left : Side::Right).isFolder;
}

PerSide<ScannedFile> TreeWalk::FilesOf(const Level& level, const Item& item) const {
    PerSide<ScannedFile> files;
    for (const Side side : kBothSides) {
        if (!item.Has(side)) continue;
        const FolderListing::Entry& entry = EntryOf(level, item, side);
        files[side] = {context_.SizeOf(level.listing[side].Size(entry)),
                       level.listing[side].LastWrite(entry)};
    }
    return files;
}

std::string TreeWalk::FilePath(const Level& level, const Item& item, Side side) const {
    std::string path;
    level.listing[side].PathOf(EntryOf(level, item, side), path);
    return FullPath(side, path);
}

void TreeWalk::Prefetch(Level& level) {
    while (pairs_.WantsPrefetch() && level.ahead < level.items.size()) {
        const Item& item = level.items[level.ahead];
        const bool occupied = IsOccupied(level, item);
        if (!occupied && IsFolder(level, item)) return;
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
    const OpenFolder& folder = listing.From().folder;
    return folder.IsOpen() && folder.OpenScannedFile(listing.Name(EntryOf(level, item, side)), file).IsOk();
}

bool TreeWalk::LearnByOpening(Level& level, const Item& item, Side side, ReadFile& file) {
    if (!OpenFile(level, item, side, file)) return false;
    Learn(level, item, side, file);
    return true;
}

void TreeWalk::Learn(Level& level, const Item& item, Side side, const ReadFile& file) {
    level.listing[side].Learn(item.at[side], file.Seen());
    outcome_.size[side] += Currency::FromWhole(static_cast<std::int64_t>(file.Size()));
}

// Most pairs of a tree are small and alike, and that is all there is to know of them. Where it does not turn
// out so the files are handed on, open and looked at, to be compared as any others.
bool TreeWalk::AreAlikeAtOnce(Level& level, const Item& item) {
    if (!pairs_.ReadsContents() || pairs_.ReadingWaits() || !item.IsPair()) return false;
    for (const Side side : kBothSides)
        if (EntryOf(level, item, side).hasStat || !level.listing[side].From().folder.IsOpen()) return false;
    PerSide<UnstatedFile> unstated;
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        const std::string_view name = listing.Name(EntryOf(level, item, side));
        if (!listing.From().folder.OpenUnstatedFile(name, unstated[side]).IsOk()) return false;
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
    for (const Side side : kBothSides) Learn(level, item, side, files[side]);
    if (pairs_.NeedsContents(FilesOf(level, item)))
        pairs_.Prefetch(FilePath(level, item, Side::Left), FilePath(level, item, Side::Right),
                        std::move(files));
    else
        pairs_.LetGo(std::move(files));
    return false;
}

// Looks at those files of the item that were not opened, and takes from it what is not there any more.
void TreeWalk::LookAtFiles(Level& level, Item& item) {
    for (const Side side : kBothSides) {
        if (!item.Has(side)) continue;
        FolderListing& listing = level.listing[side];
        if (EntryOf(level, item, side).hasStat) continue;
        if (!listing.From().folder.IsOpen()) (void)Reopen(side, listing.From());
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

std::string TreeWalk::FullPath(Side side, std::string_view below) const {
    std::string path = base_[side];
    path.append(below);
    return path;
}

}  // namespace vantrel
