#include "core/cdir.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "core/name_order.h"
#include "core/result_row.h"
#include "diagnostics/performance_check.h"
#include "platform/fetch_ahead.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::uint32_t kSlowScanMilliseconds = 10'000;
constexpr std::int64_t kFewFiles = 750;

// What these give are views into what does not move with the items.
std::string_view NameOf(const CFile& file) {
    return file.FileName();
}
std::string_view NameOf(const CDir::SubDir& folder) {
    return folder.Name;
}
std::string_view NameOf(const CDir::Other& other) {
    return other.name;
}
std::string_view KeyOf(const CFile& file) {
    return file.Key();
}
std::string_view KeyOf(const CDir::SubDir& folder) {
    return folder.Key;
}
std::string_view KeyOf(const CDir::Other& other) {
    return other.key;
}

template <typename Item, typename Check>
void SortByKey(std::vector<Item>& items, const Check& check) {
    std::vector<SortItem> order;
    OrderByKey(
        items.size(), [&](std::size_t i) { return KeyOf(items[i]); },
        [&](std::size_t i) { return NameOf(items[i]); }, check, order);
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        check();
        if (i + kStepsAhead < order.size()) FetchAhead(&items[order[i + kStepsAhead].index]);
        sorted.push_back(items[order[i].index]);
    }
    items = std::move(sorted);
}

template <typename Item>
const Item* FindByName(const std::vector<Item>& items, std::string_view name) {
    const std::string key = FoldCase(name);
    const auto first =
        std::lower_bound(items.begin(), items.end(), std::string_view(key),
                         [](const Item& item, std::string_view text) { return KeyOf(item) < text; });
    if (first == items.end() || KeyOf(*first) != key) return nullptr;
    for (auto at = first; at != items.end() && KeyOf(*at) == key; ++at)
        if (NameOf(*at) == name) return &*at;
    return &*first;
}

// Most names need no folding at all.
bool IsFoldedAscii(std::string_view name) {
    // Eight bytes at a time: both sums have the highest bit of a byte set from 'A' on, or from behind 'Z' on.
    constexpr std::uint64_t kOnes = 0x0101'0101'0101'0101, kHighest = 0x80 * kOnes;
    for (; name.size() >= sizeof(std::uint64_t); name.remove_prefix(sizeof(std::uint64_t))) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, name.data(), sizeof bytes);
        if ((bytes & kHighest) != 0) return false;
        const std::uint64_t fromA = bytes + (0x80 - 'A') * kOnes, aboveZ = bytes + (0x80 - 'Z' - 1) * kOnes;
        if ((fromA & ~aboveZ & kHighest) != 0) return false;
    }
    return std::all_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x80 && (byte < 'A' || byte > 'Z');
    });
}

}  // namespace

struct CDir::ListingState {
    const ComparisonContext& context;
    NameFilter filter;
    std::int64_t filesSeen = 0;
    bool cancelled = false;
    std::string markedName{};
};

void CDir::SetPath(std::string_view path) {
    path_ = NormalizePath(path);
    driveName_ = !path_.empty() && path_.front() == '/' ? tools_.volumes.GetDriveName(path_) : std::string();
}

void CDir::Clear() {
    DropContent();
    Name.clear();
    path_.clear();
}

void CDir::DropContent() {
    ordering_.Drop();
    entries_ = Entries();
    texts_ = std::make_shared<TextPool>();
    seen_ = std::make_shared<SeenPool>();
    indexed_ = true;
    Size = Currency();
    id_ = {};
    made_ = {};
}

Error CDir::Read(ListingState& state, FolderReading* begun) {
    const EntrySink take = [this, &state](const FolderEntry& entry) { return TakeEntry(entry, state); };
    if (!begun) {
        OpenFolder folder;
        if (Error error = tools_.files.Open(path_, folder); !error.IsOk()) return error;
        id_ = folder.Id();
        made_ = folder.Made();
        indexed_ = false;
        return folder.ForEach(take);
    }
    const auto whileWaiting = [&state] {
        if (!state.context.IsCancelled()) return;
        state.cancelled = true;
        throw ComparisonCancelled();
    };
    try {
        if (Error error = begun->Open(whileWaiting); !error.IsOk()) return error;
        id_ = begun->Id();
        made_ = begun->Made();
        indexed_ = false;
        return begun->ForEach(take, whileWaiting);
    } catch (const ComparisonCancelled&) {
        return {};
    }
}

ScanOutcome CDir::PopulateSelfWithFiles(const ScanOptions& options, const ComparisonContext& context,
                                        FolderReading* begun) {
    if (context.display) context.display->SetFilterPanel(options.HasNoFilters() ? "No Filters" : "Filters");
    DropContent();

    ScanOutcome outcome = ScanOutcome::Failed;
    tools_.reporter.Guard("CDir.PopulateSelfWithFiles", [&] {
        CPerformanceCheck performance(tools_.clock);
        performance.BeginPerformanceCheck();
        context.progress.SetBarRange(0);

        ListingState state{context, NameFilter::ForScan(options)};
        ThrowIfFailed(Read(state, begun));
        performance.EndPerformanceCheck();
        if (performance.MilliSecondsElapsed() > kSlowScanMilliseconds && state.filesSeen < kFewFiles)
            context.compare.SlowConnection = true;

        outcome = ScanOutcome::Cancelled;
        if (state.cancelled) return;
        try {
            if (begun) {
                OrderByWorker(context.workers);
            } else {
                entries_.Order([&context] { context.ThrowIfCancelled(); });
                indexed_ = true;
            }
            outcome = ScanOutcome::Complete;
        } catch (const ComparisonCancelled&) {
            // What was found stays.
        }
    });
    return outcome;
}

