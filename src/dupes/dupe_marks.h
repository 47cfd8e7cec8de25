#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dupes/dupe_results.h"

namespace vantrel {

// Which file of a group a rule leaves unmarked.
enum class MarkRule : std::uint8_t {
    AllButNewest,  // by the time of the last change of contents
    AllButOldest,
    AllButFirstInFolders,  // in the order of the list of folders
    AllButShortestPath,    // in characters
    ByPattern,             // marks those whose name or path the pattern matches, and never all of a group
};

struct MarkReport {
    std::uint64_t marked = 0;      // files
    std::uint64_t tiedGroups = 0;  // where several files were equally good: the first by ComesBefore stays
    std::uint64_t spared = 0;      // files that were left unmarked because their folder is protected

    // In words, a line for each of what is not 0; "No files were marked." where nothing is.
    std::string Text() const;
};

struct MarkOrder {
    MarkRule rule = MarkRule::AllButNewest;
    // Of ByPattern: as NamePatterns have it, matched against the name, or where it holds a "/" against the
    // path.
    std::string pattern;
    // Full paths. What lies below one of them is never marked.
    std::vector<std::string> protectedFolders;
};

// Marks files in the groups `groups`, and takes no mark away. A rule never marks a whole group: where all are
// marked but for it, the one that it leaves stays unmarked as well.
MarkReport MarkByRule(DupeResults& results, const std::vector<std::uint32_t>& groups, const MarkOrder& order);

}  // namespace vantrel
