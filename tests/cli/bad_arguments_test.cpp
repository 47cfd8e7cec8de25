#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "program_support.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

// An option as the help of its command shows it.
struct ShownOption {
    std::string name;
    bool takesValue = false;
};

std::vector<ShownOption> OptionsInHelp(const std::string& command) {
    std::vector<ShownOption> options;
    std::istringstream lines(RunProgram({command, "--help"}).out);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  --")) continue;
        std::istringstream words(line);
        ShownOption option;
        words >> option.name;
        // One blank before a value, several before the help of an option without one.
        const std::size_t end = 2 + option.name.size();
        option.takesValue = line.size() > end + 1 && line[end + 1] != ' ';
        if (option.name != "--help") options.push_back(option);
    }
    return options;
}

// The folders are there and differ, and every other argument is in order: what is refused is refused for the
// one argument that is wrong.
class BadArgumentsTest : public ::testing::Test {
  protected:
    BadArgumentsTest() {
        for (const auto* name : {"left", "right", "program"}) folder.MakeFolder(name);
        folder.Write("left/file", "1");
    }
    std::vector<std::string> GoodArguments(const std::string& command) const {
        if (command == "history") return {command, "--program-folder", folder / "program"};
        if (command == "files") return {command, folder / "left/file", folder / "left/file"};
        if (command == "dupes") return {command, folder / "left", folder / "right"};
        if (command == "hexdump") return {command, folder / "left/file"};
        if (command == "diff") return {command, folder / "left/file", folder / "left/file"};
        std::vector<std::string> arguments{command};
        if (command == "sync")
            for (const auto* each : {"--sync-method", "MakeRightSameAsLeft", "--yes"})
                arguments.emplace_back(each);
        arguments.push_back(folder / "left");
        arguments.push_back(folder / "right");
        return arguments;
    }
    // `wrong` stands behind everything else.
    void ExpectRefused(const std::string& command, const std::vector<std::string>& wrong,
                       const std::string& message) const {
        std::vector<std::string> arguments = GoodArguments(command);
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        const ProgramRun run = RunProgram(arguments);
        const std::string what = command + " ... " + wrong.front();
        EXPECT_EQ(2, run.status) << what;
        EXPECT_EQ("", run.out) << what;
        EXPECT_EQ("vantrel-cli: " + message + "\nSee 'vantrel-cli " + command + " --help'.\n", run.err)
            << what;
        EXPECT_FALSE(folder.Exists("right/file")) << what;
    }

    TempFolder folder;
};

TEST_F(BadArgumentsTest, EveryOptionTakesAValueOrNone) {
    for (const std::string command : {"compare", "sync", "history", "files", "dupes", "hexdump", "diff"}) {
        const auto options = OptionsInHelp(command);
        EXPECT_GE(options.size(), 2U) << command;
        for (const ShownOption& option : options) {
            const std::string quoted = "'" + option.name + "'";
            if (option.takesValue)
                ExpectRefused(command, {option.name}, "option " + quoted + " needs a value");
            else
                ExpectRefused(command, {option.name + "=yes"}, "option " + quoted + " takes no value");
            const std::string cut = option.name.substr(0, option.name.size() - 1);
            ExpectRefused(command, {cut}, "unknown option '" + cut + "'");
        }
    }
    // What only printing needs is no option of a command that changes the folders.
    ExpectRefused("sync", {"--view", "all"}, "unknown option '--view'");
    ExpectRefused("sync", {"--view=similar"}, "unknown option '--view'");
}

TEST_F(BadArgumentsTest, AValueThatAnOptionDoesNotHaveIsRefused) {
    const struct {
        const char* option;
        std::vector<std::string> wrong;
        const char* takes;
    } cases[] = {
        {"--method", {"md5", "Quick", ""}, "quick|contents|crc|sha"},
        {"--sub-folders", {"true", ""}, "yes|no"},
        {"--ignore-two-seconds", {"1", "Yes"}, "yes|no"},
        {"--ignore-daylight", {"maybe"}, "yes|no"},
        {"--names", {"1", ""}, "yes|no"},
        {"--sizes", {"1", ""}, "yes|no"},
        {"--create-times", {"1", ""}, "yes|no"},
        {"--modified-times", {"1", ""}, "yes|no"},
        {"--attributes", {"1", ""}, "yes|no"},
        {"--contents", {"1", ""}, "yes|no"},
        {"--zero-byte", {"1", ""}, "yes|no"},
        {"--hidden", {"1", ""}, "yes|no"},
        {"--system", {"1", ""}, "yes|no"},
        {"--system-folders", {"1", ""}, "yes|no"},
        {"--hash", {"sha", "MD5", ""}, "crc16|crc32|md5"},
        {"--true-sizes", {"True", ""}, "yes|no"},
        {"--chunk-size", {"0", "-1", "12x", " 1", "", "99999999999"}, "N"},
        {"--only", {"", "size,", "crc32", "size contents"}, "LIST"},
        {"--jobs", {"0", "-1", "two", ""}, "N"},
        {"--offset", {"", "-1", "1x", "0x"}, "N"},
        {"--length", {"", "all", "99999999999999999999"}, "N"},
        {"--view", {"other", "custom", ""}, "all|different|similar"},
        {"--settings", {""}, "FILE"},
        {"--session", {""}, "FILE"},
        {"--format", {"xml", "JSON"}, "text|json"},
        {"--select", {""}, "NAME"},
        {"--max-delete", {"", "all", "-1", "101%", "1.5"}, "N|P%"},
        {"--program-folder", {""}, "DIR"},
        {"--encoding", {"", "none", "utf8,", "utf8,none", "utf8,utf8,utf8"}, "NAME[,NAME]"},
    };
    // Any text is a list of patterns; a method's name is looked up when the settings file has been read.
    std::set<std::string> known{"--include", "--exclude", "--sync-method"};
    for (const auto& each : cases) known.insert(each.option);
    for (const std::string command : {"compare", "sync", "history", "files", "dupes", "hexdump", "diff"}) {
        std::set<std::string> has;
        for (const ShownOption& option : OptionsInHelp(command)) {
            if (!option.takesValue) continue;
            has.insert(option.name);
            EXPECT_TRUE(known.contains(option.name)) << option.name << " has no line in the table";
        }
        for (const auto& each : cases) {
            if (!has.contains(each.option)) continue;
            // The results of a comparison have formats of their own.
            const bool isReport = command == "compare" && each.option == std::string("--format");
            const std::string takes = isReport ? "text|json|html|csv" : each.takes;
            for (const std::string& value : each.wrong)
                ExpectRefused(command, {std::string(each.option) + "=" + value},
                              "'" + value + "' is no value for " + each.option + ": it takes " + takes);
        }
    }
}

