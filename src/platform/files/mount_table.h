#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/file_system.h"
#include "platform/files/volumes.h"

namespace vantrel {

struct Mount {
    std::uint64_t id = 0;
    std::string device;  // "major:minor" of the file system, equal for all of its mounts
    std::string root;    // the folder of the file system that is seen there, as in "/" or "/home/user"
    std::string point;   // full path in the engine's form
    std::string type;    // as in "ext4" or "fuse.sshfs"
    std::string source;  // as in "/dev/sda1", in the system's bytes
};

// The lines of /proc/self/mountinfo, in their order. A line that cannot be read is passed over.
std::vector<Mount> ParseMountTable(std::string_view text);
// The mounts of this process; none where the table cannot be read.
std::vector<Mount> ReadMounts(const FileSystem& files);
// The mount whose point is `drive`; of several on top of each other the last, which is the one seen.
const Mount* FindMountAt(const std::vector<Mount>& mounts, std::string_view drive);

// What the type of a file system tells of its drive; Fixed where only the device could tell more.
DriveKind KindOfFileSystemType(std::string_view type);

// The value of a property in the text of a udev record, as "ID_FS_TYPE"; empty where it has none.
std::string_view UdevProperty(std::string_view record, std::string_view key);

// The name that the user reads for a file system, as in "FAT32". `version` is udev's, as in "FAT16", and may
// be empty.
std::string FileSystemNameOf(std::string_view type, std::string_view version);

}  // namespace vantrel
