// The panes of the main window, from the options and through operations.
#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QTest>

#include "program_support.h"
#include "support/active_window.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using vantrel::testing::TestProgram;

TEST(MainPanes, AViewOfOnesOwnSaysWhatItHidesFromTheStart) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nViewType=Custom\r\nViewOlderFiles=False\r\n");
    const auto shown = [&] {
        const auto* hidden = application.Window().findChild<QLabel*>(QStringLiteral("StatusBar1.Hidden"));
        return (application.Window().StatusBar1().PanelText(4) + hidden->text()).toStdString();
    };
    EXPECT_EQ(shown(), "Custom: older hidden");
    program.CompareSamples();
    EXPECT_EQ(application.Window().StatusBar1().PanelText(4), QStringLiteral("Custom"));
    EXPECT_EQ(shown(), "Custom: older hidden");
    application.panes.ToggleView(ResultType::Older);
    EXPECT_EQ(shown(), "All");
    application.panes.ToggleView(ResultType::Same);
    EXPECT_EQ(shown(), "Custom: same hidden");
    application.GetCommands().Run("mnuViewDifferences");
    EXPECT_EQ(shown(), "Different");
}

TEST(MainPanes, PanesKeepTheirPlaceThroughAnOperation) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nShowDeleteConfirmations=False\r\n");
    for (int i = 0; i < 60; ++i)
        program.workspace.Write("left/n" + std::to_string(100 + i), "1", 1'600'000'000);
    program.CompareSamples();
    application.Window().resize(700, 450);
    const auto top = [&](Side side) {
        const int row = application.Window().Panes().View(side).TopItem();
        const std::size_t at = static_cast<std::size_t>(row);
        return std::string(application.panes.Pane(Side::Left)[at].text);
    };
    PaneView& left = application.Window().Panes().View(Side::Left);
    left.verticalScrollBar()->setValue(static_cast<int>(program.Row(Side::Left, "n120")));
    ASSERT_EQ(top(Side::Left), "n120");
    program.Select(Side::Left, "n125");
    QTest::keyClick(&left, Qt::Key_Delete, Qt::ShiftModifier);
    ASSERT_FALSE(program.workspace.Exists("left/n125"));
    ASSERT_TRUE(application.results.HasResult());
    for (const Side side : kBothSides) EXPECT_EQ(top(side), "n120");
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedObject()->text, "n126");
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedCount(), 0U);
    // What is still there is still selected after a refresh.
    program.Select(Side::Left, "n130");
    application.CompareDirs(CompareEnding::Silent);
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedCount(), 1U);
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedObject()->text, "n130");
    for (const Side side : kBothSides) EXPECT_EQ(top(side), "n120");
}

// As long as they are the defaults, the stored widths stay so, and the columns fit what they show.
TEST(MainPanes, ColumnsAreFittedWhileTheirWidthsAreTheDefaults) {
    TestProgram program;
    program.Start();
    const PanesWidget* panes = &program.Window().Panes();
    for (const Side side : kBothSides) {
        EXPECT_TRUE(panes->View(side).AreColumnsFitted());
        const PaneView::Widths widths = panes->View(side).ColumnWidths();
        EXPECT_EQ(widths[0] + widths[1] + widths[2], panes->View(side).viewport()->width());
    }
    program.Window().close();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("SourceColumnOne=0000000159"));
    program.application.reset();
    program.Start("[ColumnWidths]\r\nTargetColumnTwo=90\r\n");
    panes = &program.Window().Panes();
    EXPECT_TRUE(panes->View(Side::Left).AreColumnsFitted());
    EXPECT_THAT(panes->View(Side::Right).ColumnWidths(), ElementsAre(159, 90, 115));
}

TEST(MainPanes, KeysFindANameAndOpenTheMenuAtTheRow) {
    TestProgram program;
    frmMain& window = program.Start().Window();
    program.CompareSamples();
    ASSERT_TRUE(testing::Activate(window));
    PaneView& left = window.Panes().View(Side::Left);
    left.setFocus();
    QTest::keyClick(&left, Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(window.Panes().Find().isVisible());
    QTest::keyClicks(window.Panes().Find().txtFind, QStringLiteral("newer"));
    QTest::keyClick(window.Panes().Find().txtFind, Qt::Key_Escape);
    ASSERT_EQ(program.Get().panes.Pane(Side::Left).SelectedObject()->text, "newer.txt");
    QTest::keyClick(&left, Qt::Key_Return);
    QMenu* menu = program.Get().GetCommands().Menu("mnuDiffFileDblClick");
    ASSERT_TRUE(menu->isVisible());
    const QPoint place = left.viewport()->mapFromGlobal(menu->pos());
    EXPECT_EQ(left.rowAt(place.y()), static_cast<int>(program.Row(Side::Left, "newer.txt")));
    menu->close();
}

}  // namespace
}  // namespace vantrel
