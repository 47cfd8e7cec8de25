#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"

namespace vantrel {

// The entries of the list of file types in the Select Wizard. Each ends in its patterns between brackets,
// from which ExtractTypes reads them back.

inline constexpr std::string_view kAllFilesEntry = "All Files  (*)";
inline constexpr std::string_view kUserDefined = "User-defined...";
inline constexpr std::string_view kFirstUserPatterns = "*.bmp, *.jpg, *.gif";

// What the list asks the system about.
struct FileTypeSources {
    std::function<bool(const ResultRow&)> exists;  // the file of a row still does
    // The type that the desktop knows a file by its name; empty for none.
    std::function<std::string(std::string_view fileName)> describe;
};

// All files first, then one entry for each extension of the files in `rows`, letter case ignored, in the
// order of their texts, and the user's own last.
std::vector<std::string> FileTypeEntries(const ResultList& rows, const FileTypeSources& sources);

// What stands between the last "(" and the last ")" behind it; empty without a "(".
std::string ExtractTypes(std::string_view entry);

// The user's own entry with these patterns. Brackets in them become "?", so that they can be read back.
std::string UserDefinedEntry(std::string_view patterns);
bool IsUserDefined(std::string_view entry);
// What the user is offered when asked for patterns: those of the entry, otherwise kFirstUserPatterns.
std::string ProposedPatterns(std::string_view entry);

}  // namespace vantrel
