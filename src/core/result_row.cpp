#include "core/result_row.h"

namespace vantrel {

std::string_view ResultTypeText(ResultType type) {
    static constexpr std::array<std::string_view, kResultTypeCount + 1> kTexts{
        "",       "Newer",           "Older",           "Same",        "Orphan",
        "Binary", "IdenticalFolder", "DifferentFolder", "OrphanFolder"};
    return kTexts[static_cast<std::size_t>(type)];
}

}  // namespace vantrel
