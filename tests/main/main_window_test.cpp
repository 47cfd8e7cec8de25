#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <utility>

#include "program_support.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::TestProgram;

TEST(MainWindow, AFirstRunOpensTheHelpAndALaterOneDoesNot) {
    TestProgram program;
    program.Start();
    EXPECT_EQ(program.Window().windowTitle(), QStringLiteral("Vantrel v1.2.3"));
    EXPECT_THAT(program.desktop.asked, ElementsAre("open " + (program.folder / "help/index.html")));
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
    EXPECT_EQ(program.Get().panes.CurrentListview(), Side::Left);
    program.Window().close();
    program.application.reset();
    program.desktop.asked.clear();
    program.Start();
    EXPECT_THAT(program.desktop.asked, IsEmpty());
}

TEST(MainWindow, ShowsAComparisonAndItsTotals) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    const MainStatusBar& bar = application.Window().StatusBar1();
    EXPECT_EQ(bar.PanelText(1), QStringLiteral("Total 6 object(s)  (19 Bytes)"));
    EXPECT_EQ(bar.PanelText(4), QStringLiteral("All"));
    program.Select(Side::Left, "same.txt");
    EXPECT_EQ(bar.PanelText(1), QStringLiteral("Selected 1 object(s)  (4 Bytes)"));
    EXPECT_THAT(bar.PanelText(2).toStdString(), HasSubstr("Total 6"));
    application.GetCommands().Run("mnuViewDifferences");
    EXPECT_EQ(bar.PanelText(4), QStringLiteral("Different"));
    EXPECT_TRUE(application.panes.IsConsistent());
    // The sound of a comparison that the user asked for.
    EXPECT_THAT(program.sound.played, ElementsAre(program.folders.SupportFile(program.files, "vtdone.wav")));
}

// The endings that follow a comparison, in their order; each is there in its place only.
TEST(MainWindow, AComparisonEndsInItsOrder) {
    TestProgram program;
    Application& application = program.Start();
    std::vector<std::string> happened;
    class Reader : public BusyObserver {
      public:
        Reader(Application& application, std::vector<std::string>& happened)
            : application_(application), happened_(happened) {
            application.busy.AddObserver(this);
        }
        ~Reader() override { application_.busy.RemoveObserver(this); }
        void BusyChanged(bool busy) override {
            happened_.emplace_back(busy                               ? "busy"
                                   : application_.results.HasResult() ? "free, with a result"
                                                                      : "free, without");
            EXPECT_EQ(application_.panes.ShowsNoResult(), !application_.results.HasResult());
            EXPECT_EQ(application_.compare.RunningCompare, false);
        }

      private:
        Application& application_;
        std::vector<std::string>& happened_;
    };
    const auto pointer = [] { return QApplication::overrideCursor() ? ", waiting" : ""; };
    program.messages.onMessage = [&](const Message& message) {
        happened.push_back(message.title + pointer());
        EXPECT_FALSE(application.busy.IsBusy());
    };
    application.Comparison().ShowCompareResults = [&] {
        happened.push_back("summary" + std::string(pointer()));
        EXPECT_EQ(program.sound.played.size(), 1U) << "the sound comes before";
    };
    {
        const Reader reader(application, happened);
        application.compare.IgnoreFAT_NTFS_TwoSecDiff = false;
        program.volumes.drives[program.workspace / "left"] = {.fileSystem = "FAT"};
        program.volumes.drives[program.workspace / "right"] = {.fileSystem = "NTFS"};
        program.messages.answers = {MessageAnswer::No};
        program.CompareSamples();
        EXPECT_THAT(happened, ElementsAre("busy", "free, with a result", "summary", "File System Message"));
        EXPECT_EQ(application.Window().PathText(Side::Left), program.left + "/");
        EXPECT_THAT(application.Window().Box(Side::Right).Folders(), ElementsAre(program.right + "/"));

        // A silent one has neither sound nor summary, and the reminder comes once.
        happened.clear();
        EXPECT_EQ(application.CompareDirs(CompareEnding::Silent), CompareOutcome::Completed);
        EXPECT_THAT(happened, ElementsAre("busy", "free, with a result"));

        // Within a command it does not give the menus back.
        happened.clear();
        program.messages.onMessage = nullptr;
        {
            const BusyState::Job command(application.busy);
            application.CompareDirs(CompareEnding::Silent);
            EXPECT_TRUE(application.busy.IsBusy());
        }
        EXPECT_THAT(happened, ElementsAre("busy", "free, with a result"));
    }
    EXPECT_EQ(program.sound.played.size(), 1U);
}

