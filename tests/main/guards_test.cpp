#include <gmock/gmock.h>

#include <QAction>
#include <QTest>
#include <QToolButton>
#include <new>
#include <stdexcept>

#include "program_support.h"

namespace vantrel {
namespace {

using vantrel::testing::TestProgram;

// What can come out of a handler, and what the user is told of it; nothing of a cancel.
struct Thrown {
    const char* name;
    void (*raise)();
    const char* told;
};
constexpr Thrown kThrown[] = {
    {"Error", [] { throw ErrorException(Error(ErrorNumber::DiskFull, "Disk full")); },
     "Error: Disk full\r\n"},
    {"bad_alloc", [] { throw std::bad_alloc(); }, "Error: Out of memory\r\n"},
    {"logic_error", [] { throw std::logic_error("odd"); }, "Error: odd\r\n"},
    {"cancel", [] { throw Cancelled(); }, nullptr},
};

// The ways by which the user starts something, each with the routine that is then named.
struct Way {
    const char* command;  // whose handler throws; null where the way has none
    const char* routine;
    void (*start)(TestProgram&);
};

const Way kWays[] = {
    {"mnuFileCompareParents", "frmMain.mnuFileCompareParents_Click",
     [](TestProgram& program) { program.Get().GetCommands().Action("mnuFileCompareParents")->trigger(); }},
    {"mnuOptionsFindDupesCriteriaOpt(2)", "frmMain.mnuOptionsFindDupesCriteriaOpt_Click",
     [](TestProgram& program) {
         program.Get().GetCommands().Action("mnuOptionsFindDupesCriteriaOpt(2)")->trigger();
     }},
    {"mnuFileAddToExcludeFilter", "frMain.mnuFileAddToExcludeFilter",
     [](TestProgram& program) {
         program.Get().GetCommands().Action("mnuFileAddToExcludeFilter")->trigger();
     }},
    {"mnuFileDeletePermanently", "frmMain.mnuFileDeletePermanently_Click",
     [](TestProgram& program) {
         QTest::keyClick(&program.Window().Panes().View(Side::Left), Qt::Key_Delete, Qt::ShiftModifier);
     }},
    {"mnuFileCompareDirectories", "frmMain.mnuFileCompareDirectories_Click",
     [](TestProgram& program) {
         program.Window().Strip(ToolbarStyle::Coolbar).Button("mnuFileCompareDirectories")->click();
     }},
    {"OpenHelpFile", "frmMain.VTToolbar_ButtonClick",
     [](TestProgram& program) {
         program.Window().Strip(ToolbarStyle::Coolbar).Button("OpenHelpFile")->click();
     }},
    {"mnuFileOpenFile", "frmMain.mnuFileOpenFile_Click",  // the command that the item stands for
     [](TestProgram& program) {
         program.Window().Popups().Prepare(Side::Left);
         program.Get().GetCommands().Action("mnuFilePopupOpen")->trigger();
     }},
    {"mnuFolderPopupExplore", "frmMain.mnuFolderPopupExplore_Click",
     [](TestProgram& program) {
         Q_EMIT program.Window()
             .Panes()
             .View(Side::Left)
             .RowActivated(program.Row(Side::Left, "\\Identical"), {});
     }},
};

// Every handler is replaced by one that throws: what comes out is told once, under the routine's name, and
// afterwards the window takes commands as before.
TEST(Guards, WhatComesOutOfAHandlerIsToldAndEndsNothingElse) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    program.Select(Side::Left, "same.txt");
    for (const Way& way : kWays)
        for (const Thrown& thrown : kThrown) {
            SCOPED_TRACE(std::string(way.command) + " throws " + thrown.name);
            program.messages.shown.clear();
            application.GetCommands().SetHandler(way.command, thrown.raise);
            way.start(program);
            ASSERT_EQ(program.messages.shown.size(), thrown.told ? 1U : 0U);
            if (thrown.told) {
                EXPECT_EQ(program.messages.shown[0].title, "Unexpected Error in " + std::string(way.routine));
                EXPECT_THAT(program.messages.shown[0].text, ::testing::StartsWith(thrown.told));
            }
            bool ran = false;
            application.GetCommands().SetHandler(way.command, [&] { ran = true; });
            way.start(program);
            EXPECT_TRUE(ran);
        }
}

TEST(Guards, DropsAndPathIconsStandInsideThemToo) {
    TestProgram program;
    program.Start();
    program.CompareSamples();
    frmMain& window = program.Window();
    for (const Thrown& thrown : kThrown) {
        SCOPED_TRACE(thrown.name);
        program.messages.shown.clear();
        window.SetDropHandler(
            [&](DropAction, const std::vector<std::string>&, const std::string&) { thrown.raise(); });
        Q_EMIT window.Panes()
            .View(Side::Right)
            .UrisDropped({QUrl::fromLocalFile(QString::fromStdString(program.left + "/same.txt"))},
                         Qt::ControlModifier);
        QCoreApplication::processEvents();
        frmMain::Hooks hooks;
        hooks.pathIcon = [&](Side, PathIcon) { thrown.raise(); };
        window.SetHooks(hooks);
        window.Box(Side::Left).Icon(PathIcon::UpToParent)->click();
        std::vector<std::string> titles;
        for (const Message& message : program.messages.shown) titles.push_back(message.title);
        if (thrown.told)
            EXPECT_THAT(titles,
                        ::testing::ElementsAre("Unexpected Error in frmMain.lvwTargetDirFiles_OLEDragDrop",
                                               "Unexpected Error in frmMain.imgSelectSource_Click"));
        else
            EXPECT_THAT(titles, ::testing::IsEmpty());
        EXPECT_FALSE(program.Get().busy.IsBusy());
    }
}

}  // namespace
}  // namespace vantrel
