#include "views/forms/frm_select.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "support/test_toolbox.h"
#include "views/forms/file_type_list_view.h"
#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using ::testing::ElementsAre;
using enum ResultType;

class FrmSelectTest : public ::testing::Test {
  protected:
    FrmSelectTest() {
        AddPair(hold, "a.txt", {Newer, 1'000}, {Older, 1'000});
        AddPair(hold, "b.png", {Same, 5'000}, {Same, 5'000});
        AddPair(hold, "c.txt", {Orphan, 50}, {});
        AddPair(hold, "Sub", {DifferentFolder, 9'000}, {DifferentFolder, 9'000});
        panes.ApplyViewTypes();
        for (const char* name : {"a.txt", "b.png", "c.txt"}) box.folder.Write(name, "");
    }
    void Open() {
        window =
            std::make_unique<frmSelect>(frmSelect::Parts{.tools = box.Get(),
                                                         .panes = panes,
                                                         .busy = busy,
                                                         .folders = {{box.folder.Path(), box.folder.Path()}},
                                                         .icons = {}});
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void Press(QWidget* at, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        if (at != window.get()) at->setFocus();
        QTest::keyClick(at, key, modifiers);
        QCoreApplication::processEvents();
    }
    void GoToTab(int tab) {
        while (window->tbsOptions->currentIndex() != tab)
            Press(window.get(), Qt::Key_Tab, Qt::ControlModifier);
    }
    void Select() { window->cmdSelect[0]->click(); }
    void Deselect() { Press(window->cmdSelect[1], Qt::Key_Space); }
    void TypeSize(const char* text) {
        GoToTab(1);
        window->txtByteSize->setFocus();
        window->txtByteSize->selectAll();
        QTest::keyClicks(window->txtByteSize, QLatin1String(text));
    }
    std::vector<std::size_t> Selected(Side side = Side::Left) const {
        return panes.Pane(side).SelectedRows();
    }

    testing::TestToolbox box;
    Options options;
    CViewSelections selections{options};
    HoldLists hold;
    BusyState busy;
    ResultPanes panes{hold, selections, box.reporter, box.messages, busy};
    std::unique_ptr<frmSelect> window;
};

TEST_F(FrmSelectTest, SelectsByTypeInThePaneChosenAndStaysOpen) {
    panes.SetCurrentListview(Side::Right);
    Open();
    EXPECT_TRUE(window->optPane[Side::Right]->isChecked());
    Select();
    EXPECT_THAT(Selected(Side::Right), ElementsAre(0, 1, 3));

    Press(window->optPane[Side::Left], Qt::Key_Space);
    ASSERT_TRUE(window->optPane[Side::Left]->isChecked());
    Press(window->chkFileType[static_cast<std::size_t>(Newer)], Qt::Key_Space);
    Press(window->chkFileType[static_cast<std::size_t>(DifferentFolder)], Qt::Key_Space);
    Press(window->chkFileType[static_cast<std::size_t>(Newer)], Qt::Key_Return);  // Select is the default
    EXPECT_THAT(Selected(), ElementsAre(0, 3));
    EXPECT_TRUE(Selected(Side::Right).empty());
    EXPECT_EQ(panes.CurrentListview(), Side::Left);
    EXPECT_EQ(panes.StatusText(Side::Left), SelectionText(panes.Pane(Side::Left)));
    Press(window->chkFileType[static_cast<std::size_t>(Newer)], Qt::Key_Space);
    Deselect();
    EXPECT_THAT(Selected(), ElementsAre(0));
    EXPECT_TRUE(window->isVisible());
    Press(window->cmdClose, Qt::Key_Space);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmSelectTest, AByteSizeMustBeANumber) {
    Open();
    TypeSize("1000");
    Press(window->txtByteSize, Qt::Key_Return);
    EXPECT_EQ(window->txtByteSize->text(), QStringLiteral("1,000"));
    EXPECT_THAT(Selected(), ElementsAre(1, 3));
    window->cboSizeOperators->setFocus();
    Press(window->cboSizeOperators, Qt::Key_Home);  // "equals"
    Select();
    EXPECT_THAT(Selected(), ElementsAre(0));

    TypeSize("many");
    Press(window->txtByteSize, Qt::Key_Return);
    ASSERT_EQ(box.messages.shown.size(), 1U);
    EXPECT_EQ(box.messages.Line(0), "Input Error: Byte Size is not a valid numeral");
    EXPECT_EQ(window->txtByteSize->text(), QStringLiteral("-1"));
    EXPECT_THAT(Selected(), ElementsAre(0)) << "nothing is selected by what was mistyped";

    TypeSize("x");
    window->cboDateOperator->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(box.messages.shown.size(), 2U);
    EXPECT_EQ(window->txtByteSize->text(), QStringLiteral("-1"));

    TypeSize("x");
    window->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(box.messages.shown.size(), 2U) << "a window that is closed asks for nothing";
}

TEST_F(FrmSelectTest, ADateTakesWholeDaysAndNoFolders) {
    // The files are of the day that the clock shows.
    Open();
    GoToTab(1);
    Select();
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 2, 3)) << "before tomorrow stands for any date";
    window->dtpDate->setFocus();
    window->dtpDate->setSelectedSection(QDateTimeEdit::DaySection);
    Press(window->dtpDate, Qt::Key_Up);
    Select();
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 2));
    Press(window->dtpDate, Qt::Key_Down);
    Press(window->dtpDate, Qt::Key_Down);
    Press(window->cboDateOperator, Qt::Key_Home);  // "is on"
    Select();
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 2));
    Press(window->cboDateOperator, Qt::Key_End);  // "is after"
    Select();
    EXPECT_THAT(Selected(), ElementsAre());
}

