#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vantrel::testing {

// A folder of the test's own under the system's temporary folder, removed with all it holds at the end. Paths
// end in "/".
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(std::string_view name) const { return path_ + std::string(name); }

    // Writes a file below the folder, making its parents; `unixTime` in seconds (below 0: leave it as it is).
    void Write(std::string_view name, std::string_view content, double unixTime = -1) const;
    void MakeFolder(std::string_view name) const;
    std::string Read(std::string_view name) const;
    bool Exists(std::string_view name) const;

  private:
    std::string path_;
};

}  // namespace vantrel::testing
