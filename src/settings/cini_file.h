#pragma once

#include <cstdint>
#include <string>

#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/ports.h"

namespace vantrel {

// One value at a time of an INI file in the program folder: set a name once, a section and a key, then get or
// set. For many values at once see SettingsFile. It never stops its caller: a file that cannot be read gives
// defaults.
class CIniFile {
  public:
    CIniFile(const FileSystem& files, const ProgramFolders& folders, MessagePort& messages)
        : files_(files), messages_(messages), folder_(folders.appPath) {}

    const std::string& Name() const { return name_; }
    // The file's name without a folder. Once only: a second call shows a message and changes nothing.
    void SetName(const std::string& name);
    std::string Section;
    std::string Key;

    // Each shows a message and gives 0, empty text or nothing until name, section and key are set.

    // The whole number that the value begins with, 0 where it begins with none, and the default where it is
    // missing or empty. What 16 bits cannot hold becomes the nearest end.
    std::int16_t GetIntegerValue(std::int16_t defaultValue);
    // At most 255 characters. A value of one character cannot be read and gives the default.
    std::string GetStringValue(const std::string& defaultValue);
    void SetStringValue(const std::string& value);
    // How the last get or set went on disk.
    const Error& LastError() const { return lastError_; }

  private:
    std::string FullPath() const { return folder_ + name_; }

    const FileSystem& files_;
    MessagePort& messages_;
    std::string folder_;
    std::string name_;
    Error lastError_;
};

}  // namespace vantrel
