#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files/support_files.h"
#include "settings/settings_file.h"

namespace vantrel {

// What is done with sessions (session_file.h) around the settings file of the program. The live options are
// the caller's: he saves them before, and loads them behind.
class Sessions {
  public:
    static constexpr std::size_t kMostRecent = 5;

    Sessions(const FileSystem& files, const ProgramFolders& folders)
        : files_(files),
          settings_(files, folders.appPath + folders.executableName + ".ini"),
          recent_(files, folders.appPath + folders.executableName + "-sessions.ini"),
          previous_(folders.appPath + folders.executableName + "-previous.vts") {}

    // Makes `path` a copy of the settings file; a file that stands there is replaced whole, or left as it
    // was. Nothing is saved that could not be loaded again.
    Error Save(std::string_view path) const;
    // Puts the session `path` in the place of the settings file, which is kept as the previous one. Where
    // anything fails the settings file stands as it was. Errors as of ReadSession.
    Error Load(std::string_view path) const;
    // Keeps a copy of the settings file, once: it takes the place of the one before.
    Error KeepPrevious() const;
    // Where that copy is: a session like any other.
    const std::string& PreviousFile() const { return previous_; }

    // The sessions that were saved or loaded, the last one first. They stand in a file of their own: the
    // settings are exchanged by each of them.
    std::vector<std::string> Recent() const;
    Error AddRecent(const std::string& path) const;

  private:
    Error ReadSettings(std::string& bytes) const;

    const FileSystem& files_;
    SettingsFile settings_;
    SettingsFile recent_;
    std::string previous_;
};

}  // namespace vantrel
