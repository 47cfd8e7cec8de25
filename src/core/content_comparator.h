#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "core/ccompare.h"
#include "core/content_progress.h"
#include "core/pair_reader.h"
#include "core/toolbox.h"
#include "platform/currency.h"
#include "platform/files/file_system.h"

namespace vantrel {

// Reads pairs of files of equal size and says whether they differ. One object serves a whole comparison: its
// two buffers are kept from pair to pair. Each holds no more than a chunk, between the two units of
// ReadingRule: a larger chunk is read in pieces, several small ones at once, and its answer, its percentages
// and its errors are told by chunk all the same. A difference that stands before a read error in one large
// chunk counts. It belongs to the one thread.
//
// Of a pair the two files are taken as they are when they are opened. What the answer means:
// - true: a difference was found, or the user cancelled (CompareCancelled is then set), or what could be said
//   is said by the fall-back below.
// - false: each of the `size` bytes was read on both sides, and they, or the fingerprints of each chunk, are
//   equal; or the fall-back says so.
//
// An error is never the caller's: it sets ErrorsDuringCompare, puts a block into ERRORLOG.TXT, and the pair
// is judged by size and date, as the files are now: alike only when both are files of one size whose times
// differ by nothing that the allowances do not forgive. These go that way too:
// - by SizeRule::Words a size that does not fit a chunk count of 32 bits: negative (2 GiB to 4 GiB);
// - by that rule a size that drops bytes (above 4 GiB), after the bytes that it tells of were found alike.
// A file whose size is no longer the one that was listed, or that ends early while it is read, is logged the
// same way, but its pair counts as different whatever its date.
class ContentComparator {
  public:
    static constexpr std::size_t kPrefetchedPairs = 32;
    static constexpr std::uint64_t kPrefetchedBytes = std::uint64_t{4} << 20;  // of each file

    // `tools` and `compare` must outlive the object. ChunkSize is read at each pair.
    ContentComparator(const Toolbox& tools, CCompare& compare);
    ~ContentComparator();
    ContentComparator(const ContentComparator&) = delete;
    ContentComparator& operator=(const ContentComparator&) = delete;

    // `method` is Contents, Crc32 or Sha1; `size` is the Size of CFile, which both files have in common. Both
    // were found to be regular files just before.
    bool FilesDiffer(std::string_view leftPath, std::string_view rightPath, CompareMethod method,
                     Currency size, ContentProgress& progress);

    // Whether bytes come from a disk now rather than from memory, so that announcing pairs pays.
    bool ReadingWaits() const { return readingWaits_; }
    // To be called for each pair that was compared elsewhere, of which so many bytes were read: it is found
    // out by their pace.
    void LookWhetherReadingWaits(std::uint64_t bytes = 0);
    // Compares two files that are open without a stat, and short enough for one buffer: the quickest way
    // while reading does not wait. True only when all bytes of both were read and are alike, which every
    // method calls alike; `size` is then their size. Otherwise nothing is said and nothing logged. `shown` is
    // the name for the percentage.
    bool AreAlikeAtOnce(PerSide<UnstatedFile>& files, std::string_view shown, ContentProgress& progress,
                        std::uint64_t& size);

    bool WantsPrefetch() const { return prefetched_.size() < kPrefetchedPairs; }
    // Says that this pair will be asked for soon, and tells the kernel to read what the caller could open of
    // it already; a file that is not open is opened when it is asked for. Pairs are asked for in the order in
    // which they were prefetched, others may come in between, and one that is never asked for does no harm.
    // Beyond kPrefetchedPairs nothing happens and the result is false.
    bool Prefetch(std::string_view leftPath, std::string_view rightPath, PerSide<ReadFile> files);
    // Closes files in passing, together with those of the pairs that were compared.
    template <typename File>
    void LetGo(PerSide<File> files) {
        for (const Side side : kBothSides) closer_.Take(std::move(files[side]));
    }

  private:
    class Run;
    struct Pair;

    std::unique_ptr<Pair> TakePrefetched(std::string_view leftPath, std::string_view rightPath);
    void Log(const Run& run, const Error& error);
    bool DifferBySizeAndDate(const Pair& pair) const;

    const Toolbox& tools_;
    CCompare& compare_;
    std::deque<std::unique_ptr<Pair>> prefetched_;
    bool readingWaits_ = false;
    std::uint32_t pairsSinceVerdict_ = 0;  // since readingWaits_ was found out last
    std::uint32_t lastVerdict_ = 0;
    PairBuffers buffers_;
    FileCloser closer_;
};

}  // namespace vantrel
