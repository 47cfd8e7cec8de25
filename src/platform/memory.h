#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/files/file_system.h"

namespace vantrel {

// Bytes of memory that could be taken now without pushing anything out to a disk; 0 where the system does not
// tell.
std::uint64_t AvailableMemory(const FileSystem& files);

// Asks for pages of 2 MiB for memory that is about to be filled for the first time: the system hands out and
// clears one of these many times faster than small ones. For blocks of several MiB; others are left alone.
void AskForLargePages(void* begin, std::size_t bytes);

// Gives back to the system what was freed. Worth its time before much is allocated that would not fit into
// the gaps.
void ReturnFreedMemory();

}  // namespace vantrel
