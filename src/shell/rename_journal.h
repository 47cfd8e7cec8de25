#pragma once

#include <string>
#include <vector>

#include "platform/files/descriptor.h"
#include "shell/shell_operations.h"

namespace vantrel {

// One object of a batch of renames, by its place in the folder.
struct RenameStep {
    std::string from, to;  // names in the engine's form
    Sighting::Kind kind = Sighting::Kind::File;
    std::uint64_t inode = 0;  // 0: whatever object of that kind has the name
    // Many file systems give the number of what was removed to the next that is made. 0: nobody knows.
    FileTime made{};
    // Given for the time in which neither name can be had; empty: made up by the batch.
    std::string temporary{};
};

struct RenameBatch {
    ShellRoot folder;  // an id of zero: whatever folder stands there
    std::vector<RenameStep> steps;
};

namespace shell {

// The file that knows, while a batch of renames runs, which objects of a folder have, had and will have which
// names. It is written and safe on the disk before the first name changes and goes when the last one is safe.
// Held locked meanwhile, so that another process can tell a batch that runs from one that was killed.
class RenameJournal {
  public:
    static constexpr std::string_view kNameStem = "Rename-";
    static constexpr std::string_view kNameEnd = ".journal";

    // Makes a new file in `folder`, of a name that no other has; every step of `batch` gets its temporary
    // name. An error leaves nothing behind.
    static Error Create(const FileSystem& files, const std::string& folder, const std::string& token,
                        RenameBatch& batch, RenameJournal& out);
    // Opens what a killed process has left. `isLeft` is false where there is nothing to be done: it belongs
    // to a batch that runs, or broke off before anything was renamed and has been removed.
    static Error OpenLeft(const FileSystem& files, const std::string& path, RenameBatch& batch,
                          RenameJournal& out, bool& isLeft);

    bool IsOpen() const { return file_.IsOpen(); }
    Error Remove();

  private:
    Descriptor folder_, file_;
    std::string name_, path_;
    SystemCalls* calls_ = nullptr;
};

}  // namespace shell
}  // namespace vantrel
