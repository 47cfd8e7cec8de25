#pragma once

#include <string>

#include "core/side.h"
#include "settings/options.h"

namespace vantrel {

// What the difference viewer compares and how; one object for the whole run of the program, shared by all
// that open the viewer. The flags stand in the options, where menus and the settings file have them too.
class cViewFileDiffsOptions {
  public:
    // `options` must outlive the object.
    explicit cViewFileDiffsOptions(Options& options) : options_(options) {}

    std::string FileOne, FileTwo;    // full paths
    PerSide<std::string> Encodings;  // one for a side, empty: found by itself

    bool IgnoreWhitespace() const { return options_.viewFileDiffIgnoreWhitespace; }
    bool IgnoreCase() const { return options_.viewFileDiffIgnoreCase; }
    bool ShowOptionsDialog() const { return options_.viewFileDiffPromptForOptions; }
    void SetIgnoreWhitespace(bool on) { options_.viewFileDiffIgnoreWhitespace = on; }
    void SetIgnoreCase(bool on) { options_.viewFileDiffIgnoreCase = on; }
    void SetShowOptionsDialog(bool on) { options_.viewFileDiffPromptForOptions = on; }

  private:
    Options& options_;
};

}  // namespace vantrel
