#include "console_host.h"

#include <cstdio>

#include "display_width.h"

namespace vantrel::cli {

void ConsoleHost::RemoveListItemsAndShowNoCompareMsg() {
    for (const Side side : kBothSides) results_.hold[side].SetToSentinel();
}

void ConsoleHost::ShowErrorLog() {
    constexpr std::size_t kMostShown = std::size_t{64} << 20;
    std::string log;
    if (tools_.files.ReadWholeFile(tools_.log.Path(), kMostShown, log).IsOk())
        std::fprintf(stderr, "%s\n", DisplayLines(log).c_str());
}

}  // namespace vantrel::cli
