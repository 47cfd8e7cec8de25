#include "core/tree_walk.h"

#include <algorithm>
#include <utility>

#include "core/cfile.h"
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
        if (!AddSource(first, side, std::move(error), std::move(folder), {}) && first.mode == Mode::Compare)
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
    level.next = level.nextAside = level.ahead = {};
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
        Item item;
        if (pairs_.ReadsContents() && pairs_.ReadingWaits()) Prefetch(level);
        if (NextItem(level, level.next, item)) {
            for (const Side side : kBothSides)
                level.ahead[side] = std::max(level.ahead[side], level.next[side]);
            context_.ThrowIfCancelled();
            if (!item.isFolder) {
                if (AreAlikeAtOnce(level, item)) return true;
                LookAtFiles(level, item);
            }
            if (item.IsEmpty()) {
                // Gone since it was listed, or not known.
            } else if (IsUnknown(level, item)) {
                if (item.isFolder) Descend(level, item, Mode::Size);
            } else if (item.isFolder) {
                Descend(level, item, Mode::Compare);
            } else {
                CompareFiles(level, item);
            }
            return true;
        }
    }
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        while (level.next[side] < listing.Count()) {
            const FolderListing::Entry& entry = listing.At(level.next[side]++);
            if (!entry.isFolder) continue;
            DescendAside(level, side, entry, level.mode);
            return true;
        }
        if (level.nextAside[side] < listing.FoldersAside().size()) {
            const bool excluded = level.mode == Mode::Compare;
            DescendAside(level, side, listing.FoldersAside()[level.nextAside[side]++],
                         excluded ? Mode::AsideSize : level.mode);
            return true;
        }
    }
    return false;
}

bool TreeWalk::NextItem(const Level& level, PerSide<std::size_t>& cursor, Item& item) const {
    PerSide<std::string_view> key;
    PerSide<bool> there;
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        there[side] = cursor[side] < listing.Count();
        if (there[side]) key[side] = listing.Key(listing.At(cursor[side]));
    }
    if (there[Side::Left] && there[Side::Right]) {
        const int order = key[Side::Left].compare(key[Side::Right]);
        if (order != 0) there[order < 0 ? Side::Right : Side::Left] = false;
    }
    for (const Side side : kBothSides) {
        item.at[side] = {cursor[side], cursor[side]};
        if (!there[side]) continue;
        const FolderListing& listing = level.listing[side];
        item.isFolder = listing.At(cursor[side]).isFolder;
        while (cursor[side] < listing.Count() && listing.Key(listing.At(cursor[side])) == key[side])
            ++cursor[side];
        item.at[side].end = cursor[side];
    }
    return there[Side::Left] || there[Side::Right];
}

void TreeWalk::Descend(Level& level, const Item& item, Mode mode) {
    Level& child = Push(mode);
    for (const Side side : kBothSides) {
        for (std::size_t at = item.at[side].begin; at < item.at[side].end; ++at) {
            if (!OpenInto(child, side, level, level.listing[side].At(at)) && child.mode == Mode::Compare)
                child.mode = Mode::Size;
        }
    }
    Finish(child);
}

void TreeWalk::DescendAside(Level& level, Side side, const FolderListing::Entry& entry, Mode mode) {
    Level& child = Push(mode);
    OpenInto(child, side, level, entry);
    Finish(child);
}

bool TreeWalk::OpenInto(Level& child, Side side, Level& parent, const FolderListing::Entry& entry) {
    FolderListing& listing = parent.listing[side];
    Elsewhere& elsewhere = child.elsewhere[side];
    elsewhere =
        std::max({elsewhere, parent.elsewhere[side], entry.isLink ? Elsewhere::BehindLink : Elsewhere::No});
    FolderListing::Source& source = listing.Sources()[entry.source];
    OpenFolder folder;
    Error error = source.folder.IsOpen() ? Error() : Reopen(side, source);
    if (error.IsOk()) error = source.folder.OpenSub(listing.Name(entry), folder);
    std::string path = source.path;
    path.append(listing.Name(entry)).push_back('/');
    return AddSource(child, side, std::move(error), std::move(folder), std::move(path));
}

