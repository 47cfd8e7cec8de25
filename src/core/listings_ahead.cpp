#include "core/listings_ahead.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr std::size_t kFoldersAhead = 48;
// One that holds more is listed when the walk comes to it, in slices.
constexpr std::size_t kMostEntries = 4'096;
constexpr std::size_t kEntriesAhead = 40'000;

struct Stopped {};

// So many entries are held by what has it.
class EntriesHeld {
  public:
    EntriesHeld(std::shared_ptr<std::atomic<std::size_t>> all, std::size_t own)
        : all_(std::move(all)), own_(own), fits_(all_->fetch_add(own_) + own_ <= kEntriesAhead) {}
    ~EntriesHeld() { all_->fetch_sub(own_); }
    EntriesHeld(const EntriesHeld&) = delete;
    EntriesHeld& operator=(const EntriesHeld&) = delete;
    bool Fits() const { return fits_; }

  private:
    std::shared_ptr<std::atomic<std::size_t>> all_;
    std::size_t own_;
    bool fits_;
};

}  // namespace

struct AheadFolder::Listed {
    bool isWhole = false;  // otherwise nothing of it counts
    bool isLink = false;
    FolderListing listing;
    std::unique_ptr<EntriesHeld> held;
};

AheadFolder::AheadFolder() = default;
AheadFolder::~AheadFolder() {
    CountNoMore();
}

void AheadFolder::CountNoMore() {
    if (counted) --*counted;
    counted = nullptr;
}

// What a job needs to list one side of a folder.
struct ListingsAhead::Request {
    std::shared_ptr<const OpenFolder> above;
    std::string name, path;
    std::shared_ptr<const NameFilter> filter;  // null where only sizes are wanted
    StatPolicy statPolicy;
    bool asksForLink;
    std::shared_ptr<std::atomic<std::size_t>> entries;
};

AheadFolder::Listed ListingsAhead::List(const Request& request, const StopFlag& stop) {
    AheadFolder::Listed found;
    if (request.asksForLink) {
        FolderEntry entry;
        found.isLink =
            !request.above->LookAt(request.name, entry) || entry.kind == EntryKind::Other || entry.isLink;
    }
    auto folder = std::make_shared<OpenFolder>();
    if (!request.above->OpenSub(request.name, *folder).IsOk()) return found;
    ListedNames names;
    bool atEnd = false;
    if (!folder->ListNames(true, kMostEntries + 1, names, atEnd).IsOk() || !atEnd) return found;
    const FileId id = folder->Id();
    found.listing.From() = {std::move(folder), request.path, id, true};
    found.held = std::make_unique<EntriesHeld>(request.entries, names.Count());
    if (found.held->Fits()) ListNamed(request, names, stop, found);
    return found;
}

void ListingsAhead::ListNamed(const Request& request, const ListedNames& names, const StopFlag& stop,
                              AheadFolder::Listed& found) {
    const OpenFolder& folder = *found.listing.From().folder;
    const EntrySink take = [&](const FolderEntry& entry) {
        found.listing.Take(entry, request.filter.get());
        return !stop.IsRequested();
    };
    std::set<std::string> gone;
    if (!folder.LookAtNames(names, 0, names.Count(), request.statPolicy, take, gone)) return;
    folder.HandOutGone(gone, take);
    try {
        found.listing.Order([&] {
            if (stop.IsRequested()) throw Stopped();
        });
        found.isWhole = true;
    } catch (const Stopped&) {
        // Nobody takes it.
    }
}

ListingsAhead::ListingsAhead(Workers& workers, std::shared_ptr<const NameFilter> filter,
                             ContentsAhead* contents, const PerSide<std::shared_ptr<OpenFolder>>& roots)
    : workers_(workers),
      filter_(std::move(filter)),
      contents_(contents),
      roots_(roots),
      entries_(std::make_shared<std::atomic<std::size_t>>(0)),
      top_(std::make_unique<AheadFolder>()) {
    top_->state = State::Walked;
}

ListingsAhead::~ListingsAhead() = default;

