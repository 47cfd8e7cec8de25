#pragma once

#include <string>

#include "core/toolbox.h"
#include "settings/settings_file.h"

namespace vantrel {

// Hints that a user sees once. That one was shown is kept in the section "Notices" of the settings file;
// where it cannot be kept, the hint comes once in each run of the program.
class Notices {
  public:
    Notices(const Toolbox& tools, const SettingsFile& file) : tools_(tools), file_(file) {}

    // Before a folder is opened in the file manager.
    void ShowExplorerNotice();
    // Before a pane is limited to its selected objects.
    void ShowSelectedNotice();

  private:
    void ShowOnce(bool& shown, const char* key, const std::string& title, const std::string& text);

    Toolbox tools_;
    const SettingsFile& file_;
    bool explorerShown_ = false;
    bool selectedShown_ = false;
};

}  // namespace vantrel
