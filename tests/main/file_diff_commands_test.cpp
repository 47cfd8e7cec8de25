// The way from the main window to the difference viewer.
#include <gmock/gmock.h>

#include <QAction>
#include <QMenu>
#include <QTest>

#include "filetools/forms/frm_file_diffs.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

TEST(FileDiffCommands, TellWhatIsNoPairOfFiles) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    program.CompareSamples();
    const auto told = [&](std::string_view select) {
        if (!select.empty()) program.Select(Side::Left, select);
        program.messages.shown.clear();
        commands.Run("mnuFileShowFileDiffs");
        return program.messages.shown.empty() ? std::string() : program.messages.Line(0);
    };
    EXPECT_EQ(told(""), "Show File Differences: No file is selected");
    EXPECT_EQ(told("\\Different"), "Show File Differences: Selected object is not a file");
    EXPECT_EQ(told("alone.txt"), "Show File Differences: The selected file has no counterpart");
}

// The command, its twin in the pop-up of a row and the one of a double click open the viewer on the pair, and
// nothing of the main window can be started meanwhile.
TEST(FileDiffCommands, OpenTheViewerOnThePairOfTheRow) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    program.Select(Side::Left, "newer.txt");
    int opened = 0;
    for (const char* item :
         {"mnuFileShowFileDiffs", "mnuFilePopupShowDifferences", "mnuDblClickShowFileDiffs"}) {
        ModalScript script;
        script.Await("frmViewFileDiffOptions", [&](QWidget& dialog) { PressChild(dialog, "cmdShowDiffs"); });
        script.Await("frmFileDiffs", [&](QWidget& viewer) {
            ++opened;
            EXPECT_FALSE(application.GetCommands().Action("mnuFile")->isEnabled());
            EXPECT_EQ(application.viewFileDiffs.FileOne, program.left + "/newer.txt");
            EXPECT_EQ(application.viewFileDiffs.FileTwo, program.right + "/newer.txt");
            QTest::keyClick(&viewer, Qt::Key_Escape);
        });
        application.GetCommands().Action(item)->trigger();
        EXPECT_TRUE(application.GetCommands().Action("mnuFile")->isEnabled());
    }
    EXPECT_EQ(opened, 3);
    program.Window().Popups().DoubleClick(Side::Left, program.Row(Side::Left, "newer.txt"), {});
    QMenu* menu = application.GetCommands().Menu("mnuDiffFileDblClick");
    EXPECT_THAT(program.VisibleItems(menu), ElementsAre("mnuDblClickShowFileDiffs: Show File Differences",
                                                        "mnuDblClickFileOpen: Open File"));
    menu->close();
}

}  // namespace
}  // namespace vantrel
