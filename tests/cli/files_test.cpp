#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <random>

#include "program_support.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using testing::Objects;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

TEST(ConsoleFiles, FindingsAndStatusFollowTheMethods) {
    const TempFolder folder;
    folder.Write("one", "abc", 1'000'000'000);
    folder.Write("two", "abd", 1'000'000'000);
    const auto run = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"files", folder / "one", folder / "two"});
        return RunProgram(options);
    };
    const ProgramRun same = run({"--only", "size,time,attributes,version"});
    EXPECT_EQ(0, same.status) << same.err;
    const ProgramRun all = run({"--format=json"});
    EXPECT_EQ(1, all.status) << all.err;
    EXPECT_EQ("", all.err);
    std::vector<std::string> methods;
    for (const QJsonObject& each : Objects(all.out))
        methods.push_back(each[QLatin1String("method")].toString().toStdString() + ": " +
                          each[QLatin1String("result")].toString().toStdString());
    EXPECT_THAT(methods, ::testing::ElementsAre(
                             "Size: The files are the same size", "Date/Time: The files are the same",
                             "Attributes: The files have the same attributes",
                             "Version: Version not available for both files",
                             "Binary Contents: The files are different", "CRC32: The files are different",
                             "SHA1: The files are different"));
    const ProgramRun text = run({"--only=crc"});
    EXPECT_EQ(1, text.status);
    EXPECT_EQ(
        "CRC32             The files are different\n"
        "  File 1          352441C2\n"
        "  File 2          AB40D461\n",
        text.out);
}

// The standard output of a command of the system.
std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "re");
    EXPECT_TRUE(pipe);
    for (char buffer[4096]; pipe && fgets(buffer, sizeof buffer, pipe);) output += buffer;
    if (pipe) pclose(pipe);
    return output;
}

// Random pairs, held against what other tools say of them.
TEST(ConsoleFiles, FindingsAreThoseOfOtherTools) {
    std::mt19937 random(std::random_device{}());
    const unsigned seed = random();
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    const TempFolder folder;
    const std::string one = folder / "one", two = folder / "two";
    for (int round = 0; round < 12; ++round) {
        for (const std::string& path : {one, two}) {
            std::string content(random() % 4 == 0 ? 0 : 3 + random() % 2, 'a');
            if (!content.empty() && random() % 2 == 0) content.back() = 'b';
            folder.Write(path.substr(folder.Path().size()), content,
                         1'600'000'000 + 100 * static_cast<double>(random() % 3));
            ASSERT_EQ(0, chmod(path.c_str(), random() % 2 == 0 ? 0640 : 0444));
        }
        const auto said = [&](const char* command) {
            const auto of = [&](const std::string& path) {
                const std::string line = OutputOf(std::string(command) + " '" + path + "'");
                return line.substr(0, line.find_first_of(" \n"));
            };
            return std::pair(of(one), of(two));
        };
        const auto bytes = said("stat -c %s"), times = said("stat -c %Y"), modes = said("stat -c %A"),
                   sums = said("sha1sum");
        const std::vector<QJsonObject> found = Objects(RunProgram({"files", one, two, "--format=json"}).out);
        ASSERT_EQ(7U, found.size());
        const auto text = [&](std::size_t row, const char* key) {
            return found[row][QLatin1String(key)].toString().toStdString();
        };
        const auto order = [](long left, long right, const char* less, const char* more, const char* same) {
            return left < right ? less : left > right ? more : same;
        };
        EXPECT_EQ(text(0, "result"),
                  order(std::stol(bytes.first), std::stol(bytes.second), "File 1 is smaller than file 2",
                        "File 1 is larger than file 2", "The files are the same size"));
        EXPECT_EQ(text(1, "result"),
                  order(std::stol(times.first), std::stol(times.second), "File 1 is older than file 2",
                        "File 1 is newer than file 2", "The files are the same"));
        EXPECT_THAT(text(2, "left"), ::testing::StartsWith(modes.first));
        EXPECT_EQ(text(2, "result"), modes.first == modes.second ? "The files have the same attributes"
                                                                 : "The files have different attributes");
        const bool alike = OutputOf("cmp '" + one + "' '" + two + "' 2>&1").empty();
        for (const std::size_t row : {4U, 5U, 6U})
            EXPECT_EQ(text(row, "result"), alike ? "The files are the same" : "The files are different");
        std::string sum = text(6, "left");
        for (char& digit : sum) digit = static_cast<char>(std::tolower(digit));
        EXPECT_EQ(sum, sums.first);
    }
}

TEST(ConsoleFiles, WhatIsNoFileIsTrouble) {
    const TempFolder folder;
    folder.Write("one", "abc");
    const ProgramRun run = RunProgram({"files", folder / "one", folder / "two"});
    EXPECT_EQ(2, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_THAT(run.err, HasSubstr("is not an existing file."));
}

}  // namespace
}  // namespace vantrel