void ListingsAhead::Announce(const std::vector<PerSide<std::string>>& names) {
    announced_ = names;
    top_->nextItem = 0;
}

// Whether this folder is one of those that lead to it: then it is not entered, and not listed for ever.
bool ListingsAhead::IsOnBranch(const AheadFolder& folder, Side side, FileId id) const {
    for (const AheadFolder* above = folder.above; above; above = above->above)
        if (above->level && above->level->listing[side].From().id == id) return true;
    return roots_[side]->Id() == id;
}

AheadFolder& ListingsAhead::AddBelow(AheadFolder& folder, PerSide<std::string> names, WalkMode mode) {
    AheadFolder& added = *folder.below.emplace_back(std::make_unique<AheadFolder>());
    added.above = &folder;
    added.names = std::move(names);
    added.mode = mode;
    added.depth = folder.depth + 1;
    return added;
}

// The next folder that the walk will enter from this one; false where there is none.
bool ListingsAhead::AddNext(AheadFolder& folder) {
    if (&folder == top_.get()) {
        if (folder.nextItem == announced_.size()) return false;
        const PerSide<std::string>& names = announced_[folder.nextItem++];
        const bool pair = !names[Side::Left].empty() && !names[Side::Right].empty();
        AddBelow(folder, names, pair ? WalkMode::Compare : WalkMode::Size);
        return true;
    }
    if (!folder.level || folder.depth >= kDeepest) return false;
    return (folder.level->mode == WalkMode::Compare && AddNextItem(folder)) || AddNextForSize(folder);
}

bool ListingsAhead::AddNextItem(AheadFolder& folder) {
    const WalkLevel& level = *folder.level;
    while (folder.nextItem < level.items.size()) {
        const LevelItem& item = level.items[folder.nextItem++];
        if (level.IsOccupied(item) || !level.IsFolder(item)) continue;
        PerSide<std::string> names;
        WalkMode mode = WalkMode::Compare;
        for (const Side side : kBothSides) {
            if (!item.Has(side)) continue;
            names[side] = level.listing[side].Name(level.EntryOf(item, side));
            if (!item.IsPair() && level.EntryOf(item, side).isLink) mode = WalkMode::AsideSize;
        }
        AddBelow(folder, std::move(names), mode);
        return true;
    }
    return false;
}

bool ListingsAhead::AddNextForSize(AheadFolder& folder) {
    const WalkLevel& level = *folder.level;
    const bool compares = level.mode == WalkMode::Compare;
    for (const Side side : kBothSides) {
        const FolderListing& listing = level.listing[side];
        const FolderListing::Entry* next = nullptr;
        while (!compares && !next && folder.nextEntry[side] < listing.Count()) {
            const FolderListing::Entry& entry = listing.At(folder.nextEntry[side]++);
            if (entry.isFolder) next = &entry;
        }
        const bool aside = !next && folder.nextAside[side] < listing.FoldersAside().size();
        if (aside) next = &listing.FoldersAside()[folder.nextAside[side]++];
        if (!next) continue;
        PerSide<std::string> names;
        names[side] = listing.Name(*next);
        AddBelow(folder, std::move(names), aside && compares ? WalkMode::AsideSize : level.mode);
        return true;
    }
    return false;
}

void ListingsAhead::HandInOne(AheadFolder& folder) {
    folder.state = State::HandedIn;
    folder.counted = &++folders_;
    const bool top = folder.above == top_.get();
    const bool compares = folder.mode == WalkMode::Compare;
    for (const Side side : kBothSides) {
        if (folder.names[side].empty()) continue;
        const FolderListing::Source* const source =
            top ? nullptr : &folder.above->level->listing[side].From();
        Request request{top ? roots_[side] : source->folder,
                        folder.names[side],
                        top ? std::string() : source->path + folder.names[side] + "/",
                        compares ? filter_ : nullptr,
                        compares && contents_ ? StatPolicy::NonFilesOnly : StatPolicy::All,
                        top,
                        entries_};
        folder.jobs[side] = PendingJob<AheadFolder::Listed>(
            workers_, [request = std::move(request)](const StopFlag& stop) { return List(request, stop); });
    }
}

