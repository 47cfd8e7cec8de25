#include "platform/files/readers.h"

#include <algorithm>

namespace vantrel {

void AddReaders(Workers& workers, Volumes& volumes, std::span<const std::string> folders) {
    const auto isOnServer = [&](const std::string& folder) {
        return volumes.GetDriveKind(volumes.GetDriveName(folder)) == DriveKind::Remote;
    };
    const auto rotates = [&](const std::string& folder) { return volumes.IsOnRotatingDisk(folder); };
    if (std::ranges::any_of(folders, isOnServer))
        workers.Grow(kJobsInWait);
    else if (std::ranges::none_of(folders, rotates))
        workers.WidenForDisk(kJobsInWait);
}

}  // namespace vantrel
