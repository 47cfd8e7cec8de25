#include "platform/files/support_files.h"

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr const char* kProgram = "vantrel";

// Both without "/" at the end.
std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

std::string FromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    // The standard says that a relative path in these is to be ignored.
    return value != nullptr && value[0] == '/' ? NameFromSystem(value) : std::string();
}

std::string HomeFolder() {
    std::string home = FromEnvironment("HOME");
    if (home.empty()) {
        const passwd* user = getpwuid(geteuid());
        if (user != nullptr && user->pw_dir != nullptr) home = NameFromSystem(user->pw_dir);
    }
    while (home.ends_with('/')) home.pop_back();
    return home;
}

std::string UserDataFolder() {
    std::string data = FromEnvironment("XDG_DATA_HOME");
    while (data.ends_with('/')) data.pop_back();
    if (data.empty()) data = HomeFolder() + "/.local/share";
    return data + "/" + kProgram;
}

// A failure shows itself when something is written there, with the path in its text.
void CreateWithParents(const FileSystem& files, const std::string& folder) {
    for (std::size_t slash = folder.find('/', 1); slash != std::string::npos;
         slash = folder.find('/', slash + 1)) {
        const std::string part = folder.substr(0, slash);
        if (!files.FolderExists(part) && !files.CreateFolder(part).IsOk()) return;
    }
    if (!files.FolderExists(folder)) (void)files.CreateFolder(folder).IsOk();
}

}  // namespace

std::string ProgramFolders::SupportFile(const FileSystem& files, const std::string& name) const {
    const std::string installed = executableFolder + "../share/" + kProgram + "/";
    for (const std::string& folder : {appPath, executableFolder, installed})
        if (files.FileExists(folder + name)) return folder + name;
    return appPath + name;
}

ProgramFolders FindProgramFolders(const FileSystem& files, const std::string& appPath,
                                  MissingFolder missing) {
    ProgramFolders folders;
    char path[PATH_MAX];
    const ssize_t size = files.Calls().ReadlinkAt(AT_FDCWD, "/proc/self/exe", path, sizeof path);
    const std::string executable =
        size > 0 ? NameFromSystem({path, static_cast<std::size_t>(size)}) : "/" + std::string(kProgram);
    folders.executableName = executable.substr(executable.rfind('/') + 1);
    folders.executableFolder = FolderOf(executable) + "/";
    if (getcwd(path, sizeof path) != nullptr) folders.startDir = NameFromSystem(path);
    if (!folders.startDir.ends_with('/')) folders.startDir += '/';

    if (!appPath.empty()) {
        folders.appPath = NormalizePath(appPath);
    } else if (files.Calls().Access(NameToSystem(folders.executableFolder).c_str(), W_OK) == 0) {
        folders.appPath = folders.executableFolder;
    } else {
        const std::string data = UserDataFolder();
        if (missing == MissingFolder::Created) CreateWithParents(files, data);
        folders.appPath = data + "/";
    }
    return folders;
}

}  // namespace vantrel