TEST(MainWindow, AComparisonWithoutFoldersSaysSoAndEmptiesThePanes) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    application.Window().PopulatingFolderCombos = true;
    application.Window().SetPathText(Side::Right, "Press the folder icon with three dots -->");
    application.Window().PopulatingFolderCombos = false;
    ASSERT_FALSE(application.panes.ShowsNoResult());
    EXPECT_EQ(application.CompareDirs(CompareEnding::Announced), CompareOutcome::NoResult);
    EXPECT_EQ(program.messages.Line(0),
              "Compare Folders: Please select two folders to compare.  See Help file for details.");
    EXPECT_TRUE(application.panes.ShowsNoResult());
    EXPECT_TRUE(application.compare.CompareCancelled);
    EXPECT_FALSE(application.results.HasResult() || application.busy.IsBusy());
}

TEST(MainWindow, ErrorsOfAnAnnouncedComparisonAreOfferedWithTheLog) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    program.sound.played.clear();
    // Something goes wrong while it runs.
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (application.compare.RunningCompare) application.compare.ErrorsDuringCompare = true;
    });
    timer.start(0);
    program.messages.onMessage = [&](const Message& message) {
        if (message.title != "Errors Occurred") return;
        EXPECT_FALSE(application.busy.IsBusy());
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_THAT(program.sound.played, IsEmpty());
    };
    program.messages.answers = {MessageAnswer::No};
    application.CompareDirs(CompareEnding::Announced);
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_EQ(program.messages.Line(0),
              "Errors Occurred: Errors were encountered during the comparison.\r\n\r\nSee the file "
              "ERRORLOG.TXT for details.\r\n\r\nWould you like to view the log file now?");
    EXPECT_EQ(program.sound.played.size(), 1U);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    // One that nobody asked for does not wait for its window: no timer comes in between.
    program.calls.before = [&](const auto&) { application.compare.ErrorsDuringCompare = true; };
    application.CompareDirs(CompareEnding::Silent);
    program.calls.before = nullptr;
    EXPECT_TRUE(application.compare.ErrorsDuringCompare);
    EXPECT_EQ(program.messages.shown.size(), 1U);
}

