#pragma once

#include <span>
#include <string>

#include "platform/files/volumes.h"
#include "platform/workers.h"

namespace vantrel {

// Whether any of the folders lies on a disk that rotates.
bool AnyRotates(Volumes& volumes, std::span<const std::string> folders);

// Gives `workers` more threads where what they read is waited for: at a server at once, and with disks as
// long as these are read from, unless one of them rotates. For folders that have answered, where the user has
// not said how many threads there are to be.
void AddReaders(Workers& workers, Volumes& volumes, std::span<const std::string> folders);

}  // namespace vantrel
