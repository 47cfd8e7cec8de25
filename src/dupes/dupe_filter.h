#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dupes/cls_dupe_settings.h"

namespace vantrel {

// Patterns of file names, letter case ignored: "*" is any run of characters, "?" is one. "*.*" is every name,
// as it is for files elsewhere; nothing else has a meaning of its own.
class NamePatterns {
  public:
    explicit NamePatterns(const std::vector<std::string>& patterns);
    bool IsEmpty() const { return patterns_.empty(); }
    bool Match(std::string_view name) const;

  private:
    std::vector<std::string> patterns_;  // folded
};

// What a search leaves out. A function over values: any thread may ask.
class DupeFilter {
  public:
    struct Places {
        std::string dupesFolder, homeTrash;
    };
    DupeFilter(const DupeSearchOrder& order, Places places);

    // All that lies in the folder, which ends in "/", and below it.
    bool LeavesOutFolder(std::string_view path) const;
    // A folder or file with these attributes: where hidden ones are left out, so is all that is in them.
    bool LeavesOutAttributes(std::uint8_t attributes) const { return (attributes & forbidden_) != 0; }
    // A file of a folder that is not left out.
    bool LeavesOutFile(std::string_view name, std::uint64_t size) const {
        return (zeroBytes_ && size == 0) || patterns_.Match(name);
    }

  private:
    NamePatterns patterns_;
    Places places_;
    std::uint8_t forbidden_ = 0;
    bool zeroBytes_, systemFolders_;
};

}  // namespace vantrel
