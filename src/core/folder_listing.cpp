#include "core/folder_listing.h"

#include <algorithm>
#include <tuple>

#include "core/result_row.h"
#include "platform/names/names.h"

namespace vantrel {

void FolderListing::Clear() {
    sources_.clear();
    text_.clear();
    entries_.clear();
    aside_.clear();
    unknown_.clear();
    unknownKeys_.clear();
    order_.clear();
    totalSize_ = Currency();
}

FolderListing::Entry FolderListing::MakeEntry(const FolderEntry& entry, std::uint32_t source) {
    Entry made{};
    made.nameAt = static_cast<std::uint32_t>(text_.size());
    made.nameSize = static_cast<std::uint32_t>(entry.name.size());
    text_.append(entry.name);
    made.keyAt = static_cast<std::uint32_t>(text_.size());
    AppendFolded(entry.name, text_);
    made.isFolder = entry.kind == EntryKind::Folder;
    // With its "/" a folder stands among the files where its own files belong in the order of whole paths.
    if (made.isFolder) text_.push_back('/');
    made.keySize = static_cast<std::uint32_t>(text_.size()) - made.keyAt;
    made.source = source;
    made.isLink = entry.isLink;
    made.hasStat = entry.hasStat;
    made.size = entry.size;
    made.lastWrite = entry.lastWrite;
    return made;
}

void FolderListing::Take(const FolderEntry& entry, std::uint32_t source, const NameFilter* filter) {
    switch (entry.kind) {
        case EntryKind::File: {
            const bool kept = filter && filter->KeepsFile(entry.name, entry.attributes);
            if (entry.hasStat) totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(entry.size));
            if (!kept && entry.hasStat) break;
            Entry made = MakeEntry(entry, source);
            if (kept)
                entries_.push_back(made);
            else if (LookAt(made) == Found::Unknown)
                AddUnknown(made);
            break;
        }
        case EntryKind::Folder:
            marked_.assign(1, kFolderMarker).append(entry.name);
            (filter && filter->KeepsFolder(marked_, entry.attributes) ? entries_ : aside_)
                .push_back(MakeEntry(entry, source));
            break;
        case EntryKind::Other:
            if (entry.reason != UnknownReason::NotTold) break;
            // Nothing is to be told of what is left out whatever it is.
            marked_.assign(1, kFolderMarker).append(entry.name);
            if (!filter || filter->KeepsFile(entry.name, entry.attributes) ||
                filter->KeepsFolder(marked_, entry.attributes))
                AddUnknown(MakeEntry(entry, source));
            break;
    }
}

void FolderListing::AddUnknown(const Entry& entry) {
    unknown_.push_back(entry);
    unknownKeys_.emplace(Key(entry));
}

FolderListing::Found FolderListing::LookAt(Entry& entry) {
    const OpenFolder& folder = sources_[entry.source].folder;
    if (!folder.IsOpen()) return Found::Unknown;
    FolderEntry found;
    if (!folder.LookAt(Name(entry), found)) return Found::Gone;
    // Something else may have taken the name since it was listed.
    if (found.kind != EntryKind::File) return Found::Unknown;
    entry.hasStat = true;
    entry.size = found.size;
    entry.lastWrite = found.lastWrite;
    totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(entry.size));
    return Found::File;
}

bool FolderListing::LookAt(std::size_t position) {
    Entry& entry = entries_[order_[position].index];
    const Found found = LookAt(entry);
    if (found == Found::File) return true;
    if (found == Found::Unknown) AddUnknown(entry);
    return false;
}

void FolderListing::PutBefore(std::size_t first, std::size_t position) {
    const auto at = order_.begin() + static_cast<std::ptrdiff_t>(position);
    std::rotate(order_.begin() + static_cast<std::ptrdiff_t>(first), at, at + 1);
}

void FolderListing::LookAtRest(const ComparisonContext& context) {
    for (Entry& entry : entries_) {
        if (entry.isFolder || entry.hasStat) continue;
        context.ThrowIfCancelled();
        if (LookAt(entry) == Found::Unknown) AddUnknown(entry);
    }
}

void FolderListing::Learn(std::size_t position, std::uint64_t size, FileTime lastWrite) {
    Entry& entry = entries_[order_[position].index];
    entry.hasStat = true;
    entry.size = size;
    entry.lastWrite = lastWrite;
    totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(size));
}

Error FolderListing::List(const NameFilter* filter, StatPolicy statPolicy, const ComparisonContext& context,
                          BreakingOff& at) {
    for (std::uint32_t source = 0; source < sources_.size(); ++source) {
        bool cancelled = false;
        Error error = sources_[source].folder.ForEach(
            [&](const FolderEntry& entry) {
                cancelled = context.IsCancelled();
                if (cancelled) return false;
                Take(entry, source, filter);
                return true;
            },
            statPolicy);
        if (cancelled) throw ComparisonCancelled();
        if (!error.IsOk()) {
            at = {source, {}};
            const std::vector<Entry>& some = entries_.empty() ? aside_ : entries_;
            if (!some.empty() && some.back().source == source) at.lastName = Name(some.back());
            return error;
        }
    }
    OrderByKey(
        entries_.size(), [this](std::size_t i) { return Key(entries_[i]); },
        [this](std::size_t i) { return std::tuple(entries_[i].source, Name(entries_[i])); },
        [&context] { context.ThrowIfCancelled(); }, order_);
    return {};
}

}  // namespace vantrel