// False when the folder stays unknown. One that is on the branch already is left out: what it holds is seen
// there.
bool TreeWalk::AddSource(Level& child, Side side, Error error, OpenFolder folder, std::string path) {
    if (!error.IsOk()) {
        MarkUnlisted(side, child.mode, path, std::move(error), {});
        return false;
    }
    const FileId id = folder.Id();
    std::vector<FileId>& branch = branch_[side];
    if (std::find(branch.begin(), branch.end(), id) != branch.end()) return true;
    branch.push_back(id);
    if (id == roots_[Other(side)].folder.Id()) {
        if (child.elsewhere[side] == Elsewhere::No) outcome_.holdsOtherFolder = true;
        child.elsewhere[side] = Elsewhere::InOtherFolder;
    }
    FolderListing::Source& source = child.listing[side].AddSource();
    source.folder = std::move(folder);
    source.path = std::move(path);
    source.id = id;
    return true;
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
        if (listing.Sources().empty()) continue;
        context_.progress.SetFileName(WithoutTrailingSlash(FullPath(side, listing.Sources().front().path)));
        FolderListing::BreakingOff at;
        const bool compares = child.mode == Mode::Compare;
        const StatPolicy statPolicy =
            compares && pairs_.ReadsContents() ? StatPolicy::NonFilesOnly : StatPolicy::All;
        Error error = listing.List(compares ? &filter_ : nullptr, statPolicy, context_, at);
        if (error.IsOk()) continue;
        known[side] = false;
        MarkUnlisted(side, child.mode, listing.Sources()[at.source].path, std::move(error),
                     std::move(at.lastName));
    }
    for (const Side side : kBothSides) {
        // Their pairs are not going to be opened.
        if (!known[Side::Left] || !known[Side::Right]) child.listing[side].LookAtRest(context_);
        outcome_.size[side] += child.listing[side].TotalSize();
        if (known[side])
            MarkUnknownEntries(side, child);
        else
            child.listing[side].Clear();
        if (!known[side] && child.mode == Mode::Compare) child.mode = Mode::Size;
    }
    if (depth_ > kLevelsHeldOpen) {
        Level& parent = *levels_[depth_ - 2];
        for (const Side side : kBothSides)
            for (FolderListing::Source& source : parent.listing[side].Sources()) source.folder = OpenFolder();
    }
}

bool TreeWalk::IsUnknown(const Level& level, const Item& item) const {
    const Side side = item.at[Side::Left].IsEmpty() ? Side::Right : Side::Left;
    std::string_view key = level.listing[side].Key(level.listing[side].At(item.at[side].begin));
    if (item.isFolder) key.remove_suffix(1);
    return level.listing[Side::Left].IsUnknown(key) || level.listing[Side::Right].IsUnknown(key);
}

PerSide<ScannedFile> TreeWalk::FilesOf(const Level& level, const Item& item) const {
    PerSide<ScannedFile> files;
    for (const Side side : kBothSides) {
        if (item.at[side].IsEmpty()) continue;
        const FolderListing::Entry& entry = level.listing[side].At(item.at[side].begin);
        files[side] = {SizeByRule(entry.size), entry.lastWrite};
    }
    return files;
}

std::string TreeWalk::FilePath(const Level& level, const Item& item, Side side) const {
    std::string path;
    level.listing[side].PathOf(level.listing[side].At(item.at[side].begin), path);
    return FullPath(side, path);
}

