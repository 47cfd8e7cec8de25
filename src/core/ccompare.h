#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "core/size_rule.h"
#include "settings/option_values.h"

namespace vantrel {

struct Options;

// The options of a comparison as its run found them, and the state of the run; one shared object. What a run
// changes here holds for that run: whoever wants to keep it takes it over into the options.
class CCompare {
  public:
    CCompare();  // with the defaults
    explicit CCompare(const Options& options);
    // To be called before each run, and never within one. The state is left alone.
    void TakeOptions(const Options& options);

    bool RemindAboutFATNTFSIssue{};
    bool AlreadyNotifiedAboutFATNTFS = false;  // in this run of the program
    std::int32_t ChunkSize{};                  // bytes read from each file at a time, at least 1
    bool RunningCompare = false;
    bool ErrorsDuringCompare = false;  // at least one error went to ERRORLOG.TXT
    bool CompareCancelled =
        false;                    // the user pressed ESC, or the run failed a check; kept until the next run
    bool SlowConnection = false;  // a scan took long for few files; cleared by each run
    bool MetLargeFiles = false;   // the run met a file for which the rule of sizes matters; cleared by each
    bool ExcludeHiddenFiles{};
    bool ExcludeSystemFiles{};
    bool IgnoreFAT_NTFS_DaylightSavings{};
    bool IgnoreFAT_NTFS_TwoSecDiff{};
    std::string ExcludeFilters;  // comma-separated patterns
    std::string IncludeFilters;
    vantrel::CompareMethod CompareMethod{};
    std::int32_t Jobs{};  // workers, as WorkerCount takes them
    bool ExcludeHiddenFolders{};
    bool ExcludeSystemFolders{};
    SizeRule Sizes{};
    bool OfferTrueSizes{};  // the user has not said yet which rule it is to be

    bool CompareSubFolders() const { return compareSubFolders_; }
    // Setting it, to whatever value, also drops the results of the last sub-folder analysis.
    void SetCompareSubFolders(bool on) {
        compareSubFolders_ = on;
        if (CleanupPreviousSubFolderResults) CleanupPreviousSubFolderResults();
    }
    std::function<void()> CleanupPreviousSubFolderResults;

  private:
    bool compareSubFolders_{};
};

}  // namespace vantrel
