#include "arguments.h"

#include <algorithm>
#include <cstdio>

#include "exit_status.h"

namespace vantrel::cli {

namespace {

const OptionSpec* Find(const CommandSpec& command, std::string_view name) {
    const auto found = std::find_if(command.options.begin(), command.options.end(),
                                    [&](const OptionSpec& option) { return option.name == name; });
    return found == command.options.end() ? nullptr : &*found;
}

std::string Quoted(std::string_view text) {
    return "'" + std::string(text) + "'";
}

// Takes the option at `index`, and its value where that is the next argument.
std::string TakeOption(const CommandSpec& command, const std::vector<std::string_view>& arguments,
                       std::size_t& index) {
    const std::string_view argument = arguments[index];
    const std::size_t equals = argument.find('=');
    const std::string_view name = argument.substr(0, equals);
    const OptionSpec* option = Find(command, name);
    if (option == nullptr) return "unknown option " + Quoted(name);
    const bool joined = equals != std::string_view::npos;
    if (option->value.empty()) {
        if (joined) return "option " + Quoted(name) + " takes no value";
        option->take({});
        return {};
    }
    if (!joined && index + 1 == arguments.size()) return "option " + Quoted(name) + " needs a value";
    const std::string_view value = joined ? argument.substr(equals + 1) : arguments[++index];
    if (!option->take(value))
        return Quoted(value) + " is no value for " + std::string(name) + ": it takes " +
               std::string(option->value);
    return {};
}

void AppendOption(const OptionSpec& option, std::string& text) {
    constexpr std::size_t kHelpColumn = 30;
    std::string line = "  " + std::string(option.name);
    if (!option.value.empty()) line.append(" ").append(option.value);
    if (line.size() + 2 > kHelpColumn) {
        text.append(line).append("\n");
        line.clear();
    }
    line.resize(kHelpColumn, ' ');
    for (const char letter : option.help) {
        line += letter;
        if (letter == '\n') line.append(kHelpColumn, ' ');
    }
    text.append(line).append("\n");
}

}  // namespace

ParsedArguments ParseArguments(const CommandSpec& command, const std::vector<std::string_view>& arguments,
                               std::size_t operandsWanted) {
    ParsedArguments parsed;
    bool optionsEnded = false;
    for (std::size_t index = 0; index < arguments.size() && parsed.error.empty(); ++index) {
        const std::string_view argument = arguments[index];
        if (optionsEnded || argument.size() < 2 || argument[0] != '-') {
            parsed.operands.push_back(argument);
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "--help" || argument == "-h") {
            parsed.helpWanted = true;
            return parsed;
        } else {
            parsed.error = TakeOption(command, arguments, index);
        }
    }
    if (parsed.operands.empty() && command.mayLackOperands && command.mayLackOperands()) return parsed;
    const std::size_t least = operandsWanted == kOneOrMore ? 1 : operandsWanted;
    if (parsed.error.empty() && (parsed.operands.size() < least || parsed.operands.size() > operandsWanted))
        parsed.error = parsed.operands.size() < least
                           ? "too few operands: " + std::string(command.operands) + " are needed"
                           : "too many operands: " + Quoted(parsed.operands[operandsWanted]);
    return parsed;
}

std::optional<int> AnsweredAtOnce(const CommandSpec& command, const ParsedArguments& parsed) {
    if (parsed.helpWanted) {
        std::fputs(HelpText(command).c_str(), stdout);
        return 0;
    }
    if (parsed.error.empty()) return std::nullopt;
    std::fprintf(stderr, "vantrel-cli: %s\nSee 'vantrel-cli %s --help'.\n", parsed.error.c_str(),
                 std::string(command.name).c_str());
    return kTrouble;
}

std::string HelpText(const CommandSpec& command) {
    std::string text = "usage: vantrel-cli " + std::string(command.name) + " [OPTION...] " +
                       std::string(command.operands) + "\n" + std::string(command.summary) + "\n\noptions:\n";
    for (const OptionSpec& option : command.options) AppendOption(option, text);
    AppendOption({"--help", "", "print this and end", {}}, text);
    if (!command.notes.empty()) text.append("\n").append(command.notes);
    return text;
}

bool TakeYesNo(std::string_view text, bool& to) {
    if (text != "yes" && text != "no") return false;
    to = text == "yes";
    return true;
}

}  // namespace vantrel::cli
