#include "platform/files/short_names.h"

#include <fcntl.h>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>

#include "platform/files/descriptor.h"
#include "platform/files/located_path.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

std::string NameIn(const __fat_dirent& entry) {
    const std::size_t length = entry.d_reclen < sizeof entry.d_name ? entry.d_reclen : sizeof entry.d_name;
    const std::string_view name(entry.d_name, length);
    return NameFromSystem(name.substr(0, name.find('\0')));
}

}  // namespace

Error ReadShortNames(const FileSystem& files, std::string_view folder,
                     std::unordered_map<std::string, std::string>& shortNames) {
    shortNames.clear();
    SystemCalls& calls = files.Calls();
    const LocatedPath at(calls, folder);
    int result = at.Failure();
    if (result == 0) result = calls.OpenAt(at.Folder(), at.Rest(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (result < 0) return Error::FromErrnoOfFolder(-result, folder);
    const Descriptor opened(calls, result);
    // Each request gives the next entry: the short name first, then the long one, empty where they are one.
    std::array<__fat_dirent, 2> entry{};
    while ((result = calls.Ioctl(opened.Get(), VFAT_IOCTL_READDIR_BOTH, entry.data())) >= 0) {
        if (entry[0].d_reclen == 0) return {};
        std::string shortName = NameIn(entry[0]), longName = NameIn(entry[1]);
        if (!longName.empty()) shortNames.emplace(std::move(longName), std::move(shortName));
        entry = {};
    }
    const bool isOther = result == -ENOTTY || result == -EINVAL || result == -ENOSYS || result == -EOPNOTSUPP;
    return isOther && shortNames.empty() ? Error() : Error::FromErrnoOfFolder(-result, folder);
}

}  // namespace vantrel
