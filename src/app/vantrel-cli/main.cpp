#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "exit_status.h"
#include "platform/workers.h"

namespace {

using namespace vantrel::cli;

struct SubCommand {
    std::string_view name;
    std::string_view summary;
    int (*run)(const std::vector<std::string_view>& arguments);
};

constexpr std::array kSubCommands = {
    SubCommand{"compare", "compare two folders", RunCompare},
    SubCommand{"sync", "bring two folders into line", RunSync},
    SubCommand{"diff", "compare two text files line by line", RunDiff},
    SubCommand{"history", "tell which synchronizations there were", RunHistory},
    SubCommand{"files", "compare two files by all there is to compare", RunFiles},
    SubCommand{"dupes", "find files that there are twice", RunDupes},
    SubCommand{"hexdump", "print the bytes of a file", RunHexdump},
};

std::string Help() {
    std::string text = "usage: vantrel-cli COMMAND [ARGUMENT...]\n\ncommands:\n";
    for (const SubCommand& command : kSubCommands) {
        std::string line = "  " + std::string(command.name);
        line.resize(14, ' ');
        text.append(line).append(command.summary).append("\n");
    }
    return text + "\n'vantrel-cli COMMAND --help' tells of its arguments; '--version' prints the version.\n";
}

int Run(const std::vector<std::string_view>& arguments) {
    const std::string_view first = arguments.empty() ? std::string_view("") : arguments.front();
    if (first == "--version") {
        std::puts("vantrel-cli " VANTREL_VERSION);
        return kNoDifferences;
    }
    if (first == "--help" || first == "-h") {
        std::fputs(Help().c_str(), stdout);
        return kNoDifferences;
    }
    const auto* const command = std::find_if(kSubCommands.begin(), kSubCommands.end(),
                                             [=](const SubCommand& each) { return each.name == first; });
    if (command != kSubCommands.end()) return command->run({arguments.begin() + 1, arguments.end()});
    if (!first.empty())
        std::fprintf(stderr, "vantrel-cli: unknown command '%s'\n", std::string(first).c_str());
    std::fputs(Help().c_str(), stderr);
    return kTrouble;
}

int RunGuarded(const std::vector<std::string_view>& arguments) {
    try {
        return Run(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vantrel-cli: %s\n", error.what());
        return kTrouble;
    }
}

}  // namespace

int main(int count, char** values) {
    const int status = RunGuarded({values + std::min(count, 1), values + count});
    vantrel::Workers::EndProcessIfLeftBehind(status);
    return status;
}
