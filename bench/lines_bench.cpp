// Line differences by vantrel-cli against GNU diff. Started by bench/run:
//   lines_bench VANTREL-CLI FOLDER [ROUNDS]
// FOLDER is an empty folder for the texts; ROUNDS are 7 without it.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "text_pairs.h"
#include "timed_command.h"

namespace vantrel::bench {
namespace {

constexpr std::size_t kLines = 400'000;
constexpr unsigned kChangedOfThousand = 40;
constexpr std::size_t kHugeSize = std::size_t{1} << 30;
constexpr std::size_t kHistoryPairs = 2'000;

class Bench {
  public:
    Bench(std::string cli, std::string folder, int rounds)
        : cli_(std::move(cli)), folder_(std::move(folder)), rounds_(rounds) {}

    void Run() {
        MakeEditedPair(folder_, LineKind::NearlyUnique, kLines, kChangedOfThousand);
        Compare("400,000 nearly unique lines, 4 % changed", 0.5, "");
        MakeEditedPair(folder_, LineKind::SourceCode, kLines, kChangedOfThousand);
        Compare("400,000 lines like source code, 4 % changed", 0.5, "");
        MakeEditedPair(folder_, LineKind::Log, kLines, kChangedOfThousand);
        Compare("400,000 lines of a log, 4 % changed", 0.5, "");
        MakeUnlikePair(folder_, LineKind::NearlyUnique, kLines);
        Compare("400,000 lines, wholly different", 0.5, "");
        MakeUnlikePair(folder_, LineKind::Words, 20'000);
        Compare("20,000 lines of 50 words", 1.0, "-d");
        MakeShuffledPair(folder_, 60'000);
        Compare("60,000 shuffled lines", 1.0, "-d");
        History();
        MakeHugePair(folder_, kHugeSize, 1'000);
        Compare("1 GiB with 1,000 changes", 0.5, "");
    }

  private:
    std::string Left() const { return folder_ + "/left"; }
    std::string Right() const { return folder_ + "/right"; }

    // `rival` is the option of diff whose script ours is held against. That of -d is as short as can be in
    // lines that come and go; how these are gathered under headings is another matter, so that it is them who
    // are counted there.
    void Compare(const std::string& title, double limit, const std::string& rival) {
        Report(title,
               {{"vantrel-cli diff", {cli_, "diff", Left(), Right()}, {}},
                {"diff", {"diff", Left(), Right()}, {}, limit}},
               rounds_);
        const std::string files = " '" + Left() + "' '" + Right() + "'";
        const std::string ourScript = "'" + cli_ + "' diff" + files, theirScript = "diff " + rival + files;
        const long ours = ScriptLines(ourScript), theirs = ScriptLines(theirScript);
        const std::string changes = " | grep '^[<>]'";
        const long ourChanges = ScriptLines(ourScript + changes);
        const long theirChanges = ScriptLines(theirScript + changes);
        const bool met = rival.empty() ? ours <= theirs : ourChanges <= theirChanges;
        std::printf("  script: %ld lines with %ld changes, of diff %s %ld with %ld: %s\n", ours, ourChanges,
                    rival.c_str(), theirs, theirChanges, met ? "met" : "MISSED");
    }

    void History() {
        const std::string history = folder_ + "/history";
        const std::size_t pairs = MakeHistoryPairs(history, kHistoryPairs);
        if (pairs == 0) {
            std::printf("\nNo history of a source tree: left out.\n");
            return;
        }
        const auto all = [&](const std::string& program) {
            return "for pair in '" + history + "'/*; do " + program + " $pair/left $pair/right; done; true";
        };
        const std::string ours = all("'" + cli_ + "' diff");
        const std::string theirs = all("diff");
        Report(std::to_string(pairs) + " pairs of versions of source files",
               {{"vantrel-cli diff", {"sh", "-c", ours}, {}}, {"diff", {"sh", "-c", theirs}, {}}},
               std::min(rounds_, 3));
        const long ourLines = ScriptLines(ours);
        const long theirLines = ScriptLines(theirs);
        std::printf("  scripts: %ld lines, of diff %ld: %s\n", ourLines, theirLines,
                    ourLines <= theirLines ? "met" : "MISSED");
        std::filesystem::remove_all(history);
    }

    static long ScriptLines(const std::string& command) {
        FILE* const pipe = popen(command.c_str(), "r");
        long lines = 0;
        std::array<char, 65'536> buffer{};
        for (std::size_t got = 0;
             pipe != nullptr && (got = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
            lines += std::count(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(got), '\n');
        if (pipe != nullptr) pclose(pipe);
        return lines;
    }

    std::string cli_, folder_;
    int rounds_;
};

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** values) {
    if (count < 3) {
        std::fputs("usage: lines_bench VANTREL-CLI FOLDER [ROUNDS]\n", stderr);
        return 2;
    }
    try {
        vantrel::bench::Bench(values[1], values[2], count > 3 ? std::max(1, std::atoi(values[3])) : 7).Run();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lines_bench: %s\n", error.what());
        return 2;
    }
}
