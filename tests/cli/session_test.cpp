#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "program_support.h"
#include "settings/option_table.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

class SessionOption : public ::testing::Test {
  protected:
    SessionOption() {
        folder.MakeFolder("left");
        folder.MakeFolder("right");
        folder.MakeFolder("program");
        for (const auto* name : {"left/a.txt", "twin/a.txt"}) folder.Write(name, "1", 1'600'000'000);
        folder.Write("right/a.txt", "2", 1'600'000'000);
        WriteSession("MakeRightSameAsLeft", "Thorough",
                     "[Source]\r\nDir1=" + (folder / "left/") +
                         "\r\n[Target]\r\nDir1=" + (folder / "right/") + "\r\n");
    }
    // Every option by its default but these two.
    void WriteSession(const std::string& method, const std::string& compareType, const std::string& rest) {
        std::string text, section;
        const Options defaults = DefaultOptions({"", "Sans", 10, 20'000, 20'000, 20'000, 20'000});
        for (const OptionLine& line : OptionTable()) {
            if (line.section != section) text += "[" + std::string(line.section) + "]\r\n";
            section = line.section;
            std::string value = OptionText(line, defaults);
            if (line.key == "SyncMethod") value = method;
            if (line.key == "CompareType") value = compareType;
            text += std::string(line.key) + "=" + value + "\r\n";
        }
        folder.Write("s.vts", text + rest);
    }
    TempFolder folder;
};

TEST_F(SessionOption, GivesOptionsAndFolders) {
    const std::string session = folder / "s.vts";
    const ProgramRun both = RunProgram({"compare", "--session", session});
    EXPECT_EQ(both.status, 1) << both.err;
    EXPECT_THAT(both.out, HasSubstr("a.txt"));
    // What is given besides comes first.
    EXPECT_EQ(RunProgram({"compare", "--session", session, "--method", "quick"}).status, 0);
    EXPECT_EQ(RunProgram({"compare", "--session", session, folder / "left", folder / "twin"}).status, 0);
    const ProgramRun plan =
        RunProgram({"sync", "--plan", "--session", session, "--program-folder", folder / "program"});
    EXPECT_THAT(plan.out, HasSubstr("Copy")) << plan.err;
    EXPECT_EQ(folder.Read("right/a.txt"), "2");
    const ProgramRun run =
        RunProgram({"sync", "--yes", "--session", session, "--program-folder", folder / "program"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.Read("right/a.txt"), "1");
}

TEST_F(SessionOption, WhatIsNoSessionIsRefusedAndNothingDone) {
    const auto refused = [&](const std::vector<std::string>& arguments, const std::string& why) {
        const ProgramRun run = RunProgram(arguments);
        EXPECT_EQ(run.status, 2) << run.out;
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr(why));
        EXPECT_EQ(folder.Read("right/a.txt"), "2");
    };
    const std::string session = folder / "s.vts";
    refused({"compare", "--session", folder / "gone.vts"}, "could not be read");
    refused({"compare", "--session", folder / "left/a.txt"}, "is no session");
    refused({"compare", "--session", session, "--settings", session}, "exclude each other");
    refused({"compare", "--session", session, folder / "left"}, "too few operands");
    refused({"compare"}, "too few operands");
    WriteSession("Sideways", "Quick", "");
    refused({"sync", "--yes", "--session", session, folder / "left", folder / "right"},
            "\"SyncMethod\" cannot be \"Sideways\"");
    WriteSession("MakeRightSameAsLeft", "Quick", "");
    refused({"sync", "--yes", "--session", session}, "has no folders");
}

}  // namespace
}  // namespace vantrel
