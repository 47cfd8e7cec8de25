#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/support_files.h"
#include "settings/settings_file.h"

namespace vantrel {

// The only line of a path box without a history.
inline constexpr std::string_view kNoFolderPrompt = "Press the folder icon with three dots -->";

// The folders compared most recently, in the settings file: the sections "Source" and "Target" with twenty
// keys each, and in "Extras" the pairs of them. Paths end in "/". Unlike options they are read whole, as a
// path may be "/" or longer than 255 characters.
class PathHistory {
  public:
    static constexpr std::size_t kMostEntries = 20;

    PathHistory(const FileSystem& files, const ProgramFolders& folders)
        : file_(files, folders.appPath + folders.executableName + ".ini") {}

    // Left and right, most recent first.
    using Lists = std::array<std::vector<std::string>, 2>;

    // The lines for both path boxes, the first of each to be selected: the stored folders, or the prompt
    // where there are none. Where the file cannot be read there are none, and the error says so.
    Error PopulateDirComboBoxesFromIniFile(Lists& out) const;
    // Puts both paths at the head of their lists, each of which holds a path once, whatever its letter case,
    // and gives the new lines for the boxes. On an error these hold the new paths all the same.
    Error AddPathsToIni(std::string_view leftPath, std::string_view rightPath, Lists& out) const;
    // The folder with which `path` was compared last, as the one of that side (0: left, 1: right). Known of
    // the pairs compared most recently, as many as a list has entries; nothing of others, and where the file
    // cannot be read.
    std::optional<std::string> PartnerOf(std::size_t side, std::string_view path) const;
    // Writes both lists as they are, up to the twentieth line each. A pair with a folder that stands in no
    // list any more is forgotten.
    Error SaveFolderLists(const Lists& lists) const;

  private:
    SettingsFile file_;
};

}  // namespace vantrel
