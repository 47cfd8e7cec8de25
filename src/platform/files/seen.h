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
    FileTime changed;        // of the last change to the entry, contents or not (ctime)
    friend constexpr bool operator==(const Seen&, const Seen&) = default;
};

}  // namespace vantrel
