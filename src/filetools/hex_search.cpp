#include "filetools/hex_search.h"

#include <algorithm>
#include <cstring>

namespace vantrel {

namespace {

using Offset = std::optional<std::uint64_t>;
using Bytes = std::span<const unsigned char>;

char Lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter | 0x20) : letter;
}

void YieldOrCancel(EventLoopPort& loop) {
    loop.Yield();
    if (loop.CancelRequested()) throw Cancelled();
}

// The first or last occurrence in `text` that begins before `end`.
std::size_t FindIn(std::string_view text, std::string_view wanted, std::size_t end, SearchDirection direction,
                   SearchCase letterCase) {
    if (wanted.size() > text.size() || end == 0) return std::string_view::npos;
    const std::size_t last = std::min(end - 1, text.size() - wanted.size());
    const auto matches = [&](char one, char two) {
        return letterCase == SearchCase::Exact ? one == two : Lowered(one) == Lowered(two);
    };
    const std::string_view part = text.substr(0, last + wanted.size());
    if (direction == SearchDirection::Backward) {
        const auto found = std::find_end(part.begin(), part.end(), wanted.begin(), wanted.end(), matches);
        return found == part.end() ? std::string_view::npos : static_cast<std::size_t>(found - part.begin());
    }
    if (letterCase == SearchCase::Exact) {
        const void* const found = memmem(part.data(), part.size(), wanted.data(), wanted.size());
        return found == nullptr ? std::string_view::npos
                                : static_cast<std::size_t>(static_cast<const char*>(found) - part.data());
    }
    const auto found = std::search(part.begin(), part.end(), wanted.begin(), wanted.end(), matches);
    return found == part.end() ? std::string_view::npos : static_cast<std::size_t>(found - part.begin());
}

// Has `look` look at all from `from` on, up to `end`, or from `from` back to the beginning, in pieces of at
// most `length` bytes, until it finds something.
template <typename Look>
Offset Walk(std::uint64_t from, std::uint64_t end, std::size_t length, SearchDirection direction,
            EventLoopPort& loop, const BytesDone& progress, const Look& look) {
    const bool forward = direction == SearchDirection::Forward;
    if (end == 0 || (forward && from >= end)) return std::nullopt;
    const std::uint64_t ahead = forward ? end - from : std::min(from, end - 1) + 1;
    for (std::uint64_t done = 0; done < ahead;) {
        YieldOrCancel(loop);
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(length, ahead - done));
        if (const Offset found = look(forward ? from + done : ahead - done - size, size)) return found;
        done += size;
        if (progress) progress(done, ahead);
    }
    return std::nullopt;
}

// Where the bytes of one stretch differ first, or last. What one side alone has differs.
Offset DifferenceIn(Bytes one, Bytes two, SearchDirection direction) {
    const std::size_t common = std::min(one.size(), two.size()), all = std::max(one.size(), two.size());
    if (direction == SearchDirection::Backward && common < all) return all - 1;
    if (common > 0 && std::memcmp(one.data(), two.data(), common) != 0) {
        if (direction == SearchDirection::Forward)
            return static_cast<std::uint64_t>(
                std::mismatch(one.begin(), one.end(), two.begin(), two.end()).first - one.begin());
        for (std::size_t byte = common; byte-- > 0;)
            if (one[byte] != two[byte]) return byte;
    }
    return common < all ? Offset(common) : std::nullopt;
}

// The next byte, or the last one, that both files have and that is the same in both.
Offset FindAgreement(PerSide<BytesOfFile>& files, std::uint64_t from, SearchDirection direction,
                     EventLoopPort& loop, const BytesDone& progress) {
    const std::uint64_t shorter = std::min(files[Side::Left].Size(), files[Side::Right].Size());
    const auto look = [&](std::uint64_t at, std::size_t length) -> Offset {
        const Bytes one = files[Side::Left].AtOrThrow(at, length),
                    two = files[Side::Right].AtOrThrow(at, length);
        const std::size_t common = std::min(one.size(), two.size());
        for (std::size_t step = 0; step < common; ++step) {
            const std::size_t byte = direction == SearchDirection::Forward ? step : common - 1 - step;
            if (one[byte] == two[byte]) return at + byte;
        }
        return std::nullopt;
    };
    return Walk(from, shorter, BytesOfFile::kBlock, direction, loop, progress, look);
}

}  // namespace

std::optional<std::uint64_t> FindBytes(BytesOfFile& file, std::string_view wanted, std::uint64_t from,
                                       SearchDirection direction, SearchCase letterCase, EventLoopPort& loop,
                                       const BytesDone& progress) {
    if (wanted.empty() || wanted.size() > BytesOfFile::kBlock / 2 || file.Size() < wanted.size())
        return std::nullopt;
    // A stretch of places where it may begin, and behind them what an occurrence at the last one needs.
    const std::size_t overlap = wanted.size() - 1;
    const auto look = [&](std::uint64_t at, std::size_t length) -> Offset {
        const std::size_t found =
            FindIn(AsText(file.AtOrThrow(at, length + overlap)), wanted, length, direction, letterCase);
        return found == std::string_view::npos ? std::nullopt : Offset(at + found);
    };
    return Walk(from, file.Size() - overlap, BytesOfFile::kBlock - overlap, direction, loop, progress, look);
}

std::optional<std::uint64_t> FindDifference(PerSide<BytesOfFile>& files, std::uint64_t from,
                                            SearchDirection direction, EventLoopPort& loop,
                                            const BytesDone& progress) {
    const std::uint64_t longer = std::max(files[Side::Left].Size(), files[Side::Right].Size());
    const auto look = [&](std::uint64_t at, std::size_t length) -> Offset {
        const Bytes one = files[Side::Left].AtOrThrow(at, length),
                    two = files[Side::Right].AtOrThrow(at, length);
        const Offset found = DifferenceIn(one, two, direction);
        return found ? Offset(at + *found) : std::nullopt;
    };
    return Walk(from, longer, BytesOfFile::kBlock, direction, loop, progress, look);
}

std::optional<std::uint64_t> FindOtherStretch(PerSide<BytesOfFile>& files, std::uint64_t from,
                                              SearchDirection direction, EventLoopPort& loop,
                                              const BytesDone& progress) {
    const auto differs = [&](std::uint64_t at) {
        return DifferenceIn(files[Side::Left].AtOrThrow(at, 1), files[Side::Right].AtOrThrow(at, 1),
                            SearchDirection::Forward)
            .has_value();
    };
    const auto beginOf = [&](std::uint64_t at) {
        const Offset before = FindAgreement(files, at, SearchDirection::Backward, loop, progress);
        return before ? *before + 1 : 0;
    };
    if (direction == SearchDirection::Forward) {
        if (differs(from)) {
            const Offset behind = FindAgreement(files, from, direction, loop, progress);
            if (!behind) return std::nullopt;
            from = *behind;
        }
        return FindDifference(files, from, direction, loop, progress);
    }
    if (differs(from)) {
        const std::uint64_t begin = beginOf(from);
        if (begin == 0) return std::nullopt;
        from = begin - 1;
    }
    const Offset last = FindDifference(files, from, direction, loop, progress);
    return last ? Offset(beginOf(*last)) : std::nullopt;
}

}  // namespace vantrel
