#include "dupes/dupe_filter.h"

#include <algorithm>

#include "dupes/system_folders.h"
#include "platform/files/file_system.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Where the character that begins at `at` ends.
std::size_t EndOfCharacter(std::string_view text, std::size_t at) {
    ++at;
    while (at < text.size() && IsContinuation(text[at])) ++at;
    return at;
}

// Both folded.
bool MatchesOne(std::string_view name, std::string_view pattern) {
    std::size_t at = 0, in = 0;
    std::size_t star = std::string_view::npos, tried = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            tried = at;
        } else if (in < pattern.size() && pattern[in] == '?') {
            at = EndOfCharacter(name, at);
            ++in;
        } else if (in < pattern.size() && pattern[in] == name[at]) {
            ++at;
            ++in;
        } else if (star != std::string_view::npos) {
            // The run takes one character more.
            in = star + 1;
            at = tried = EndOfCharacter(name, tried);
        } else {
            return false;
        }
    }
    while (in < pattern.size() && pattern[in] == '*') ++in;
    return in == pattern.size();
}

}  // namespace

NamePatterns::NamePatterns(const std::vector<std::string>& patterns) {
    for (const std::string& pattern : patterns)
        if (!pattern.empty()) patterns_.push_back(pattern == "*.*" ? "*" : FoldCase(pattern));
}

bool NamePatterns::Match(std::string_view name) const {
    if (patterns_.empty()) return false;
    static thread_local std::string folded;
    folded.clear();
    AppendFolded(name, folded);
    return std::any_of(patterns_.begin(), patterns_.end(),
                       [&](const std::string& pattern) { return MatchesOne(folded, pattern); });
}

DupeSearchOrder DupeSearchOrder::Of(const Options& options) {
    DupeSearchOrder order;
    Options copy = options;
    const clsDupeSettings settings(copy);
    order.folders = settings.FolderPaths();
    order.includeSubFolders = settings.IncludeSubFolders();
    order.criteria = settings.Criteria();
    order.hashMethod = settings.HashMethod();
    order.ignoreZeroByteFiles = settings.IgnoreZeroByteFiles();
    order.ignoreSystemFiles = settings.IgnoreSystemFiles();
    order.ignoreHiddenFiles = settings.IgnoreHiddenFiles();
    order.ignoreFilesInWindowsDir = settings.IgnoreFilesInWindowsDir();
    order.excludeFiles = settings.ExcludeFiles();
    order.jobs = options.jobs;
    return order;
}

// A search of single folders leaves the system's folders out whatever the option says.
DupeFilter::DupeFilter(const DupeSearchOrder& order, Places places)
    : patterns_(order.excludeFiles),
      places_(std::move(places)),
      zeroBytes_(order.ignoreZeroByteFiles),
      systemFolders_(order.ignoreFilesInWindowsDir || !order.includeSubFolders) {
    if (order.ignoreSystemFiles) forbidden_ |= kSystem;
    if (order.ignoreHiddenFiles) forbidden_ |= kHidden;
}

bool DupeFilter::LeavesOutFolder(std::string_view path) const {
    return (systemFolders_ && IsInSystemFolder(path)) || IsBelowFolder(path, places_.dupesFolder) ||
           IsInTrash(path, places_.homeTrash);
}

}  // namespace vantrel
