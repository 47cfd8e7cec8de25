#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/result_row.h"

namespace vantrel {

// Values of CViewSelections::ViewType. Others can come from a settings file and show as "Error".
inline constexpr std::int32_t kViewAll = 0;
inline constexpr std::int32_t kViewDifferent = 1;
inline constexpr std::int32_t kViewSimilar = 2;
inline constexpr std::int32_t kViewCustom = 3;

// "All", "Different", "Similar", "Custom"; "Error" for any other value.
std::string_view ViewTypeText(std::int32_t viewType);

// Which result types the panes show; one shared object.
class CViewSelections {
  public:
    // One flag for each result type: Flags[0] is Newer, Flags[7] OrphanFolder.
    std::array<bool, kResultTypeCount> Flags{true, true, true, true, true, true, true, true};

    std::int32_t ViewType() const { return viewType_; }
    // Writes the eight flags of the view named; kViewCustom and unknown values leave them as they stand.
    void SetViewType(std::int32_t viewType);

    // The view test: false for None and for any number that is no result type.
    bool Shows(ResultType type) const {
        const auto number = static_cast<std::size_t>(type);
        return number >= 1 && number <= Flags.size() && Flags[number - 1];
    }
    // `type` is one of the eight.
    bool& Flag(ResultType type) { return Flags.at(static_cast<std::size_t>(type) - 1); }

    bool AreCustomSettingsSameAsAllViewType() const;
    bool AreCustomSettingsSameAsDifferencesViewType() const;
    bool AreCustomSettingsSameAsSimilaritiesViewType() const;
    // The named view that has just these flags; kViewCustom where none has.
    std::int32_t ViewTypeOfFlags() const;

  private:
    std::int32_t viewType_ = kViewAll;
};

}  // namespace vantrel
