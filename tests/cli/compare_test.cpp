#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>

#include <QJsonObject>
#include <QProcess>
#include <cstdlib>
#include <filesystem>

#include "program_support.h"
#include "support/plain_user.h"
#include "support/sparse_file.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::Objects;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

class CompareCommandTest : public ::testing::Test {
  protected:
    CompareCommandTest() {
        folder.MakeFolder("left");
        folder.MakeFolder("right");
    }
    void WriteBoth(const std::string& name, const std::string& content, double time) {
        folder.Write("left/" + name, content, time);
        folder.Write("right/" + name, content, time);
    }
    ProgramRun Compare(std::vector<std::string> options,
                       const std::function<void(pid_t)>& whileRunning = {}) {
        options.insert(options.begin(), "compare");
        options.push_back(folder / "left");
        options.push_back(folder / "right");
        return RunProgram(options, whileRunning);
    }
    static std::string Text(const QJsonObject& object, const char* half, const char* key) {
        return object[QLatin1String(half)].toObject()[QLatin1String(key)].toString().toStdString();
    }

    TempFolder folder;
};

TEST_F(CompareCommandTest, JsonTellsEveryPairInOrderAndThenTheRecordsOfSubFolders) {
    WriteBoth("same.txt", "12", 1'600'000'000);
    folder.Write("left/a.txt", "123456789012", 1'600'000'000.25);
    folder.Write("right/a.txt", "1", 1'500'000'000);
    folder.Write("right/z.txt", "", 0);
    folder.Write("left/Sub/x/y.txt", "1", 1'600'000'000);
    folder.Write("left/Sub/same", "1", 1'600'000'000);
    folder.Write("right/Sub/same", "1", 1'600'000'000);
    const ProgramRun run = Compare({"--format", "json"});
    EXPECT_EQ(1, run.status);
    EXPECT_EQ("", run.err);
    EXPECT_EQ(
        R"({"left":{"name":"a.txt","size":12,"modified":"2020-09-13T12:26:40.2500000Z","type":"Newer"},)"
        R"("right":{"name":"a.txt","size":1,"modified":"2017-07-14T02:40:00.0000000Z","type":"Older"}})"
        "\n"
        R"({"left":{"name":"same.txt","size":2,"modified":"2020-09-13T12:26:40.0000000Z","type":"Same"},)"
        R"("right":{"name":"same.txt","size":2,"modified":"2020-09-13T12:26:40.0000000Z","type":"Same"}})"
        "\n"
        R"({"left":null,"right":{"name":"z.txt","size":0,"modified":"1970-01-01T00:00:00.0000000Z","type":"Orphan"}})"
        "\n"
        R"({"left":{"name":"\\Sub","size":2,"type":"DifferentFolder"},)"
        R"("right":{"name":"\\Sub","size":1,"type":"DifferentFolder"}})"
        "\n"
        R"({"folder":"\\Sub","left":{"name":"x/y.txt","size":1,"modified":"2020-09-13T12:26:40.0000000Z","type":"Orphan"},)"
        R"("right":null})"
        "\n",
        run.out);
}

TEST_F(CompareCommandTest, ExitStatusSaysWhatWasFoundWhateverIsShown) {
    WriteBoth("file", "same size", 1'600'000'000);
    EXPECT_EQ(0, Compare({}).status);
    folder.Write("right/file", "Same size", 1'600'000'000);
    EXPECT_EQ(0, Compare({}).status);
    for (const auto* method : {"contents", "crc", "sha"}) {
        for (const auto* jobs : {"--jobs=1", "--jobs=4"}) {
            const ProgramRun run = Compare({"--method", method, "--chunk-size=2", "--format=json", jobs});
            EXPECT_EQ(1, run.status) << method;
            EXPECT_THAT(run.out, HasSubstr("Binary"));
        }
    }
    const ProgramRun hidden = Compare({"--method", "contents", "--view", "similar", "--format", "json"});
    EXPECT_EQ(1, hidden.status);
    EXPECT_EQ("", hidden.out);
    folder.Write("left/sub/deep/new", "");
    folder.MakeFolder("right/sub");
    EXPECT_EQ(1, Compare({}).status);
    EXPECT_EQ(0, Compare({"--sub-folders", "no"}).status);
    EXPECT_EQ(0, Compare({"--exclude", "N*"}).status);
    EXPECT_EQ(0, Compare({"--exclude", "/sub"}).status);
    folder.Write("left/.dot", "");
    EXPECT_EQ(0, Compare({"--exclude", "\\s*", "--exclude-hidden-files"}).status);
}

TEST_F(CompareCommandTest, SettingsFileIsWhereItStartsFrom) {
    folder.Write("left/file", "1", 1'600'000'000);
    folder.Write("right/file", "1", 1'600'003'600);
    folder.Write("my settings", "[Options]\r\nIgnoreDaylightSavings=True\r\nViewType=Different\r\n");
    EXPECT_EQ(1, Compare({"--format=json"}).status);
    const ProgramRun run = Compare({"--settings", folder / "my settings", "--format=json"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_EQ("", run.out);
    EXPECT_EQ(1, Compare({"--settings", folder / "my settings", "--ignore-daylight", "no"}).status);
    const ProgramRun missing = Compare({"--settings", folder / "none"});
    EXPECT_EQ(2, missing.status);
    EXPECT_THAT(missing.err, HasSubstr("File not found"));
    folder.Write("binary", std::string("\0\xFF[Options]\n\n=\n", 15));
    EXPECT_EQ(1, Compare({"--settings", folder / "binary"}).status);
}

TEST_F(CompareCommandTest, OddNamesStayValidJsonAndLeaveOneLineEach) {
    std::vector<std::string> names = {"line\nend",
                                      "\"quote\"",
                                      "back\\slash",
                                      "\xFF\xFE",
                                      "-rf",
                                      "No Comparison Results",
                                      ("\xE2\x80\xAE"
                                       "rtl"),
                                      "\xE6\x97\xA5\xE6\x9C\xAC",
                                      "\x1B[31m",
                                      std::string(255, 'x')};
    // What needs an escape, at each place of the words that are looked at whole.
    for (std::size_t at = 0; at < 18; ++at) names.push_back(std::string(17, 'n').insert(at, 1, '"'));
    for (const std::string& name : names) WriteBoth(name, "", 1'600'000'000);
    const ProgramRun json = Compare({"--format", "json"});
    EXPECT_EQ(0, json.status);
    EXPECT_EQ(names.size(), Objects(json.out).size());
    const ProgramRun text = Compare({});
    EXPECT_EQ(0, text.status);
    EXPECT_EQ(std::string::npos, text.out.find('\x1B'));
    const auto lines = std::count(text.out.begin(), text.out.end(), '\n');
    EXPECT_EQ(static_cast<std::ptrdiff_t>(names.size()) + 8, lines) << text.out;
    // The path that was printed can be given again.
    folder.Write("left/\xFFsub/inner/f", "");
    folder.Write("right/\xFFsub/f", "");
    const auto objects = Objects(Compare({"--format", "json"}).out);
    for (const QJsonObject& object : objects) {
        const std::string name = Text(object, "left", "name");
        if (!name.starts_with('\\')) continue;
        EXPECT_EQ(
            1, RunProgram({"compare", folder / "left/" + name.substr(1), folder / "right/" + name.substr(1)})
                   .status);
    }
}

TEST_F(CompareCommandTest, TextIsAlignedAndEndsWithTotals) {
    WriteBoth("\xE6\x97\xA5\xE6\x9C\xAC.txt", "12", 1'600'000'000);
    folder.Write("left/a", "1234", 1'600'000'000);
    folder.MakeFolder("left/sub");
    const ProgramRun run = Compare({});
    EXPECT_EQ(1, run.status);
    const std::string expected = "Left:  " + (folder / "left/") + "\nRight: " + (folder / "right/") + "\n\n" +
                                 "Name      Size  Modified                         Name      Size  Modified\n"
                                 "a            4  2020-09-13 12:26:40  left only\n"
                                 "\xE6\x97\xA5\xE6\x9C\xAC.txt     2  2020-09-13 12:26:40  same        "
                                 "\xE6\x97\xA5\xE6\x9C\xAC.txt     2  2020-09-13 12:26:40\n"
                                 "\\sub         0                       left only\n"
                                 "\n"
                                 "Left:  Total 3 object(s)  (6 Bytes)\n"
                                 "Right: Total 1 object(s)  (2 Bytes)\n"
                                 "Pairs: 1 same, 2 left only\n";
    EXPECT_EQ(expected, run.out);
}

TEST_F(CompareCommandTest, TroubleIsSaidOnStandardErrorAndNothingIsPrinted) {
    folder.Write("file", "");
    const struct {
        std::string left, right, message;
    } cases[] = {
        {folder / "none", folder / "right", "Make sure that the folder exists"},
        {folder / "left", folder / "file", "Make sure that the folder exists"},
        {folder / "left", folder / "left/", "Please specify two different folders to compare."},
        {"", folder / "left", "is not a valid path."},
    };
    for (const auto& each : cases) {
        const ProgramRun run = RunProgram({"compare", each.left, each.right});
        EXPECT_EQ(2, run.status) << each.left;
        EXPECT_EQ("", run.out);
        EXPECT_THAT(run.err, HasSubstr(each.message));
        EXPECT_EQ(std::string::npos, run.err.find('\r'));
    }
    EXPECT_EQ(0, RunProgram({"--version"}).status);
    EXPECT_THAT(RunProgram({"compare", "--help"}).out, HasSubstr("--ignore-two-seconds yes|no"));
}

TEST_F(CompareCommandTest, LargeFilesAreToldOfAndComparedByTheRuleThatWasChosen) {
    testing::WriteSparse(folder, "left/big", (off_t{1} << 32) + 5, 1'600'000'000);
    testing::WriteSparse(folder, "right/big", 4, 1'600'000'000);
    folder.Write("settings.ini", "[Extras]\nTrueSizes=True\n");
    const ProgramRun plain = Compare({});
    EXPECT_EQ(0, plain.status);
    const std::size_t told = plain.err.find("--true-sizes yes");
    EXPECT_NE(std::string::npos, told);
    EXPECT_EQ(std::string::npos, plain.err.find("--true-sizes yes", told + 1));
    const ProgramRun no = Compare({"--true-sizes", "no"});
    EXPECT_EQ(0, no.status);
    EXPECT_EQ(plain.out, no.out);
    EXPECT_EQ("", no.err);
    for (const auto& options : {std::vector<std::string>{"--true-sizes=yes", "--format=json"},
                                {"--settings", folder / "settings.ini", "--format=json"}}) {
        const ProgramRun run = Compare(options);
        EXPECT_EQ(1, run.status);
        EXPECT_THAT(run.out, HasSubstr(R"("size":4294967301)"));
        EXPECT_EQ("", run.err);
    }
}

TEST_F(CompareCommandTest, AFolderInsideTheOtherIsToldAndChangesNoStatus) {
    folder.MakeFolder("left/sub");
    std::filesystem::create_directory_symlink(folder / "left/sub", folder / "link");
    for (const char* inner : {"left/sub", "link"}) {
        const ProgramRun run =
            RunProgram({"compare", "--sub-folders", "no", folder / inner, folder / "left"});
        EXPECT_EQ(0, run.status);
        EXPECT_THAT(run.err, HasSubstr("The left folder lies inside the right folder:"));
    }
}

// What cannot be looked into is no difference that anyone may act on, and no success either.
TEST_F(CompareCommandTest, WhatCannotBeReadIsTrouble) {
    WriteBoth("sub/closed/file", "x", 1'600'000'000);
    ASSERT_EQ(0, chmod((folder / "left/sub/closed").c_str(), 0));
    testing::AsPlainUser(folder, [this] {
        const ProgramRun run = Compare({"--format", "json"});
        EXPECT_EQ(2, run.status);
        EXPECT_EQ(std::string::npos, run.out.find("Orphan"));
        EXPECT_THAT(run.out, HasSubstr(R"("type":"DifferentFolder","incomplete":true})"));
        EXPECT_THAT(Compare({}).out,
                    ContainsRegex("sub +[0-9]+  incomplete +differ +.sub +[0-9]+  incomplete"));
        EXPECT_THAT(run.err, HasSubstr("Process: Listing the folder"));
        EXPECT_THAT(run.err, HasSubstr("- More Information - \nAnalysis of folder failed."));
        EXPECT_THAT(run.err, HasSubstr("Folder: " + (folder / "left/sub/closed") + "\n"));
        EXPECT_EQ(std::string::npos, run.err.find("Unexpected Error"));
    });
}

// A pair of which nothing may be concluded is printed as such, and is no success.
TEST_F(CompareCommandTest, WhatIsUnknownIsPrintedWithItsReasonWhereAllIsShown) {
    folder.Write("left/sub/deep/pipe", "a file", 1'600'000'000);
    folder.MakeFolder("right/sub/deep");
    WriteBoth("same", "12", 1'600'000'000);
    folder.Write("right/pipe", "a file", 1'600'000'000);
    for (const auto* name : {"left/alone", "left/pipe", "right/sub/deep/pipe"})
        ASSERT_EQ(0, mkfifo((folder / name).c_str(), 0600));
    folder.MakeFolder("left/nowhere");
    std::filesystem::create_symlink("gone", folder / "right/nowhere");

    const ProgramRun json = Compare({"--format", "json"});
    EXPECT_EQ(1, json.status);
    EXPECT_EQ("", json.err);
    EXPECT_EQ(R"({"left":{"name":"pipe","type":"Unknown","reason":"SpecialObject"},)"
              R"("right":{"name":"pipe","type":"Unknown","reason":"OtherSide"}})"
              "\n"
              R"({"left":{"name":"same","size":2,"modified":"2020-09-13T12:26:40.0000000Z","type":"Same"},)"
              R"("right":{"name":"same","size":2,"modified":"2020-09-13T12:26:40.0000000Z","type":"Same"}})"
              "\n"
              R"({"left":{"name":"\\nowhere","type":"Unknown","reason":"OtherSide"},)"
              R"("right":{"name":"\\nowhere","type":"Unknown","reason":"LeadsNowhere"}})"
              "\n"
              R"({"left":{"name":"\\sub","size":6,"type":"DifferentFolder"},)"
              R"("right":{"name":"\\sub","size":0,"type":"DifferentFolder"}})"
              "\n"
              R"({"folder":"\\sub","left":{"name":"deep/pipe","type":"Unknown","reason":"OtherSide"},)"
              R"("right":{"name":"deep/pipe","type":"Unknown","reason":"SpecialObject"}})"
              "\n",
              json.out);

    const ProgramRun text = Compare({});
    EXPECT_EQ(1, text.status);
    EXPECT_THAT(text.out, ContainsRegex("pipe +Unknown +pipe\n"));
    EXPECT_THAT(text.out,
                HasSubstr("Right: Total 2 object(s)  (2 Bytes)\nPairs: 1 same, 1 differ, 2 Unknown\n"));

    for (const auto* view : {"different", "similar"}) {
        const ProgramRun run = Compare({"--view", view});
        EXPECT_EQ(1, run.status) << view;
        EXPECT_THAT(run.out, AllOf(Not(HasSubstr("Unknown")), Not(HasSubstr("Below")))) << view;
    }
    for (const auto* name : {"left/pipe", "left/nowhere", "right/nowhere", "right/pipe"})
        std::filesystem::remove(folder / name);
    EXPECT_EQ(1, Compare({}).status);
    EXPECT_EQ(0, Compare({"--sub-folders", "no"}).status) << "a pipe without a counterpart is no trouble";
}

TEST_F(CompareCommandTest, NothingIsLeftBehindWhereTheReaderHasEnough) {
    for (int i = 0; i < 400; ++i) folder.Write("left/" + std::to_string(i) + std::string(200, 'x'), "");
    folder.MakeFolder("logs");
    const std::string command = "TMPDIR='" + folder / "logs" + "' '" + testing::ConsoleProgram() +
                                "' compare '" + folder / "left" + "' '" + folder / "right" +
                                "' | head -c 1 > /dev/null";
    ASSERT_EQ(0, std::system(command.c_str()));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "logs"));
}

TEST_F(CompareCommandTest, AnInterruptLeavesNothingPrinted) {
    for (const auto* side : {"left/big", "right/big"}) {
        folder.Write(side, "");
        std::filesystem::resize_file(folder / side, std::uintmax_t{1900} << 20);  // sparse
    }
    folder.Write("left/a", "");
    const ProgramRun run = Compare({"--method", "contents"}, [&](pid_t process) {
        // Once it reads the large file, and not before.
        const std::string descriptors = "/proc/" + std::to_string(process) + "/fd";
        const auto reads = [&](const std::string& path) {
            std::error_code error;
            for (auto entry = std::filesystem::directory_iterator(descriptors, error);
                 !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
                if (std::filesystem::read_symlink(entry->path(), error) == path) return true;
            return false;
        };
        while (!reads(folder / "right/big")) ASSERT_EQ(0, kill(process, 0));
        kill(process, SIGINT);
    });
    EXPECT_EQ(2, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_THAT(run.err, HasSubstr("cancelled"));
}

// The page is well formed, whatever names hold.
TEST_F(CompareCommandTest, HtmlIsAPageThatAParserReads) {
    folder.Write("left/<script>alert(1)<", "1", 1'600'000'000);
    folder.Write("left/a & b \"c\".txt", "12", 1'600'000'000);
    folder.Write("left/bytes\xFF\x01", "1", 1'600'000'000);
    folder.Write("right/Sub/in.txt", "123", 1'600'000'000);
    folder.Write("left/Sub/other.txt", "1", 1'600'000'000);
    const ProgramRun run = Compare({"--format", "html"});
    EXPECT_EQ(1, run.status);
    folder.Write("page.html", run.out);
    const auto ask = [&](const char* path) {
        QProcess parser;
        parser.start(QStringLiteral("xmllint"),
                     {QStringLiteral("--html"), QStringLiteral("--noout"), QStringLiteral("--xpath"),
                      QLatin1String(path), QString::fromStdString(folder / "page.html")});
        EXPECT_TRUE(parser.waitForFinished());
        EXPECT_EQ("", parser.readAllStandardError().toStdString());
        return parser.readAllStandardOutput().trimmed().toStdString();
    };
    EXPECT_EQ("1", ask("count(//script)"));
    EXPECT_EQ("<script>alert(1)<", ask("string(//tbody/tr[1]/td[2])"));
    EXPECT_EQ("a & b \"c\".txt", ask("string(//tbody/tr[2]/td[2])"));
    EXPECT_EQ("6", ask("count(//tbody/tr)"));
    EXPECT_EQ("54", ask("count(//tbody/tr/td)"));
    EXPECT_EQ("9", ask("count(//thead//button)"));
}

TEST_F(CompareCommandTest, CsvHasALineForEachPair) {
    folder.Write("left/=1+1", "1", 1'600'000'000);
    folder.Write("right/b,c", "12", 1'600'000'000);
    const ProgramRun run = Compare({"--format", "csv"});
    EXPECT_EQ(1, run.status);
    EXPECT_EQ(
        "Sub-Folder,Left Name,Left Size,Left Modified,Left Type,Left Note,"
        "Right Name,Right Size,Right Modified,Right Type,Right Note\r\n"
        ",\"'=1+1\",1,2020-09-13T12:26:40.0000000Z,Orphan,,,,,,\r\n"
        ",,,,,,\"b,c\",2,2020-09-13T12:26:40.0000000Z,Orphan,\r\n",
        run.out);
}

}  // namespace
}  // namespace vantrel