void TreeWalk::Prefetch(Level& level) {
    while (pairs_.WantsPrefetch()) {
        Item item;
        PerSide<std::size_t> cursor = level.ahead;
        if (!NextItem(level, cursor, item) || item.isFolder) return;
        // Any number of pairs can be opened here of which none needs its contents.
        context_.ThrowIfCancelled();
        level.ahead = cursor;
        if (!item.IsPair() || IsUnknown(level, item)) continue;
        PerSide<ReadFile> files;
        bool known = true;
        for (const Side side : kBothSides)
            known = known && (HasStat(level, item, side) || LearnByOpening(level, item, side, files[side]));
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

bool TreeWalk::HasStat(const Level& level, const Item& item, Side side) {
    return level.listing[side].At(item.at[side].begin).hasStat;
}

const OpenFolder& TreeWalk::FolderOf(const Level& level, const Item& item, Side side) {
    const FolderListing& listing = level.listing[side];
    return listing.Sources()[listing.At(item.at[side].begin).source].folder;
}

bool TreeWalk::OpenFile(const Level& level, const Item& item, Side side, ReadFile& file) {
    const FolderListing& listing = level.listing[side];
    const OpenFolder& folder = FolderOf(level, item, side);
    return folder.IsOpen() &&
           folder.OpenScannedFile(listing.Name(listing.At(item.at[side].begin)), file).IsOk();
}

// Size and time come from the open file; of names that differ in letter case only all must be looked at.
bool TreeWalk::LearnByOpening(Level& level, const Item& item, Side side, ReadFile& file) {
    if (item.at[side].end - item.at[side].begin > 1 || !OpenFile(level, item, side, file)) return false;
    Learn(level, item, side, file);
    return true;
}

void TreeWalk::Learn(Level& level, const Item& item, Side side, const ReadFile& file) {
    level.listing[side].Learn(item.at[side].begin, file.Size(), file.LastWrite());
    outcome_.size[side] += Currency::FromWhole(static_cast<std::int64_t>(file.Size()));
}

// Most pairs of a tree are small and alike, and that is all there is to know of them. Where it does not turn
// out so the files are handed on, open and looked at, to be compared as any others.
bool TreeWalk::AreAlikeAtOnce(Level& level, const Item& item) {
    if (!pairs_.ReadsContents() || pairs_.ReadingWaits() || !item.IsPair() || IsUnknown(level, item))
        return false;
    for (const Side side : kBothSides) {
        const Range& at = item.at[side];
        if (at.end - at.begin > 1 || HasStat(level, item, side) || !FolderOf(level, item, side).IsOpen())
            return false;
    }
    PerSide<UnstatedFile> unstated;
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        const std::string_view name = listing.Name(listing.At(item.at[side].begin));
        if (!FolderOf(level, item, side).OpenUnstatedFile(name, unstated[side]).IsOk()) return false;
    }
    std::uint64_t size = 0;
    const FolderListing& left = level.listing[Side::Left];
    if (pairs_.AreAlikeAtOnce(unstated, left.Name(left.At(item.at[Side::Left].begin)), size)) {
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
        FolderListing& listing = level.listing[side];
        for (std::size_t at = item.at[side].begin; at < item.at[side].end; ++at) {
            const FolderListing::Entry entry = listing.At(at);
            if (entry.hasStat) continue;
            FolderListing::Source& source = listing.Sources()[entry.source];
            if (!source.folder.IsOpen()) (void)Reopen(side, source);
            const std::size_t unknown = listing.Unknown().size();
            const Currency before = listing.TotalSize();
            if (listing.LookAt(at)) {
                outcome_.size[side] += listing.TotalSize() - before;
                continue;
            }
            if (listing.Unknown().size() > unknown) MarkUnknownEntry(side, level, entry);
            listing.PutBefore(item.at[side].begin++, at);
        }
    }
}

void TreeWalk::CompareFiles(Level& level, const Item& item) {
    const PerSide<ScannedFile> files = FilesOf(level, item);
    PairTypes types{ResultType::Orphan, ResultType::Orphan};
    if (item.IsPair()) types = pairs_.Classify(files, [&](Side side) { return FilePath(level, item, side); });
    for (const Side side : kBothSides) NoteTwins(side, level.listing[side], item.at[side]);
    if (types == PairTypes{ResultType::Same, ResultType::Same}) return;

    PerSide<SubFolderRecord> records;
    std::string_view shown;
    for (const Side side : kBothSides) {
        if (item.at[side].IsEmpty()) continue;
        records[side].size = files[side].size;
        records[side].lastWrite = files[side].lastWrite;
        records[side].elsewhere = level.elsewhere[side];
        records[side].type = side == Side::Left ? types.left : types.right;
        level.listing[side].PathOf(level.listing[side].At(item.at[side].begin), pathScratch_[side]);
        if (shown.empty()) shown = pathScratch_[side];
        records[side].realName = pathScratch_[side];
        records[side].name = shown;
    }
    diffs_->AddPair(records);
}

void TreeWalk::NoteTwins(Side side, const FolderListing& listing, const Range& range) {
    std::string path;
    for (std::size_t at = range.begin + 1; at < range.end; ++at) {
        listing.PathOf(listing.At(at), path);
        context_.tools.log.AppendNote("Left out beside a name that differs in letter case only: " +
                                      FullPath(side, path));
    }
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

void TreeWalk::MarkUnknownEntries(Side side, const Level& level) {
    for (const FolderListing::Entry& entry : level.listing[side].Unknown())
        MarkUnknownEntry(side, level, entry);
}

void TreeWalk::MarkUnknownEntry(Side side, const Level& level, const FolderListing::Entry& entry) {
    if (level.mode == Mode::AsideSize) return;
    std::string path;
    level.listing[side].PathOf(entry, path);
    outcome_.complete = false;
    context_.compare.ErrorsDuringCompare = true;
    context_.tools.log.Append({"File Name: " + FullPath(side, path), "Process: Examining the folder",
                               "Error: What this is could not be found out. It is left out on both sides."});
    diffs_->AddUnknownPlace({side, path});
}

std::string TreeWalk::FullPath(Side side, std::string_view below) const {
    std::string path = base_[side];
    path.append(below);
    return path;
}

}  // namespace vantrel
