#include "filetools/moved_blocks.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include "filetools/line_table.h"

namespace vantrel {

namespace {

// Of lines that stand at more places than this on the left, any of the first ones will do.
constexpr std::size_t kMostPlaces = 16;

// The changed lines of one side, in order.
struct ChangedLines {
    std::vector<LineNumber> numbers;
    std::vector<std::string_view> texts;
    std::vector<std::uint64_t> hashes;
};

ChangedLines Collect(const FileDiff& diff, Side side, LineReader& reader, PacedCheck& pace) {
    ChangedLines lines;
    const std::string_view text = diff.texts[side].Text();
    for (const Hunk& hunk : diff.hunks) {
        const LineRange& range = hunk.lines[side];
        std::uint64_t at = range.offset;
        for (LineNumber line = 0; line < range.count; ++line) {
            const std::uint64_t next = std::min<std::uint64_t>(text.find('\n', at), text.size() - 1) + 1;
            lines.numbers.push_back(range.first + line);
            lines.texts.push_back(text.substr(at, next - at));
            lines.hashes.push_back(reader.Hash(lines.texts.back(), 0));
            pace.Count(next - at + 16);
            at = next;
        }
    }
    return lines;
}

int WordCharacters(std::string_view text, int enough) {
    int count = 0;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        const bool isWord =
            byte >= 0x80 || (byte >= '0' && byte <= '9') || ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z');
        if (isWord && ++count >= enough) break;
    }
    return count;
}

class MoveFinder {
  public:
    MoveFinder(const FileDiff& diff, const CancelCheck& check)
        : pace_(check, std::size_t{1} << 20),
          readers_{{LineReader(diff.likeness, Side::Left), LineReader(diff.likeness, Side::Right)}},
          lines_{{Collect(diff, Side::Left, readers_[Side::Left], pace_),
                  Collect(diff, Side::Right, readers_[Side::Right], pace_)}},
          taken_(lines_[Side::Left].numbers.size()) {
        const std::vector<std::uint64_t>& hashes = lines_[Side::Left].hashes;
        for (std::size_t index = 0; index < hashes.size(); ++index) {
            std::vector<std::uint32_t>& places = places_[hashes[index]];
            if (places.size() < kMostPlaces) places.push_back(static_cast<std::uint32_t>(index));
        }
    }

    std::vector<MovedBlock> Run() {
        std::vector<MovedBlock> blocks;
        const ChangedLines& right = lines_[Side::Right];
        for (std::size_t index = 0; index < right.numbers.size();) {
            std::size_t from = 0;
            const std::size_t length = LongestFrom(index, from);
            if (length == 0 || !SaysSomething(index, length)) {
                index += std::max<std::size_t>(length, 1);
                continue;
            }
            std::fill_n(taken_.begin() + static_cast<std::ptrdiff_t>(from), length, true);
            blocks.push_back({{{lines_[Side::Left].numbers[from], right.numbers[index]}},
                              static_cast<LineNumber>(length)});
            index += length;
        }
        return blocks;
    }

  private:
    bool AreAlike(std::size_t left, std::size_t right) {
        return !taken_[left] && lines_[Side::Left].hashes[left] == lines_[Side::Right].hashes[right] &&
               readers_[Side::Left].IsLike(lines_[Side::Left].texts[left], readers_[Side::Right],
                                           lines_[Side::Right].texts[right]);
    }

    // Lines that follow each other on both sides, from `left` and `right` on.
    std::size_t LengthAt(std::size_t left, std::size_t right) {
        std::size_t length = 0;
        while (left + length < taken_.size() && right + length < lines_[Side::Right].numbers.size() &&
               length < kLongest) {
            for (const Side side : kBothSides) {
                const std::size_t at = side == Side::Left ? left : right;
                const auto distance =
                    static_cast<std::size_t>(lines_[side].numbers[at + length] - lines_[side].numbers[at]);
                if (distance != length) return length;
            }
            if (!AreAlike(left + length, right + length)) return length;
            pace_.Count(lines_[Side::Left].texts[left + length].size() + 16);
            ++length;
        }
        return length;
    }

    std::size_t LongestFrom(std::size_t right, std::size_t& from) {
        const auto places = places_.find(lines_[Side::Right].hashes[right]);
        std::size_t longest = 0;
        if (places == places_.end()) return 0;
        for (const std::uint32_t place : places->second) {
            const std::size_t length = LengthAt(place, right);
            if (length <= longest) continue;
            longest = length;
            from = place;
        }
        return longest;
    }

    bool SaysSomething(std::size_t right, std::size_t length) const {
        int said = 0;
        for (std::size_t line = 0; line < length && said < kLeastMovedCharacters; ++line)
            said += WordCharacters(lines_[Side::Right].texts[right + line], kLeastMovedCharacters);
        return said >= kLeastMovedCharacters;
    }

    // Longer blocks are told in parts, so that trying many places stays cheap.
    static constexpr std::size_t kLongest = 10'000;

    PacedCheck pace_;
    PerSide<LineReader> readers_;
    PerSide<ChangedLines> lines_;
    std::vector<bool> taken_;  // left lines that are in a block
    std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> places_;
};

}  // namespace

MovedBlocks::MovedBlocks(std::vector<MovedBlock> blocks) : blocks_(std::move(blocks)) {
    for (const Side side : kBothSides) {
        inOrder_[side].resize(blocks_.size());
        std::iota(inOrder_[side].begin(), inOrder_[side].end(), 0U);
        std::sort(inOrder_[side].begin(), inOrder_[side].end(), [&](std::uint32_t one, std::uint32_t two) {
            return blocks_[one].first[side] < blocks_[two].first[side];
        });
    }
}

const MovedBlock* MovedBlocks::At(Side side, LineNumber line) const {
    const std::vector<std::uint32_t>& order = inOrder_[side];
    const auto behind = std::upper_bound(
        order.begin(), order.end(), line,
        [&](LineNumber wanted, std::uint32_t block) { return wanted < blocks_[block].first[side]; });
    if (behind == order.begin()) return nullptr;
    const MovedBlock& block = blocks_[*(behind - 1)];
    return line - block.first[side] < block.count ? &block : nullptr;
}

MovedBlocks FindMovedBlocks(const FileDiff& diff, const CancelCheck& check) {
    return MovedBlocks(MoveFinder(diff, check).Run());
}

}  // namespace vantrel
