#include "views/forms/result_icons.h"

#include <array>

namespace vantrel {

std::string_view ViewToggleTip(ResultType type) {
    static constexpr std::array<std::string_view, kResultTypeCount + 1> kTips{
        "",
        "View/Hide the files which are Newer",
        "View/Hide the files which are Older",
        "View/Hide the files which are Identical",
        "View/Hide the Orphan files",
        "View/Hide the files whose contents differ but have the same date/time",
        "View/Hide the sub-folders which are Identical",
        "View/Hide the sub-folders which differ",
        "View/Hide the Orphan sub-folders",
    };
    return kTips.at(static_cast<std::size_t>(type));
}

}  // namespace vantrel
