#include "views/cview_selections.h"

#include "settings/options.h"

namespace vantrel {
namespace {

constexpr std::array<std::string_view, 4> kViewTexts{"All", "Different", "Similar", "Custom"};

constexpr std::array kTypes{ResultType::Newer,           ResultType::Older,       ResultType::Same,
                            ResultType::Orphan,          ResultType::Binary,      ResultType::IdenticalFolder,
                            ResultType::DifferentFolder, ResultType::OrphanFolder};

// By result type, from Newer on.
constexpr std::array<std::string_view, kResultTypeCount> kTypeNames{"newer",
                                                                    "older",
                                                                    "same",
                                                                    "orphan",
                                                                    "binary",
                                                                    "identical sub-folders",
                                                                    "different sub-folders",
                                                                    "orphan sub-folders"};

bool IsNamed(std::int32_t viewType) {
    return viewType >= kViewAll && viewType <= kViewSimilar;
}

// Whether a view with a name shows a type.
bool Includes(std::int32_t viewType, ResultType type) {
    const bool identical = type == ResultType::Same || type == ResultType::IdenticalFolder;
    return viewType == kViewAll || identical == (viewType == kViewSimilar);
}

bool& FlagIn(Options& options, ResultType type) {
    switch (type) {
        case ResultType::Newer:
            return options.viewNewerFiles;
        case ResultType::Older:
            return options.viewOlderFiles;
        case ResultType::Same:
            return options.viewIdenticalFiles;
        case ResultType::Orphan:
            return options.viewOrphanFiles;
        case ResultType::Binary:
            return options.viewBinaryFiles;
        case ResultType::IdenticalFolder:
            return options.viewIdenticalSubFolders;
        case ResultType::DifferentFolder:
            return options.viewDifferentSubFolders;
        case ResultType::None:
        case ResultType::OrphanFolder:
            break;
    }
    return options.viewOrphanSubFolders;
}

}  // namespace

std::string_view ViewTypeText(std::int32_t viewType) {
    return viewType >= kViewAll && viewType <= kViewCustom ? kViewTexts[static_cast<std::size_t>(viewType)]
                                                           : "Error";
}

CViewSelections::CViewSelections(Options& options) : options_(options), flags_{} {
    for (const ResultType type : kTypes)
        flags_.at(static_cast<std::size_t>(type) - 1) = &FlagIn(options, type);
    TakeCheckedItem();
}

void CViewSelections::SetViewType(std::int32_t viewType) {
    viewType_ = viewType;
    if (!IsNamed(viewType)) return;
    for (const ResultType type : kTypes) Flag(type) = Includes(viewType, type);
}

void CViewSelections::TakeCheckedItem() {
    viewType_ = CheckedItem();
}

std::int32_t CViewSelections::CheckedItem() const {
    return static_cast<std::int32_t>(options_.viewType);
}

void CViewSelections::SetCheckedItem(std::int32_t viewType) {
    options_.viewType = static_cast<vantrel::ViewType>(viewType);
}

bool CViewSelections::AreFlagsOf(std::int32_t viewType) const {
    for (const ResultType type : kTypes)
        if (Shows(type) != Includes(viewType, type)) return false;
    return true;
}

std::string CViewSelections::HiddenTypesText() const {
    if (viewType_ != kViewCustom) return {};
    std::string text;
    int hidden = 0;
    for (const ResultType type : kTypes) {
        if (Shows(type)) continue;
        if (hidden++ > 0) text += ", ";
        text += kTypeNames.at(static_cast<std::size_t>(type) - 1);
    }
    if (hidden == 0) return {};
    return (hidden == kResultTypeCount ? "all" : text) + " hidden";
}

std::int32_t CViewSelections::ViewTypeOfFlags() const {
    if (AreCustomSettingsSameAsAllViewType()) return kViewAll;
    if (AreCustomSettingsSameAsDifferencesViewType()) return kViewDifferent;
    if (AreCustomSettingsSameAsSimilaritiesViewType()) return kViewSimilar;
    return kViewCustom;
}

}  // namespace vantrel
