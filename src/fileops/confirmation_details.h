#pragma once

#include <cstddef>
#include <string>

#include "platform/ports.h"

namespace vantrel {

// What the details of the confirmation dialog list: a line for each name, at most `mostLines` of them, and
// then one that says how many more there are.
std::string ConfirmationDetails(const Confirmation& confirmation, std::size_t mostLines = 10'000);

}  // namespace vantrel
