#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/result_row.h"

namespace vantrel {

struct Options;

// Values of CViewSelections::ViewType. Any other shows as "Error".
inline constexpr std::int32_t kViewAll = 0;
inline constexpr std::int32_t kViewDifferent = 1;
inline constexpr std::int32_t kViewSimilar = 2;
inline constexpr std::int32_t kViewCustom = 3;

// "All", "Different", "Similar", "Custom"; "Error" for any other value.
std::string_view ViewTypeText(std::int32_t viewType);

// Which result types the panes show; one shared object. The flags and the checked item of the View menu stand
// in the options; of its own it has only the view that the panes are in.
class CViewSelections {
  public:
    // `options` must outlive the object.
    explicit CViewSelections(Options& options);

    std::int32_t ViewType() const { return viewType_; }
    // Writes the eight flags of the view named; kViewCustom and unknown values leave them as they stand.
    void SetViewType(std::int32_t viewType);
    // The view is that of the checked item, and the flags are left as they stand: for options just loaded.
    void TakeCheckedItem();

    // The item of the View menu that is checked. It is Custom, without another view, after a click on that
    // one.
    std::int32_t CheckedItem() const;
    void SetCheckedItem(std::int32_t viewType);

    // The view test: false for None and for any number that is no result type.
    bool Shows(ResultType type) const {
        const auto number = static_cast<std::size_t>(type);
        return number >= 1 && number <= flags_.size() && *flags_[number - 1];
    }
    // `type` is one of the eight.
    bool& Flag(ResultType type) { return *flags_.at(static_cast<std::size_t>(type) - 1); }

    bool AreCustomSettingsSameAsAllViewType() const { return AreFlagsOf(kViewAll); }
    bool AreCustomSettingsSameAsDifferencesViewType() const { return AreFlagsOf(kViewDifferent); }
    bool AreCustomSettingsSameAsSimilaritiesViewType() const { return AreFlagsOf(kViewSimilar); }
    // What a view without a name does not show, as in "older hidden"; empty for the named views, and where
    // nothing is hidden.
    std::string HiddenTypesText() const;
    // The named view that has just these flags; kViewCustom where none has.
    std::int32_t ViewTypeOfFlags() const;

  private:
    bool AreFlagsOf(std::int32_t viewType) const;

    Options& options_;
    std::array<bool*, kResultTypeCount> flags_;  // in the options, by result type from Newer on
    std::int32_t viewType_ = kViewAll;
};

}  // namespace vantrel
