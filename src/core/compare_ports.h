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

// What a window shows of a running comparison beside the progress window. A run without a window has none.
class ComparisonDisplay {
  public:
    virtual ~ComparisonDisplay() = default;
    // The paths are good, and the scans begin: from now on the user waits.
    virtual void BeginScan() = 0;
    // The path box of the side shows the path in its normal form.
    virtual void SetPathText(Side side, const std::string& path) = 0;
    virtual void SetFilterPanel(std::string_view text) = 0;  // third panel of the status bar
};

}  // namespace vantrel
