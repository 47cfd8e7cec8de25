#include "core/ccompare.h"

#include "settings/options.h"

namespace vantrel {

CCompare::CCompare() : CCompare(Options()) {
}

CCompare::CCompare(const Options& options) {
    TakeOptions(options);
}

void CCompare::TakeOptions(const Options& options) {
    CompareMethod = options.compareType;
    ChunkSize = options.chunkSize;
    Jobs = options.jobs;
    IncludeFilters = options.includeFileTypes;
    ExcludeFilters = options.excludeFileTypes;
    ExcludeSystemFiles = options.excludeSystemFiles;
    ExcludeHiddenFiles = options.excludeHiddenFiles;
    ExcludeSystemFolders = options.excludeSystemFolders;
    ExcludeHiddenFolders = options.excludeHiddenFolders;
    RemindAboutFATNTFSIssue = options.remindAboutFATNTFSIssue;
    IgnoreFAT_NTFS_TwoSecDiff = options.ignore2SecDiff;
    IgnoreFAT_NTFS_DaylightSavings = options.ignoreDaylightSavings;
    Sizes = options.trueSizes ? SizeRule::True : SizeRule::Words;
    OfferTrueSizes = !options.trueSizes && !options.trueSizesOffered;
    compareSubFolders_ = options.compareSubFolders;
}

}  // namespace vantrel
