#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QJsonArray>
#include <cstdlib>
#include <string>

#include "program_support.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;
using testing::Objects;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

class DiffTest : public ::testing::Test {
  protected:
    ProgramRun Diff(const std::string& left, const std::string& right,
                    std::vector<std::string> options = {}) const {
        folder.Write("left", left);
        folder.Write("right", right);
        options.insert(options.begin(), {"diff", folder / "left", folder / "right"});
        return RunProgram(options);
    }
    TempFolder folder;
};

TEST_F(DiffTest, PrintsWhatDiffPrints) {
    const ProgramRun run = Diff("a\nb\nc\r\n\x1B[1m", "a\nB\nc\r\nd\x1B[1m\n");
    EXPECT_EQ("2c2\n< b\n---\n> B\n4c4\n< \x1B[1m\n\\ No newline at end of file\n---\n> d\x1B[1m\n", run.out);
    EXPECT_EQ("", run.err);
    EXPECT_EQ(1, run.status);
    const ProgramRun unified = Diff("a\nb\n", "a\n", {"--unified"});
    EXPECT_THAT(unified.out,
                ::testing::MatchesRegex(
                    "--- .*/left\t.* \\+0000\n\\+\\+\\+ .*/right\t.*\n@@ -1,2 \\+1 @@\n a\n-b\n"));
}

TEST_F(DiffTest, TheExitStatusIsThatOfDiff) {
    EXPECT_EQ(0, Diff("a\n", "a\n").status);
    EXPECT_EQ(0, Diff("A b\n", "a B\n", {"--ignore-case"}).status);
    EXPECT_EQ(0, Diff("A b\n", "Ab", {"--ignore-whitespace"}).status);
    EXPECT_EQ(1, Diff("A b\n", "ab\n", {"--ignore-whitespace"}).status);
    const ProgramRun binary = Diff("a\0"s, "b\0"s);
    EXPECT_EQ(1, binary.status);
    EXPECT_EQ("Binary files " + folder / "left" + " and " + folder / "right" + " differ\n", binary.out);
    const ProgramRun missing = RunProgram({"diff", folder / "left", folder / "none"});
    EXPECT_EQ(2, missing.status);
    EXPECT_EQ("", missing.out);
    EXPECT_THAT(missing.err, HasSubstr("none"));
    EXPECT_EQ(2, RunProgram({"diff", folder / "left", folder.Path()}).status);
}

TEST_F(DiffTest, JsonHasAnObjectForEachBlock) {
    const auto blocks = Objects(Diff("a\nb\nc\nd\ne\n", "A\nA\nb\nd\nx\ne\n", {"--format", "json"}).out);
    ASSERT_EQ(3U, blocks.size());
    const QJsonArray left[] = {{1, 1}, {3, 3}, {4, 4}};
    const QJsonArray right[] = {{1, 2}, {3, 3}, {5, 5}};
    for (std::size_t index = 0; index < blocks.size(); ++index) {
        EXPECT_EQ(QString(QLatin1Char("cda"[index])), blocks[index][QLatin1String("form")].toString());
        EXPECT_EQ(left[index], blocks[index][QLatin1String("left")].toArray());
        EXPECT_EQ(right[index], blocks[index][QLatin1String("right")].toArray());
    }
    EXPECT_EQ("{\"form\":\"binary\"}\n", Diff("a\0"s, "b\0"s, {"--format", "json"}).out);
    EXPECT_EQ("", Diff("a", "a", {"--format", "json"}).out);
}

TEST_F(DiffTest, EncodingsCanBeGiven) {
    EXPECT_EQ("1c1\n< \xE4\n---\n> ä\n", Diff("\xE4\n", "ä\n").out);
    EXPECT_THAT(Diff("\xE4\n", "ä\n", {"--encoding", "latin1,auto"}).out,
                HasSubstr("differ in encoding (ISO-8859-1 and UTF-8)"));
    EXPECT_EQ("1c1\n< я\n---\n> ю\n", Diff("\xD1\n", "\xC0\n", {"--encoding=koi8-r"}).out);
    EXPECT_EQ("1c1\n< a\n---\n> b\n", Diff("\xFF\xFE"
                                           "a\0\n\0"s,
                                           "\xFF\xFE"
                                           "b\0\n\0"s)
                                          .out);
}

// What a terminal would execute is shown instead.
TEST_F(DiffTest, ATerminalOnlyShows) {
    folder.Write("left", "a\x1B]0;title\x07\n");
    folder.Write("right", "\u202E\xFF\n");
    int terminal = -1;
    const std::string program = testing::ConsoleProgram();
    const std::string left = folder / "left";
    const std::string right = folder / "right";
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(child, 0);
    if (child == 0) {
        execl(program.c_str(), program.c_str(), "diff", left.c_str(), right.c_str(), nullptr);
        _exit(127);
    }
    std::string shown;
    char buffer[4096];
    for (ssize_t got = 0; (got = read(terminal, buffer, sizeof buffer)) > 0;)
        shown.append(buffer, static_cast<std::size_t>(got));
    int status = 0;
    waitpid(child, &status, 0);
    close(terminal);
    EXPECT_EQ("1c1\r\n< a\u241B]0;title\u2407\r\n---\r\n> \uFFFD\uFFFD\r\n", shown);
}

}  // namespace
}  // namespace vantrel
