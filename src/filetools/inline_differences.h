#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/side.h"
#include "diagnostics/error_reporter.h"
#include "filetools/file_grids.h"

namespace vantrel {

// Bytes [begin, end) of a line.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

// What differs between two lines that stand beside each other: whole characters, in ascending order, none
// touching the next.
using LineDifferences = PerSide<std::vector<TextRange>>;

// Beyond so many bytes on both sides together lines are not compared character by character: what they
// share at head and tail is common, and all between differs. That is some milliseconds for lines of any
// length. The first is for a pair that the user looks at, the second for all pairs that are seen.
inline constexpr std::size_t kMostComparedBytes = std::size_t{64} << 10;
inline constexpr std::size_t kMostComparedBytesInRows = std::size_t{8} << 10;

// As StringDiffs tells them apart. Errors are reported there and leave nothing marked.
LineDifferences DifferencesOfLines(ErrorReporter& reporter, const PerSide<std::string_view>& lines,
                                   bool ignoreCase, std::size_t mostBytes = kMostComparedBytes);

// The differences inside changed rows, made one after the other as rows come into sight, and kept for the
// rows seen last.
class RowDifferences {
  public:
    // Forgets all that is kept.
    void Clear() { rows_.clear(); }
    // Null where they have not been made yet.
    const LineDifferences* Find(std::int32_t row) const;
    const LineDifferences& Make(ErrorReporter& reporter, const FileGrids& grids, std::int32_t row,
                                bool ignoreCase);

  private:
    static constexpr std::size_t kMostRows = 4096;
    std::unordered_map<std::int32_t, LineDifferences> rows_;
};

}  // namespace vantrel
