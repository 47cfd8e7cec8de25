#include <gtest/gtest.h>
#include <sys/stat.h>

#include "program_support.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

TEST(ConsoleHexdump, PrintsTheStretchAskedFor) {
    const TempFolder folder;
    folder.Write("file", "0123456789abcdefghij");
    const auto dump = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"hexdump", folder / "file"});
        const ProgramRun run = RunProgram(options);
        EXPECT_EQ(0, run.status);
        EXPECT_EQ("", run.err);
        return run.out;
    };
    const std::string last = "00000010  67 68 69 6a                                       |ghij|\n";
    EXPECT_EQ("00000000  30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66  |0123456789abcdef|\n" + last,
              dump({}));
    EXPECT_EQ(last, dump({"--offset=0x10"}));
    EXPECT_EQ("00000005  35 36                                             |56|\n",
              dump({"--offset", "5", "--length", "2"}));
    EXPECT_EQ("", dump({"--offset", "20"}));
    EXPECT_EQ("", dump({"--length", "0"}));
}

TEST(ConsoleHexdump, WhatIsNoFileIsTrouble) {
    const TempFolder folder;
    ASSERT_EQ(0, mkfifo((folder / "fifo").c_str(), 0600));
    for (const char* name : {"", "missing", "fifo"}) {
        const ProgramRun run = RunProgram({"hexdump", folder / name});
        EXPECT_EQ(2, run.status) << name;
        EXPECT_EQ("", run.out) << name;
        EXPECT_NE("", run.err) << name;
    }
}

}  // namespace
}  // namespace vantrel
