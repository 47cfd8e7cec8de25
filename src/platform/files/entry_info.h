#pragma once

#include <cstdint>

#include "platform/files/file_system.h"

namespace vantrel {

// What the system tells of an entry, in the program's terms. For the sources of the file system and of the
// shell service only.

inline constexpr unsigned kSeenMask =
    STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_INO | STATX_BTIME;
inline constexpr unsigned kEntryMask = STATX_MODE | kSeenMask;
inline constexpr unsigned kInfoMask = STATX_BASIC_STATS | STATX_BTIME;

FileId IdOf(const struct statx& found);
Seen SeenOf(const struct statx& found);       // needs kSeenMask
EntryKind KindOf(const struct statx& found);  // of a link: Other
FileTime MadeAt(const struct statx& found);   // needs STATX_BTIME; 0 where the file system does not tell
FileTime TimeOf(const struct statx_timestamp& time);
// `nameStartsWithDot` makes it hidden; `dos` is what ReadDosAttributes gave.
std::uint8_t AttributesOf(const struct statx& found, bool nameStartsWithDot, std::uint8_t dos);

// The errno value says that a link leads nowhere, or round in a ring.
bool LeadsNowhere(int code);

// Of the file system that `fd` is on. Where `fd` is not open for reading, the DOS attributes of a file system
// in user space are not found.
FileSystemTraits FindFileSystemTraits(SystemCalls& calls, int fd);
// kHidden and kSystem of an entry; 0 where they cannot be read. Opens the entry: only for files and folders.
std::uint8_t ReadDosAttributes(SystemCalls& calls, DosAttributeSource source, int folder, const char* name);

}  // namespace vantrel