TEST(MainWindow, ClosedWhileTheLogIsOfferedNothingFollows) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    program.sound.played.clear();
    int followed = 0;
    application.GetCommands().SetHandler("mnuViewErrorLog", [&] { ++followed; });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (application.compare.RunningCompare) application.compare.ErrorsDuringCompare = true;
    });
    timer.start(0);
    program.messages.onMessage = [&](const Message&) {
        program.Window().close();
        // The exit sound.
        program.sound.played.clear();
        program.volumes.drives[program.left].fileSystem = "FAT";
        program.volumes.drives[program.right].fileSystem = "NTFS";
    };
    program.messages.answers = {MessageAnswer::Yes};
    application.CompareDirs(CompareEnding::Announced);
    EXPECT_FALSE(program.Window().isVisible());
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_EQ(program.messages.shown[0].title, "Errors Occurred");
    EXPECT_EQ(followed, 0);
    EXPECT_THAT(program.sound.played, IsEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(MainWindow, ASilentComparisonNotesWhatItCouldNotListWithoutABox) {
    TestProgram program;
    // One thread opens a folder and lists it before it opens the next.
    Application& application = program.Start("[Extras]\r\nJobs=1\r\n");
    program.CompareSamples();
    for (const char* name : {"left/Sub/closed/x", "right/Sub/closed/x"}) program.workspace.Write(name, "");
    program.calls.before = [&](const testing::FaultySystemCalls::Record& record) {
        if (record.call == testing::Call::Open && record.path == "closed")
            program.calls.FailAt(testing::Call::GetDents, program.calls.Count(testing::Call::GetDents) + 1,
                                 EIO);
    };
    EXPECT_EQ(application.CompareDirs(CompareEnding::Silent), CompareOutcome::Completed);
    EXPECT_EQ(application.results.unlisted.size(), 1U);
    EXPECT_THAT(program.messages.shown, IsEmpty());
    EXPECT_THAT(program.folder.Read("ERR_DETAIL.TXT"),
                HasSubstr("Folder: " + (program.workspace / "left/Sub/closed")));
    EXPECT_THAT(program.folder.Read("ERRORLOG.TXT"), HasSubstr("Process: Listing the folder"));

    // Where that cannot be written either it is told.
    std::filesystem::remove(program.folder / "ERR_DETAIL.TXT");
    program.folder.MakeFolder("ERR_DETAIL.TXT");
    EXPECT_EQ(application.CompareDirs(CompareEnding::Silent), CompareOutcome::Completed);
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.shown[0].text, HasSubstr("ERR_DETAIL.TXT"));
}

TEST(MainWindow, AComparisonWhoseLogIsNotWholeSaysSo) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    bool broken = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!application.compare.RunningCompare || std::exchange(broken, true)) return;
        std::filesystem::remove(application.log.Path());
        std::filesystem::create_directory(application.log.Path());
        application.log.AppendNote("lost");
    });
    timer.start(0);
    EXPECT_EQ(application.CompareDirs(CompareEnding::Announced), CompareOutcome::Completed);
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.shown[0].text, HasSubstr("Source: frmMain.CompareDirs"));
    EXPECT_THAT(program.messages.shown[0].text, HasSubstr("ERRORLOG.TXT"));
    EXPECT_TRUE(application.results.HasResult());
}

TEST(MainWindow, EscapeInMidRunLeavesNoResultAndAWorkingWindow) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    for (int i = 0; i < 3000; ++i) program.workspace.Write("left/n" + std::to_string(i), "");
    bool pressed = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!application.compare.RunningCompare) return;
        pressed = true;
        QTest::keyClick(&application.Window(), Qt::Key_Escape);
    });
    timer.start(0);
    application.GetCommands().Run("mnuFileCompareDirectories");
    EXPECT_TRUE(pressed);
    EXPECT_TRUE(application.compare.CompareCancelled);
    EXPECT_TRUE(application.panes.ShowsNoResult());
    EXPECT_FALSE(application.busy.IsBusy());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(MainWindow, ClosedInMidRunItCancelsAndClosesBehindTheJob) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    for (int i = 0; i < 3000; ++i) program.workspace.Write("left/n" + std::to_string(i), "");
    program.messages.answers = {MessageAnswer::Yes};
    bool stayed = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!application.compare.RunningCompare || stayed) return;
        application.Window().close();
        stayed = application.Window().isVisible();
    });
    timer.start(0);
    application.GetCommands().Run("mnuFileCompareDirectories");
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(application.compare.CompareCancelled);
    QCoreApplication::processEvents();
    EXPECT_FALSE(application.Window().isVisible());
}

