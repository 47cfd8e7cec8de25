#include "start_arguments.h"

#include <filesystem>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::string_view kSessionWord = "--session";

std::string FullPath(std::string_view given) {
    std::string path = PathFromUser(given);
    if (path.starts_with('/')) return path;
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    return JoinPath(error ? std::string("/") : NameFromSystem(folder.native()), path);
}

}  // namespace

std::vector<std::string> WithSessionInOneWord(int argc, const char* const* argv) {
    std::vector<std::string> words(argv, argv + argc);
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        if (words[i] != kSessionWord) continue;
        words[i].append("=").append(words[i + 1]);
        words.erase(words.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
    return words;
}

StartArguments TakeStartArguments(const std::vector<std::string_view>& arguments) {
    StartArguments taken;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string_view value = arguments[i];
        if (value == kSessionWord) {
            value = ++i < arguments.size() ? arguments[i] : std::string_view();
        } else if (value.starts_with(kSessionWord) && value.substr(kSessionWord.size()).starts_with('=')) {
            value.remove_prefix(kSessionWord.size() + 1);
        } else if (value.starts_with('-')) {
            taken.error = "unknown argument '" + std::string(value) + "'";
            return taken;
        }
        if (value.empty())
            taken.error = "'--session' needs a file";
        else if (!taken.session.empty())
            taken.error = "more than one session";
        else
            taken.session = FullPath(value);
    }
    return taken;
}

}  // namespace vantrel
