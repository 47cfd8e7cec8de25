#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/files/file_system.h"

namespace vantrel {

enum class SameContents : std::uint8_t {
    Same,
    Different,
    FirstUnreadable,   // or it is not what was seen
    SecondUnreadable,  // or it is the first file by another name
};

// Compares two files byte by byte in the one thread. The first must be what was seen. `check` is called for
// each block, and what it throws comes out.
SameContents CompareContents(const FileSystem& files, const std::string& first, const Seen& seen,
                             const std::string& second, const std::function<void()>& check);

}  // namespace vantrel
