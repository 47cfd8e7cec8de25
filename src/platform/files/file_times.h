#pragma once

#include <ctime>
#include <string_view>

#include "platform/files/file_system.h"
#include "platform/files/sighting.h"

namespace vantrel {

// The times of a file as the system holds them: to the nanosecond, where a FileTime has a hundred of them.
struct ExactTimes {
    timespec accessed{}, lastWrite{};
    FileTime created;  // UTC; 0 ticks where the file system has none
};

FileTime FileTimeOf(const timespec& time);
timespec TimespecOf(FileTime utc);

// Of the regular file `path`, or of the one that a link there leads to.
Error ReadExactTimes(const FileSystem& files, std::string_view path, ExactTimes& out);

struct TimesToSet {
    const timespec* accessed = nullptr;  // null: it stays
    const timespec* lastWrite = nullptr;
};
// Sets times of the regular file `path`, which is held open from the last look at it. `seen` is what stood
// there when the user saw it: a link, and a file that is another one by now, is left alone and is an error.
// Its size and times may have changed since. A time that the file system cannot hold to within two seconds is
// an error too.
Error SetExactTimes(const FileSystem& files, std::string_view path, const Sighting& seen, TimesToSet times);

}  // namespace vantrel
