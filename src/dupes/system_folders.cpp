#include "dupes/system_folders.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr std::array<std::string_view, 11> kSystemFolders{
    "/usr", "/etc", "/boot", "/bin", "/opt", "/sbin", "/proc", "/sys", "/dev", "/run", "/var/lib"};
// Every folder at the top that begins so: "/lib", "/lib64", "/libx32".
constexpr std::string_view kLibraries = "/lib";

bool IsTrashName(std::string_view name) {
    constexpr std::string_view kTrash = ".Trash";
    if (!name.starts_with(kTrash)) return false;
    name.remove_prefix(kTrash.size());
    if (name.empty()) return true;
    return name.size() > 1 && name[0] == '-' && std::all_of(name.begin() + 1, name.end(), [](char letter) {
               return letter >= '0' && letter <= '9';
           });
}

}  // namespace

bool IsBelowFolder(std::string_view path, std::string_view folder) {
    while (folder.size() > 1 && folder.ends_with('/')) folder.remove_suffix(1);
    if (folder.empty()) return false;
    if (folder == "/") return path.starts_with('/');
    // Folding can change the number of bytes: the parts are compared, not the bytes at a place.
    std::size_t at = 0;
    const auto parts = static_cast<std::size_t>(std::count(folder.begin(), folder.end(), '/'));
    for (std::size_t i = 0; i <= parts && at != std::string_view::npos; ++i)
        at = path.find('/', i == 0 ? 0 : at + 1);
    return EqualIgnoringCase(path.substr(0, at), folder);
}

bool IsInSystemFolder(std::string_view path) {
    if (std::any_of(kSystemFolders.begin(), kSystemFolders.end(),
                    [=](std::string_view folder) { return IsBelowFolder(path, folder); }))
        return true;
    return path.size() >= kLibraries.size() &&
           EqualIgnoringCase(path.substr(0, kLibraries.size()), kLibraries);
}

bool IsInTrash(std::string_view path, std::string_view homeTrash) {
    if (IsBelowFolder(path, homeTrash)) return true;
    while (!path.empty()) {
        const std::size_t end = path.find('/');
        if (IsTrashName(path.substr(0, end))) return true;
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    }
    return false;
}

}  // namespace vantrel
