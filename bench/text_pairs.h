#pragma once

#include <cstddef>
#include <string>

namespace vantrel::bench {

// Pairs of text files to measure with. Each routine makes FOLDER/left and FOLDER/right; the same arguments
// make the same bytes.

enum class LineKind {
    NearlyUnique,  // some 118 bytes, hardly two alike
    SourceCode,    // short lines, many of them brackets and common statements
    Log,           // a time stamp and one of few messages
    Words,         // one of 50 words
    Numbers,       // each line once
};

// `lines` lines, of which `changed` of a thousand are replaced, taken out or put in on the right.
void MakeEditedPair(const std::string& folder, LineKind kind, std::size_t lines, unsigned changed);
// Two sides that were made apart from each other.
void MakeUnlikePair(const std::string& folder, LineKind kind, std::size_t lines);
// The same lines in another order.
void MakeShuffledPair(const std::string& folder, std::size_t lines);
// Files of `bytes` bytes with `changes` single lines changed.
void MakeHugePair(const std::string& folder, std::size_t bytes, std::size_t changes);
// Every pair of a version of a file of this source tree and the next one, in folders FOLDER/1, FOLDER/2 and
// so on, at most `most` of them. Their number; 0 where there is no history.
std::size_t MakeHistoryPairs(const std::string& folder, std::size_t most);

}  // namespace vantrel::bench
