#pragma once

#include "shell/copy_engine.h"
#include "shell/shell_run.h"

namespace vantrel::shell {

// Removes files, links and whole folders, for good. Goes through open folders only, enters no link and no
// other mount, and removes nothing that it has not listed: what appears meanwhile keeps its folder standing.
class DeleteEngine {
  public:
    // With a record only what the record holds is removed; all else stands and counts as failed.
    explicit DeleteEngine(ShellRun& run, const CopyRecord* record = nullptr)
        : run_(run), calls_(run.calls), record_(record) {}

    ItemOutcome Delete(const Place& place);

  private:
    ItemOutcome DeleteFolder(const Place& place, const Statx& listed);
    ShellRun& run_;
    SystemCalls& calls_;
    const CopyRecord* record_;
};

}  // namespace vantrel::shell
