#include "dupes/protected_folders.h"

#include <algorithm>
#include <vector>

namespace vantrel {

bool IsProtectedFolder(const clsDupeSettings& settings, const std::string& folder) {
    const std::vector<std::string> all = settings.ProtectedFolders();
    return std::find(all.begin(), all.end(), folder) != all.end();
}

void SetProtectedFolder(clsDupeSettings& settings, const std::string& folder, bool on) {
    std::vector<std::string> all = settings.ProtectedFolders();
    std::erase(all, folder);
    if (on) all.push_back(folder);
    settings.SetProtectedFolders(all);
}

void RemoveSearchFolder(clsDupeSettings& settings, std::size_t number) {
    std::vector<std::string> folders = settings.FolderPaths();
    if (number >= folders.size()) return;
    SetProtectedFolder(settings, folders[number], false);
    folders.erase(folders.begin() + static_cast<std::ptrdiff_t>(number));
    settings.SetFolderPaths(folders);
}

void MoveProtection(clsDupeSettings& settings, const std::string& from, const std::string& to) {
    if (!IsProtectedFolder(settings, from)) return;
    SetProtectedFolder(settings, from, false);
    SetProtectedFolder(settings, to, true);
}

}  // namespace vantrel
