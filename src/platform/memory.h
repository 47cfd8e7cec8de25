#pragma once

#include <cstdint>

#include "platform/files/file_system.h"

namespace vantrel {

// Bytes of memory that could be taken now without pushing anything out to a disk; 0 where the system does not
// tell.
std::uint64_t AvailableMemory(const FileSystem& files);

}  // namespace vantrel
