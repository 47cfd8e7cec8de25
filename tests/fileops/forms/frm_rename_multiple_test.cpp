#include "fileops/forms/frm_rename_multiple.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include "platform/forms/qt_text.h"
#include "support/faulty_system_calls.h"
#include "support/modal.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class RenameWindow : public ::testing::Test {
  protected:
    RenameWindow() {
        for (const char* name : {"one two.txt", "b.txt", "c.txt"}) work.Write(name, name);
        work.MakeFolder("Sub");
    }
    // Shows the window for these objects and lets `act` use it; whether anything was renamed.
    bool Show(const std::function<void(frmRenameMultiple&)>& act) {
        frmRenameMultiple window({box.Get(), renames, {}}, {work.Path(), {}},
                                 {{"one two.txt", Sighting::Kind::File},
                                  {"b.txt", Sighting::Kind::File},
                                  {"Sub", Sighting::Kind::Folder}});
        WhenModal([&](QWidget*) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
            act(window);
            if (window.isVisible()) QTest::keyClick(&window, Qt::Key_Escape);
        });
        return window.ShowForm();
    }
    static std::vector<std::string> Rows(const frmRenameMultiple& window) {
        std::vector<std::string> rows;
        const QAbstractItemModel* model = window.lvwObjects->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            std::string text;
            for (int column = 0; column < model->columnCount(); ++column)
                text += (column == 0 ? "" : "|") + FromQString(model->index(row, column).data().toString());
            rows.push_back(text);
        }
        return rows;
    }
    static void Press(QWidget* control) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Space);
    }

    FaultySystemCalls calls;
    TestToolbox box{calls};
    TempFolder work;
    MultipleRename renames{box.Get()};
};

TEST_F(RenameWindow, ShowsTheOutcomeAsTheRulesAreTypedAndCarriesItOut) {
    EXPECT_TRUE(Show([&](frmRenameMultiple& window) {
        EXPECT_EQ(QStringLiteral("Rename Multiple Objects"), window.windowTitle());
        EXPECT_THAT(Rows(window), ElementsAre("one two.txt|one two.txt|Unchanged", "b.txt|b.txt|Unchanged",
                                              "\\Sub|\\Sub|Unchanged"));
        EXPECT_FALSE(window.cmdUndo->isVisible());
        EXPECT_FALSE(window.txtNamePrefix->isEnabled());
        Press(window.chkRemoveSpaces);
        Press(window.chkAddPrefixToFilename);
        EXPECT_TRUE(window.txtNamePrefix->isEnabled());
        QTest::keyClicks(window.txtNamePrefix, QStringLiteral("x-"));
        window.cboCapitalization->setFocus();
        QTest::keyClick(window.cboCapitalization, Qt::Key_Down);
        EXPECT_THAT(Rows(window),
                    ElementsAre("one two.txt|x-ONETWO.TXT|No", "b.txt|x-B.TXT|No", "\\Sub|\\x-SUB|No"));
        EXPECT_EQ(QStringLiteral("3 of 3 object(s) will get a new name."), window.lblOutcome->text());
        EXPECT_FALSE(work.Exists("x-B.TXT"));
        QTest::keyClick(&window, Qt::Key_Return);
    }));
    EXPECT_EQ("b.txt", work.Read("x-B.TXT"));
    EXPECT_TRUE(work.Exists("x-SUB") && work.Exists("x-ONETWO.TXT") && work.Exists("c.txt"));
    EXPECT_TRUE(box.messages.shown.empty());
}

TEST_F(RenameWindow, ConflictsAreMarkedAndPassedOver) {
    EXPECT_TRUE(Show([&](frmRenameMultiple& window) {
        Press(window.chkChangeFileName);
        QTest::keyClicks(window.txtFileName, QStringLiteral("C"));
        EXPECT_THAT(Rows(window), ElementsAre("one two.txt|C.txt|Yes", "b.txt|C.txt|Yes", "\\Sub|\\C|No"));
        EXPECT_THAT(FromQString(window.lblOutcome->text()), HasSubstr("Conflicts: 2."));
        // A second preview tells the same.
        Press(window.cmdPreview);
        EXPECT_EQ("\\Sub|\\C|No", Rows(window)[2]);
        Press(window.cmdOK);
    }));
    EXPECT_TRUE(work.Exists("C") && work.Exists("b.txt") && work.Exists("one two.txt"));
    EXPECT_TRUE(box.messages.shown.empty());
    // With no rule nothing happens.
    EXPECT_FALSE(Show([](frmRenameMultiple& window) { Press(window.cmdOK); }));
}

