#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "platform/files/volumes.h"

namespace vantrel::testing {

// Drives as a test says them, by the folder they are mounted at. At first there is one, "/".
class FakeVolumes : public Volumes {
  public:
    struct Drive {
        DriveKind kind = DriveKind::Fixed;
        std::string fileSystem = "ext4";
        Currency space = kUnknownSpace;
        bool exists = true;  // false: paths lie on it, and it cannot be found
        bool ready = true;
        bool rotates = false;
    };
    std::map<std::string, Drive, std::less<>> drives = {{"/", {}}};

    std::string GetDriveName(std::string_view path) override {
        for (std::string_view head = path; !head.empty(); head = head.substr(0, head.rfind('/'))) {
            if (drives.contains(head)) return std::string(head);
            if (head.find('/') == std::string_view::npos) break;
        }
        return drives.contains("/") && path.starts_with('/') ? "/" : "";
    }
    bool DriveExists(std::string_view drive) override { return drives.contains(drive) && Of(drive).exists; }
    bool IsReady(std::string_view drive) override { return DriveExists(drive) && Of(drive).ready; }
    std::string GetFileSystemName(std::string_view drive) override {
        return drives.contains(drive) ? Of(drive).fileSystem : std::string();
    }
    DriveKind GetDriveKind(std::string_view drive) override {
        return drives.contains(drive) ? Of(drive).kind : DriveKind::Unknown;
    }
    Currency GetAvailableDriveSpace(std::string_view drive) override {
        return drives.contains(drive) ? Of(drive).space : kUnknownSpace;
    }
    bool OnSameDrive(std::string_view a, std::string_view b) override {
        return GetDriveName(a) == GetDriveName(b);
    }
    bool IsOnRotatingDisk(std::string_view path) override {
        const auto drive = drives.find(GetDriveName(path));
        return drive != drives.end() && drive->second.rotates;
    }

  private:
    const Drive& Of(std::string_view drive) const { return drives.find(drive)->second; }
};

}  // namespace vantrel::testing
