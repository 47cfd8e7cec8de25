#pragma once

#include <string>

namespace vantrel {

// modVantrel: the route from the start of the process to its end. Gives the exit status.
int Main(int argc, char** argv);

// Major, minor and revision number of this build, joined by ".".
std::string AppVersionText();

}  // namespace vantrel
