#pragma once

#include <string>

namespace vantrel::testing {

// The folder assets/ of the sources, without "/" at its end.
std::string AssetsFolder();

}  // namespace vantrel::testing
