#pragma once

#include <string>
#include <string_view>

#include "core/compare_ports.h"

namespace vantrel {

// Where the percentage of a long reading goes. It is called at most once for each new value.
class ContentProgress {
  public:
    virtual ~ContentProgress() = default;
    // `percentage` is 0 to 100; `shown` is the name of the file, in the engine's form.
    virtual void SetPercentage(int percentage, std::string_view shown) = 0;
    // Whether the last piece of a file counts as well. The line of text in the progress window goes without.
    virtual bool ShowsLastPiece() const { return true; }
};

// lblFileName of the progress window: "37% - name". A bar of another window is a sink of that window.
class FileNameProgress : public ContentProgress {
  public:
    explicit FileNameProgress(CompareProgress& progress) : progress_(progress) {}
    void SetPercentage(int percentage, std::string_view shown) override {
        std::string text = std::to_string(percentage);
        progress_.SetFileName(text.append("% - ").append(shown));
    }
    bool ShowsLastPiece() const override { return false; }

  private:
    CompareProgress& progress_;
};

}  // namespace vantrel
