// What runs: how it shows, what closing the window does to it, and what is told when it is over.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <set>

#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using vantrel::testing::Call;
using vantrel::testing::ModalScript;
using vantrel::testing::PressButton;
using vantrel::testing::TestProgram;

class RunningJobsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        program.Start();
        program.CompareSamples();
        Options& options = program.Get().options;
        options.promptForSyncMethod = options.showSynchronizeConfirmations = false;
        options.showCopyConfirmations = options.showDeleteConfirmations = false;
    }
    void Run(const char* command) { program.Get().GetCommands().Run(command); }
    template <typename T>
    T* Child(const char* name) {
        return program.Window().findChild<T*>(QString::fromLatin1(name));
    }
    OperationLine& Line() { return *Child<OperationLine>("OperationLine"); }
    std::string LineText() { return Child<QLabel>("lblOperation")->text().toStdString(); }
    static QWidget* ShellProgressWindow() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->objectName() == QStringLiteral("frmShellProgress"))
                return window;
        return nullptr;
    }

    TestProgram program;
};

TEST_F(RunningJobsTest, AComparisonGoesOnWhereTheUserDoesNotWantItStopped) {
    for (int i = 0; i < 1000; ++i) program.workspace.Write("left/n" + std::to_string(i), "");
    program.messages.answers = {MessageAnswer::No};
    bool closed = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!program.Get().compare.RunningCompare || std::exchange(closed, true)) return;
        program.Window().close();
    });
    timer.start(0);
    Run("mnuFileCompareDirectories");
    QCoreApplication::processEvents();
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_EQ(program.messages.Line(0), "Vantrel: Stop the comparison?");
    EXPECT_EQ(program.messages.shown[0].defaultAnswer, MessageAnswer::No);
    EXPECT_TRUE(program.Window().isVisible());
    EXPECT_FALSE(program.Get().panes.ShowsNoResult());
}

TEST_F(RunningJobsTest, AClosedWindowStopsTheRunTellsItAndComparesNoMore) {
    struct Refresh : ResultPanesObserver {
        void RowsReset() override { ++resets; }
        int resets = 0;
    } refresh;
    program.Get().panes.AddObserver(&refresh);
    Run("mnuOptionsSyncMakeRightSameAsLeft");
    program.messages.answers = {MessageAnswer::Yes};
    bool closed = false;
    program.calls.before = [&](const testing::FaultySystemCalls::Record& record) {
        if (record.call != Call::Rename || std::exchange(closed, true)) return;
        // A second time while it stops asks nothing more.
        for (int i = 0; i < 2; ++i) program.Window().close();
        EXPECT_TRUE(program.Window().isVisible());
    };
    Run("mnuFileAutoSynch");
    program.Get().panes.RemoveObserver(&refresh);
    ASSERT_EQ(program.messages.shown.size(), 2U);
    EXPECT_EQ(program.messages.Line(0), "Vantrel: Stop the synchronization?");
    EXPECT_EQ(program.messages.Line(1),
              "Vantrel: The synchronization was stopped.\r\n\r\nSent 2 to the Recycle Bin, not done 4.");
    EXPECT_FALSE(program.workspace.Exists("right/Alone"));
    EXPECT_EQ(program.workspace.Read("right/binary.txt"), "123");
    EXPECT_EQ(refresh.resets, 0);
    EXPECT_THAT(program.folder.Read("SyncHist.Log"), HasSubstr("Cancelled"));
    QCoreApplication::processEvents();
    EXPECT_FALSE(program.Window().isVisible());
}

TEST_F(RunningJobsTest, TheLineTellsWhatWasDoneAndListsWhatWasNotByOneClick) {
    EXPECT_FALSE(Line().isVisible());
    program.workspace.MakeFolder("right/alone.txt");
    program.Select(Side::Left, "alone.txt");
    {
        ModalScript script;
        script.Await("msgShellError", [](QWidget& box) { PressButton(box, "Skip"); });
        Run("mnuFileCopySelectedFilesToTargetDirectory");
        EXPECT_TRUE(Line().isVisible());
        EXPECT_EQ(LineText(), "Failed 1");
        script.Await("frmErrorLog", [&](QWidget& viewer) {
            EXPECT_THAT(viewer.findChild<QPlainTextEdit*>()->toPlainText().toStdString(),
                        HasSubstr(program.left + "/alone.txt: "));
            viewer.close();
        });
        QTest::mouseClick(Child<QToolButton>("cmdNotDone"), Qt::LeftButton);
    }
    // The next operation tells of itself alone.
    program.Select(Side::Left, "newer.txt");
    Run("mnuFileCopySelectedFilesToTargetDirectory");
    EXPECT_EQ(LineText(), "Copied 1 (4 Bytes)");
    EXPECT_FALSE(Child<QToolButton>("cmdNotDone")->isVisible());
    Run("mnuOptionsSyncMakeRightSameAsLeft");
    Run("mnuFileCompareDirectories");
    EXPECT_FALSE(Line().isVisible()) << "it is no word on what was just compared";
    Run("mnuFileAutoSynch");
    EXPECT_THAT(LineText(), HasSubstr("Copied 3 ("));
    EXPECT_THAT(LineText(), HasSubstr("sent "));
    QTest::mouseClick(Child<QToolButton>("cmdCloseOperation"), Qt::LeftButton);
    EXPECT_FALSE(Line().isVisible());
}

TEST_F(RunningJobsTest, TheSubFoldersOfASynchronisationHaveOneProgressWindow) {
    for (int i = 0; i < 20; ++i) program.workspace.Write("left/Different/n" + std::to_string(i), "12345");
    Run("mnuFileCompareDirectories");
    Run("mnuOptionsSyncMakeRightSameAsLeft");
    std::set<QWidget*> windows;
    std::set<std::string> titles;
    std::string count;
    program.clock.step = 300;
    program.calls.before = [&](const testing::FaultySystemCalls::Record& record) {
        if (record.call != Call::Fchmod) return;
        QWidget* window = ShellProgressWindow();
        if (window == nullptr) return;
        titles.insert(window->windowTitle().toStdString());
        if (window->windowTitle() != QStringLiteral("Synchronizing the sub-folders...")) return;
        windows.insert(window);
        count = window->findChild<QLabel*>(QStringLiteral("lblCount"))->text().toStdString();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) QTest::keyClick(window, key);
    };
    Run("mnuFileAutoSynch");
    program.clock.step = 0;
    EXPECT_EQ(windows.size(), 1U);
    EXPECT_THAT(titles, Contains("Synchronizing the sub-folders..."));
    EXPECT_THAT(count, HasSubstr(" of 21 object(s), "));
    EXPECT_EQ(program.workspace.Read("right/Different/n19"), "12345");
}

TEST_F(RunningJobsTest, ARefreshWaitsForNoPainting) {
    auto* progress = Child<QWidget>("frmCompareProgress");
    progress->setUpdatesEnabled(false);
    constexpr int kForEver = 60'000;
    progress->findChild<QTimer*>(QStringLiteral("Timer1"))->setInterval(kForEver);
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(program.Get().CompareDirs(CompareEnding::Silent), CompareOutcome::Completed);
    EXPECT_LT(elapsed.elapsed(), kForEver);
}

}  // namespace
}  // namespace vantrel
