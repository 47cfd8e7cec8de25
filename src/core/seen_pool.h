#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "platform/files/seen.h"

namespace vantrel {

// What was seen of a link to a file, and of that file.
struct SeenLink : Seen {
    std::uint64_t targetSize = 0;  // bytes
    FileTime targetLastWrite;
};

// Owns what was seen of many objects, in a few large blocks. What is added stays where it is for the life of
// the pool.
class SeenPool {
  public:
    SeenPool() = default;
    SeenPool(const SeenPool&) = delete;
    SeenPool& operator=(const SeenPool&) = delete;

    const Seen* Add(const Seen& seen) {
        if (blocks_.empty() || blocks_.back().size() == kPerBlock) blocks_.emplace_back().reserve(kPerBlock);
        return &blocks_.back().emplace_back(seen);
    }
    const SeenLink* AddLink(const SeenLink& link) { return &links_.emplace_back(link); }
    // Bytes held.
    std::size_t Capacity() const {
        return blocks_.size() * kPerBlock * sizeof(Seen) + links_.size() * sizeof(SeenLink);
    }

  private:
    static constexpr std::size_t kPerBlock = (std::size_t{64} << 10) / sizeof(Seen);
    std::vector<std::vector<Seen>> blocks_;  // none of them grows beyond what it was made for
    std::deque<SeenLink> links_;
};

}  // namespace vantrel
