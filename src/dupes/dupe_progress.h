#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantrel {

// How far a search or a removal is.
struct DupeFigures {
    std::uint64_t files = 0;  // found so far; in a removal: dealt with
    // Of contents that are to be looked at; a total of 0: none are, or it is not known yet.
    std::uint64_t bytesDone = 0, bytesTotal = 0;
    std::optional<std::int64_t> secondsLeft = std::nullopt;  // once that can be told

    friend bool operator==(const DupeFigures&, const DupeFigures&) = default;
};

// What the window of the duplicate finder shows while it works. Each call must cost next to nothing: what is
// set is painted at the pace of the event loop.
class DupeProgress {
  public:
    virtual ~DupeProgress() = default;
    virtual void SetStatus(std::string_view text) = 0;  // the panel of StatusBar1
    virtual void SetFigures(const DupeFigures& figures) = 0;
    // ProgressBar1, from 0 to `maximum`; 0 hides it.
    virtual void SetBar(std::int64_t value, std::int64_t maximum) = 0;
    // Animation1 runs while folders are listed.
    virtual void SetSearching(bool searching) = 0;
};

}  // namespace vantrel
