#pragma once

#include <string>
#include <string_view>

#include "platform/currency.h"
#include "platform/files/file_system.h"

namespace vantrel {

enum class DriveKind { Unknown = 0, Removable = 1, Fixed = 2, Remote = 3, CdRom = 4, RamDisk = 5 };

// What holds a path: its mount. Virtual, so that tests can have the drives they need.
class Volumes {
  public:
    // Returned by GetAvailableDriveSpace when the space cannot be told: no operation is stopped by an unknown
    // drive.
    static constexpr Currency kUnknownSpace = Currency::FromWhole(922'337'203'685'477);

    virtual ~Volumes() = default;
    // The mount point that holds `path` (or, where `path` does not exist, its nearest existing ancestor),
    // without a trailing "/" unless it is "/". Empty where it cannot be told.
    virtual std::string GetDriveName(std::string_view path) = 0;
    virtual bool DriveExists(std::string_view drive) = 0;
    virtual bool IsReady(std::string_view drive) = 0;
    // "FAT", "FAT32", "NTFS", or the system's own name ("ext4"); empty where it cannot be told.
    virtual std::string GetFileSystemName(std::string_view drive) = 0;
    virtual DriveKind GetDriveKind(std::string_view drive) = 0;
    // Free bytes that this user may fill.
    virtual Currency GetAvailableDriveSpace(std::string_view drive) = 0;
    // Whether two paths lie on one file system, also under two mount points of it.
    virtual bool OnSameDrive(std::string_view a, std::string_view b) = 0;
    // Whether the bytes of `path` come from a disk that has to move to another place for them. Where that
    // cannot be told they do not.
    virtual bool IsOnRotatingDisk(std::string_view path) = 0;
};

// The mounts of this machine. Reads the mount table when asked, not before. Where it does not name the mount
// of a path, the uppermost folder of the path's file system is its drive.
class SystemVolumes : public Volumes {
  public:
    explicit SystemVolumes(const FileSystem& files) : files_(files) {}
    std::string GetDriveName(std::string_view path) override;
    bool DriveExists(std::string_view drive) override;
    bool IsReady(std::string_view drive) override;
    std::string GetFileSystemName(std::string_view drive) override;
    DriveKind GetDriveKind(std::string_view drive) override;
    Currency GetAvailableDriveSpace(std::string_view drive) override;
    bool OnSameDrive(std::string_view a, std::string_view b) override;
    bool IsOnRotatingDisk(std::string_view path) override;

  private:
    const FileSystem& files_;
};

}  // namespace vantrel