bool ListingsAhead::IsReady(const AheadFolder& folder) const {
    return std::all_of(kBothSides.begin(), kBothSides.end(), [&](Side side) {
        return !folder.jobs[side].IsThere() || folder.jobs[side].IsReady();
    });
}

// Makes a level of what the jobs found, where they found all.
void ListingsAhead::Prepare(AheadFolder& folder, const WhileWaiting& whileWaiting) {
    bool isWhole = true;
    folder.state = State::BeingTaken;
    for (const Side side : kBothSides) {
        if (!folder.jobs[side].IsThere()) continue;
        folder.listed[side] = std::make_unique<AheadFolder::Listed>(folder.jobs[side].Take(whileWaiting));
    }
    for (const Side side : kBothSides) {
        const AheadFolder::Listed* const listed = folder.listed[side].get();
        if (!listed) continue;
        folder.isLink[side] = listed->isLink;
        isWhole = isWhole && listed->isWhole && !IsOnBranch(folder, side, listed->listing.From().id);
    }
    folder.state = isWhole ? State::Prepared : State::Unprepared;
    if (isWhole) {
        folder.prepared = std::make_unique<WalkLevel>();
        folder.level = folder.prepared.get();
        folder.level->mode = folder.mode;
        for (const Side side : kBothSides)
            if (folder.listed[side]) folder.level->listing[side] = std::move(folder.listed[side]->listing);
        if (folder.mode == WalkMode::Compare) {
            PairEntries(folder.level->listing, folder.level->items);
            if (contents_) folder.level->BeginContents(*contents_);
        }
    } else {
        for (const Side side : kBothSides) folder.listed[side].reset();
    }
}

// False once nothing more may be handed in.
bool ListingsAhead::HandInBelow(AheadFolder& folder) {
    for (std::size_t i = 0;; ++i) {
        if (i == folder.below.size()) {
            if (folders_ >= kFoldersAhead) return false;
            if (!AddNext(folder)) return true;
        }
        AheadFolder& child = *folder.below[i];
        if (child.state == State::Walked) continue;
        if (child.state == State::Waiting) {
            const bool folderIsOpen =
                child.above == top_.get() ||
                std::all_of(kBothSides.begin(), kBothSides.end(), [&](Side side) {
                    return child.names[side].empty() || folder.level->listing[side].From().IsOpen();
                });
            if (!folderIsOpen) return true;
            if (folders_ >= kFoldersAhead || *entries_ >= kEntriesAhead) return false;
            HandInOne(child);
        }
        if (child.state == State::HandedIn && IsReady(child)) Prepare(child, [] {});
        if (child.state != State::Prepared) continue;
        if (child.level->contents) child.level->contents->Advance();
        if (!HandInBelow(child)) return false;
    }
}

void ListingsAhead::HandIn(AheadFolder& from) {
    for (AheadFolder* folder = &from; folder; folder = folder->above)
        if (!HandInBelow(*folder)) return;
}

AheadFolder* ListingsAhead::Enter(AheadFolder* above, const PerSide<std::string_view>& names, WalkMode mode,
                                  const WhileWaiting& whileWaiting) {
    if (!above || above->depth >= kDeepest) return nullptr;
    const auto isWanted = [&](const AheadFolder& folder) {
        return folder.mode == mode && folder.names[Side::Left] == names[Side::Left] &&
               folder.names[Side::Right] == names[Side::Right];
    };
    // Those before it were not entered.
    while (!above->below.empty() && !isWanted(*above->below.front())) Leave(*above->below.front());
    while (above->below.empty() && AddNext(*above))
        if (!isWanted(*above->below.front())) Leave(*above->below.front());
    if (above->below.empty()) return nullptr;
    AheadFolder& folder = *above->below.front();
    if (folder.state == State::HandedIn) Prepare(folder, whileWaiting);
    folder.state = State::Walked;
    folder.CountNoMore();
    for (const Side side : kBothSides) folder.listed[side].reset();
    return &folder;
}

void ListingsAhead::Leave(AheadFolder& folder) {
    folder.above->below.pop_front();
}

}  // namespace vantrel
