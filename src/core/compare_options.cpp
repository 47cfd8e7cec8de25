#include "core/compare_options.h"

#include <algorithm>

namespace vantrel {

void ApplyOptions(const Options& options, CCompare& compare, bool sha1Available) {
    compare.CompareMethod = options.compareType == Options::CompareType::Sha && !sha1Available
                                ? CompareMethod::SizeAndDate
                                : static_cast<CompareMethod>(options.compareType);
    compare.ChunkSize = std::max(1, options.chunkSize);
    compare.IncludeFilters = options.includeFileTypes;
    compare.ExcludeFilters = options.excludeFileTypes;
    compare.ExcludeSystemFiles = options.excludeSystemFiles;
    compare.ExcludeHiddenFiles = options.excludeHiddenFiles;
    compare.ExcludeSystemFolders = options.excludeSystemFolders;
    compare.ExcludeHiddenFolders = options.excludeHiddenFolders;
    compare.RemindAboutFATNTFSIssue = options.remindAboutFATNTFSIssue;
    compare.IgnoreFAT_NTFS_TwoSecDiff = options.ignore2SecDiff;
    compare.IgnoreFAT_NTFS_DaylightSavings = options.ignoreDaylightSavings;
    compare.SetCompareSubFolders(options.compareSubFolders);
}

void CollectOptions(const CCompare& compare, Options& options) {
    options.compareType = static_cast<Options::CompareType>(compare.CompareMethod);
    options.chunkSize = compare.ChunkSize;
    options.includeFileTypes = compare.IncludeFilters;
    options.excludeFileTypes = compare.ExcludeFilters;
    options.excludeSystemFiles = compare.ExcludeSystemFiles;
    options.excludeHiddenFiles = compare.ExcludeHiddenFiles;
    options.excludeSystemFolders = compare.ExcludeSystemFolders;
    options.excludeHiddenFolders = compare.ExcludeHiddenFolders;
    options.remindAboutFATNTFSIssue = compare.RemindAboutFATNTFSIssue;
    options.ignore2SecDiff = compare.IgnoreFAT_NTFS_TwoSecDiff;
    options.ignoreDaylightSavings = compare.IgnoreFAT_NTFS_DaylightSavings;
    options.compareSubFolders = compare.CompareSubFolders();
}

}  // namespace vantrel
