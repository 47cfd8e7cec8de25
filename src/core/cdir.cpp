#include "core/cdir.h"

#include <algorithm>
#include <utility>

#include "core/name_order.h"
#include "core/result_row.h"
#include "diagnostics/performance_check.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::uint32_t kSlowScanMilliseconds = 10'000;
constexpr std::int64_t kFewFiles = 750;

// Sorts `items` by key and drops all but the first of equal keys; `onTwin` is told of each one dropped.
template <typename Item, typename NameOf, typename Check, typename OnTwin>
void SortAndDropTwins(std::vector<Item>& items, const NameOf& nameOf, const Check& check,
                      const OnTwin& onTwin) {
    std::vector<SortItem> order;
    OrderByKey(
        items.size(), [&items](std::size_t i) { return items[i].Key; },
        [&](std::size_t i) { return nameOf(items[i]); }, check, order);
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const SortItem& next : order) {
        check();
        if (!sorted.empty() && sorted.back().Key == items[next.index].Key)
            onTwin(items[next.index]);
        else
            sorted.push_back(items[next.index]);
    }
    items = std::move(sorted);
}

template <typename Item>
const Item* FindByKey(const std::vector<Item>& items, std::string_view name) {
    const std::string key = FoldCase(name);
    const auto at = std::lower_bound(items.begin(), items.end(), std::string_view(key),
                                     [](const Item& item, std::string_view text) { return item.Key < text; });
    return at != items.end() && at->Key == key ? &*at : nullptr;
}

// Most names need no folding at all.
bool IsFoldedAscii(std::string_view name) {
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
    std::vector<CFile>().swap(files_);
    std::vector<SubDir>().swap(subDirs_);
    unknownKeys_.clear();
    texts_ = std::make_shared<TextPool>();
    indexed_ = true;
    Size = Currency();
}

ScanOutcome CDir::PopulateSelfWithFiles(const ScanOptions& options, const ComparisonContext& context) {
    if (context.display) context.display->SetFilterPanel(options.HasNoFilters() ? "No Filters" : "Filters");
    DropContent();

    ScanOutcome outcome = ScanOutcome::Failed;
    tools_.reporter.Guard("CDir.PopulateSelfWithFiles", [&] {
        CPerformanceCheck performance(tools_.clock);
        performance.BeginPerformanceCheck();
        context.progress.SetBarRange(0);

        ListingState state{context, NameFilter::ForScan(options)};
        OpenFolder folder;
        ThrowIfFailed(tools_.files.Open(path_, folder));
        indexed_ = false;
        ThrowIfFailed(
            folder.ForEach([this, &state](const FolderEntry& entry) { return TakeEntry(entry, state); }));
        performance.EndPerformanceCheck();
        if (performance.MilliSecondsElapsed() > kSlowScanMilliseconds && state.filesSeen < kFewFiles)
            context.compare.SlowConnection = true;

        outcome = ScanOutcome::Cancelled;
        if (state.cancelled) return;
        try {
            Index([&context] { context.ThrowIfCancelled(); });
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
    if (entry.kind == EntryKind::File) {
        if (state.filter.KeepsFile(entry.name, entry.attributes)) AddFile(entry);
    } else if (entry.kind == EntryKind::Folder || entry.reason == UnknownReason::NotTold) {
        state.markedName.assign(1, kFolderMarker).append(entry.name);
        const bool keptAsFolder = state.filter.KeepsFolder(state.markedName, entry.attributes);
        if (entry.kind == EntryKind::Other) {
            if (keptAsFolder || state.filter.KeepsFile(entry.name, entry.attributes))
                AddUnknown(entry, state);
        } else if (keptAsFolder) {
            const std::string_view kept = texts_->Add(state.markedName);
            subDirs_.push_back({kept, KeyFor(kept)});
        }
    }
    return true;
}

void CDir::AddFile(const FolderEntry& entry) {
    CFile& file = files_.emplace_back();
    file.FileName = texts_->Add(entry.name);
    file.Key = KeyFor(file.FileName);
    file.Size = SizeByRule(entry.size);
    file.LastWrite = entry.lastWrite;
}

void CDir::AddUnknown(const FolderEntry& entry, const ListingState& state) {
    std::string key = FoldCase(entry.name);
    const auto at = std::lower_bound(unknownKeys_.begin(), unknownKeys_.end(), key);
    if (at == unknownKeys_.end() || *at != key) unknownKeys_.insert(at, std::move(key));
    state.context.compare.ErrorsDuringCompare = true;
    tools_.log.Append({"File Name: " + JoinPath(path_, entry.name), "Process: Examining the folder",
                       "Error: What this is could not be found out. It is left out on both sides."});
}

std::string_view CDir::KeyFor(std::string_view kept) {
    if (IsFoldedAscii(kept)) return kept;
    scratch_.clear();
    AppendFolded(kept, scratch_);
    return scratch_ == kept ? kept : texts_->Add(scratch_);
}

template <typename Check>
void CDir::Index(const Check& check) const {
    const auto note = [this](std::string_view name) {
        tools_.log.AppendNote("Left out beside a name that differs in letter case only: " +
                              JoinPath(path_, name));
    };
    SortAndDropTwins(
        files_, [](const CFile& file) { return file.FileName; }, check,
        [&](const CFile& file) { note(file.FileName); });
    SortAndDropTwins(
        subDirs_, [](const SubDir& folder) { return folder.Name; }, check,
        [&](const SubDir& folder) { note(folder.RealName()); });
    indexed_ = true;
}

void CDir::EnsureIndexed() const {
    if (!indexed_) Index([] {});
}

const std::vector<CFile>& CDir::Files() const {
    EnsureIndexed();
    return files_;
}

const std::vector<CDir::SubDir>& CDir::SubDirs() const {
    EnsureIndexed();
    return subDirs_;
}

void CDir::AddSubDir(std::string_view markedName) {
    EnsureIndexed();
    const std::string_view kept = texts_->Add(markedName);
    const SubDir added{kept, KeyFor(kept)};
    const auto at = std::lower_bound(subDirs_.begin(), subDirs_.end(), added,
                                     [](const SubDir& a, const SubDir& b) { return a.Key < b.Key; });
    if (at == subDirs_.end() || at->Key != added.Key) subDirs_.insert(at, added);
}

const CFile* CDir::GetFile(std::string_view name) const {
    return FindByKey(Files(), name);
}

bool CDir::DoesFileExistInDir(std::string_view name, const CFile*& file) const {
    file = GetFile(name);
    return file != nullptr;
}

std::string_view CDir::GetSubDir(std::string_view markedName) const {
    const SubDir* found = FindByKey(SubDirs(), markedName);
    return found ? found->Name : std::string_view();
}

bool CDir::DoesSubDirExistInDir(std::string_view markedName) const {
    return FindByKey(SubDirs(), markedName) != nullptr;
}

}  // namespace vantrel
