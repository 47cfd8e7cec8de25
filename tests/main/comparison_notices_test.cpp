// What the window tells and asks at the end of a comparison beside its errors.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <atomic>
#include <future>
#include <thread>

#include "program_support.h"
#include "support/sparse_file.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::TestProgram;

class LargeFilesOffer : public ::testing::Test {
  protected:
    LargeFilesOffer() {
        testing::WriteSparse(program.workspace, "left/big", (off_t{1} << 32) + 5, 1'600'000'000);
        testing::WriteSparse(program.workspace, "right/big", 4, 1'600'000'000);
        Start();
    }
    void Start() {
        program.Start("[Options]\r\nShowGraphAfterCompare=False\r\n" + extras);
        for (const Side side : kBothSides)
            program.Window().SetPathText(side, program.workspace / (side == Side::Left ? "left" : "right"));
    }
    // Compares, and gives the type of the pair.
    ResultType Compare(CompareEnding ending) {
        EXPECT_EQ(program.Get().CompareDirs(ending), CompareOutcome::Completed);
        return program.Get().panes.Pane(Side::Left)[program.Row(Side::Left, "big")].type;
    }

    TestProgram program;
    std::string extras;
};

TEST_F(LargeFilesOffer, YesComparesAgainAndIsKept) {
    EXPECT_EQ(Compare(CompareEnding::Silent), ResultType::Same);
    EXPECT_THAT(program.messages.shown, IsEmpty());
    program.messages.onMessage = [&](const Message&) { EXPECT_FALSE(program.Get().busy.IsBusy()); };
    program.messages.answers = {MessageAnswer::Yes};
    program.sound.played.clear();
    EXPECT_EQ(Compare(CompareEnding::Announced), ResultType::Binary);
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.shown[0].text, HasSubstr("Use true sizes for files of 2 GiB and more?"));
    EXPECT_EQ(program.sound.played.size(), 1U);
    EXPECT_EQ(program.Get().results.hold[Side::Left][0].size,
              Currency::FromWhole((std::int64_t{1} << 32) + 5));

    EXPECT_EQ(Compare(CompareEnding::Announced), ResultType::Binary);
    EXPECT_EQ(program.messages.shown.size(), 1U);
    program.Window().close();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("TrueSizes=True"));
}

TEST_F(LargeFilesOffer, NoIsKeptAndNotAskedAgain) {
    program.messages.answers = {MessageAnswer::No};
    for (int run = 0; run < 2; ++run) EXPECT_EQ(Compare(CompareEnding::Announced), ResultType::Same);
    EXPECT_EQ(program.messages.shown.size(), 1U);
    program.Window().close();
    const std::string kept = program.folder.Read("vantrel.ini");
    EXPECT_THAT(kept, HasSubstr("TrueSizes=False"));
    extras = kept.substr(kept.find("[Extras]"));
    program.application.reset();
    Start();
    EXPECT_EQ(Compare(CompareEnding::Announced), ResultType::Same);
    EXPECT_EQ(program.messages.shown.size(), 1U);
}

TEST_F(LargeFilesOffer, AWindowThatIsClosedMeanwhileComparesNoMore) {
    program.messages.onMessage = [&](const Message&) { program.Window().close(); };
    program.messages.answers = {MessageAnswer::Yes};
    program.Get().CompareDirs(CompareEnding::Announced);
    EXPECT_EQ(program.messages.shown.size(), 1U);
    EXPECT_EQ(program.Get().results.hold[Side::Left][0].type, ResultType::Same);
}

// Once for a pair, and not in a refresh.
TEST(NestedFolders, AreTold) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nShowGraphAfterCompare=False\r\n");
    program.workspace.Write("left/sub/file", "1");
    program.workspace.MakeFolder("other");
    const auto compare = [&](const char* left, const char* right, CompareEnding ending) {
        program.messages.shown.clear();
        application.Window().SetPathText(Side::Left, program.workspace / left);
        application.Window().SetPathText(Side::Right, program.workspace / right);
        EXPECT_EQ(application.CompareDirs(ending), CompareOutcome::Completed);
        return program.messages.shown.empty() ? std::string() : program.messages.Line(0);
    };
    EXPECT_EQ(compare("left", "left/sub", CompareEnding::Silent), "");
    EXPECT_EQ(compare("left", "left/sub", CompareEnding::Announced),
              "Compare Folders: The right folder lies inside the left folder:\r\n\r\n" +
                  (program.workspace / "left/sub") +
                  "\r\n\r\nWhat it holds is a part of both: whatever is done to it there is done here.");
    EXPECT_EQ(compare("left", "left/sub", CompareEnding::Announced), "");
    EXPECT_EQ(compare("left", "other", CompareEnding::Announced), "");
    EXPECT_THAT(compare("left/sub", "left", CompareEnding::Announced),
                HasSubstr("The left folder lies inside the right folder"));
}

// It never comes back, as on a mount whose server is gone.
TEST(FoldersThatDoNotAnswer, AreLeftBehindByACancelAndToldInTheStatusBar) {
    TestProgram program;
    program.Start("[Options]\r\nShowGraphAfterCompare=False\r\n[Extras]\r\nJobs=2\r\n");
    program.CompareSamples();
    program.clock.step = 100;
    EXPECT_TRUE(program.Window().StatusBar1().currentMessage().isEmpty());
    std::promise<void> letGo;
    const std::shared_future<void> free = letGo.get_future().share();
    std::atomic<bool> waits = false;
    program.calls.hold = [&](const auto& record) {
        if (record.call != testing::Call::Open || record.path != program.right || waits.exchange(true))
            return;
        free.wait();
    };
    QTimer escape;
    QObject::connect(&escape, &QTimer::timeout, [&] {
        if (waits) QTest::keyClick(&program.Window(), Qt::Key_Escape);
    });
    escape.start(1);
    EXPECT_EQ(program.Get().CompareDirs(CompareEnding::Announced), CompareOutcome::NoResult);
    EXPECT_EQ(program.Window().StatusBar1().currentMessage().toStdString(), kLeftBehind);
    EXPECT_THAT(program.messages.shown, IsEmpty());
    letGo.set_value();
    while (Workers::LeftBehind() > 0) std::this_thread::yield();
    program.calls.hold = nullptr;
}

}  // namespace
}  // namespace vantrel
