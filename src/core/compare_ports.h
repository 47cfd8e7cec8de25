#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/side.h"

namespace vantrel {

// What frmCompareProgress shows. Setting a value costs nothing: it is painted at the pace of the event loop.
class CompareProgress {
  public:
    virtual ~CompareProgress() = default;
    virtual void Show() = 0;
    virtual void SetMessage(std::string_view text) = 0;   // lblMessage
    virtual void SetFileName(std::string_view text) = 0;  // lblFileName; a name or path in the engine's form
    // The minimum is 0. A maximum of 0 says that the end is not known: a busy bar, whose value only counts.
    virtual void SetBarRange(std::int64_t maximum) = 0;
    virtual void SetBarValue(std::int64_t value) = 0;
    virtual void SetAnimation(
        std::string_view supportFile) = 0;  // "scanfiles.avi"; a missing file leaves the place empty
    // Lets events through until the window has been painted (Timer1).
    virtual void WaitUntilPainted() = 0;
    virtual void Unload() = 0;
};

// The window, or the console, that a comparison serves.
class ComparisonHost {
  public:
    virtual ~ComparisonHost() = default;
    virtual std::string PathText(
        Side side) const = 0;  // of cboSourcePath and cboTargetPath, as PathFromUser gives it
    virtual void SetPathText(Side side, const std::string& path) = 0;

    virtual bool MenusEnabled() const = 0;  // whether mnuFile is enabled
    virtual void SetMenusEnabled(bool enabled) = 0;
    virtual void SetBusyPointer(bool busy) = 0;
    virtual void SetFilterPanel(std::string_view text) = 0;  // third panel of the status bar
    virtual void RaiseMainWindow() = 0;                      // to the top, unless it is minimised

    virtual void ApplyViewTypes() = 0;
    virtual void RemoveListItemsAndShowNoCompareMsg() = 0;
    virtual void AddPathsToIni(const std::string& left, const std::string& right) = 0;

    virtual void PlayCompareCompleteSound() = 0;  // asks SoundOn itself
    virtual void ShowCompareResults() = 0;        // the summary, when ShowGraphAfterCompare is on
    virtual void ShowErrorLog() = 0;
};

}  // namespace vantrel