TEST_F(RenameWindow, NumbersAreCheckedWhenTheirFieldIsLeft) {
    Show([&](frmRenameMultiple& window) {
        EXPECT_FALSE(window.txtLength->isEnabled());
        Press(window.chkNameAutoNumber);
        EXPECT_TRUE(window.txtLength->isEnabled() && window.optNumberExtension->isEnabled());
        EXPECT_EQ("one two.txt|00000001.txt|No", Rows(window)[0]);
        Press(window.optNumberExtension);
        EXPECT_EQ(QStringLiteral("3"), window.txtLength->text());
        EXPECT_EQ("b.txt|b.002|No", Rows(window)[1]);
        const std::pair<QLineEdit*, std::string> fields[]{{window.txtStartsWith, "starting"},
                                                          {window.txtIncrement, "increment"},
                                                          {window.txtLength, "length"}};
        for (const auto& [field, word] : fields) {
            box.messages.shown.clear();
            field->setFocus();
            field->setText(QStringLiteral(" 0 "));
            QTest::keyClick(field, Qt::Key_Tab);
            QTest::qWait(0);
            ASSERT_EQ(1U, box.messages.shown.size());
            EXPECT_EQ("Invalid Value: \"0\" is not a valid " + word +
                          " value.\r\n\r\nPlease enter a positive whole number.",
                      box.messages.Line(0));
            EXPECT_TRUE(field->hasFocus() && field->hasSelectedText());
            EXPECT_EQ(QString::fromLatin1(word == "length" ? "3" : "1"), field->text());
        }
        // By the key that stands for OK no field is left.
        window.txtIncrement->setText(QStringLiteral("x"));
        QTest::keyClick(window.txtIncrement, Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(2U, box.messages.shown.size());
    });
    EXPECT_TRUE(work.Exists("b.txt"));
}

TEST_F(RenameWindow, TellsProblemsAndUndoesTheLastBatch) {
    EXPECT_TRUE(Show([&](frmRenameMultiple& window) {
        Press(window.chkChangeExtension);
        QTest::keyClicks(window.txtExtension, QStringLiteral(".md"));
        work.Write("b.md", "came between");
        Press(window.cmdOK);
    }));
    ASSERT_EQ(1U, box.messages.shown.size());
    EXPECT_THAT(box.messages.Line(0),
                HasSubstr("Multiple Rename: There were problems.  Some objects' names were not changed."));
    EXPECT_EQ("b.txt", work.Read("b.txt"));
    EXPECT_TRUE(work.Exists("one two.md") && work.Exists("Sub.md"));
    EXPECT_TRUE(Show([&](frmRenameMultiple& window) { Press(window.cmdUndo); }));
    EXPECT_TRUE(work.Exists("one two.txt") && work.Exists("Sub"));
    EXPECT_EQ(1U, box.messages.shown.size());
}

TEST_F(RenameWindow, WithoutAJournalOrAFolderNothingIsBegun) {
    EXPECT_FALSE(Show([&](frmRenameMultiple& window) {
        Press(window.chkAddSuffixToFilename);
        QTest::keyClicks(window.txtNameSuffix, QStringLiteral("1"));
        calls.FailAll(Call::Fsync, ENOSPC);
        Press(window.cmdOK);
        calls.ClearFaults();
        EXPECT_TRUE(window.isVisible() && window.cmdOK->isEnabled());
    }));
    ASSERT_EQ(1U, box.messages.shown.size());
    EXPECT_EQ("Unexpected Error in frmRenameMultiple.cmdOK_Click", box.messages.shown[0].title);
    EXPECT_THAT(box.messages.shown[0].text, HasSubstr("Nothing was renamed"));
    EXPECT_TRUE(work.Exists("b.txt"));
    frmRenameMultiple gone({box.Get(), renames, {}}, {work / "gone", {}}, {{"a", Sighting::Kind::File}});
    EXPECT_FALSE(gone.ShowForm());
    EXPECT_EQ("Unexpected Error in frmRenameMultiple.Form_Load", box.messages.shown[1].title);
}

}  // namespace
}  // namespace vantrel::testing
