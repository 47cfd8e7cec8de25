#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "dupes/content_hash.h"
#include "dupes/dupe_results.h"
#include "dupes/hash_cache.h"

namespace vantrel {

enum class DupeOutcome : std::uint8_t {
    Refused,    // something in the order is wrong, and was told
    Completed,  // also without a group
    Cancelled,
    Failed,  // was reported
};

// The engine of the duplicate finder: holds what the last search found, and what is known of contents, for
// the life of the window.
class DuplicateFinder {
  public:
    // All must outlive the object.
    DuplicateFinder(const Toolbox& tools, DupeProgress& progress) : tools_(tools), progress_(progress) {}

    // One search, from the checks to the groups. The event loop is let through all the while, and a cancel is
    // heard in every phase; then there are no groups. It begins with ResetCancel.
    DupeOutcome Find(const DupeSearchOrder& order);
    // The same by given workers, and with another hash than that of the order; for tests.
    DupeOutcome Find(const DupeSearchOrder& order, Workers& workers, const ContentHashMaker& hash);

    DupeResults& Results() { return results_; }
    const DupeResults& Results() const { return results_; }
    std::size_t FoundFileCount() const { return foundFileCount_; }
    // Folders of the last search that were not searched.
    const std::vector<UnsearchedFolder>& Unsearched() const { return unsearched_; }
    // Threads of the last search that hang in the system and were left behind (Workers::End).
    std::size_t LeftBehind() const { return leftBehind_; }
    // Forgets the last search; what is known of contents stays.
    void Clear();

  private:
    bool Search(const DupeSearchOrder& order, Workers& workers, const ContentHashMaker& hash);
    void ShowDupes(FoundFiles files, const DupeSearchOrder& order, Workers& workers,
                   const ContentHashMaker& hash);
    void CheckCancel();

    const Toolbox& tools_;
    DupeProgress& progress_;
    HashCache cache_;
    DupeResults results_;
    std::size_t foundFileCount_ = 0;
    std::vector<UnsearchedFolder> unsearched_;
    std::size_t leftBehind_ = 0;
};

}  // namespace vantrel
