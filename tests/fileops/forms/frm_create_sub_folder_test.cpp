#include "fileops/forms/frm_create_sub_folder.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "support/modal.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

class NewFolderForm : public ::testing::Test {
  protected:
    // Does `act` in the form over "place"; what it answers.
    std::string Answer(const std::function<void(frmCreateSubFolder&)>& act) {
        frmCreateSubFolder form(box.Get());
        WhenModal([&](QWidget*) { act(form); });
        return form.ShowForm(box.folder / "place");
    }
    TestToolbox box;
};

TEST_F(NewFolderForm, GivesTheTrimmedNameOrNothing) {
    EXPECT_EQ(Answer([](frmCreateSubFolder& form) {
                  EXPECT_EQ(form.windowTitle(), QStringLiteral("Create New Sub-Folder"));
                  EXPECT_EQ(form.Label1->text(),
                            QStringLiteral("Please enter a name for the new sub-folder:"));
                  EXPECT_EQ(form.txtNewSubFolderName->selectedText(), QStringLiteral("New Sub-Folder"));
                  QTest::keyClick(form.focusWidget(), Qt::Key_Return);
              }),
              "New Sub-Folder");
    EXPECT_EQ(Answer([](frmCreateSubFolder& form) {
                  QTest::keyClicks(form.focusWidget(), QStringLiteral("  a b "));
                  QTest::keyClick(form.OKButton, Qt::Key_Space);
              }),
              "a b");
    EXPECT_EQ(Answer([](frmCreateSubFolder& form) {
                  QTest::keyClicks(form.focusWidget(), QStringLiteral("   "));
                  QTest::keyClick(&form, Qt::Key_Return);
              }),
              "");
    EXPECT_EQ(Answer([](frmCreateSubFolder& form) { QTest::keyClick(form.CancelButton, Qt::Key_Space); }),
              "");
    EXPECT_EQ(Answer([](frmCreateSubFolder& form) { QTest::keyClick(&form, Qt::Key_Escape); }), "");
}

TEST_F(NewFolderForm, ShowsTheParentWithItsFoldersAndStaysThere) {
    for (const char* name : {"place/b", "place/A", "place/\xFF"}) box.folder.MakeFolder(name);
    box.folder.Write("place/file", "");
    Answer([&](frmCreateSubFolder& form) {
        const QListWidget& list = *form.Dir1;
        const int parent = list.currentRow();
        EXPECT_EQ(list.item(0)->text(), QStringLiteral("/"));
        EXPECT_EQ(list.item(parent)->text().trimmed(), QStringLiteral("place"));
        ASSERT_EQ(list.count(), parent + 4);
        EXPECT_EQ(list.item(parent + 1)->text().trimmed(), QStringLiteral("A"));
        EXPECT_EQ(list.item(parent + 2)->text().trimmed(), QStringLiteral("b"));
        QTest::keyClick(form.Dir1, Qt::Key_Down);
        QTest::mouseClick(form.Dir1->viewport(), Qt::LeftButton, {},
                          list.visualItemRect(list.item(parent + 2)).center());
        QApplication::processEvents();
        EXPECT_EQ(list.currentRow(), parent);
        EXPECT_TRUE(list.item(parent)->isSelected());
        ASSERT_FALSE(box.messages.shown.empty());
        EXPECT_EQ(box.messages.shown[0].text, "The parent folder cannot be changed here.");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
}

}  // namespace
}  // namespace vantrel::testing
