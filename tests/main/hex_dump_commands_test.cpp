// The way from the main window to the hex dump.
#include <gmock/gmock.h>

#include <QAction>
#include <QTest>

#include "filetools/forms/frm_hex_dump.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using vantrel::testing::ModalScript;
using vantrel::testing::TestProgram;

TEST(HexDumpCommands, NeedAFile) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    program.CompareSamples();
    for (const char* select : {"", "\\Different"}) {
        if (*select != '\0') program.Select(Side::Left, select);
        program.messages.shown.clear();
        commands.Run("mnuFileHexDump");
        ASSERT_EQ(1U, program.messages.shown.size());
        EXPECT_EQ("Unable to Show Hex Dump: No file selected.  Please select a file and try again.",
                  program.messages.Line(0));
    }
}

TEST(HexDumpCommands, ShowTheFileOfTheRowOnEitherSide) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    for (const Side side : kBothSides)
        for (const char* item : {"mnuFileHexDump", "mnuFilePopupHexDump"}) {
            program.Select(side, "newer.txt");
            std::string shown;
            ModalScript script;
            script.Await("frmHexDump", [&](QWidget& window) {
                shown = static_cast<frmHexDump&>(window).Contents().Path(Side::Left);
                EXPECT_FALSE(application.GetCommands().Action("mnuFile")->isEnabled());
                QTest::keyClick(&window, Qt::Key_Escape);
            });
            application.GetCommands().Action(item)->trigger();
            EXPECT_EQ((side == Side::Left ? program.left : program.right) + "/newer.txt", shown);
            EXPECT_TRUE(application.GetCommands().Action("mnuFile")->isEnabled());
        }
}

}  // namespace
}  // namespace vantrel
