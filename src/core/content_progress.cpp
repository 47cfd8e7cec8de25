#include "core/content_progress.h"

#include <algorithm>

namespace vantrel {

namespace {

int RoundedPercentage(std::uint64_t part, std::uint64_t whole) {
    const std::uint64_t percentage = part * 100 / whole;
    const std::uint64_t twiceRest = part * 100 % whole * 2;
    const bool up = twiceRest > whole || (twiceRest == whole && percentage % 2 == 1);
    return static_cast<int>(percentage + (up ? 1 : 0));
}

// What to show when a piece that ends at `pieceEnd` is read of a file of `size` bytes: from 0 to 100, or -1
// for nothing. It tells the end of the last whole chunk that the piece has a part in, the file's own end left
// out.
int PercentageAt(std::uint64_t pieceEnd, std::uint64_t size, std::uint64_t chunk, bool showsLastPiece) {
    std::uint64_t end = (pieceEnd - 1) / chunk * chunk + chunk;
    if (end >= size) end -= chunk;
    const bool inTail = pieceEnd == size && size % chunk != 0;
    if (inTail && showsLastPiece) end = size;
    return end == 0 ? -1 : RoundedPercentage(end, size);
}

}  // namespace

void ReadingShown::Show(std::uint64_t blockEnd) {
    told_ = blockEnd;
    const int percentage = PercentageAt(blockEnd, size_, rule_.chunk, progress_.ShowsLastPiece());
    if (percentage < 0 || percentage == percentage_) return;
    percentage_ = percentage;
    progress_.SetPercentage(percentage, shown_);
}

void ReadingShown::ShowUpTo(std::uint64_t end) {
    while (told_ < end) Show(std::min(told_ + rule_.unit, end));
}

}  // namespace vantrel
