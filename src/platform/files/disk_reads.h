#pragma once

#include <cstdint>

namespace vantrel {

// Bytes that disks have read for the calling thread so far, as against those that were in memory already. 0
// where the system does not tell.
std::uint64_t BytesReadFromDisk();

}  // namespace vantrel
