// The way from the main window to the Select Wizard and to the summary.
#include <gmock/gmock.h>

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "modal_support.h"
#include "program_support.h"
#include "views/forms/frm_compare_results.h"
#include "views/forms/frm_select.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

TEST(SelectCommands, TheWizardSelectsRowsAndGivesTheFocusBack) {
    TestProgram program;
    Application& application = program.Start();
    program.Window().show();
    program.Window().activateWindow();
    program.CompareSamples();
    program.Select(Side::Right, "same.txt");
    ModalScript script;
    script.Await("frmSelect", [&](QWidget& window) {
        EXPECT_EQ(program.Window().cursor().shape(), Qt::WaitCursor);
        auto& wizard = static_cast<frmSelect&>(window);
        QTest::keyClick(wizard.chkFileType[5], Qt::Key_Space);
        QTest::keyClick(wizard.chkFileType[8], Qt::Key_Space);
        PressChild(window, "cmdSelect(0)");
        PressChild(window, "cmdClose");
    });
    application.GetCommands().Action("mnuSelectOther")->trigger();
    EXPECT_EQ(program.Window().cursor().shape(), Qt::ArrowCursor);
    EXPECT_THAT(application.panes.Pane(Side::Right).SelectedRows(),
                ElementsAre(program.Row(Side::Right, "binary.txt"), program.Row(Side::Right, "\\Alone")));
    EXPECT_EQ(application.Window().focusWidget(), &application.Window().Panes().View(Side::Right));
}

TEST(SelectCommands, TheSummaryNeedsAComparisonAndFollowsOneWhereTheOptionSaysSo) {
    TestProgram program;
    program.showsSummaries = true;
    Application& application = program.Start();
    QAction* command = application.GetCommands().Action("mnuViewCompareResultsSummary");
    command->trigger();
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_EQ(program.messages.Line(0), "Comparison Results Summary: No comparison has been executed");

    QAction* option = application.GetCommands().Action("mnuOptionsShowGraphAfterCompare");
    ModalScript script;
    script
        .Await("frmCompareResults",
               [&](QWidget& window) {
                   const auto& summary = static_cast<frmCompareResults&>(window);
                   EXPECT_FALSE(application.busy.IsBusy());
                   EXPECT_TRUE(summary.chkAutoShowGraphAfterCompare->isChecked());
                   EXPECT_EQ(summary.lvwFileTypes->topLevelItem(0)->text(0).toStdString(),
                             program.left + "/");
                   EXPECT_EQ(summary.lvwFileTypes->topLevelItem(0)->text(1), QStringLiteral("6"));
                   QTest::keyClick(summary.chkAutoShowGraphAfterCompare, Qt::Key_Space);
                   PressChild(window, "OKButton");
               })
        .Await("frmCompareResults", [](QWidget& window) { PressChild(window, "CancelButton"); });
    program.CompareSamples();
    EXPECT_FALSE(application.options.showGraphAfterCompare);
    EXPECT_FALSE(option->isChecked());
    program.CompareSamples();  // without a summary now
    application.panes.ChooseView(kViewSimilar);
    command->trigger();
    EXPECT_FALSE(application.options.showGraphAfterCompare);
}

TEST(SelectCommands, TheNoticeOfALimitedPaneComesOnceForEachUser) {
    TestProgram program;
    for (const std::size_t wanted : {1U, 0U}) {
        program.messages.shown.clear();
        Application& application = program.Start();
        for (int i = 0; i < 2; ++i) {
            program.CompareSamples();
            program.Select(Side::Left, "same.txt");
            application.GetCommands().Run("mnuSelectShowOnlySelected");
            EXPECT_EQ(application.panes.Pane(Side::Left).Count(), 1U);
        }
        EXPECT_EQ(program.messages.shown.size(), wanted);
        program.application.reset();
    }
}

}  // namespace
}  // namespace vantrel
