#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// What the program was started with.
struct StartArguments {
    std::string session;  // full path in the engine's form; empty: none
    std::string error;    // not empty: what is wrong, in one line
};

// The words of a command line with "--session FILE" in one, as "--session=FILE". In two the library takes
// them for the session of the desktop that it is to restore, and nobody sees them again.
std::vector<std::string> WithSessionInOneWord(int argc, const char* const* argv);

// `arguments` are those behind the program's name: "--session FILE", "--session=FILE" or FILE alone. A path
// that does not begin with "/" is below the folder that the process was started in.
StartArguments TakeStartArguments(const std::vector<std::string_view>& arguments);

}  // namespace vantrel
