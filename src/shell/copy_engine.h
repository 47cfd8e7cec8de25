#pragma once

#include <string>
#include <unordered_map>

#include "shell/copy_batch.h"
#include "shell/copy_file.h"
#include "shell/shell_run.h"

namespace vantrel::shell {

// What a copy has made of a source, for the removal of that source afterwards.
class CopyRecord {
  public:
    void Add(const Place& from, const Statx& source) { copied_.insert_or_assign(KeyOf(from), source); }
    // Whether the object at `from` is the one that was copied and has not changed since.
    bool Holds(const Place& from, const Statx& now) const;
    bool IsEmpty() const { return copied_.empty(); }
    std::size_t Count() const { return copied_.size(); }
    // A copy noted here did not come to its name.
    void NoteLoss() { lost_ = true; }
    bool HasLoss() const { return lost_; }

  private:
    static std::string KeyOf(const Place& from);
    std::unordered_map<std::string, Statx> copied_;
    bool lost_ = false;
};

// How a target stands to the source that is to go there.
struct TargetLook {
    bool exists = false;
    bool isFolder = false;  // or a link to one
    Statx stat{};           // of the object itself, not of what it leads to

    const Statx* Now() const { return exists ? &stat : nullptr; }
};
// The existing folder that another one is merged into. A link to a folder will do, but not where the request
// names the folders that were compared: below these it leads out of them, and nothing is written there.
Error OpenTargetFolder(const ShellRun& run, const Place& to, Folder& out);

// Refuses what must never be: the source itself by whatever name, a file on a folder or the reverse, anything
// else that is neither file nor link, and what this run has put there.
// At depth 0 the target is held against what the run expects of it.
Error LookAtTarget(ShellRun& run, const Place& from, const Statx& source, const Place& to, int depth,
                   TargetLook& look);

// A folder that lies in `inside`, however deep, or is it: an error. Both by what they are, not by their
// paths.
Error RefuseIntoItself(SystemCalls& calls, const FileId& folder, const Folder& inside, std::string_view path);

// Copies files, links and whole folders.
class CopyEngine {
  public:
    // With a record every copy is compared with its source and noted there.
    explicit CopyEngine(ShellRun& run, CopyRecord* record = nullptr)
        : run_(run), calls_(run.calls), record_(record) {}

    ItemOutcome Copy(const Place& from, const Place& to);

  private:
    Error CopyFileOrLink(const Place& from, const Statx& source, const Place& to, bool& mayReplace,
                         ItemOutcome& outcome);
    ItemOutcome CopyFolder(const Place& from, const Place& to);
    // A folder that is copied: its source and what is in it, and the folder that it goes to.
    struct Opened {
        Folder source;
        Statx stat{};
        std::vector<std::string> names;
        std::shared_ptr<const Folder> target;
        MadeFolder made;  // without a folder where the target stood
    };
    ToldCopy Told(const Place& from, const Place& to, std::uint64_t objects, std::uint64_t bytes) const;
    Error OpenBoth(const Place& from, const Place& to, Opened& opened);

    ShellRun& run_;
    SystemCalls& calls_;
    CopyRecord* record_;
    int depth_ = 0;
};

// Objects and bytes at and below a place, for the bar. What cannot be looked at counts for nothing.
void CountTree(ShellRun& run, const Place& place, bool withBytes, ShellProgress::Totals& totals);

}  // namespace vantrel::shell
