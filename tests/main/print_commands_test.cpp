// The way from the main window to what can be taken away of a result.
#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>

#include "modal_support.h"
#include "program_support.h"
#include "views/forms/frm_print_options.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

TEST(PrintCommand, NeedsRows) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    commands.Run("mnuFilePrint");
    ASSERT_EQ(1U, program.messages.shown.size());
    EXPECT_EQ("Unable to Print: There are no items to print.", program.messages.Line(0));
}

// What the view hides is printed where all is wanted.
TEST(PrintCommand, PrintsWhatIsShownOrAll) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    application.GetCommands().Run("mnuViewDifferences");
    for (const bool all : {false, true}) {
        program.messages.shown.clear();
        program.messages.texts = {program.workspace / "report.txt"};
        ModalScript script;
        script.Await("frmPrintOptions", [&](QWidget& window) {
            EXPECT_FALSE(application.GetCommands().Action("mnuFile")->isEnabled());
            if (all) PressChild(window, "chkPrintDisplayedOnly");
            PressChild(window, "chkPrintToFile");
            PressChild(window, "cmdPrint");
        });
        application.GetCommands().Run("mnuFilePrint");
        EXPECT_EQ("Print: Printing is complete.", program.messages.Line(program.messages.shown.size() - 1));
        const std::string report = program.workspace.Read("report.txt");
        EXPECT_THAT(report, StartsWith("Vantrel - [2020-09-13 12:26:40]\r\n\r\n" + program.left + "/\r\n"));
        EXPECT_THAT(report, HasSubstr("\r\n+  newer.txt "));
        if (all)
            EXPECT_THAT(report, HasSubstr("\r\n=  same.txt "));
        else
            EXPECT_THAT(report, Not(HasSubstr("\r\n=  ")));
    }
}

TEST(SaveResultsCommand, NeedsAResult) {
    TestProgram program;
    program.Start().GetCommands().Run("mnuFileSaveResults");
    ASSERT_EQ(1U, program.messages.shown.size());
    EXPECT_EQ("Save Results As: There are no results to be saved.", program.messages.Line(0));
}

TEST(SaveResultsCommand, SavesEachFormatOfWhatIsShownOrAll) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    program.CompareSamples();
    commands.Run("mnuViewDifferences");
    const auto save = [&](const char* format, bool all) {
        program.messages.shown.clear();
        program.messages.texts = {program.workspace / "saved"};
        ModalScript script;
        script.Await("frmSaveResults", [&](QWidget& window) {
            EXPECT_FALSE(commands.Action("mnuFile")->isEnabled());
            PressChild(window, format);
            if (all) PressChild(window, "chkDisplayedOnly");
            PressChild(window, "cmdSave");
        });
        commands.Run("mnuFileSaveResults");
        EXPECT_EQ("Save Results As: The results have been saved.",
                  program.messages.Line(program.messages.shown.size() - 1));
        return program.workspace.Read("saved");
    };
    EXPECT_THAT(save("optFormat(0)", false),
                ::testing::AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("newer.txt"), HasSubstr("in.txt"),
                                 Not(HasSubstr("same.txt"))));
    EXPECT_THAT(save("optFormat(0)", true), HasSubstr("same.txt"));
    EXPECT_THAT(save("optFormat(1)", true), HasSubstr("\r\n,\"same.txt\",4,"));
    EXPECT_THAT(save("optFormat(2)", false), StartsWith("{\"left\":{\"name\":\"alone.txt\""));

    // A failure says so, and the window stays for another try.
    program.messages.shown.clear();
    program.messages.texts = {program.workspace / "no/such/folder/saved"};
    ModalScript script;
    script.Await("frmSaveResults", [&](QWidget& window) {
        PressChild(window, "cmdSave");
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(window.isEnabled());
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    commands.Run("mnuFileSaveResults");
    EXPECT_THAT(program.messages.Line(program.messages.shown.size() - 1),
                HasSubstr("frmSaveResults.cmdSave_Click"));
}

}  // namespace
}  // namespace vantrel
