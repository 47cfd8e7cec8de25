#include "platform/files/readers.h"

#include <algorithm>

namespace vantrel {

bool AnyRotates(Volumes& volumes, std::span<const std::string> folders) {
    return std::ranges::any_of(folders,
                               [&](const std::string& folder) { return volumes.IsOnRotatingDisk(folder); });
}

void AddReaders(Workers& workers, Volumes& volumes, std::span<const std::string> folders) {
    const auto isOnServer = [&](const std::string& folder) {
        return volumes.GetDriveKind(volumes.GetDriveName(folder)) == DriveKind::Remote;
    };
    if (std::ranges::any_of(folders, isOnServer))
        workers.Grow(kJobsInWait);
    else if (!AnyRotates(volumes, folders))
        workers.WidenForDisk(kJobsInWait);
}

}  // namespace vantrel
