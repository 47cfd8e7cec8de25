#include "core/folder_listing.h"

#include "core/result_row.h"
#include "platform/names/names.h"

namespace vantrel {

void FolderListing::Clear() {
    source_ = Source();
    text_.clear();
    entries_.clear();
    aside_.clear();
    targets_.clear();
    order_.clear();
    totalSize_ = Currency();
    named_ = 0;
    hasOthers_ = false;
}

FolderListing::Entry FolderListing::MakeEntry(const FolderEntry& entry) {
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
    Fill(entry, made);
    return made;
}

void FolderListing::Fill(const FolderEntry& found, Entry& entry) {
    entry.isLink = found.isLink;
    entry.hasStat = found.hasStat;
    entry.reason = found.reason;
    entry.seen = found.seen;
    entry.inode = found.id.inode;
    if (!found.isLink) return;
    targets_.push_back({found.size, found.lastWrite});
    entry.target = static_cast<std::uint32_t>(targets_.size());
}

void FolderListing::Take(const FolderEntry& entry, const NameFilter* filter) {
    ++named_;
    const auto keptAsFolder = [&] {
        marked_.assign(1, kFolderMarker).append(entry.name);
        return filter && filter->KeepsFolder(marked_, entry.attributes);
    };
    const bool keptAsFile = filter && filter->KeepsFile(entry.name, entry.attributes);
    switch (entry.kind) {
        case EntryKind::File: {
            if (entry.hasStat) totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(entry.size));
            if (!keptAsFile && entry.hasStat) break;
            Entry made = MakeEntry(entry);
            made.keptAsFile = keptAsFile;
            // One that is left out is looked at for its size alone, unless it is something else by now.
            if (!keptAsFile) {
                if (!LookAt(made) || made.reason == UnknownReason::None || !keptAsFolder()) break;
                hasOthers_ = true;
            }
            entries_.push_back(made);
            break;
        }
        case EntryKind::Folder:
            (keptAsFolder() ? entries_ : aside_).push_back(MakeEntry(entry));
            break;
        case EntryKind::Other: {
            // Nothing is to be told of what is left out whatever it is.
            if (filter && !keptAsFile && !keptAsFolder()) break;
            if (!filter && entry.reason != UnknownReason::NotTold) break;
            Entry made = MakeEntry(entry);
            made.keptAsFile = keptAsFile;
            hasOthers_ = true;
            entries_.push_back(made);
            break;
        }
    }
}

// False where it is gone.
bool FolderListing::LookAt(Entry& entry) {
    FolderEntry found;
    if (!source_.IsOpen()) {
        found.reason = UnknownReason::NotTold;
        Fill(found, entry);
        return true;
    }
    if (!source_.folder->LookAt(Name(entry), found)) return false;
    Fill(found, entry);
    // A folder that took the name since is not known yet.
    if (found.kind == EntryKind::Folder) entry.reason = UnknownReason::NotTold;
    if (found.kind == EntryKind::File)
        totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(found.size));
    return true;
}

bool FolderListing::LookAt(std::size_t position) {
    return LookAt(entries_[order_[position].index]);
}

void FolderListing::LookAtRest(const Check& check) {
    for (Entry& entry : entries_) {
        if (entry.isFolder || entry.hasStat) continue;
        check();
        (void)LookAt(entry);
    }
}

void FolderListing::Learn(std::size_t position, const Seen& seen) {
    Entry& entry = entries_[order_[position].index];
    entry.hasStat = true;
    entry.seen = seen;
    totalSize_ += Currency::FromWhole(static_cast<std::int64_t>(seen.size));
}

Error FolderListing::List(const NameFilter* filter, StatPolicy statPolicy, const Check& check) {
    Error error = source_.folder->ForEach(
        [&](const FolderEntry& entry) {
            check();
            Take(entry, filter);
            return true;
        },
        statPolicy);
    if (error.IsOk()) Order(check);
    return error;
}

std::string_view FolderListing::LastName() const {
    const std::vector<Entry>& some = entries_.empty() ? aside_ : entries_;
    return some.empty() ? std::string_view() : Name(some.back());
}

void FolderListing::Order(const Check& check) {
    OrderByKey(
        entries_.size(), [this](std::size_t i) { return Key(entries_[i]); },
        [this](std::size_t i) { return Name(entries_[i]); }, check, order_);
}

}  // namespace vantrel
