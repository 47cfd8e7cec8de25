#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/files/seen.h"

namespace vantrel {

// What stood under a name when it was looked at, to be held against what stands there later.
struct Sighting {
    enum class State : std::uint8_t {
        NotKnown,  // nobody looked: whatever stands there will do
        Absent,    // nothing bore the name
        Present,
    };
    enum class Kind : std::uint8_t { File, Folder, Link, Special };

    State state = State::NotKnown;
    // The rest is of the entry itself, never of what a link leads to, and only where it is Present.
    Kind kind = Kind::File;
    Seen seen;

    static Sighting Nothing() {
        Sighting sighting;
        sighting.state = State::Absent;
        return sighting;
    }
};

// The fields of a statx call that SightingOf reads.
inline constexpr unsigned kSightingMask =
    STATX_TYPE | STATX_INO | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_BTIME;

// Of an entry that was looked at without following a link.
Sighting SightingOf(const struct statx& found);
// Of an entry of a listing. What could not be looked at is NotKnown.
Sighting SightingOf(const FolderEntry& entry);

// Which parts of what was seen need not hold any more, for a reason that is known.
struct SightingTolerance {
    bool changed = false;  // this program has itself taken or given the file another name
    bool inode = false;    // the file system gives other numbers at other times
};
// Whether `now`, null for nothing, is still what was seen; always true of NotKnown. Of a folder kind and
// identity count (its number, and when it was made), for its size and times follow what is done in it.
bool IsStill(const Sighting& sighting, const struct statx* now, SightingTolerance tolerance = {});

// The number of the error that tells that an object is not what was seen. It is one of the program's own.
inline constexpr ErrorNumber kChangedSinceSeen{0x80040001};
Error ChangedSinceSeen(const std::string& path);

}  // namespace vantrel
