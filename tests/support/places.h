#pragma once

#include <string>

namespace vantrel::testing {

// The folder assets/ of the sources, without "/" at its end.
std::string AssetsFolder();
// The folder docs/help/, likewise.
std::string HelpFolder();
// The folder src/, likewise.
std::string SourceFolder();

}  // namespace vantrel::testing
