#include "core/tree_walk.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/cfile.h"
#include "core/level_pairs.h"
#include "core/occupied_names.h"
#include "platform/files/folder_reading.h"
#include "platform/names/paths.h"

namespace vantrel {

TreeWalk::TreeWalk(const ComparisonContext& context, PairComparison& pairs,
                   std::shared_ptr<const NameFilter> filter, const PerSide<Root>& roots)
    : context_(context),
      pairs_(pairs),
      filter_(std::move(filter)),
      roots_(roots),
      check_([this] { context_.ThrowIfCancelled(); }),
      whileWaiting_([this] {
          Advance();
          context_.ThrowIfCancelled();
      }) {
    if (context.workers.Count() == 0) return;
    ahead_ = std::make_unique<ListingsAhead>(
        context.workers, filter_, pairs.ReadsContents() ? &pairs.Ahead() : nullptr,
        PerSide<std::shared_ptr<OpenFolder>>{{roots[Side::Left].folder, roots[Side::Right].folder}});
}

void TreeWalk::Announce(const std::vector<PerSide<std::string>>& names) {
    if (ahead_) ahead_->Announce(names);
}

TreeWalk::Outcome TreeWalk::Walk(const PerSide<std::string_view>& names, CSubFolderDiffs& diffs) {
    outcome_ = Outcome();
    diffs_ = &diffs;
    depth_ = 0;
    const bool onBothSides = !names[Side::Left].empty() && !names[Side::Right].empty();
    const Mode mode = onBothSides ? Mode::Compare : Mode::Size;
    Level& first = Push(mode, Enter(ahead_ ? &ahead_->Top() : nullptr, names, mode));
    PerSide<bool> onBranch;
    for (const Side side : kBothSides) {
        branch_[side].assign(1, roots_[side].folder->Id());
        first.branchLength[side] = 1;
        if (names[side].empty()) continue;
        base_[side] = roots_[side].path + std::string(names[side]) + "/";
        const Opening opening = OpenFirst(first, side, names[side]);
        if (opening == Opening::Failed && first.mode == Mode::Compare) first.mode = Mode::Size;
        onBranch[side] = opening == Opening::OnBranch;
    }
    // Below a folder that leads back to the compared one nothing is known of that side, as in Descend.
    if (first.mode == Mode::Compare && onBranch[Side::Left] != onBranch[Side::Right]) {
        const Side ring = onBranch[Side::Left] ? Side::Left : Side::Right;
        NoteUnknown(context_, WithoutTrailingSlash(base_[ring]), UnknownReason::LeadsNowhere);
        outcome_.complete = false;
        diffs_->AddUnknownPlace({ring, {}});
        first.mode = Mode::Size;
    }
    Finish(first);
    while (depth_ > 0) {
        if (!Step(*levels_[depth_ - 1])) Pop();
    }
    return outcome_;
}

TreeWalk::Opening TreeWalk::OpenFirst(Level& first, Side side, std::string_view name) {
    const OpenFolder& root = *roots_[side].folder;
    bool isLink = false;
    if (first.isPrepared) {
        isLink = first.folder->isLink[side];
    } else {
        FolderEntry entry;
        isLink = !root.LookAt(name, entry) || entry.kind == EntryKind::Other || entry.isLink;
    }
    if (isLink) first.elsewhere[side] = Elsewhere::BehindLink;
    if (first.isPrepared) {
        JoinBranch(first, side, first.listing[side].From().id);
        return Opening::Opened;
    }
    OpenFolder folder;
    Error error = root.OpenSub(name, folder);
    return AddSource(first, side, std::move(error), std::move(folder), {});
}

AheadFolder* TreeWalk::Enter(AheadFolder* above, const PerSide<std::string_view>& names, Mode mode) {
    if (!ahead_ || !above) return nullptr;
    ahead_->HandIn(*above);
    return ahead_->Enter(above, names, mode, whileWaiting_);
}

// Lets those who read ahead go on, without waiting.
void TreeWalk::Advance() {
    if (!ahead_) return;
    AheadFolder* deepest = &ahead_->Top();
    for (std::size_t depth = 0; depth < depth_; ++depth)
        if (levels_[depth]->folder) deepest = levels_[depth]->folder;
    for (std::size_t depth = depth_; depth > 0; --depth)
        if (levels_[depth - 1]->contents) levels_[depth - 1]->contents->Advance();
    ahead_->HandIn(*deepest);
}

TreeWalk::Level& TreeWalk::Push(Mode mode, AheadFolder* folder) {
    if (depth_ == levels_.size()) levels_.push_back(std::make_unique<Level>());
    std::unique_ptr<Level>& place = levels_[depth_];
    const bool isPrepared = folder && folder->prepared;
    if (isPrepared)
        place = std::move(folder->prepared);
    else
        place->Clear();
    ++depth_;
    for (const Side side : kBothSides) place->branchLength[side] = branch_[side].size();
    place->mode = mode;
    place->folder = folder;
    place->isPrepared = isPrepared;
    return *place;
}

void TreeWalk::Pop() {
    Level& level = *levels_[--depth_];
    for (const Side side : kBothSides) branch_[side].resize(level.branchLength[side]);
    AheadFolder* const folder = level.folder;
    level.Clear();
    if (folder) ahead_->Leave(*folder);
    if (depth_ >= kLevelsHeldOpen) levels_.pop_back();
}

// One item of the level; false when there is none left.
bool TreeWalk::Step(Level& level) {
    if (level.mode == Mode::Compare) {
        if (pairs_.ReadsContents() && pairs_.ReadingWaits() && !level.contents) Prefetch(level);
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
    if (!level.IsOccupied(item)) {
        if (level.IsFolder(item)) return TakeFolders(level, item);
        if (level.contents ? TakeVerdict(level, item) : AreAlikeAtOnce(level, item)) return;
        LookAtFiles(level, item);
        if (item.IsEmpty()) return;  // gone since it was listed
    }
    if (level.IsOccupied(item))
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
    DescendAside(level, side, entry, Mode::AsideSize, level.folder);
}

// One folder that is only walked for its size.
bool TreeWalk::StepForSize(Level& level) {
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        while (level.mode != Mode::Compare && level.nextForSize[side] < listing.Count()) {
            const FolderListing::Entry entry = listing.At(level.nextForSize[side]++);
            if (!entry.isFolder) continue;
            DescendAside(level, side, entry, level.mode, level.folder);
            return true;
        }
        if (level.nextAside[side] < listing.FoldersAside().size()) {
            const bool excluded = level.mode == Mode::Compare;
            const FolderListing::Entry entry = listing.FoldersAside()[level.nextAside[side]++];
            DescendAside(level, side, entry, excluded ? Mode::AsideSize : level.mode, level.folder);
            return true;
        }
    }
    return false;
}

void TreeWalk::Descend(Level& level, const Item& item, Mode mode) {
    PerSide<std::string_view> names;
    for (const Side side : kBothSides)
        if (item.Has(side)) names[side] = level.listing[side].Name(EntryOf(level, item, side));
    Level& child = Push(mode, Enter(level.folder, names, mode));
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

// `above` is null where nobody expected this.
void TreeWalk::DescendAside(Level& level, Side side, const FolderListing::Entry& entry, Mode mode,
                            AheadFolder* above) {
    PerSide<std::string_view> names;
    names[side] = level.listing[side].Name(entry);
    Level& child = Push(mode, Enter(above, names, mode));
    OpenInto(child, side, level, entry);
    Finish(child);
}

TreeWalk::Opening TreeWalk::OpenInto(Level& child, Side side, Level& parent,
                                     const FolderListing::Entry& entry) {
    FolderListing& listing = parent.listing[side];
    child.elsewhere[side] =
        std::max(parent.elsewhere[side], entry.isLink ? Elsewhere::BehindLink : Elsewhere::No);
    if (child.isPrepared) {
        JoinBranch(child, side, child.listing[side].From().id);
        return Opening::Opened;
    }
    FolderListing::Source& source = listing.From();
    OpenFolder folder;
    Error error = source.IsOpen() ? Error() : Reopen(side, source);
    if (error.IsOk()) error = source.folder->OpenSub(listing.Name(entry), folder);
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
    if (!JoinBranch(child, side, id)) return Opening::OnBranch;
    child.listing[side].From() = {std::make_shared<OpenFolder>(std::move(folder)), std::move(path), id, true};
    return Opening::Opened;
}

// False where it is on the branch already.
bool TreeWalk::JoinBranch(Level& child, Side side, FileId id) {
    std::vector<FileId>& branch = branch_[side];
    if (std::find(branch.begin(), branch.end(), id) != branch.end()) return false;
    branch.push_back(id);
    if (id == roots_[Other(side)].folder->Id()) {
        if (child.elsewhere[side] == Elsewhere::No) outcome_.holdsOtherFolder = true;
        child.elsewhere[side] = Elsewhere::InOtherFolder;
    }
    return true;
}

Error TreeWalk::Reopen(Side side, FolderListing::Source& source) const {
    auto folder = std::make_shared<OpenFolder>();
    Error error = context_.tools.files.Open(FullPath(side, source.path), *folder);
    if (error.IsOk() && folder->Id() != source.id)
        return Error(ErrorNumber::PathNotFound, "The folder was replaced by another during the comparison");
    if (error.IsOk()) source.folder = std::move(folder);
    return error;
}

// Lists what was not listed ahead. Of each side, whether it is known to its end.
PerSide<bool> TreeWalk::List(Level& child) {
    const bool compares = child.mode == Mode::Compare;
    const NameFilter* const filter = compares ? filter_.get() : nullptr;
    const StatPolicy statPolicy =
        compares && pairs_.ReadsContents() ? StatPolicy::NonFilesOnly : StatPolicy::All;
    PerSide<std::optional<FolderReading>> readings;
    for (const Side side : kBothSides)
        if (ahead_ && child.listing[side].From().isThere)
            readings[side].emplace(context_.workers, child.listing[side].From().folder, statPolicy);
    PerSide<bool> known{{true, true}};
    for (const Side side : kBothSides) {
        FolderListing& listing = child.listing[side];
        if (!listing.From().isThere) continue;
        context_.progress.SetFileName(WithoutTrailingSlash(FullPath(side, listing.From().path)));
        Error error;
        if (readings[side]) {
            const EntrySink take = [&](const FolderEntry& entry) {
                check_();
                listing.Take(entry, filter);
                return true;
            };
            error = readings[side]->ForEach(take, check_);
            if (error.IsOk()) listing.Order(check_);
        } else {
            error = listing.List(filter, statPolicy, check_);
        }
        if (error.IsOk()) continue;
        known[side] = false;
        MarkUnlisted(side, child.mode, listing.From().path, std::move(error),
                     std::string(listing.LastName()));
    }
    return known;
}

// Lists a level whose sources are open, and lets go of folders that are not needed for a while.
void TreeWalk::Finish(Level& child) {
    PerSide<bool> known{{true, true}};
    if (child.isPrepared) {
        for (const Side side : kBothSides)
            if (child.listing[side].From().isThere)
                context_.progress.SetFileName(
                    WithoutTrailingSlash(FullPath(side, child.listing[side].From().path)));
        check_();
    } else {
        known = List(child);
    }
    const bool bothKnown = known[Side::Left] && known[Side::Right];
    for (const Side side : kBothSides) {
        // Their pairs are not going to be opened.
        if (!bothKnown) child.listing[side].LookAtRest(check_);
        outcome_.size[side] += child.listing[side].TotalSize();
    }
    CountObjects(child);
    for (const Side side : kBothSides)
        if (!known[side]) child.listing[side].Clear();
    if (!bothKnown && child.mode == Mode::Compare) child.mode = Mode::Size;
    if (child.mode != Mode::Compare)
        MarkUnknownEntries(child);
    else if (!child.isPrepared)
        PairEntries(child.listing, child.items);
    if (child.folder) child.folder->level = &child;
    if (ahead_ && !child.contents && child.mode == Mode::Compare && pairs_.ReadsContents() &&
        depth_ < kLevelsHeldOpen)
        child.BeginContents(pairs_.Ahead());
    if (depth_ > kLevelsHeldOpen) {
        Level& parent = *levels_[depth_ - 2];
        for (const Side side : kBothSides) parent.listing[side].From().folder.reset();
    }
    Advance();
}

void TreeWalk::CountObjects(const Level& child) {
    if (child.mode == Mode::AsideSize) return;
    for (const Side side : kBothSides) {
        const FolderListing& listing = child.listing[side];
        if (child.elsewhere[side] != Elsewhere::No) continue;
        outcome_.objects[side] += child.mode == Mode::Compare ? listing.Count() : listing.Named();
    }
}

PerSide<ScannedFile> TreeWalk::FilesOf(const Level& level, const Item& item) const {
    PerSide<ScannedFile> files;
    for (const Side side : kBothSides) {
        if (!item.Has(side)) continue;
        const FolderListing::Entry& entry = level.EntryOf(item, side);
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

std::string TreeWalk::FullPath(Side side, std::string_view below) const {
    std::string path = base_[side];
    path.append(below);
    return path;
}

}  // namespace vantrel
