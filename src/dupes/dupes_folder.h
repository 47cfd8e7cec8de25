#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/toolbox.h"
#include "dupes/dupe_progress.h"
#include "shell/shell_operations.h"

namespace vantrel {

// A file in the DUPES folder, and where it was.
struct StoredDupe {
    std::string when;      // UTC, as UtcText writes it
    std::string original;  // full paths
    std::string stored;
    std::uint64_t size = 0;  // bytes
};

// The DUPES folder in the program's folder, where a removed file lies under its whole former path, and
// "Dupes.Log" beside it: a line for each file, appended before the file is moved, so that after a kill as
// well the log knows of all that lies there. A line whose file is not there, or that is damaged, says
// nothing.
class DupesFolder {
  public:
    explicit DupesFolder(const Toolbox& tools);

    // Where a file of this path will lie: under a name that nothing has there yet, with " (2)" and so on
    // behind it where its own is taken.
    std::string PlaceFor(const std::string& original) const;
    // Must go well before the file is moved.
    Error Note(const std::string& original, const std::string& stored) const;

    // What can be put back, the last removed first. Lines that name anything outside of the DUPES folder are
    // passed over.
    Error Read(std::vector<StoredDupe>& out) const;

    struct NotRestored {
        StoredDupe file;
        Error error;
    };
    struct Restored {
        std::uint64_t done = 0;
        std::vector<NotRestored> failed;
        bool cancelled = false;
        Error unlogged;  // the log could not be brought up to date
    };
    // Moves the files back, with the folders above them where these are missing. Nothing is replaced: where
    // something stands in the old place the file stays in DUPES. Folders of DUPES that are empty then go.
    Restored Restore(const std::vector<StoredDupe>& files, ShellOperations& shell,
                     DupeProgress& progress) const;

  private:
    Error RestoreOne(const StoredDupe& file, ShellOperations& shell) const;
    void RemoveEmptyFolders(const std::string& stored, ShellOperations& shell) const;

    const Toolbox& tools_;
    std::string folder_;  // without "/" at its end
    std::string log_;
};

}  // namespace vantrel
