#include "settings/option_changes.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace vantrel {
namespace {

constexpr std::array<std::string_view, 6> kOfFilters{"IncludeFileTypes",     "ExcludeFileTypes",
                                                     "ExcludeSystemFiles",   "ExcludeHiddenFiles",
                                                     "ExcludeSystemFolders", "ExcludeHiddenFolders"};
constexpr std::array<std::string_view, 5> kOfMethods{"CompareType", "CompareSubFolders", "Ignore2SecDiff",
                                                     "IgnoreDaylightSavings", "TrueSizes"};

}  // namespace

std::vector<const OptionLine*> ChangedOptions(const Options& before, const Options& after) {
    std::vector<const OptionLine*> changed;
    for (const OptionLine& line : OptionTable())
        if (OptionText(line, before) != OptionText(line, after)) changed.push_back(&line);
    return changed;
}

ResultChange ResultChangeOf(std::string_view key) {
    const auto isOne = [key](const auto& keys) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    };
    return isOne(kOfFilters)   ? ResultChange::ByFilter
           : isOne(kOfMethods) ? ResultChange::ByMethod
                               : ResultChange::None;
}

const OptionLine& OptionOf(std::string_view key) {
    for (const OptionLine& line : OptionTable())
        if (line.key == key) return line;
    throw std::logic_error("no option " + std::string(key));
}

}  // namespace vantrel