TEST(MainWindow, EndsInItsOrderAndInTwoSecondsAtLeast) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nExitSound=/sounds/bye.wav\r\n");
    application.GetCommands().Run("mnuViewSimilarities");
    program.clock.step = 150;
    application.GetCommands().Run("mnuFileExit");
    EXPECT_FALSE(application.Window().isVisible());
    EXPECT_EQ(program.clock.slept, 1850U);
    EXPECT_THAT(program.sound.played, ElementsAre("/sounds/bye.wav"));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("ViewType=Similar"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_THAT(program.messages.shown, IsEmpty());

    TestProgram slow;
    slow.Start("[Options]\r\nSoundOn=False\r\nExitSound=/sounds/bye.wav\r\n");
    slow.clock.step = 2500;
    slow.Window().close();
    EXPECT_EQ(slow.clock.slept, 0U);
    EXPECT_THAT(slow.sound.played, IsEmpty());
}

TEST(MainWindow, ComesBackWhereItWasAndWithItsColumns) {
    TestProgram program;
    program.Start();
    program.Window().setGeometry(30, 40, 700, 480);
    program.Window().Panes().View(Side::Right).SetColumnWidths({201, 82, 143});
    const QRect place = program.Window().geometry();
    program.Window().close();
    program.application.reset();
    program.Start();
    EXPECT_EQ(program.Window().geometry(), place);
    EXPECT_THAT(program.Window().Panes().View(Side::Right).ColumnWidths(), ElementsAre(201, 82, 143));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("Width=0000010500"));
    // A window left on a screen that is gone comes back to one that is there.
    program.application.reset();
    program.Start("[Form Dimensions]\r\nLeft=9000000\r\nTop=9000000\r\n");
    const QRect screen = program.Window().screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(program.Window().frameGeometry()));
    // One that is as large as the screen has room for its frame there.
    program.application.reset();
    program.Start("[Form Dimensions]\r\nLeft=0\r\nTop=0\r\nWidth=900000\r\nHeight=900000\r\n");
    EXPECT_TRUE(screen.contains(program.Window().frameGeometry()));
    EXPECT_GT(program.Window().frameGeometry().width(), screen.width() * 9 / 10);
}

TEST(MainWindow, RestoresDefaultsAndForgetsTheFolders) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nSoundOn=False\r\nCoolbarStyle=Hidden\r\n");
    program.CompareSamples();
    EXPECT_FALSE(application.sounds.SoundOn);
    const std::string before = program.folder.Read("vantrel.ini");

    // No is the default, and changes nothing.
    for (const char* item : {"mnuOptionsRestoreDefaults", "mnuFileRestoreDefaultSessionSettings"}) {
        application.GetCommands().Run(item);
        EXPECT_EQ(program.messages.shown.back().defaultAnswer, MessageAnswer::No);
        EXPECT_FALSE(application.sounds.SoundOn);
        EXPECT_TRUE(application.results.HasResult());
    }
    EXPECT_EQ(program.folder.Read("vantrel.ini"), before);

    program.messages.answers = {MessageAnswer::Yes};
    application.GetCommands().Run("mnuOptionsRestoreDefaults");
    EXPECT_FALSE(program.files.Exists(program.folder / "vantrel.ini"));
    // What was in force can be had back: options, folders and place.
    EXPECT_THAT(program.folder.Read("vantrel-previous.vts"),
                AllOf(HasSubstr("SoundOn=False"), HasSubstr("Dir1=" + program.left), HasSubstr("Width=")));
    EXPECT_TRUE(application.sounds.SoundOn);
    EXPECT_TRUE(application.Window().Strip(ToolbarStyle::Coolbar).isVisible());
    EXPECT_EQ(application.Window().PathText(Side::Left), kNoFolderPrompt);
    EXPECT_TRUE(application.panes.ShowsNoResult());
    EXPECT_EQ(application.Window().StatusBar1().PanelText(4), QString());
}

// What goes wrong on the way is reported, and the path boxes take the user's changes again.
TEST(MainWindow, DefaultsThatCannotBeShownLeaveAWorkingWindow) {
    TestProgram program;
    Application& application = program.Start();
    application.compare.CleanupPreviousSubFolderResults = [] {
        throw ErrorException(Error(ErrorNumber::DiskFull, "Disk full"));
    };
    program.messages.answers = {MessageAnswer::Yes};
    application.GetCommands().Run("mnuOptionsRestoreDefaults");
    ASSERT_EQ(program.messages.shown.size(), 2U);
    EXPECT_THAT(program.messages.shown[1].text, HasSubstr("Disk full"));
    EXPECT_FALSE(application.Window().PopulatingFolderCombos);
}

