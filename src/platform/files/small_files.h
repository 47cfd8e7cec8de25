#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/files/entry_name.h"
#include "platform/files/file_system.h"

namespace vantrel {

// Reads small files whole, some at a time, with fewer calls than it takes for one after the other. Of one
// thread.
class SmallFiles {
  public:
    static constexpr std::size_t kMost = SmallFile::kMost;
    static constexpr std::size_t kBytes = SmallFile::kBytes;  // a file that has fewer is small

    // Whether the file system of the folder is known for files that keep no reader waiting.
    static bool Suits(const OpenFolder& folder) { return folder.traits_.readsWholePages; }
    // Whether one file should be opened by itself first: the folder is somebody else's, and so its files may
    // be, whose access times this user cannot keep. What is asked for them is refused for all at once here.
    static bool AsksForMore(const OpenFolder& folder) {
        return folder.isOfAnother_ && folder.keepsAccessTimes_.load(std::memory_order_relaxed);
    }

    SmallFiles() { names_.reserve(kMost), files_.reserve(kMost); }
    std::size_t Count() const { return files_.size(); }
    void Clear() { names_.clear(), files_.clear(); }
    // The file of this name in the folder, which a listing showed to be a file, will be read, as number
    // Count(), of at most kMost. All folders must be of one FileSystem, and open until the reading.
    void Add(const OpenFolder& folder, std::string_view name);
    // Reads them. False where this system or this process has no way to: none was read.
    bool Read();
    // What file `i` holds. Nothing where it could not be read whole for certain, or is empty, not small or no
    // regular file. It stands until this thread reads others.
    std::optional<std::string_view> operator[](std::size_t i) const;

  private:
    SystemCalls* calls_ = nullptr;
    std::vector<EntryName> names_;
    std::vector<SmallFile> files_;
};

}  // namespace vantrel
