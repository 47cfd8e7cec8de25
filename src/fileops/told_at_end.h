#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/error.h"
#include "shell/shell_operations.h"

namespace vantrel {

// What can be told of copies only when they are over. Empty where there is nothing to tell.

// "The time of 3 files could not be kept.", and a line of that kind for their attributes.
std::string DescribeNotKept(const NotKept& notKept);
// The title of the box that tells it.
std::string TitleOf(const NotKept& notKept);

// A line for each copy that failed in the moment when it was to get its name, the first ones by name.
std::string DescribeFailedCopies(const std::vector<ShellOperations::FailedCopy>& failed);

// The error with the reason that the system gave, where that says more.
std::string WithSystemReason(const Error& error);

}  // namespace vantrel
