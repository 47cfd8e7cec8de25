#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/pair_reader.h"
#include "core/side.h"
#include "core/size_rule.h"
#include "platform/currency.h"
#include "platform/files/file_system.h"
#include "platform/workers.h"

namespace vantrel {

// What workers do about the contents of files: functions over values, which open and read files and nothing
// else. Whatever does not go as it should is left to the one thread to look at: a job concludes only from
// what it saw whole.

// One file of a pair, by its name in the folder.
struct FileToRead {
    std::string_view name;
    std::uint64_t inode = 0;
    bool isLink = false;
    std::optional<Currency> listed;  // its size by the rule, where a listing told it
};
using PairToRead = PerSide<FileToRead>;

// Pairs of one folder; the names are kept here.
class PairRun {
  public:
    using Folders = PerSide<std::shared_ptr<const OpenFolder>>;

    explicit PairRun(Folders folders) : folders_(std::move(folders)) {}
    void Add(const PairToRead& pair);
    std::size_t Count() const { return pairs_.size(); }
    PairToRead operator[](std::size_t position) const;
    const OpenFolder& Folder(Side side) const { return *folders_[side]; }

  private:
    struct Kept {
        std::uint32_t at, size;  // of the name
        FileToRead rest;
    };
    Folders folders_;
    std::string names_;
    std::vector<PerSide<Kept>> pairs_;
};

struct PairVerdict {
    enum class Kind : std::uint8_t {
        LookCloser,   // nothing is known; the one thread compares the pair
        SizesDiffer,  // so that the contents were not read
        Alike,
        Differ,
        Large,  // was not read; a job for each of its stretches will
    };
    Kind kind = Kind::LookCloser;
    bool hasSeen = false;      // `seen` is of both files, as they were opened
    std::uint64_t size = 0;    // of Alike, Differ and Large: of both
    std::uint64_t readTo = 0;  // end of the last block that was begun
    PerSide<Seen> seen;
};

// How the jobs of one comparison read.
struct ReadingTerms {
    // Above this a pair has jobs of its own.
    static constexpr std::uint64_t kLarge = std::uint64_t{512} << 10;
    static constexpr std::uint64_t kStretch = std::uint64_t{8} << 20;

    ReadingRule rule;
    SizeRule sizes;
    // Whether files come from a disk now, as the one thread found out; a job asks when it begins. Then pairs
    // are opened and announced ahead, so many at a time.
    std::shared_ptr<const std::atomic<bool>> waits;
    std::size_t announced = 1;
    // Held by a job that waits, where the disk rotates: one reads at a time, all of a run in the order of the
    // inodes. Null elsewhere.
    std::shared_ptr<std::mutex> turn;
};

// One verdict for each pair.
std::vector<PairVerdict> ReadPairs(const PairRun& run, const ReadingTerms& terms, const StopFlag& stop);

// A stretch of a large pair. The files must still be those that were seen.
struct Stretch {
    std::shared_ptr<const PairRun> pair;  // this one alone
    PerSide<Seen> seen;
    PairReader::Range range;
};
PairVerdict ReadStretch(const Stretch& stretch, const ReadingTerms& terms, const StopFlag& stop);

// What is compared at a time of a large pair under a rule: whole chunks.
std::uint64_t StretchLength(const ReadingRule& rule);

}  // namespace vantrel
