#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "dupes/cls_dupe_settings.h"
#include "dupes/dupe_progress.h"
#include "dupes/dupe_results.h"
#include "dupes/dupes_folder.h"
#include "shell/shell_operations.h"

namespace vantrel {

struct RemovalReport {
    bool begun = false;  // false: nothing was marked, or the user did not want it
    std::uint64_t removed = 0;
    std::uint64_t skipped = 0;    // the user said No to overwriting
    std::uint64_t failed = 0;     // each was told
    std::uint64_t leftAlone = 0;  // not what was found any more, or without an equal file; told at the end
    bool cancelled = false;       // the rest stayed
};

// The removal of marked files. A file goes only as what it was when it was found, and where the settings say
// so only after it was compared byte by byte with a file of its group that stays. A cancel (Esc) is heard
// between files and within comparisons; what was not reached stays.
class DupeRemoval {
  public:
    // All must outlive the object.
    DupeRemoval(const Toolbox& tools, ShellOperations& shell, DupeProgress& progress)
        : tools_(tools), shell_(shell), progress_(progress), dupes_(tools) {}

    // Takes all that is marked in `groups` through the warnings and questions, and removes it by the method
    // of the settings. Rows, counts and marks of `results` follow file by file. At its end the status panel
    // is written again.
    RemovalReport RemoveMarkedFiles(DupeResults& results, const std::vector<std::uint32_t>& groups,
                                    clsDupeSettings& settings);
    // Takes what is marked out of the lists alone, without any question: the files stay.
    void RemoveFromLists(DupeResults& results, const std::vector<std::uint32_t>& groups);

    const DupesFolder& Dupes() const { return dupes_; }

  private:
    enum class Done : std::uint8_t { Removed, Skipped, Failed, LeftAlone };
    struct Doing;

    bool WarnedAndAgreed(clsDupeSettings& settings);
    bool MayTakeLastCopies(const DupeResults& results, const std::vector<std::uint32_t>& groups);
    void RemoveFromGroup(Doing& doing, std::uint32_t group);
    Done RemoveFile(Doing& doing, std::uint32_t file);
    std::string WhyNotRemoved(Doing& doing, std::uint32_t file);
    Done MoveToOtherFolder(Doing& doing, ShellRequest request);
    Done Run(Doing& doing, const ShellRequest& request);
    void TellFailure(RemovalMethod method, const std::string& path, const Error& error);
    void TellLeftAlone(const Doing& doing);
    void Yield();

    const Toolbox& tools_;
    ShellOperations& shell_;
    DupeProgress& progress_;
    DupesFolder dupes_;
};

}  // namespace vantrel