TEST_F(FrmSelectTest, TheTypesOfTheFilesAreListedAtTheFirstVisit) {
    Open();
    GoToTab(2);
    FileTypeList& list = *window->lstFileTypes;
    std::vector<std::string> patterns;
    for (int row = 0; row < list.count(); ++row) patterns.push_back(list.item(row)->text().toStdString());
    EXPECT_THAT(patterns, ElementsAre("All Files  (*)", ::testing::EndsWith("  (*.txt)"),
                                      ::testing::EndsWith("  (*.png)"), "User-defined..."));
    EXPECT_FALSE(patterns[2].starts_with("PNG File")) << "the desktop knows it by a better name";

    list.setFocus();
    list.setCurrentRow(0);
    Press(&list, Qt::Key_Down);
    Press(&list, Qt::Key_Return);
    EXPECT_THAT(Selected(), ElementsAre(0, 2));
    EXPECT_TRUE(box.messages.shown.empty());
    GoToTab(0);
    GoToTab(2);
    EXPECT_EQ(list.currentRow(), 1) << "it is not listed anew";
}

TEST_F(FrmSelectTest, TheUserIsAskedForPatternsOfHisOwn) {
    Open();
    GoToTab(2);
    FileTypeList& list = *window->lstFileTypes;
    box.messages.texts = {std::nullopt, "b*, \\*", std::nullopt};
    list.setFocus();
    Press(&list, Qt::Key_End);
    EXPECT_EQ(list.CurrentEntry(), "User-defined...");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.currentItem()).center());
    EXPECT_EQ(list.CurrentEntry(), "User-defined...  (b*, \\*)");
    Select();
    EXPECT_THAT(Selected(), ElementsAre(1, 3));
    Press(&list, Qt::Key_Space);  // cancelled: they stay
    EXPECT_EQ(list.CurrentEntry(), "User-defined...  (b*, \\*)");
    EXPECT_TRUE(box.messages.texts.empty());
}

TEST_F(FrmSelectTest, TabsGoRoundByKeys) {
    Open();
    std::vector<int> shown;
    for (int i = 0; i < 3; ++i) {
        Press(window->cmdClose, Qt::Key_Tab, Qt::ControlModifier);
        shown.push_back(window->tbsOptions->currentIndex());
    }
    Press(window->cmdClose, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    shown.push_back(window->tbsOptions->currentIndex());
    EXPECT_THAT(shown, ElementsAre(1, 2, 0, 2));
}

}  // namespace
}  // namespace vantrel
