#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/side.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"
#include "platform/files/sighting.h"

namespace vantrel {

// A pair of files after one of them was made the same as the other.
struct SyncedPair {
    std::uint64_t size = 0;  // bytes, of the source
    FileTime lastWrite;      // UTC, of the source
    PerSide<Sighting> seen;  // what stands there now; NotKnown where that could not be looked at
};

// Makes one of two files the same as the other: file 1 is left, file 2 right. The target is wholly old or
// wholly new at every instant, also where the copy fails half way, and is replaced only while both files are
// what they were when the object was made. A link is copied and replaced as the link that it is.
class SingleFileSync {
  public:
    // Looks at both files. `tools` and `shell` must outlive the object.
    SingleFileSync(const Toolbox& tools, ShellWrappers& shell, PerSide<std::string> paths);

    // Nothing where it did not come to that; the user was told why. Throws ErrorException where a file cannot
    // be looked at.
    std::optional<SyncedPair> Replace(Side target);

  private:
    // A file and the folder that holds it, as they were looked at.
    struct Look {
        Error error;  // that the folder could not be looked at
        Sighting object;
        ShellRoot folder;
    };
    Look LookAt(const std::string& path) const;
    void Tell(const std::string& text, MessageIcon icon) const;
    bool HasSpace(Side target) const;
    Currency SpaceNeeded(Side target) const;
    bool AreOneFile(const FileInfo& source, Side target) const;

    const Toolbox& tools_;
    ShellWrappers& shell_;
    PerSide<std::string> paths_;
    PerSide<Look> seen_;
};

}  // namespace vantrel
