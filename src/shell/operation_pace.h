#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "shell/shell_operations.h"

namespace vantrel {

// How fast an operation goes and how long it will still take, judged by its last seconds.
class OperationPace {
  public:
    // `now` in milliseconds, as Clock gives them.
    void Begin(std::uint32_t now);
    void Note(std::uint32_t now, ShellProgress::Totals done, ShellProgress::Totals totals);

    // "1.5 MB/s, about 2 minutes left"; without bytes, "about 2 minutes left". Empty as long as nothing can
    // be told.
    std::string Describe() const;

  private:
    struct Sample {
        std::uint32_t at = 0;
        double bytes = 0, part = 0;  // done; the part of the whole
    };
    std::deque<Sample> samples_;  // some in each second, of the last ones
    Sample last_;
};

// What of the totals is done, from 0 to 1: the lesser of objects and bytes. Neither one large file nor
// thousands of empty ones shall look like the end.
double PartDone(ShellProgress::Totals done, ShellProgress::Totals totals);

// "a few seconds left", "about 20 seconds left", "about 3 minutes left", "about 1 h 20 min left".
std::string DescribeTimeLeft(double seconds);

}  // namespace vantrel
