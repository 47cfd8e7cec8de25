#pragma once

#include <string>
#include <string_view>

#include "shell/shell_run.h"

namespace vantrel {

// The value of Path= in an info file: every byte but letters, digits, "-", "_", ".", "~" and "/" as %XX.
std::string EncodeTrashPath(std::string_view bytes);
// The value of DeletionDate=, from a local time: "2026-03-01T09:05:00".
std::string TrashDate(FileTime local);

namespace shell {

// Puts objects into the desktop's trash by freedesktop.org Trash 1.0: the home trash for what lies on its
// file system, otherwise the trash in the top folder of the volume. What cannot go there stays where it is.
class Trash {
  public:
    explicit Trash(ShellRun& run) : run_(run), calls_(run.calls) {}

    ItemOutcome Recycle(const Place& place);

  private:
    // One trash folder, open, with its two sub-folders.
    struct Bin {
        Folder info, files;
        std::string pathStart;  // what recorded paths are relative to, ending in "/"; empty: absolute
    };
    Error RecycleOne(const Place& place);
    Error OpenHomeBin(Bin& bin);
    Error OpenVolumeBin(const std::string& topFolder, Bin& bin);
    Error OpenBin(const Folder& trash, Bin& bin);
    Error OpenOwnFolder(const Place& place, Folder& out);
    Error PutInto(const Bin& bin, const Place& place, const Statx& looked);
    int WriteInfo(const Place& info, const std::string& content);

    ShellRun& run_;
    SystemCalls& calls_;
};

}  // namespace shell
}  // namespace vantrel
