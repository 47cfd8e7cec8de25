#include "filetools/bit_rows.h"

#include <algorithm>

namespace vantrel {

Occurrences::Occurrences(std::span<const std::uint32_t> sequence) {
    mask_ = std::bit_ceil(std::max<std::size_t>(2 * sequence.size(), 4)) - 1;
    slots_.resize(mask_ + 1);
    positions_.resize(sequence.size());
    std::vector<std::uint32_t> slotOf(sequence.size());
    for (std::size_t index = 0; index < sequence.size(); ++index) {
        const std::size_t slot = SlotOf(sequence[index]);
        slotOf[index] = static_cast<std::uint32_t>(slot);
        slots_[slot].token = sequence[index];
        ++slots_[slot].count;
    }
    // Each is filled from its end.
    std::uint32_t end = 0;
    for (Entry& entry : slots_) entry.start = end += entry.count;
    for (std::size_t index = sequence.size(); index-- > 0;)
        positions_[--slots_[slotOf[index]].start] = static_cast<std::uint32_t>(index);
}

MatchBits::MatchBits(std::span<const std::uint32_t> pattern)
    : occurrences_(pattern),
      words_((pattern.size() + 63) / 64),
      keptRow_(occurrences_.Slots(), -1),
      shared_(words_) {
    std::int32_t rows = 0;
    for (const std::uint32_t token : pattern) {
        const std::size_t slot = occurrences_.SlotOf(token);
        if (keptRow_[slot] >= 0 || occurrences_.Of(token).size() <= words_) continue;
        keptRow_[slot] = rows++;
        kept_.resize(kept_.size() + words_);
        std::uint64_t* const row = kept_.data() + kept_.size() - words_;
        for (const std::uint32_t at : occurrences_.Of(token)) row[at / 64] |= std::uint64_t{1} << at % 64;
    }
}

const std::uint64_t* MatchBits::For(std::uint32_t token) {
    const std::size_t slot = occurrences_.SlotOf(token);
    if (keptRow_[slot] >= 0) return kept_.data() + static_cast<std::size_t>(keptRow_[slot]) * words_;
    for (const std::uint32_t at : sharedBits_) shared_[at / 64] = 0;
    sharedBits_ = occurrences_.Of(token);
    for (const std::uint32_t at : sharedBits_) shared_[at / 64] |= std::uint64_t{1} << at % 64;
    return shared_.data();
}

}  // namespace vantrel
