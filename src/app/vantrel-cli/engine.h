#pragma once

#include <string>

#include "console_ports.h"
#include "core/toolbox.h"

namespace vantrel::cli {

// A folder of this process's own for the logs of one run, gone with all it holds at the end.
class PrivateFolder {
  public:
    // Empty path where none could be made.
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    const std::string& Path() const { return path_; }  // ends in "/"

  private:
    std::string path_;
};

// The engine with the console in place of windows.
class Engine {
  public:
    // `programFolder`, in the engine's form, is where logs and history go; empty: the program's own.
    explicit Engine(const std::string& programFolder);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    const Toolbox& Tools() const { return tools_.Get(); }
    ConsoleMessages& Messages() { return messages_; }
    ConsoleProgress& Progress() { return progress_; }

    // The folder that an operand means, as a full path in the engine's form. Empty text stays empty.
    std::string FullPath(std::string_view operand) const;

  private:
    FileSystem files_;
    SystemVolumes volumes_;
    SystemClock clock_;
    LocaleFormats locale_;
    ProgramFolders folders_;
    ConsoleProgress progress_;
    ConsoleMessages messages_;
    ConsoleLoop loop_;
    OwnedToolbox tools_;
};

}  // namespace vantrel::cli
