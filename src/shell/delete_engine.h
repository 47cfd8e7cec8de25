#pragma once

#include <string>

#include "shell/copy_engine.h"
#include "shell/shell_run.h"

namespace vantrel::shell {

// Removes files, links and whole folders, for good. Goes through open folders only, enters no link and no
// other mount, and removes nothing that it has not listed: what appears meanwhile keeps its folder standing.
class DeleteEngine {
  public:
    // With a record only what the record holds is removed; all else stands and counts as failed. Without one
    // that goes for what the run expects of its source.
    explicit DeleteEngine(ShellRun& run, const CopyRecord* record = nullptr)
        : run_(run), calls_(run.calls), record_(record) {}

    ItemOutcome Delete(const Place& place);

  private:
    // `below` is the path below the source that the run works on, empty for the source itself.
    ItemOutcome DeleteAt(const Place& place, const std::string& below);
    ItemOutcome DeleteFolder(const Place& place, const Statx& listed, const std::string& below);
    Error LookAgain(const Place& place, const std::string& below, Statx& stat) const;
    ShellRun& run_;
    SystemCalls& calls_;
    const CopyRecord* record_;
};

// Looks through the folder at `place`, at any depth: an error where anything is not what the run expects
// below its source.
Error RefuseChangedBelow(ShellRun& run, const Place& place);

}  // namespace vantrel::shell
