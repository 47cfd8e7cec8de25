#pragma once

#include <string>

#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/ports.h"

namespace vantrel {

// The folder of this user's settings, $XDG_CONFIG_HOME or ~/.config, without a trailing "/" unless it is "/".
// Empty where there is no home folder either.
std::string UserConfigFolder();

// The per-user settings store: an INI file "<AppName>.conf" in `configFolder` for each application name. It
// has the shape of CIniFile and never stops its caller.
class CRegistry {
  public:
    CRegistry(const FileSystem& files, std::string configFolder, MessagePort& messages)
        : files_(files), messages_(messages), configFolder_(std::move(configFolder)) {}

    const std::string& AppName() const { return appName_; }
    // Once only: a second call shows a message and changes nothing.
    void SetAppName(const std::string& name);
    std::string Section;
    std::string Key;

    // Each shows a message and gives empty text or nothing until name, section and key are set.
    std::string GetStringValue(const std::string& defaultValue);
    void SetStringValue(const std::string& value);  // makes the folder where it is missing
    const Error& LastError() const { return lastError_; }

  private:
    std::string FilePath() const;

    const FileSystem& files_;
    MessagePort& messages_;
    std::string configFolder_;
    std::string appName_;
    Error lastError_;
};

}  // namespace vantrel
