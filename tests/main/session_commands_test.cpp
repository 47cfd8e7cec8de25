// Sessions: saved, loaded, had back, and opened from outside.
#include <gmock/gmock.h>

#include <QAction>
#include <QMenu>
#include <cerrno>

#include "main/application.h"
#include "main/commands/handlers.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::TestProgram;

constexpr const char* kLoad =
    "Load Session Settings: Vantrel Session (*.vts)|*.vts";  // the question for a file

class SessionCommands : public ::testing::Test {
  protected:
    SessionCommands() {
        program.Start();
        program.CompareSamples();
        Options().showCopyConfirmations = false;
    }
    void TearDown() override { EXPECT_FALSE(program.Get().busy.IsBusy()); }
    vantrel::Options& Options() { return program.Get().options; }
    void Run(const char* command) { program.Get().GetCommands().Run(command); }
    std::string File(const char* name) { return program.workspace / name; }
    // Saved under this name by the menu.
    void Save(const char* name) {
        program.messages.texts = {File(name)};
        Run("mnuFileSaveSessionSettings");
    }
    void Load(const char* name, MessageAnswer saveFirst) {
        program.messages.texts.push_front(File(name));
        program.messages.answers = {saveFirst};
        Run("mnuFileLoadSessionSettings");
    }
    std::vector<std::string> Said() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < program.messages.shown.size(); ++i)
            lines.push_back(program.messages.Line(i));
        program.messages.shown.clear();
        return lines;
    }
    std::vector<std::string> RecentItems() {
        return program.VisibleItems(program.Get().GetCommands().Menu("mnuFileRecentSessions"));
    }
    TestProgram program;
};

TEST_F(SessionCommands, ASavedSessionBringsBackOptionsFoldersAndLooks) {
    Options().coolbarStyle = CoolbarStyle::Hidden;
    program.Get().ShowOption(ShownBy::Strips);
    Save("work.vts");
    EXPECT_EQ(program.workspace.Read("work.vts"), program.folder.Read("vantrel.ini"));

    Options().showCopyConfirmations = true;
    Run("mnuOptionsToolbarShowCoolbar");
    program.Window().SetPathText(Side::Left, program.left + "/Different");
    Run("mnuFileCompareDirectories");
    program.messages.shown.clear();
    Load("work.vts", MessageAnswer::No);
    EXPECT_THAT(Said(),
                ElementsAre(kLoad, "Save Current Settings?: Do you wish to save the current settings?"));
    EXPECT_FALSE(Options().showCopyConfirmations);
    EXPECT_FALSE(program.Window().Strip(ToolbarStyle::Coolbar).isVisible());
    EXPECT_EQ(program.Window().PathText(Side::Left), program.left + "/");
    EXPECT_EQ(program.Window().PathText(Side::Right), program.right + "/");
    EXPECT_EQ(program.Get().Comparison().Dir(Side::Right).Path(), program.right + "/");
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
    for (int panel = 1; panel <= 3; ++panel)
        EXPECT_EQ(program.Window().StatusBar1().PanelText(panel), QString()) << panel;

    // What was in force comes back, its folders too.
    program.messages.answers = {MessageAnswer::Yes};
    Run("mnuFilePreviousSettings");
    EXPECT_TRUE(Options().showCopyConfirmations);
    EXPECT_TRUE(program.Window().Strip(ToolbarStyle::Coolbar).isVisible());
    EXPECT_EQ(program.Window().PathText(Side::Left), program.left + "/Different/");
}

TEST_F(SessionCommands, CancelEndsAndYesSavesFirst) {
    Save("work.vts");
    Options().showCopyConfirmations = true;
    program.messages.texts = {std::nullopt, std::nullopt};
    Run("mnuFileLoadSessionSettings");
    Run("mnuFileSaveSessionSettings");
    Load("work.vts", MessageAnswer::Cancel);
    EXPECT_TRUE(Options().showCopyConfirmations);
    program.messages.texts = {std::nullopt};
    Load("work.vts", MessageAnswer::Yes);
    EXPECT_TRUE(Options().showCopyConfirmations) << "the save was cancelled";
    program.messages.texts = {File("now.vts")};
    Load("work.vts", MessageAnswer::Yes);
    EXPECT_FALSE(Options().showCopyConfirmations);
    Load("now.vts", MessageAnswer::No);
    EXPECT_TRUE(Options().showCopyConfirmations);
}

