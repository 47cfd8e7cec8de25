#pragma once

#include <cstdint>

#include "platform/files/file_system.h"

namespace vantrel {

// Bytes of memory that could be taken now without pushing anything out to a disk; 0 where the system does not
// tell.
std::uint64_t AvailableMemory(const FileSystem& files);

// Gives back to the system what was freed. Worth its time before much is allocated that would not fit into
// the gaps.
void ReturnFreedMemory();

// From now on what is large goes back to the system as soon as it is freed, in place of being kept for the
// next that is large. For a program that makes few such things, and ends.
void KeepNoFreedMemory();

}  // namespace vantrel
