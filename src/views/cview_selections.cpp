#include "views/cview_selections.h"

namespace vantrel {
namespace {

using FlagSet = std::array<bool, kResultTypeCount>;

// The views with a name, at the index of their number. The third and the sixth flag are the identical ones.
constexpr std::array<FlagSet, 3> kNamedViews{{
    {true, true, true, true, true, true, true, true},
    {true, true, false, true, true, false, true, true},
    {false, false, true, false, false, true, false, false},
}};

constexpr std::array<std::string_view, 4> kViewTexts{"All", "Different", "Similar", "Custom"};

bool IsNamed(std::int32_t viewType) {
    return viewType >= kViewAll && viewType <= kViewSimilar;
}

}  // namespace

std::string_view ViewTypeText(std::int32_t viewType) {
    return viewType >= kViewAll && viewType <= kViewCustom ? kViewTexts[static_cast<std::size_t>(viewType)]
                                                           : "Error";
}

void CViewSelections::SetViewType(std::int32_t viewType) {
    viewType_ = viewType;
    if (IsNamed(viewType)) Flags = kNamedViews[static_cast<std::size_t>(viewType)];
}

bool CViewSelections::AreCustomSettingsSameAsAllViewType() const {
    return Flags == kNamedViews[kViewAll];
}

bool CViewSelections::AreCustomSettingsSameAsDifferencesViewType() const {
    return Flags == kNamedViews[kViewDifferent];
}

bool CViewSelections::AreCustomSettingsSameAsSimilaritiesViewType() const {
    return Flags == kNamedViews[kViewSimilar];
}

std::int32_t CViewSelections::ViewTypeOfFlags() const {
    if (AreCustomSettingsSameAsAllViewType()) return kViewAll;
    if (AreCustomSettingsSameAsDifferencesViewType()) return kViewDifferent;
    if (AreCustomSettingsSameAsSimilaritiesViewType()) return kViewSimilar;
    return kViewCustom;
}

}  // namespace vantrel
