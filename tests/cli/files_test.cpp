#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
