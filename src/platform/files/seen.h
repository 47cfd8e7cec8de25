#pragma once

#include <compare>
#include <cstdint>

#include "platform/locale/file_time.h"

namespace vantrel {

// Which file an entry is, whatever its name: device and inode.
struct FileId {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    friend constexpr auto operator<=>(const FileId&, const FileId&) = default;
};

// An entry as it was when it was looked at, to be held against a later look: when all is equal, it is the
// same object and nothing was done to it meanwhile. It tells of the entry itself: of a symbolic link, not of
// what that leads to.
struct Seen {
    FileId id;
    std::uint64_t size = 0;  // bytes
    FileTime lastWrite;      // UTC, as the next
    // Of the last change to the entry, contents or not (ctime). Of a folder, which changes with all that is
    // done in it: when it was made, or 0 where the file system does not tell or does not keep to it. Its
    // number alone is no proof, for many file systems give the number of what was removed to the next that is
    // made.
    FileTime changed;
    friend constexpr bool operator==(const Seen&, const Seen&) = default;
};

// Of two times at which a folder was made, whether they may be of one folder.
constexpr bool MadeAlike(FileTime one, FileTime other) {
    return one == other || one == FileTime() || other == FileTime();
}

}  // namespace vantrel
