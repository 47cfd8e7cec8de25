#include "core/comparison_results.h"

#include "platform/line_end.h"
#include "platform/names/paths.h"

namespace vantrel {

std::string DescribeNesting(const ComparisonResults& results) {
    const bool left = *results.inner == Side::Left;
    std::string text = left ? "The left folder lies inside the right folder:"
                            : "The right folder lies inside the left folder:";
    text.append(kLineEnd).append(kLineEnd);
    text.append(WithoutTrailingSlash(results.folders[*results.inner])).append(kLineEnd).append(kLineEnd);
    return text.append("What it holds is a part of both: whatever is done to it there is done here.");
}

}  // namespace vantrel
