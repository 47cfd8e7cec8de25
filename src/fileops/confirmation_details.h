#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/ports.h"

namespace vantrel {

// How the question before a deletion that no bin gives back begins.
inline constexpr std::string_view kAboutToDeleteForGood = "You are about to permanently delete ";
// Whether it is asked about such a deletion: it bears a warning.
bool IsForGood(const Confirmation& confirmation);

// What the details of the confirmation dialog list: a line for each name, at most `mostLines` of them, and
// then one that says how many more there are.
std::string ConfirmationDetails(const Confirmation& confirmation, std::size_t mostLines = 10'000);

}  // namespace vantrel
