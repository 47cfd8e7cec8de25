#pragma once

#include <string>

#include "platform/files/file_system.h"

namespace vantrel {

// Where the program and its files are. Both end in "/".
struct ProgramFolders {
    // What the program writes: settings, logs, history. The folder of the executable while that can be
    // written to, otherwise the user's data folder for the program (XDG Base Directory:
    // $XDG_DATA_HOME/vantrel).
    std::string appPath;
    // The folder of the executable, where the support files stand.
    std::string executableFolder;
    // Current directory at start.
    std::string startDir;
    // Base name of the executable, without a folder; the settings file is this name and ".ini".
    std::string executableName;

    // Full path of a support file: in appPath where it exists there, otherwise beside the executable or in
    // the place where the package put it. The path of appPath when there is none, so that the error names a
    // sensible place.
    std::string SupportFile(const FileSystem& files, const std::string& name) const;
};

// Whether the folder that the program writes to is made where it is missing.
enum class MissingFolder : bool { Left, Created };

// Looks at this process. Creates the user's data folder when that is the one to write to. With `appPath`,
// that folder is the one, and nothing is created.
ProgramFolders FindProgramFolders(const FileSystem& files, const std::string& appPath = {},
                                  MissingFolder missing = MissingFolder::Created);

}  // namespace vantrel
