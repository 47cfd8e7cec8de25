#include "filetools/bit_rows.h"

#include <algorithm>

namespace vantrel {

Occurrences::Occurrences(std::span<const std::uint32_t> sequence) {
    mask_ = std::bit_ceil(std::max<std::size_t>(2 * sequence.size(), 4)) - 1;
    slots_.resize(mask_ + 1);
    positions_.resize(sequence.size());
    for (const std::uint32_t token : sequence) {
        Entry& entry = slots_[SlotOf(token)];
        entry.token = token;
        ++entry.count;
    }
    std::uint32_t start = 0;
    for (Entry& entry : slots_) {
        entry.start = start;
        start += entry.count;
    }
    // Filled from the start of each; the starts are set back afterwards.
    for (std::size_t index = 0; index < sequence.size(); ++index)
        positions_[slots_[SlotOf(sequence[index])].start++] = static_cast<std::uint32_t>(index);
    for (Entry& entry : slots_) entry.start -= entry.count;
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
