#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vantrel {

// Longest common subsequences with 64 cells of the table in a word. A row stands for one element of the one
// sequence and has a bit for each element of the other, the pattern: 0 where the length grows with that
// element, 1 where it stays. The row in front of all others is all ones.

// For a token the positions in a sequence where it stands, ascending.
class Occurrences {
  public:
    // The sequence is not kept.
    explicit Occurrences(std::span<const std::uint32_t> sequence);
    std::span<const std::uint32_t> Of(std::uint32_t token) const {
        const std::size_t slot = SlotOf(token);
        const Entry& entry = slots_[slot];
        return {positions_.data() + entry.start, entry.count};
    }
    // A number for each token of the sequence, below Tokens(); Tokens() or above for others.
    std::size_t SlotOf(std::uint32_t token) const {
        std::size_t slot = Hash(token);
        while (slots_[slot].count != 0 && slots_[slot].token != token) slot = (slot + 1) & mask_;
        return slot;
    }
    std::size_t Slots() const { return slots_.size(); }

  private:
    struct Entry {
        std::uint32_t token = 0, start = 0, count = 0;
    };
    std::size_t Hash(std::uint32_t token) const {
        return (token * std::uint64_t{0x9E3779B97F4A7C15} >> 32) & mask_;
    }

    std::size_t mask_ = 0;
    std::vector<Entry> slots_;  // a hash table; an entry with count 0 is free
    std::vector<std::uint32_t> positions_;
};

// The bits of a pattern that match a token. Tokens that are frequent have their row kept, those that are rare
// are set into one row that all of them share, so that the memory is a few words for each element.
class MatchBits {
  public:
    explicit MatchBits(std::span<const std::uint32_t> pattern);
    std::size_t Words() const { return words_; }
    // Valid until the next call.
    const std::uint64_t* For(std::uint32_t token);

  private:
    Occurrences occurrences_;
    std::size_t words_;
    std::vector<std::int32_t> keptRow_;  // by slot: number of the row, -1 for none
    std::vector<std::uint64_t> kept_;
    std::vector<std::uint64_t> shared_;
    std::span<const std::uint32_t> sharedBits_;  // set in shared_ now
};

// The row behind `row`, for an element whose matches are `matches`.
inline void AdvanceRow(const std::uint64_t* matches, std::span<std::uint64_t> row) {
    std::uint64_t carry = 0;
    for (std::size_t word = 0; word < row.size(); ++word) {
        const std::uint64_t before = row[word];
        const std::uint64_t met = before & matches[word];
        std::uint64_t sum = 0;
        const bool first = __builtin_add_overflow(before, met, &sum);
        const bool second = __builtin_add_overflow(sum, carry, &sum);
        carry = static_cast<std::uint64_t>(first || second);
        row[word] = sum | (before & ~met);
    }
}

// How often the length grows within the first `count` elements of a row.
inline std::size_t CountGrowth(std::span<const std::uint64_t> row, std::size_t count) {
    std::size_t growth = 0;
    for (std::size_t word = 0; word < count / 64; ++word)
        growth += static_cast<std::size_t>(std::popcount(~row[word]));
    if (count % 64 != 0)
        growth += static_cast<std::size_t>(
            std::popcount(~row[count / 64] & ((std::uint64_t{1} << count % 64) - 1)));
    return growth;
}

inline bool Grows(std::span<const std::uint64_t> row, std::size_t index) {
    return (row[index / 64] >> (index % 64) & 1) == 0;
}

}  // namespace vantrel
