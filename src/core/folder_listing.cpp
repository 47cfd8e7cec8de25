#include "core/folder_listing.h"

#include <tuple>

#include "core/result_row.h"
#include "platform/names.h"

namespace vantrel {

void FolderListing::Clear() {
    sources_.clear();
    text_.clear();
    entries_.clear();
    aside_.clear();
    unknown_.clear();
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
    made.size = entry.size;
    made.lastWrite = entry.lastWrite;
    return made;
}

void FolderListing::Take(const FolderEntry& entry, std::uint32_t source, const NameFilter* filter) {
    switch (entry.kind) {
        case EntryKind::File:
            totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(entry.size));
            if (filter && filter->KeepsFile(entry.name, entry.attributes))
                entries_.push_back(MakeEntry(entry, source));
            break;
        case EntryKind::Folder:
            marked_.assign(1, kFolderMarker).append(entry.name);
            (filter && filter->KeepsFolder(marked_, entry.attributes) ? entries_ : aside_)
                .push_back(MakeEntry(entry, source));
            break;
        case EntryKind::Other:
            if (entry.unknown) unknown_.push_back(MakeEntry(entry, source));
            break;
    }
}

Error FolderListing::List(const NameFilter* filter, const ComparisonContext& context, std::string& lastName) {
    for (std::uint32_t source = 0; source < sources_.size(); ++source) {
        bool cancelled = false;
        Error error = sources_[source].folder.ForEach([&](const FolderEntry& entry) {
            cancelled = context.IsCancelled();
            if (cancelled) return false;
            Take(entry, source, filter);
            return true;
        });
        if (cancelled) throw ComparisonCancelled();
        if (!error.IsOk()) {
            lastName.clear();
            const std::vector<Entry>& some = entries_.empty() ? aside_ : entries_;
            if (!some.empty()) lastName = Name(some.back());
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
