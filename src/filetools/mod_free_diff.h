#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "diagnostics/error_reporter.h"

namespace vantrel {

// Which characters of two single lines differ.

// Beyond so many pairs of characters (64 MB of table) no table is made: what the two lines share at their
// head and tail is common, and all between is marked as differing.
inline constexpr std::uint64_t kMostLcsCells = std::uint64_t{1} << 29;

// One bit for each pair of prefixes: whether the last character of the first string makes their longest
// common subsequence longer.
class LcsMatrix {
  public:
    std::size_t Words() const { return words_; }

  private:
    friend std::int32_t FillLCSMatrix(const std::vector<char32_t>& one, const std::vector<char32_t>& two,
                                      LcsMatrix& matrix);
    friend void GetLocationOfDiffs(const LcsMatrix& matrix, const std::vector<char32_t>& one,
                                   const std::vector<char32_t>& two, std::vector<bool>& resultOne,
                                   std::vector<bool>& resultTwo);
    bool Grows(std::size_t i, std::size_t j) const {  // of cell (i, j), both from 1
        return (bits_[(j - 1) * words_ + (i - 1) / 64] >> ((i - 1) % 64) & 1) == 0;
    }

    std::size_t words_ = 0;  // a row, one row for each character of the second string
    std::vector<std::uint64_t> bits_;
};

// Fills the table and gives the length of the longest common subsequence.
std::int32_t FillLCSMatrix(const std::vector<char32_t>& one, const std::vector<char32_t>& two,
                           LcsMatrix& matrix);

// Walks back from the end of both strings: a match is always taken; otherwise the step goes back in string
// two where only that keeps the length, and in string one in every other case. Sets the elements of what is
// common to true.
void GetLocationOfDiffs(const LcsMatrix& matrix, const std::vector<char32_t>& one,
                        const std::vector<char32_t>& two, std::vector<bool>& resultOne,
                        std::vector<bool>& resultTwo);

// Compares two lines character by character. An element of a result stands for one Unicode character of its
// line (a byte that is no valid UTF-8 counts as one) and is true where it is common to both. Letter case is
// ignored by simple folding. Gives the length of what is common; an error is reported, and everything is then
// marked as common, so that the lines stay without marks. Beyond kMostLcsCells the length is the least it can
// be.
std::int32_t StringDiffs(ErrorReporter& reporter, std::string_view one, std::string_view two, bool ignoreCase,
                         std::vector<bool>& resultOne, std::vector<bool>& resultTwo);

// The characters of a text as StringDiffs counts them.
std::vector<char32_t> CharactersOf(std::string_view text);

}  // namespace vantrel
