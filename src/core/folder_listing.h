#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/filters.h"
#include "core/name_order.h"
#include "platform/currency.h"
#include "platform/files/file_system.h"

namespace vantrel {

// The entries of the folder that one level of a walk holds on one side. It is used again for folder after
// folder, so that a walk hardly allocates. Of one thread at a time: a worker may fill it and hand it over.
class FolderListing {
  public:
    // Called for each entry and in long sorts. What it throws, as a cancel, ends what called it.
    using Check = std::function<void()>;

    struct Source {
        std::shared_ptr<OpenFolder> folder;  // workers may hold it as well
        std::string
            path;  // below the sub-folder, real names, with "/" at its end; empty: the sub-folder itself
        FileId id;
        bool isThere = false;  // false: this side has no folder at this level
        bool IsOpen() const { return folder && folder->IsOpen(); }
    };
    struct Entry {
        std::uint32_t nameAt, nameSize, keyAt, keySize;  // in the text; the key of a folder ends in "/"
        std::uint32_t target;  // of a link: number of what it leads to; 0 for what is no link
        bool isFolder;
        bool isLink;      // it is what the link leads to that is listed
        bool hasStat;     // `seen` is known
        bool keptAsFile;  // a file of this name would be kept
        UnknownReason reason;
        std::uint64_t inode;  // for the order on the disk, also without a stat
        Seen seen;            // of the entry itself
    };

    void Clear();
    Source& From() { return source_; }
    const Source& From() const { return source_; }

    // Lists the folder. What the filter keeps becomes entries, and so does what is no file and no folder and
    // could be either for the filter; folders that it drops are kept aside, because they count in the size.
    // Without a filter there are folders aside, and what could not be looked at, only. At an error the
    // entries are not to be used, and LastName is what was found last. With StatPolicy::NonFilesOnly the
    // files that the filter keeps may come out without a stat.
    Error List(const NameFilter* filter, StatPolicy statPolicy, const Check& check);
    // The same in steps, for what is listed by others: each entry, and at the folder's end the order.
    void Take(const FolderEntry& entry, const NameFilter* filter);
    void Order(const Check& check);
    std::string_view LastName() const;  // may be empty

    // Bytes of all files that were looked at, whether kept or not.
    Currency TotalSize() const { return totalSize_; }
    // What the caller found out about an entry by opening it.
    void Learn(std::size_t position, const Seen& seen);
    // Looks at an entry that has no stat. False where it is gone. What turns out to be no file gets its
    // reason.
    bool LookAt(std::size_t position);
    // Looks at all files that have no stat yet, for their sizes; also after an error of List.
    void LookAtRest(const Check& check);
    // All entries that the folder named, whatever became of them.
    std::uint64_t Named() const { return named_; }
    // In the order of keys, and of names where keys are equal.
    std::size_t Count() const { return order_.size(); }
    const Entry& At(std::size_t position) const { return entries_[order_[position].index]; }
    const std::vector<Entry>& FoldersAside() const { return aside_; }
    // Whether an entry is no file and no folder.
    bool HasOthers() const { return hasOthers_; }

    std::string_view Name(const Entry& entry) const {
        return std::string_view(text_).substr(entry.nameAt, entry.nameSize);
    }
    std::string_view Key(const Entry& entry) const {
        return std::string_view(text_).substr(entry.keyAt, entry.keySize);
    }
    // Bytes and time of the last change, of what a link leads to.
    std::uint64_t Size(const Entry& entry) const {
        return entry.target == 0 ? entry.seen.size : targets_[entry.target - 1].size;
    }
    FileTime LastWrite(const Entry& entry) const {
        return entry.target == 0 ? entry.seen.lastWrite : targets_[entry.target - 1].lastWrite;
    }
    // Path below the sub-folder, in real names.
    void PathOf(const Entry& entry, std::string& path) const {
        path.assign(source_.path).append(Name(entry));
    }

  private:
    struct Target {
        std::uint64_t size;
        FileTime lastWrite;
    };
    bool LookAt(Entry& entry);
    Entry MakeEntry(const FolderEntry& entry);
    void Fill(const FolderEntry& found, Entry& entry);

    Source source_;
    std::string text_;
    std::vector<Entry> entries_, aside_;
    std::vector<Target> targets_;
    std::vector<SortItem> order_;
    Currency totalSize_;
    std::uint64_t named_ = 0;
    bool hasOthers_ = false;
    std::string marked_;
};

}  // namespace vantrel
