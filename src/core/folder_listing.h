#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/comparison_context.h"
#include "core/filters.h"
#include "core/name_order.h"
#include "platform/files/file_system.h"

namespace vantrel {

// What one level of a walk holds on one side: the entries of a folder, or of several whose names differ in
// letter case only and which count as one. It is used again for folder after folder, so that a walk hardly
// allocates.
class FolderListing {
  public:
    struct Source {
        OpenFolder folder;
        std::string
            path;  // below the sub-folder, real names, with "/" at its end; empty: the sub-folder itself
        FileId id;
    };
    struct Entry {
        std::uint32_t nameAt, nameSize, keyAt, keySize;  // in the text; the key of a folder ends in "/"
        std::uint32_t source;
        bool isFolder;
        bool isLink;   // it is what the link leads to that is listed
        bool hasStat;  // size and time are known
        std::uint64_t size;
        FileTime lastWrite;
    };

    struct BreakingOff {
        std::size_t source = 0;
        std::string lastName;  // what was found in it last; may be empty
    };

    void Clear();
    Source& AddSource() { return sources_.emplace_back(); }
    std::vector<Source>& Sources() { return sources_; }
    const std::vector<Source>& Sources() const { return sources_; }

    // Lists all sources. What the filter keeps becomes entries; folders that it drops are kept aside, because
    // they count in the size. Without a filter there are folders aside only. Throws ComparisonCancelled. At
    // an error the entries are not to be used, and `at` says where it was. With StatPolicy::NonFilesOnly the
    // files that the filter keeps may come out unlooked.
    Error List(const NameFilter* filter, StatPolicy statPolicy, const ComparisonContext& context,
               BreakingOff& at);

    // Bytes of all files that were looked at, whether kept or not.
    Currency TotalSize() const { return totalSize_; }
    // What the caller found out about an entry by opening it.
    void Learn(std::size_t position, std::uint64_t size, FileTime lastWrite);
    // Looks at an entry. False where it is gone or unknown, which it is too where its source is not open.
    bool LookAt(std::size_t position);
    // Brings the entry at `position` before those from `first` on, whose order stays.
    void PutBefore(std::size_t first, std::size_t position);
    // Looks at all files that are still unlooked, for their sizes; also after an error of List. Throws
    // ComparisonCancelled.
    void LookAtRest(const ComparisonContext& context);
    // In the order of keys; entries with equal keys are next to each other, the one to stay first.
    std::size_t Count() const { return order_.size(); }
    const Entry& At(std::size_t position) const { return entries_[order_[position].index]; }
    const std::vector<Entry>& FoldersAside() const { return aside_; }
    // Names that could not be looked at.
    const std::vector<Entry>& Unknown() const { return unknown_; }
    // Whether one of them has this key; `key` is without the "/" of a folder.
    bool IsUnknown(std::string_view key) const { return unknownKeys_.contains(key); }

    std::string_view Name(const Entry& entry) const {
        return std::string_view(text_).substr(entry.nameAt, entry.nameSize);
    }
    std::string_view Key(const Entry& entry) const {
        return std::string_view(text_).substr(entry.keyAt, entry.keySize);
    }
    // Path below the sub-folder, in real names.
    void PathOf(const Entry& entry, std::string& path) const {
        path.assign(sources_[entry.source].path).append(Name(entry));
    }

  private:
    enum class Found { File, Gone, Unknown };
    Found LookAt(Entry& entry);
    void Take(const FolderEntry& entry, std::uint32_t source, const NameFilter* filter);
    void AddUnknown(const Entry& entry);
    Entry MakeEntry(const FolderEntry& entry, std::uint32_t source);

    std::vector<Source> sources_;
    std::string text_;
    std::vector<Entry> entries_, aside_, unknown_;
    std::set<std::string, std::less<>> unknownKeys_;
    std::vector<SortItem> order_;
    Currency totalSize_;
    std::string marked_;
};

}  // namespace vantrel
