// The way from the main window to the duplicate finder and its options.
#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include "dupes/forms/frm_dupe_exclusions.h"
#include "dupes/forms/frm_find_duplicates.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using vantrel::testing::ModalScript;
using vantrel::testing::TestProgram;

TEST(DupeCommands, TheFinderStandsOverABusyMainWindow) {
    TestProgram program;
    Application& application = program.Start();
    ModalScript script;
    script.Await("frmFindDuplicates", [&](QWidget& window) {
        EXPECT_FALSE(application.GetCommands().Action("mnuFile")->isEnabled());
        auto& form = static_cast<frmFindDuplicates&>(window);
        for (const char* item : {"mnuFileCompareFiles", "mnuFileShowFileDiffs"})
            EXPECT_TRUE(form.GetCommands().IsEnabled(item)) << item;
        QTest::keyClick(form.chkDupeCriteria[5], Qt::Key_Space);
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    application.GetCommands().Action("mnuFileFindDuplicateFiles")->trigger();
    EXPECT_TRUE(application.GetCommands().Action("mnuFile")->isEnabled());
    EXPECT_TRUE(application.options.contentsMustMatch);
    application.GetCommands().RefreshChecks();
    EXPECT_TRUE(application.GetCommands().Action("mnuOptionsFindDupesCriteriaOpt(5)")->isChecked());
}

TEST(DupeCommands, OptionsOfTheMainWindowAskAsThoseOfTheFinderDo) {
    TestProgram program;
    Application& application = program.Start();
    Commands& commands = application.GetCommands();
    for (const char* item : {"mnuOptionsFindDupesIgnoreOpt(1)", "mnuOptionsFindDupesIgnoreOpt(2)",
                             "mnuOptionsFindDupesIgnoreOpt(3)"}) {
        program.messages.shown.clear();
        commands.Action(item)->trigger();
        ASSERT_EQ(1U, program.messages.shown.size()) << item;
        EXPECT_EQ("Warning!", program.messages.shown[0].title);
        EXPECT_TRUE(commands.Action(item)->isChecked()) << item;
    }
    program.messages.texts = {"/tmp/elsewhere"};
    commands.Action("mnuOptionsFindDupesRemovalOpt(3)")->trigger();
    EXPECT_EQ(RemovalMethod::MoveToOtherFolder, application.options.removalMethod);
    EXPECT_EQ("/tmp/elsewhere", application.options.userDefinedMoveFolderPath);
}

TEST(DupeCommands, ExclusionsAreSavedAtOnce) {
    TestProgram program;
    Application& application = program.Start();
    ModalScript script;
    script.Await("frmDupeExclusions", [&](QWidget& window) {
        auto& dialog = static_cast<frmDupeExclusions&>(window);
        QTest::keyClicks(dialog.txtFileName, QStringLiteral("*.mine"));
        QTest::keyClick(dialog.txtFileName, Qt::Key_Return);
        vantrel::testing::PressChild(window, "cmdOK");
    });
    application.GetCommands().Action("mnuOptionsFindDupesFilesToExclude")->trigger();
    std::string content;
    ASSERT_TRUE(program.files.ReadWholeFile(program.folder / "vantrel.ini", 1'000'000, content).IsOk());
    EXPECT_NE(std::string::npos, content.find("?*.mine"));
}

}  // namespace
}  // namespace vantrel
