#include "core/pair_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vantrel {

namespace {

constexpr std::uint64_t kPage = 4'096;

}  // namespace

void PairBuffers::Provide(std::size_t size) {
    if (size <= size_) return;
    size_ = 0;
    for (const Side side : kBothSides)
        bytes_[side].reset(static_cast<char*>(::operator new(size, kAlignment)));
    size_ = size;
}

ReadingRule::ReadingRule(CompareMethod comparedBy, std::int32_t chunkSize)
    : method(comparedBy),
      chunk(static_cast<std::uint64_t>(std::max(chunkSize, 1))),
      unit(std::clamp<std::uint64_t>(chunk / kPage * kPage, kLeastReadUnit, kReadUnit)) {
}

std::uint64_t PairReader::ChunkEnd(std::uint64_t position) const {
    return std::min(ChunkStart(position) + rule_.chunk, size_);
}

PairReader::Answer PairReader::Compare(PerSide<ReadFile>& files, Range range,
                                       const std::function<bool()>& goesOn,
                                       const std::function<void(std::uint64_t blockEnd)>& beginsBlock) {
    buffers_.Provide(std::min(rule_.unit, range.to - range.from));
    // What an earlier pair left half done.
    for (const Side side : kBothSides) {
        if (rule_.method == CompareMethod::Crc32) buffers_.Crc(side).Restart();
        if (rule_.method == CompareMethod::Sha1) buffers_.Sha(side).Restart();
    }
    for (std::uint64_t start = range.from; start < range.to;) {
        const std::uint64_t length = std::min(rule_.unit, range.to - start);
        if (beginsBlock) beginsBlock(start + length);
        if (!goesOn()) return Answer::Stopped;
        const Answer answer = CompareBlock(files, start, length, goesOn);
        if (answer != Answer::Alike) return answer;
        start += length;
    }
    return Answer::Alike;
}

// A block can hold many chunks, and the borders of both need not meet. What an error means is told chunk by
// chunk all the same: those before the error are compared, and only when they are alike the error counts.
PairReader::Answer PairReader::CompareBlock(PerSide<ReadFile>& files, std::uint64_t start,
                                            std::uint64_t length, const std::function<bool()>& goesOn) {
    bool endedEarly = false;
    std::uint64_t usable = length;
    Side failedSide = Side::Left;
    for (const Side side : kBothSides) {
        if (usable == 0) break;
        std::size_t got = 0;
        Error error = files[side].ReadAt(start, buffers_[side], usable, got);
        if (!error.IsOk() || got < usable) {
            const std::uint64_t wholeChunks = ChunkStart(start + got);
            usable = wholeChunks > start ? wholeChunks - start : 0;
            failedSide = side;
            endedEarly = error.IsOk();
            failure_ = std::move(error);
        }
        if (!goesOn()) return Answer::Stopped;
    }
    if (usable != 0) {
        noted_ = {Activity::What::Comparing, Side::Left, start};
        if (BuffersDiffer(start, usable)) return Answer::Differ;
    }
    if (usable == length) return Answer::Alike;
    noted_ = {Activity::What::Reading, failedSide, start + usable};
    return endedEarly ? Answer::EndedEarly : Answer::Failed;
}

bool PairReader::BuffersDiffer(std::uint64_t start, std::uint64_t length) {
    switch (rule_.method) {
        case CompareMethod::Crc32:
            return FingerprintsDiffer(
                start, length,
                [&](Side side, const char* bytes, std::size_t size) { buffers_.Crc(side).Add(bytes, size); },
                [&] {
                    const bool unlike = buffers_.Crc(Side::Left).Value() != buffers_.Crc(Side::Right).Value();
                    for (const Side side : kBothSides) buffers_.Crc(side).Restart();
                    return unlike;
                });
        case CompareMethod::Sha1:
            return FingerprintsDiffer(
                start, length,
                [&](Side side, const char* bytes, std::size_t size) { buffers_.Sha(side).Add(bytes, size); },
                [&] { return buffers_.Sha(Side::Left).Finish() != buffers_.Sha(Side::Right).Finish(); });
        default:
            return std::memcmp(buffers_[Side::Left], buffers_[Side::Right], length) != 0;
    }
}

// Each chunk has a fingerprint of its own, which can be gathered over several blocks.
template <typename Add, typename Differ>
bool PairReader::FingerprintsDiffer(std::uint64_t start, std::uint64_t length, Add add, Differ differ) {
    const std::uint64_t blockEnd = start + length;
    for (std::uint64_t at = start; at < blockEnd;) {
        const std::uint64_t chunkEnd = ChunkEnd(at);
        const std::uint64_t pieceEnd = std::min(chunkEnd, blockEnd);
        for (const Side side : kBothSides) add(side, buffers_[side] + (at - start), pieceEnd - at);
        if (pieceEnd == chunkEnd && differ()) return true;
        at = pieceEnd;
    }
    return false;
}

bool ReadWholeAndAlike(PerSide<UnstatedFile>& files, PairBuffers& buffers, std::uint64_t& size) {
    constexpr std::size_t kMost = ReadingRule::kLeastReadUnit;
    buffers.Provide(kMost);
    PerSide<std::size_t> got;
    for (const Side side : kBothSides)
        if (!files[side].ReadWhole(buffers[side], kMost, got[side])) return false;
    if (got[Side::Left] != got[Side::Right]) return false;
    size = got[Side::Left];
    return std::memcmp(buffers[Side::Left], buffers[Side::Right], size) == 0;
}

}  // namespace vantrel
