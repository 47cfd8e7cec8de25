#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace vantrel {

enum class CompareMethod : std::int32_t { SizeAndDate = 0, Contents = 1, Crc32 = 2, Sha1 = 3 };

// The options of a comparison and the state of its run; one shared object.
class CCompare {
  public:
    bool RemindAboutFATNTFSIssue = true;
    bool AlreadyNotifiedAboutFATNTFS = false;  // in this run of the program
    std::int32_t ChunkSize = 500'000;          // bytes read from each file at a time, at least 1
    bool RunningCompare = false;
    bool ErrorsDuringCompare = false;  // at least one error went to ERRORLOG.TXT
    bool CompareCancelled =
        false;                    // the user pressed ESC, or the run failed a check; kept until the next run
    bool SlowConnection = false;  // a scan took long for few files; cleared by each run
    bool ExcludeHiddenFiles = false;
    bool ExcludeSystemFiles = false;
    bool IgnoreFAT_NTFS_DaylightSavings = false;
    bool IgnoreFAT_NTFS_TwoSecDiff = true;
    std::string ExcludeFilters;  // comma-separated patterns
    std::string IncludeFilters;
    vantrel::CompareMethod CompareMethod = vantrel::CompareMethod::SizeAndDate;
    bool ExcludeHiddenFolders = false;
    bool ExcludeSystemFolders = false;

    bool CompareSubFolders() const { return compareSubFolders_; }
    // Setting it, to whatever value, also drops the results of the last sub-folder analysis.
    void SetCompareSubFolders(bool on) {
        compareSubFolders_ = on;
        if (CleanupPreviousSubFolderResults) CleanupPreviousSubFolderResults();
    }
    std::function<void()> CleanupPreviousSubFolderResults;

  private:
    bool compareSubFolders_ = true;
};

}  // namespace vantrel
