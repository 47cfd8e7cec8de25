#include "dupes/box_lines.h"

#include "platform/line_end.h"

namespace vantrel {

std::string BoxLines(const std::vector<std::string>& lines) {
    std::string text;
    for (std::size_t i = 0; i < lines.size() && i < kMostBoxLines; ++i)
        text.append(kLineEnd).append(lines[i]);
    if (lines.size() > kMostBoxLines)
        text.append(kLineEnd).append("... and " + std::to_string(lines.size() - kMostBoxLines) + " more");
    return text;
}

}  // namespace vantrel