bool CDir::TakeEntry(const FolderEntry& entry, ListingState& state) {
    if (entry.kind == EntryKind::File) state.context.progress.SetBarValue(++state.filesSeen);
    if (state.context.IsCancelled()) {
        state.cancelled = true;
        return false;
    }
    const bool keptAsFile =
        entry.kind != EntryKind::Folder && state.filter.KeepsFile(entry.name, entry.attributes);
    if (entry.kind == EntryKind::File) {
        if (keptAsFile) AddFile(entry, state.context);
        return true;
    }
    state.markedName.assign(1, kFolderMarker).append(entry.name);
    const bool keptAsFolder = state.filter.KeepsFolder(state.markedName, entry.attributes);
    if (entry.kind == EntryKind::Other) {
        if (keptAsFile || keptAsFolder) AddOther(entry, keptAsFile);
    } else if (keptAsFolder) {
        const std::string_view kept = texts_->Add(state.markedName);
        entries_.subDirs.push_back({kept, KeyFor(kept), seen_->Add(entry.seen), entry.isLink});
    }
    return true;
}

void CDir::AddFile(const FolderEntry& entry, const ComparisonContext& context) {
    (void)context.SizeOf(entry.size);  // which notes that there is a large one
    scratch_.assign(entry.name);
    if (!IsFoldedAscii(entry.name)) {
        AppendFolded(entry.name, scratch_);
        if (std::string_view(scratch_).substr(entry.name.size()) == entry.name)
            scratch_.resize(entry.name.size());
    }
    const std::string_view texts = texts_->Add(scratch_);
    const std::size_t keySize = texts.size() - entry.name.size();
    const SizeRule rule = context.compare.Sizes;
    if (entry.isLink)
        entries_.files.emplace_back(texts, keySize, seen_->AddLink({entry.seen, entry.size, entry.lastWrite}),
                                    rule);
    else
        entries_.files.emplace_back(texts, keySize, seen_->Add(entry.seen), rule);
}

void CDir::AddOther(const FolderEntry& entry, bool keptAsFile) {
    Other& other = entries_.others.emplace_back();
    other.name = texts_->Add(entry.name);
    other.key = KeyFor(other.name);
    if (entry.seen != Seen()) other.seen = seen_->Add(entry.seen);
    other.lastWrite = entry.lastWrite;
    other.reason = entry.reason;
    other.isLink = entry.isLink;
    other.keptAsFile = keptAsFile;
}

std::string_view CDir::KeyFor(std::string_view kept) {
    if (IsFoldedAscii(kept)) return kept;
    scratch_.clear();
    AppendFolded(kept, scratch_);
    return scratch_ == kept ? kept : texts_->Add(scratch_);
}

template <typename Check>
void CDir::Entries::Order(const Check& check) {
    SortByKey(files, check);
    SortByKey(subDirs, check);
    SortByKey(others, check);
}

void CDir::OrderByWorker(Workers& workers) {
    const auto entries = std::make_shared<Entries>(std::exchange(entries_, Entries()));
    ordering_ = PendingJob<Entries>(workers, [entries, texts = texts_](const StopFlag& stop) {
        entries->Order([&stop] {
            if (stop.IsRequested()) throw Cancelled();
        });
        return std::move(*entries);
    });
}

void CDir::AwaitOrder(const std::function<void()>& whileWaiting) const {
    if (!ordering_.IsThere()) return;
    entries_ = ordering_.Take(whileWaiting);
    indexed_ = true;
}

void CDir::EnsureIndexed() const {
    if (indexed_) return;
    if (ordering_.IsThere())
        entries_ = ordering_.TakeHere();
    else
        entries_.Order([] {});
    indexed_ = true;
}

const std::vector<CFile>& CDir::Files() const {
    EnsureIndexed();
    return entries_.files;
}

const std::vector<CDir::SubDir>& CDir::SubDirs() const {
    EnsureIndexed();
    return entries_.subDirs;
}

const std::vector<CDir::Other>& CDir::Others() const {
    EnsureIndexed();
    return entries_.others;
}

void CDir::AddSubDir(std::string_view markedName) {
    EnsureIndexed();
    const std::string_view kept = texts_->Add(markedName);
    const SubDir added{kept, KeyFor(kept), nullptr, false};
    const auto at = std::lower_bound(entries_.subDirs.begin(), entries_.subDirs.end(), added,
                                     [](const SubDir& a, const SubDir& b) { return a.Key < b.Key; });
    if (at == entries_.subDirs.end() || at->Key != added.Key) entries_.subDirs.insert(at, added);
}

const CFile* CDir::GetFile(std::string_view name) const {
    return FindByName(Files(), name);
}

bool CDir::DoesFileExistInDir(std::string_view name, const CFile*& file) const {
    file = GetFile(name);
    return file != nullptr;
}

std::string_view CDir::GetSubDir(std::string_view markedName) const {
    const SubDir* found = FindByName(SubDirs(), markedName);
    return found ? found->Name : std::string_view();
}

bool CDir::DoesSubDirExistInDir(std::string_view markedName) const {
    return FindByName(SubDirs(), markedName) != nullptr;
}

}  // namespace vantrel
