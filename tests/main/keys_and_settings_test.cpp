// The keys that act in the whole window or in all windows, and settings that are kept as they change.
#include <gmock/gmock.h>

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QSessionManager>
#include <QTest>
#include <QWindow>

#include "main/forms/frm_help.h"
#include "main/help_key.h"
#include "platform/forms/qt_text.h"
#include "program_support.h"
#include "support/active_window.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using vantrel::testing::Activate;
using vantrel::testing::TestProgram;

TEST(MainWindowKeys, CompareGoToTheParentsAndExitFromAnywhere) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    frmMain& window = program.Window();
    ASSERT_TRUE(Activate(window));
    for (QWidget* at : {static_cast<QWidget*>(window.Box(Side::Left).Combo()),
                        static_cast<QWidget*>(&window.Panes().View(Side::Right))}) {
        at->setFocus();
        application.panes.RemoveListItemsAndShowNoCompareMsg();
        QTest::keyClick(at, Qt::Key_F5);
        EXPECT_FALSE(application.panes.ShowsNoResult()) << at->objectName().toStdString();
        ASSERT_TRUE(Activate(window));  // the window of the progress was so
    }
    window.SetPathText(Side::Left, program.left + "/Different");
    window.SetPathText(Side::Right, program.right + "/Different");
    QTest::keyClick(window.Box(Side::Right).Combo(), Qt::Key_Up, Qt::AltModifier);
    for (const Side side : kBothSides)
        EXPECT_EQ(window.PathText(side), (side == Side::Left ? program.left : program.right) + "/");
    EXPECT_TRUE(application.results.HasResult());
    ASSERT_TRUE(Activate(window));
    QTest::keyClick(&window.Panes().View(Side::Left), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

TEST(MainWindowKeys, F6GoesToTheOtherPane) {
    TestProgram program;
    program.Start();
    program.CompareSamples();
    frmMain& window = program.Window();
    ASSERT_TRUE(Activate(window));
    window.Box(Side::Left).Combo()->setFocus();
    for (const Side side : {Side::Left, Side::Right, Side::Left}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        EXPECT_EQ(QApplication::focusWidget(), &window.Panes().View(side));
    }
}

TEST(HelpKey, ShowsThePageOfTheWindow) {
    TestProgram program;
    for (const char* page : {"two-files.html", "differences.html", "hexdump.html"})
        program.folder.Write(std::string("help/") + page, "<p>help</p>");
    Application& application = program.Start();
    program.desktop.asked.clear();
    const auto open = [&](const std::string& page) { return "open " + (program.folder / ("help/" + page)); };
    QTest::keyClick(&program.Window().Panes().View(Side::Left), Qt::Key_F1);
    EXPECT_THAT(program.desktop.asked, ElementsAre(open("index.html")));

    // A window without a page of its own has that of the window below.
    for (const char* name : {"frmHexDump", "frmFileDiffs", "frmCompareFiles", "box"}) {
        QDialog window(&program.Window());
        window.setObjectName(QLatin1String(name));
        auto* control = new QComboBox(&window);
        window.show();
        program.desktop.asked.clear();
        QTest::keyClick(control, Qt::Key_F1);
        const std::string_view page = HelpPageOf(name);
        EXPECT_THAT(program.desktop.asked,
                    ElementsAre(open(page.empty() ? "index.html" : std::string(page))));
    }
    program.desktop.asked.clear();
    QTest::keyClick(&program.Window(), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_THAT(program.desktop.asked, IsEmpty());

    // Without a program for pages they stand in a window beside the main one, not on top of it.
    program.desktop.works = false;
    QTest::keyClick(&program.Window(), Qt::Key_F1);
    auto* help = program.Window().findChild<frmHelp*>();
    ASSERT_TRUE(help && help->isVisible());
    EXPECT_EQ(help->windowHandle()->transientParent(), nullptr);
    application.Window().close();
}

TEST(Settings, AreKeptAsTheyChange) {
    TestProgram program;
    Application& application =
        program.Start("[Options]\r\nSoundOn=True\r\n[Form Dimensions]\r\nWidth=0000010500\r\n");
    QCoreApplication::processEvents();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), Not(HasSubstr("ViewType"))) << "nothing has changed yet";
    application.GetCommands().Run("mnuOptionsSoundOn");
    QCoreApplication::processEvents();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("SoundOn=False"));
    program.CompareSamples();
    application.panes.ToggleView(ResultType::Orphan);
    QCoreApplication::processEvents();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("ViewOrphanFiles=False"));
    // The window's place only at an end, be it the one of the desktop's session.
    program.Window().resize(800, 500);
    application.GetCommands().Run("mnuOptionsSoundOn");
    QCoreApplication::processEvents();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("Width=0000010500"));
    alignas(QSessionManager) char manager[sizeof(QSessionManager)];
    Q_EMIT qGuiApp->commitDataRequest(reinterpret_cast<QSessionManager&>(manager));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("Width=0000012000"));

    // What cannot be written is not told at every change.
    program.calls.FailAll(testing::Call::Rename, EROFS);
    application.GetCommands().Run("mnuOptionsSoundOn");
    QCoreApplication::processEvents();
    EXPECT_THAT(program.messages.shown, IsEmpty());
}

TEST(WindowSizes, ComeBackAsTheUserLeftThem) {
    TestProgram program;
    program.Start();
    const auto open = [&program](QSize byUser) {
        QDialog window(&program.Window());
        window.setObjectName(QStringLiteral("frmSome"));
        window.resize(300, 200);
        window.show();
        QCoreApplication::processEvents();
        const QSize shown = window.size();
        if (byUser.isValid()) window.windowHandle()->resize(byUser);
        QCoreApplication::processEvents();
        window.close();
        return shown;
    };
    EXPECT_EQ(open({}), QSize(300, 200));
    EXPECT_EQ(open({333, 222}), QSize(300, 200)) << "nobody had resized it";
    EXPECT_EQ(open({}), QSize(333, 222));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("frmSome=333x222"));
    // What is no size of a screen is none.
    program.folder.Write("vantrel.ini", "[Window Sizes]\r\nfrmSome=-5x99999999999\r\n");
    EXPECT_EQ(open({}), QSize(300, 200));
}

TEST(StatusBar, WritesCountsAndSizesAsTheLocaleDoes) {
    TestProgram program;
    Application& application = program.Start();
    const LocaleFormats german("de_DE");
    application.panes.SetLocale(german);
    program.workspace.Write("left/large.bin", std::string(1'270'874, 'x'));
    program.CompareSamples();
    EXPECT_EQ(program.Window().StatusBar1().PanelText(1), QStringLiteral("Total 7 object(s)  (1,21 MB)"));
    for (int i = 0; i < 1200; ++i) program.workspace.Write("right/n" + std::to_string(i), "");
    application.GetCommands().Run("mnuFileCompareDirectories");
    EXPECT_THAT(program.Window().StatusBar1().PanelText(2).toStdString(), HasSubstr("Total 1.206 object(s)"));
}

TEST(WebItems, AreHiddenWhileTheyLeadNowhere) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    bool anyAddress = false;
    for (const char* item : {"mnuHelpWebNews", "mnuHelpWebFAQs", "mnuHelpWebFeedback"}) {
        EXPECT_EQ(commands.Action(item)->isVisible(), commands.IsEnabled(item)) << item;
        anyAddress |= commands.IsEnabled(item);
    }
    EXPECT_EQ(commands.Action("mnuHelpVantrelOntheWeb")->isVisible(), anyAddress);
}

}  // namespace
}  // namespace vantrel
