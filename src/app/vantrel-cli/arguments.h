#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::cli {

// One option of a sub-command, as "--name VALUE", "--name=VALUE" or, without a value, "--name".
struct OptionSpec {
    std::string_view name;   // with its dashes
    std::string_view value;  // what stands for the value in the help; empty: the option takes none
    std::string_view help;   // lines end in '\n' where the text goes on
    // Takes the value; false when it is none of those the option has.
    std::function<bool(std::string_view value)> take;
};

// A sub-command as its command line shows it.
struct CommandSpec {
    std::string_view name;
    std::string_view operands;  // as in "LEFT RIGHT"
    std::string_view summary;   // one line
    std::string_view notes;     // behind the options in the help; may be empty
    std::vector<OptionSpec> options;
    // Whether all operands may be missing; asked when the options are taken. Not set: they may not.
    std::function<bool()> mayLackOperands{};
};

struct ParsedArguments {
    bool helpWanted = false;
    std::vector<std::string_view> operands;
    std::string error;  // not empty: what is wrong, in one line
};

// In place of a number of operands: at least one.
inline constexpr std::size_t kOneOrMore = static_cast<std::size_t>(-1);

// Takes the arguments behind the sub-command's name. "--" ends the options.
ParsedArguments ParseArguments(const CommandSpec& command, const std::vector<std::string_view>& arguments,
                               std::size_t operandsWanted);

// What the command ends with where nothing is to be run: the help was wanted and is printed, or the arguments
// are wrong and that is said on standard error. Nothing where it is to run.
std::optional<int> AnsweredAtOnce(const CommandSpec& command, const ParsedArguments& parsed);

std::string HelpText(const CommandSpec& command);

// "yes" and "no".
bool TakeYesNo(std::string_view text, bool& to);

}  // namespace vantrel::cli