TEST(MainWindow, SettingsThatCannotBeSavedAreReportedAndTheWindowCloses) {
    TestProgram program;
    program.Start();
    program.folder.MakeFolder("vantrel.ini/in the way");
    program.Window().close();
    EXPECT_FALSE(program.Window().isVisible());
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.shown[0].text, HasSubstr("frmMain.SaveOptions"));
}

TEST(MainWindow, PanelsBeginBelowThePanesAtEverySize) {
    TestProgram program;
    program.Start();
    program.CompareSamples();
    for (const int width : {640, 800, 1200}) {
        program.Window().resize(width, 500);
        QCoreApplication::processEvents();
        const PaneView& left = program.Window().Panes().View(Side::Left);
        const PaneView& right = program.Window().Panes().View(Side::Right);
        EXPECT_LE(std::abs(left.width() - right.width()), 1);
        const auto* box = program.Window().Box(Side::Right).Combo();
        const auto* panel = program.Window().findChild<QWidget*>(QStringLiteral("StatusBar1.Panels(2)"));
        const int start = right.mapTo(&program.Window(), QPoint()).x();
        EXPECT_NEAR(box->mapTo(&program.Window(), QPoint()).x(), start, 2);
        EXPECT_NEAR(panel->mapTo(&program.Window(), QPoint()).x(), start, 3);
    }
}

TEST(DropOnPane, IsRefusedVisiblyWhileNobodyHandlesIt) {
    TestProgram program;
    program.Start();
    const QWidget* target = program.Window().Panes().View(Side::Right).viewport();
    EXPECT_TRUE(target->acceptDrops());
    program.Window().SetDropHandler(nullptr);
    EXPECT_FALSE(target->acceptDrops());
}

TEST(DropOnPane, CopiesOrMovesByKeysAndDrives) {
    TestProgram program;
    program.Start();
    program.CompareSamples();
    std::vector<std::string> done;
    program.Window().SetDropHandler(
        [&](DropAction action, const std::vector<std::string>& paths, const std::string& folder) {
            done.push_back((action == DropAction::Copy ? "copy " : "move ") + std::to_string(paths.size()) +
                           " to " + folder);
        });
    const auto drop = [&](const std::string& path, Qt::KeyboardModifiers keys) {
        done.clear();
        Q_EMIT program.Window()
            .Panes()
            .View(Side::Right)
            .UrisDropped({QUrl(QString::fromStdString("file://" + path)), QUrl(QStringLiteral("http://x/y"))},
                         keys);
        QCoreApplication::processEvents();
        return done.empty() ? std::string("nothing") : done.front();
    };
    const std::string file = program.left + "/same.txt";
    const std::string to = " 1 to " + program.right + "/";
    EXPECT_EQ(drop(file, Qt::NoModifier), "move" + to);
    EXPECT_EQ(drop(file, Qt::ControlModifier), "copy" + to);
    EXPECT_EQ(drop(file, Qt::ShiftModifier | Qt::ControlModifier), "copy" + to);
    program.volumes.drives[program.left] = {};
    EXPECT_EQ(drop(file, Qt::NoModifier), "copy" + to);
    EXPECT_EQ(drop(file, Qt::ShiftModifier), "move" + to);
    EXPECT_THAT(program.messages.shown, IsEmpty());
    EXPECT_EQ(drop(program.left + "/gone", Qt::NoModifier), "nothing");
    EXPECT_EQ(program.messages.Line(0), "Drag and Drop: The path " + program.left + "/gone was not found.");
}

}  // namespace
}  // namespace vantrel
