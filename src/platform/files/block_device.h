#pragma once

#include <string>

#include "platform/files/file_system.h"

namespace vantrel {

// Whether the disk that the kernel tells of in `folder`, such as "/sys/dev/block/8:1", has to move to another
// place for other bytes. Of a device that is made of others (encryption, logical volumes, RAID) each of these
// is asked. A virtual disk calls itself rotating whatever it lies on, so it is not believed: its host puts
// what it is asked for in order. False also where nothing can be told.
bool IsRotatingDevice(const FileSystem& files, const std::string& folder);

// Whether its medium, or the device itself, can be taken out, as far as the kernel tells in such a folder.
bool IsRemovableDevice(const FileSystem& files, const std::string& folder);

}  // namespace vantrel
