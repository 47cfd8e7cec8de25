#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "dupes/content_hash.h"
#include "platform/files/file_system.h"
#include "platform/workers.h"

namespace vantrel {

struct ContentFile {
    std::string path;
    Seen seen;               // what must still stand there
    bool wantsHash = false;  // also where no other file is equal
};

// Files of one size.
using ContentSet = std::vector<ContentFile>;

// Which files of a set hold the same bytes. Files of a class were compared byte for byte.
struct ContentClasses {
    // By file: number of its class, from 1. 0: it could not be read, or is not what was seen any more.
    std::vector<std::uint32_t> classOf;
    // By class, from that of number 1. Empty where a class of one file wants none.
    std::vector<std::string> hashes;
};

// How files are read. Shared by the jobs of one search.
struct ContentTerms {
    ContentHashMaker hash;
    // Files that a job may hold open, and as many that it announces, and that it is about to close.
    std::size_t openAtOnce = 64;
    // Bytes of distinct small files that a job holds in memory.
    std::size_t heldAtOnce = std::size_t{32} << 20;
    // Of the sets' bytes, those that need no more looking at.
    std::shared_ptr<std::atomic<std::uint64_t>> bytesDone = std::make_shared<std::atomic<std::uint64_t>>(0);
    // Whether files come from a disk rather than from memory: found out by the jobs, and then files are
    // announced ahead.
    std::shared_ptr<std::atomic<bool>> waits = std::make_shared<std::atomic<bool>>(false);
    // Held by a job while it reads, where a disk rotates: it reads in the order of the inodes, in long
    // stretches. Null elsewhere.
    std::shared_ptr<std::mutex> turn;
};

// Up to this many bytes a file is read whole; of a larger one the first and the last block are looked at
// before the rest.
inline constexpr std::uint64_t kReadWhole = std::uint64_t{128} << 10;

// Any thread may call it; it ends soon where a stop is asked for, and its result has no meaning then. What
// the maker of the hash throws comes out.
std::vector<ContentClasses> FindEqualContents(const FileSystem& files, const std::vector<ContentSet>& sets,
                                              const ContentTerms& terms, const StopFlag& stop);

}  // namespace vantrel
