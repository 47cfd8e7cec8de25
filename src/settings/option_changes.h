#pragma once

#include <string_view>
#include <vector>

#include "settings/option_table.h"

namespace vantrel {

// The lines whose options are not the same in both, in the order of the table.
std::vector<const OptionLine*> ChangedOptions(const Options& before, const Options& after);

// Whether what a comparison finds can be another one.
enum class ResultChange {
    None,
    ByFilter,  // other objects are taken in
    ByMethod,  // the same objects are compared in another way
};
ResultChange ResultChangeOf(std::string_view key);

// The line of a key; throws std::logic_error where there is none.
const OptionLine& OptionOf(std::string_view key);

}  // namespace vantrel
