#include "core/filters.h"

#include <algorithm>

#include "core/result_row.h"
#include "platform/files/file_system.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

bool HoldsFolderPattern(const std::vector<std::string>& patterns) {
    return std::any_of(patterns.begin(), patterns.end(), [](const std::string& pattern) {
        return pattern.find(kFolderMarker) != std::string::npos;
    });
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

std::uint8_t Forbidden(bool system, bool hidden) {
    return static_cast<std::uint8_t>((system ? kSystem : 0) | (hidden ? kHidden : 0));
}

}  // namespace

ScanOptions ScanOptions::Of(const CCompare& compare) {
    ScanOptions options;
    options.includeFilters = compare.IncludeFilters;
    options.excludeFilters = compare.ExcludeFilters;
    options.excludeSystemFiles = compare.ExcludeSystemFiles;
    options.excludeHiddenFiles = compare.ExcludeHiddenFiles;
    options.excludeSystemFolders = compare.ExcludeSystemFolders;
    options.excludeHiddenFolders = compare.ExcludeHiddenFolders;
    return options;
}

NameFilter::Patterns NameFilter::Split(std::string_view text, bool trimmed) {
    Patterns patterns;
    if (text.empty()) return patterns;
    while (true) {
        const std::size_t comma = text.find(',');
        const std::string_view piece = text.substr(0, comma);
        std::string pattern(trimmed ? Trimmed(piece) : piece);
        if (!pattern.empty() && pattern.front() == '/') pattern.front() = kFolderMarker;
        patterns.push_back(std::move(pattern));
        if (comma == std::string_view::npos) return patterns;
        text.remove_prefix(comma + 1);
    }
}

bool NameFilter::Matches(const Patterns& patterns, std::string_view name) {
    return std::any_of(patterns.begin(), patterns.end(),
                       [name](const std::string& pattern) { return pattern == "*" || Like(name, pattern); });
}

NameFilter NameFilter::ForScan(const ScanOptions& options) {
    NameFilter filter;
    filter.noFilters_ = options.HasNoFilters();
    filter.include_ = Split(options.includeFilters.empty() ? "*" : options.includeFilters, false);
    filter.exclude_ = Split(options.excludeFilters, false);
    filter.includeHoldsFolders_ = HoldsFolderPattern(filter.include_);
    filter.excludeHoldsFolders_ = HoldsFolderPattern(filter.exclude_);
    filter.forbiddenFileAttributes_ = Forbidden(options.excludeSystemFiles, options.excludeHiddenFiles);
    filter.forbiddenFolderAttributes_ = Forbidden(options.excludeSystemFolders, options.excludeHiddenFolders);
    return filter;
}

NameFilter NameFilter::ForWalk(const ScanOptions& options) {
    NameFilter filter = ForScan(options);
    filter.include_ = Split(options.includeFilters.empty() ? "*" : options.includeFilters, true);
    filter.exclude_ = Split(options.excludeFilters, true);
    for (Patterns* patterns : {&filter.include_, &filter.exclude_})
        std::erase_if(*patterns, [](const std::string& pattern) {
            return !pattern.empty() && pattern.front() == kFolderMarker;
        });
    if (filter.include_.empty()) filter.include_.emplace_back("*");
    filter.includeHoldsFolders_ = filter.excludeHoldsFolders_ = false;
    return filter;
}

bool NameFilter::KeepsFile(std::string_view name, std::uint8_t attributes) const {
    if (!noFilters_ && (!Matches(include_, name) || Matches(exclude_, name))) return false;
    return (attributes & forbiddenFileAttributes_) == 0;
}

bool NameFilter::KeepsFolder(std::string_view markedName, std::uint8_t attributes) const {
    if (includeHoldsFolders_ && !Matches(include_, markedName)) return false;
    if (excludeHoldsFolders_ && Matches(exclude_, markedName)) return false;
    return (attributes & forbiddenFolderAttributes_) == 0;
}

}  // namespace vantrel