TEST_F(SessionCommands, WhatIsNoSessionIsRefusedBeforeAnyQuestion) {
    Save("work.vts");
    std::string bad = program.workspace.Read("work.vts");
    bad.replace(bad.find("CompareType=") + 12, 5, "Slow!");
    program.workspace.Write("bad.vts", bad);
    program.messages.shown.clear();
    Load("bad.vts", MessageAnswer::No);
    Load("gone.vts", MessageAnswer::No);
    const auto said = Said();
    ASSERT_EQ(said.size(), 4U);
    EXPECT_EQ(said[1], "Load Session Settings: \"" + File("bad.vts") +
                           "\" is no session: it is damaged: \"CompareType\" cannot be \"Slow!\".\r\n\r\nThe "
                           "settings have not been changed.");
    EXPECT_THAT(said[3], HasSubstr("gone.vts\" could not be read"));
    EXPECT_TRUE(program.Get().results.HasResult());
    EXPECT_THAT(RecentItems(), ElementsAre(HasSubstr("work.vts")));
}

TEST_F(SessionCommands, WhereNothingCanBeWrittenTheSettingsStay) {
    Save("work.vts");
    Options().showCopyConfirmations = true;
    program.messages.shown.clear();
    program.calls.FailAll(testing::Call::Rename, ENOSPC);
    Load("work.vts", MessageAnswer::No);
    Save("other.vts");
    program.calls.ClearFaults();
    EXPECT_TRUE(Options().showCopyConfirmations);
    EXPECT_TRUE(program.Get().results.HasResult());
    EXPECT_FALSE(program.workspace.Exists("other.vts"));
    EXPECT_THAT(Said(), ::testing::Contains(HasSubstr("Unexpected Error in frmMain.SaveOptions")));
}

TEST_F(SessionCommands, RecentSessionsStandInTheFileMenu) {
    Commands& commands = program.Get().GetCommands();
    EXPECT_FALSE(commands.Menu("mnuFileRecentSessions")->menuAction()->isVisible());
    Save("a&b.vts");
    Save("second.vts");
    Options().showCopyConfirmations = true;
    EXPECT_TRUE(commands.Menu("mnuFileRecentSessions")->menuAction()->isVisible());
    EXPECT_THAT(RecentItems(), ElementsAre(::testing::AllOf(HasSubstr("(0): &1 "), HasSubstr("second.vts")),
                                           ::testing::AllOf(HasSubstr("(1): &2 "), HasSubstr("a&&b.vts"))));
    program.messages.answers = {MessageAnswer::No};
    commands.Action("mnuFileRecentSession(1)")->trigger();
    EXPECT_FALSE(Options().showCopyConfirmations);
    EXPECT_THAT(RecentItems().front(), HasSubstr("a&&b.vts"));
    // Also at the next start.
    program.application.reset();
    program.Start();
    EXPECT_EQ(RecentItems().size(), 2U);
}

TEST_F(SessionCommands, RestoredDefaultsCanBeTakenBack) {
    program.messages.answers = {MessageAnswer::No};
    Run("mnuFilePreviousSettings");
    EXPECT_THAT(Said(),
                ::testing::Contains("Previous Settings: There are no previous settings to return to."));
    program.messages.answers = {MessageAnswer::Yes, MessageAnswer::Yes};
    Run("mnuFileRestoreDefaultSessionSettings");
    EXPECT_TRUE(Options().showCopyConfirmations);
    EXPECT_NE(program.Window().PathText(Side::Left), program.left + "/");
    program.messages.answers = {MessageAnswer::Yes};
    Run("mnuFilePreviousSettings");
    EXPECT_FALSE(Options().showCopyConfirmations);
    EXPECT_EQ(program.Window().PathText(Side::Left), program.left + "/");
}

TEST_F(SessionCommands, ARequestFromOutsideWaitsForNoJob) {
    Save("work.vts");
    Options().showCopyConfirmations = true;
    {
        const BusyState::Job job(program.Get().busy);
        OpenSessionFromOutside(program.Get(), File("work.vts"));
    }
    EXPECT_TRUE(Options().showCopyConfirmations);
    program.messages.answers = {MessageAnswer::No};
    OpenSessionFromOutside(program.Get(), File("work.vts"));
    EXPECT_FALSE(Options().showCopyConfirmations);
    Options().showCopyConfirmations = true;
    program.messages.shown.clear();
    OpenSession(program.Get(), File("work.vts"), SaveFirst::No);
    EXPECT_FALSE(Options().showCopyConfirmations);
    EXPECT_THAT(Said(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
