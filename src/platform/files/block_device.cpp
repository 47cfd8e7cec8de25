#include "platform/files/block_device.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace vantrel {
namespace {

// Devices that are made of devices that are made of devices.
constexpr int kDeepest = 8;

// A file of the device or, for a partition, of its disk.
std::string Told(const FileSystem& files, const std::string& folder, std::string_view name) {
    for (const std::string_view place : {"/", "/../"}) {
        std::string text;
        if (files.ReadWholeFile(std::string(folder).append(place).append(name), 4'096, text).IsOk())
            return text;
    }
    return {};
}

// What names the maker: the number of virtio, and the words of the makers of machines.
bool IsVirtual(const FileSystem& files, const std::string& folder) {
    constexpr std::string_view kMakers[] = {"0x1af4", "QEMU", "VBOX", "VMware", "Msft"};
    for (const std::string_view name : {"device/vendor", "device/model"}) {
        const std::string told = Told(files, folder, name);
        for (const std::string_view maker : kMakers)
            if (told.starts_with(maker)) return true;
    }
    return false;
}

std::vector<std::string> MadeOf(const FileSystem& files, const std::string& folder) {
    std::vector<std::string> parts;
    OpenFolder open;
    if (!files.Open(folder + "/slaves", open).IsOk()) return parts;
    const Error error = open.ForEach(
        [&](const FolderEntry& entry) {
            parts.push_back(folder + "/slaves/" + std::string(entry.name));
            return true;
        },
        StatPolicy::NonFilesOnly);
    if (!error.IsOk()) parts.clear();
    return parts;
}

bool Rotates(const FileSystem& files, const std::string& folder, int depth) {
    if (!Told(files, folder, "queue/rotational").starts_with('1') || IsVirtual(files, folder)) return false;
    const std::vector<std::string> parts =
        depth < kDeepest ? MadeOf(files, folder) : std::vector<std::string>();
    return parts.empty() || std::ranges::any_of(parts, [&](const std::string& part) {
               return Rotates(files, part, depth + 1);
           });
}

}  // namespace

bool IsRotatingDevice(const FileSystem& files, const std::string& folder) {
    return Rotates(files, folder, 0);
}

bool IsRemovableDevice(const FileSystem& files, const std::string& folder) {
    return Told(files, folder, "removable").starts_with('1');
}

}  // namespace vantrel
