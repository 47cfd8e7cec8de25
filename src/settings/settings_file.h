#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/files/file_system.h"
#include "settings/ini_document.h"

namespace vantrel {

// One settings file on disk. After a kill or a failure the old file stands whole, or the new one.
class SettingsFile {
  public:
    // A larger file is no settings file: it is neither read nor written.
    static constexpr std::size_t kMostBytes = std::size_t{16} << 20;

    SettingsFile(const FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}

    const std::string& Path() const { return path_; }
    bool Exists() const { return files_.Exists(path_); }
    // A missing file is an empty document and no error.
    Error Read(IniDocument& out) const;

    // Reads the file anew, so that what another program changed meanwhile is not lost, asks `plan` for the
    // changes to it, and replaces the file once if they change anything. A file without write permission is
    // left alone, which is an error.
    using Plan = std::function<std::vector<IniChange>(const IniDocument&)>;
    Error Update(const Plan& plan) const;

    // A missing file is no error.
    Error Delete() const;

  private:
    const FileSystem& files_;
    std::string path_;
};

}  // namespace vantrel
