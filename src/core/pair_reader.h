#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <optional>

#include "core/side.h"
#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/hashes.h"
#include "settings/option_values.h"

namespace vantrel {

// What reading pairs needs and keeps from pair to pair. Of one thread at a time.
class PairBuffers {
  public:
    // `size` bytes for each side, aligned for the copy out of the kernel's pages.
    void Provide(std::size_t size);
    char* operator[](Side side) { return bytes_[side].get(); }
    Crc32& Crc(Side side) { return crc_[side]; }
    // Throws ErrorException where there is no SHA-1.
    Sha1& Sha(Side side) {
        if (!sha_[side]) sha_[side].emplace();
        return *sha_[side];
    }

  private:
    static constexpr std::align_val_t kAlignment{4'096};
    struct Release {
        void operator()(char* bytes) const { ::operator delete(bytes, kAlignment); }
    };
    PerSide<std::unique_ptr<char, Release>> bytes_;
    PerSide<Crc32> crc_;
    PerSide<std::optional<Sha1>> sha_;
    std::size_t size_ = 0;
};

// How the bytes of a pair are compared, and in which pieces. A plain value.
struct ReadingRule {
    // What is read at a time, at most and at least, whatever the chunk: two of the greatest stay in the
    // cache.
    static constexpr std::size_t kReadUnit = std::size_t{256} << 10;
    static constexpr std::size_t kLeastReadUnit = std::size_t{16} << 10;

    ReadingRule(CompareMethod comparedBy, std::int32_t chunkSize);

    CompareMethod method;
    std::uint64_t chunk;  // the user's, at least 1
    std::uint64_t unit;   // whole pages
};

// Says of the bytes of two open files whether they differ, chunk by chunk. A block that is read at once can
// hold many chunks, or a part of one; what the answer means is told by chunk all the same. Touches the files
// and its buffers alone, so that any thread may use an object of its own.
class PairReader {
  public:
    enum class Answer : std::uint8_t {
        Alike,
        Differ,
        Stopped,     // by `goesOn`
        EndedEarly,  // a file has become shorter than `size`
        Failed,
    };
    struct Range {
        std::uint64_t from, to;  // whole chunks, but for the end of the file
    };
    // What was being done when the answer was found, or an exception thrown.
    struct Activity {
        enum class What : std::uint8_t { Nothing, Reading, Comparing } what = What::Nothing;
        Side side = Side::Left;
        std::uint64_t position = 0;
    };

    // `size` is that of both files. The buffers must outlive the object.
    PairReader(PairBuffers& buffers, const ReadingRule& rule, std::uint64_t size)
        : buffers_(buffers), rule_(rule), size_(size) {}

    // `beginsBlock` is called with the end of each block before it is read, `goesOn` often.
    Answer Compare(PerSide<ReadFile>& files, Range range, const std::function<bool()>& goesOn,
                   const std::function<void(std::uint64_t blockEnd)>& beginsBlock = {});

    const Activity& Noted() const { return noted_; }
    const Error& Failure() const { return failure_; }  // of Answer::Failed
    // The chunk that holds `position`, from 0; the last one ends with the file.
    std::uint64_t ChunkStart(std::uint64_t position) const { return position / rule_.chunk * rule_.chunk; }
    std::uint64_t ChunkEnd(std::uint64_t position) const;

  private:
    Answer CompareBlock(PerSide<ReadFile>& files, std::uint64_t start, std::uint64_t length,
                        const std::function<bool()>& goesOn);
    bool BuffersDiffer(std::uint64_t start, std::uint64_t length);
    template <typename Add, typename Differ>
    bool FingerprintsDiffer(std::uint64_t start, std::uint64_t length, Add add, Differ differ);

    PairBuffers& buffers_;
    const ReadingRule& rule_;
    std::uint64_t size_;
    Activity noted_;
    Error failure_;
};

// Reads two small files whole, which are open without a stat. True only when all bytes of both were read and
// are alike; `size` is then their size.
bool ReadWholeAndAlike(PerSide<UnstatedFile>& files, PairBuffers& buffers, std::uint64_t& size);

}  // namespace vantrel
