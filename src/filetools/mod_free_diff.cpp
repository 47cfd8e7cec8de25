#include "filetools/mod_free_diff.h"

#include <unicode/utf8.h>

#include <algorithm>

#include "filetools/bit_rows.h"
#include "platform/names/fold.h"

namespace vantrel {

std::vector<char32_t> CharactersOf(std::string_view text) {
    std::vector<char32_t> characters;
    characters.reserve(text.size());
    const auto size = static_cast<std::int64_t>(text.size());
    for (std::int64_t at = 0; at < size;) {
        const auto first = static_cast<unsigned char>(text[static_cast<std::size_t>(at)]);
        std::int64_t next = at;
        UChar32 point = 0;
        U8_NEXT(text.data(), next, size, point);
        // A byte that is no text is a character of its own above all others.
        characters.push_back(static_cast<char32_t>(point < 0 ? 0x110000 + first : point));
        at = point < 0 ? at + 1 : next;
    }
    return characters;
}

std::int32_t FillLCSMatrix(const std::vector<char32_t>& one, const std::vector<char32_t>& two,
                           LcsMatrix& matrix) {
    // The bits run along the first string, so that a row tells for each cell whether a step back in string
    // one would make the length smaller: that is what the tie-break asks.
    const std::vector<std::uint32_t> pattern(one.begin(), one.end());
    MatchBits matches(pattern);
    const std::size_t words = matches.Words();
    matrix.words_ = words;
    matrix.bits_.assign(words * two.size(), 0);
    std::vector<std::uint64_t> row(words, ~std::uint64_t{0});
    for (std::size_t j = 0; j < two.size(); ++j) {
        AdvanceRow(matches.For(two[j]), row);
        std::copy(row.begin(), row.end(), matrix.bits_.begin() + static_cast<std::ptrdiff_t>(j * words));
    }
    return static_cast<std::int32_t>(CountGrowth(row, one.size()));
}

void GetLocationOfDiffs(const LcsMatrix& matrix, const std::vector<char32_t>& one,
                        const std::vector<char32_t>& two, std::vector<bool>& resultOne,
                        std::vector<bool>& resultTwo) {
    std::size_t i = one.size();
    std::size_t j = two.size();
    while (i > 0 && j > 0) {
        if (one[i - 1] == two[j - 1]) {
            resultOne[--i] = true;
            resultTwo[--j] = true;
        } else if (matrix.Grows(i, j)) {
            --j;
        } else {
            --i;
        }
    }
}

namespace {

void Fold(std::vector<char32_t>& characters) {
    for (char32_t& character : characters)
        if (character < 0x110000)
            character =
                static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

// Takes equal characters off the end of both; their number.
std::size_t CutTail(std::vector<char32_t>& one, std::vector<char32_t>& two) {
    std::size_t cut = 0;
    while (!one.empty() && !two.empty() && one.back() == two.back()) {
        one.pop_back();
        two.pop_back();
        ++cut;
    }
    return cut;
}

std::int32_t Compare(std::vector<char32_t> one, std::vector<char32_t> two, std::vector<bool>& resultOne,
                     std::vector<bool>& resultTwo) {
    resultOne.assign(one.size(), false);
    resultTwo.assign(two.size(), false);
    // The walk back takes every match at the end, so this changes nothing. The same at the head would.
    const std::size_t tail = CutTail(one, two);
    std::fill(resultOne.begin() + static_cast<std::ptrdiff_t>(one.size()), resultOne.end(), true);
    std::fill(resultTwo.begin() + static_cast<std::ptrdiff_t>(two.size()), resultTwo.end(), true);
    std::size_t common = 0;
    if (one.empty() || two.empty()) return static_cast<std::int32_t>(tail);
    if (static_cast<std::uint64_t>(one.size()) * two.size() > kMostLcsCells) {
        while (common < one.size() && common < two.size() && one[common] == two[common]) ++common;
        std::fill_n(resultOne.begin(), common, true);
        std::fill_n(resultTwo.begin(), common, true);
        return static_cast<std::int32_t>(tail + common);
    }
    LcsMatrix matrix;
    const std::int32_t length = FillLCSMatrix(one, two, matrix);
    GetLocationOfDiffs(matrix, one, two, resultOne, resultTwo);
    return length + static_cast<std::int32_t>(tail);
}

}  // namespace

std::int32_t StringDiffs(ErrorReporter& reporter, std::string_view one, std::string_view two, bool ignoreCase,
                         std::vector<bool>& resultOne, std::vector<bool>& resultTwo) {
    std::int32_t length = 0;
    const bool done = reporter.Guard("modFreeDiff.StringDiffs()", [&] {
        std::vector<char32_t> first = CharactersOf(one);
        std::vector<char32_t> second = CharactersOf(two);
        if (ignoreCase) {
            Fold(first);
            Fold(second);
        }
        length = Compare(std::move(first), std::move(second), resultOne, resultTwo);
    });
    if (!done) {
        resultOne.assign(resultOne.size(), true);
        resultTwo.assign(resultTwo.size(), true);
    }
    return length;
}

}  // namespace vantrel
