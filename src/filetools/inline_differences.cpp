#include "filetools/inline_differences.h"

#include <algorithm>

#include "filetools/mod_free_diff.h"
#include "filetools/text_columns.h"

namespace vantrel {

namespace {

// The characters that are not common, as bytes.
std::vector<TextRange> RangesOf(std::string_view line, const std::vector<bool>& common) {
    std::vector<TextRange> ranges;
    std::size_t at = 0;
    for (std::size_t index = 0; index < common.size() && at < line.size(); ++index) {
        const std::size_t begin = at;
        NextCharacter(line, at);
        if (common[index]) continue;
        if (!ranges.empty() && ranges.back().end == begin)
            ranges.back().end = at;
        else
            ranges.push_back({begin, at});
    }
    return ranges;
}

bool IsInsideCharacter(std::string_view line, std::size_t at) {
    return at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80;
}

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

// All between what the lines share at their ends. Letter case is ignored for the letters of ASCII.
LineDifferences MiddleOf(const PerSide<std::string_view>& lines, bool ignoreCase) {
    const std::string_view left = lines[Side::Left];
    const std::string_view right = lines[Side::Right];
    const auto alike = [ignoreCase](char one, char two) {
        return one == two || (ignoreCase && Lower(one) == Lower(two));
    };
    const auto heads = std::mismatch(left.begin(), left.end(), right.begin(), right.end(), alike);
    auto head = static_cast<std::size_t>(heads.first - left.begin());
    while (head > 0 && (IsInsideCharacter(left, head) || IsInsideCharacter(right, head))) --head;
    const std::size_t most = std::min(left.size(), right.size()) - head;
    std::size_t tail = 0;
    while (tail < most && alike(left[left.size() - 1 - tail], right[right.size() - 1 - tail])) ++tail;
    while (tail > 0 &&
           (IsInsideCharacter(left, left.size() - tail) || IsInsideCharacter(right, right.size() - tail)))
        --tail;
    LineDifferences differences;
    for (const Side side : kBothSides)
        if (head < lines[side].size() - tail) differences[side].push_back({head, lines[side].size() - tail});
    return differences;
}

}  // namespace

LineDifferences DifferencesOfLines(ErrorReporter& reporter, const PerSide<std::string_view>& lines,
                                   bool ignoreCase, std::size_t mostBytes) {
    const std::string_view left = lines[Side::Left];
    const std::string_view right = lines[Side::Right];
    if (left.empty() || right.empty() || left.size() + right.size() > mostBytes)
        return MiddleOf(lines, ignoreCase);
    PerSide<std::vector<bool>> common;
    StringDiffs(reporter, left, right, ignoreCase, common[Side::Left], common[Side::Right]);
    LineDifferences differences;
    for (const Side side : kBothSides) differences[side] = RangesOf(lines[side], common[side]);
    return differences;
}

const LineDifferences* RowDifferences::Find(std::int32_t row) const {
    const auto found = rows_.find(row);
    return found == rows_.end() ? nullptr : &found->second;
}

const LineDifferences& RowDifferences::Make(ErrorReporter& reporter, const FileGrids& grids, std::int32_t row,
                                            bool ignoreCase) {
    if (rows_.size() >= kMostRows) rows_.clear();
    return rows_[row] =
               DifferencesOfLines(reporter, {{grids.Line(Side::Left, row), grids.Line(Side::Right, row)}},
                                  ignoreCase, kMostComparedBytesInRows);
}

}  // namespace vantrel