TEST_F(BadArgumentsTest, WhatIsNamedMustBeThere) {
    const auto refused = [&](const std::string& command, std::vector<std::string> wrong) {
        std::vector<std::string> arguments = GoodArguments(command);
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        const ProgramRun run = RunProgram(arguments);
        EXPECT_EQ(2, run.status) << wrong.front();
        EXPECT_EQ("", run.out);
        EXPECT_FALSE(folder.Exists("right/file")) << wrong.front();
        return run.err;
    };
    for (const auto* command : {"compare", "sync"})
        EXPECT_THAT(refused(command, {"--settings", folder / "none"}), HasSubstr("File not found"));
    for (const auto* command : {"sync", "history"})
        EXPECT_THAT(refused(command, {"--program-folder", folder / "none"}), HasSubstr("is no folder"));
    EXPECT_THAT(refused("sync", {"--sync-method", "Both"}), HasSubstr("'Both' is no method. There are "));
    EXPECT_THAT(refused("sync", {"--select", "none", "--program-folder", folder / "program"}),
                HasSubstr("there is no object 'none' to select"));
}

TEST_F(BadArgumentsTest, OperandsAreCounted) {
    ExpectRefused("compare", {folder / "program"}, "too many operands: '" + folder / "program" + "'");
    ExpectRefused("sync", {folder / "program"}, "too many operands: '" + folder / "program" + "'");
    ExpectRefused("diff", {"--unified", "--format=json"}, "--unified and --format json exclude each other");
    ExpectRefused("history", {folder / "left"}, "too many operands: '" + folder / "left" + "'");
    for (const auto* command : {"compare", "sync"}) {
        const ProgramRun run = RunProgram({command, folder / "left"});
        EXPECT_EQ(2, run.status);
        EXPECT_THAT(run.err, HasSubstr("too few operands: LEFT RIGHT are needed"));
    }
    for (const std::vector<std::string>& none : {std::vector<std::string>{}, {"comp"}}) {
        const ProgramRun run = RunProgram(none);
        EXPECT_EQ(2, run.status);
        EXPECT_EQ("", run.out);
        EXPECT_THAT(run.err, HasSubstr("usage: vantrel-cli COMMAND"));
    }
    EXPECT_THAT(RunProgram({"comp"}).err, HasSubstr("unknown command 'comp'"));
}

// A machine whose library lets nobody have SHA-1.
TEST(BadArguments, ShaIsRefusedWhereItIsNotOffered) {
    const testing::TempFolder folder;
    folder.Write("openssl.cnf",
                 "openssl_conf = all\n[all]\nalg_section = algorithms\n[algorithms]\n"
                 "default_properties = fips=yes\n");
    folder.Write("settings", "[Options]\r\nCompareType=SHA\r\n");
    for (const auto* side : {"left", "right"}) folder.Write(side + std::string("/file"), "x", 1'600'000'000);
    ASSERT_EQ(0, setenv("OPENSSL_CONF", (folder / "openssl.cnf").c_str(), 1));
    const auto run = [&](const char* command, const std::string& option, const std::string& value) {
        return RunProgram({command, option, value, folder / "left", folder / "right"});
    };
    for (const ProgramRun& refused : {run("compare", "--method", "sha"), run("sync", "--method", "sha"),
                                      run("compare", "--settings", folder / "settings")}) {
        EXPECT_EQ(2, refused.status);
        EXPECT_EQ("", refused.out);
        EXPECT_THAT(refused.err, HasSubstr("offers no SHA-1"));
    }
    EXPECT_EQ(0, run("compare", "--method", "crc").status);
    ASSERT_EQ(0, unsetenv("OPENSSL_CONF"));
    EXPECT_EQ(0, run("compare", "--method", "sha").status);
}

}  // namespace
}  // namespace vantrel
