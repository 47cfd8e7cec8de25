#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dupes/dupe_lists.h"
#include "settings/options.h"

namespace vantrel {

// What the files of a group agree in.
struct DupeCriteria {
    bool names = true;
    bool sizes = true;
    bool createTimes = false;
    bool lastModTimes = false;
    bool attributes = false;
    bool contents = false;

    friend bool operator==(const DupeCriteria&, const DupeCriteria&) = default;
};

// The settings of the duplicate finder. They stand in the options, which must outlive the object; this is the
// way to read and to change them.
class clsDupeSettings {
  public:
    explicit clsDupeSettings(Options& options) : options_(options) {}

    std::vector<std::string> FolderPaths() const { return SplitDupeList(options_.folderPaths); }
    void SetFolderPaths(const std::vector<std::string>& paths) { options_.folderPaths = JoinDupeList(paths); }
    bool IncludeSubFolders() const { return options_.includeSubFolders; }
    void SetIncludeSubFolders(bool on) { options_.includeSubFolders = on; }
    bool RemoveWarningShown() const { return options_.removeWarningShown; }
    void SetRemoveWarningShown(bool shown) { options_.removeWarningShown = shown; }
    bool DupesFormLoadedPreviously() const { return options_.dupesFormLoadedPreviously; }
    void SetDupesFormLoadedPreviously(bool loaded) { options_.dupesFormLoadedPreviously = loaded; }

    DupeCriteria Criteria() const {
        return {options_.namesMustMatch,
                options_.sizesMustMatch,
                options_.createTimestampsMustMatch,
                options_.lastModTimestampsMustMatch,
                options_.attributesMustMatch,
                options_.contentsMustMatch};
    }
    void SetCriteria(const DupeCriteria& criteria) {
        options_.namesMustMatch = criteria.names;
        options_.sizesMustMatch = criteria.sizes;
        options_.createTimestampsMustMatch = criteria.createTimes;
        options_.lastModTimestampsMustMatch = criteria.lastModTimes;
        options_.attributesMustMatch = criteria.attributes;
        options_.contentsMustMatch = criteria.contents;
    }

    bool IgnoreZeroByteFiles() const { return options_.ignoreZeroByteFiles; }
    void SetIgnoreZeroByteFiles(bool on) { options_.ignoreZeroByteFiles = on; }
    bool IgnoreSystemFiles() const { return options_.ignoreSystemFiles; }
    void SetIgnoreSystemFiles(bool on) { options_.ignoreSystemFiles = on; }
    bool IgnoreHiddenFiles() const { return options_.ignoreHiddenFiles; }
    void SetIgnoreHiddenFiles(bool on) { options_.ignoreHiddenFiles = on; }
    // The system's own folders (IsInSystemFolder).
    bool IgnoreFilesInWindowsDir() const { return options_.ignoreFilesInWindowsDir; }
    void SetIgnoreFilesInWindowsDir(bool on) { options_.ignoreFilesInWindowsDir = on; }

    RemovalMethod RemoveMethod() const { return options_.removalMethod; }
    void SetRemoveMethod(RemovalMethod method) { options_.removalMethod = method; }
    const std::string& UserDefinedMoveFolderPath() const { return options_.userDefinedMoveFolderPath; }
    void SetUserDefinedMoveFolderPath(std::string path) {
        options_.userDefinedMoveFolderPath = std::move(path);
    }
    vantrel::HashMethod HashMethod() const { return options_.hashMethod; }
    void SetHashMethod(vantrel::HashMethod method) { options_.hashMethod = method; }
    std::vector<std::string> ExcludeFiles() const { return SplitDupeList(options_.excludeFiles); }
    void SetExcludeFiles(const std::vector<std::string>& patterns) {
        options_.excludeFiles = JoinDupeList(patterns);
    }

    // Whether a file is compared with one that stays before it is removed, also where contents are no
    // criterion.
    bool CheckBeforeRemoval() const { return options_.checkBeforeRemoval; }
    // Folders, no file below which is marked by a rule.
    std::vector<std::string> ProtectedFolders() const { return SplitDupeList(options_.protectedDupeFolders); }
    void SetProtectedFolders(const std::vector<std::string>& paths) {
        options_.protectedDupeFolders = JoinDupeList(paths);
    }

  private:
    Options& options_;
};

// What one search is asked for.
struct DupeSearchOrder {
    std::vector<std::string> folders;  // full paths
    bool includeSubFolders = true;
    DupeCriteria criteria;
    HashMethod hashMethod = HashMethod::Crc16;
    bool ignoreZeroByteFiles = true;
    bool ignoreSystemFiles = true;
    bool ignoreHiddenFiles = true;
    bool ignoreFilesInWindowsDir = true;
    std::vector<std::string> excludeFiles;  // patterns of names
    std::int32_t jobs = 0;                  // as the option of that name
    std::string dupesFolder;                // never searched; empty: that of the program's folder

    static DupeSearchOrder Of(const Options& options);
};

}  // namespace vantrel
