#include "main/forms/frm_maintain_folder_lists.h"

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "platform/forms/qt_text.h"
#include "support/active_window.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;

class FolderLists : public ::testing::Test {
  protected:
    FolderLists() {
        form.show();
        EXPECT_TRUE(testing::Activate(form));
    }
    void Add(const std::string& typed) {
        form.txtNewFolderName->setFocus();
        form.txtNewFolderName->selectAll();
        QTest::keyClicks(form.txtNewFolderName, ToQString(typed));
        QTest::keyClick(form.cmdAdd, Qt::Key_Space);
    }
    std::string Said(std::size_t index) { return box.messages.Line(index); }

    testing::TestToolbox box;
    std::vector<PathHistory::Lists> saved;
    frmMaintainFolderLists form{box.Get(),
                                PathHistory::Lists{{{"/a/", "/b\xC3\xA9/"}, {std::string(kNoFolderPrompt)}}},
                                [this](const PathHistory::Lists& lists) { saved.push_back(lists); }};
};

TEST_F(FolderLists, TheOptionShowsOneListAndHidesTheOther) {
    EXPECT_TRUE(form.lstLeftFolderList->isVisible());
    EXPECT_FALSE(form.lstRightFolderList->isVisible());
    // The toolkit shows the button pressed for a moment before it acts.
    QTest::keyClick(&form, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return form.lstRightFolderList->isVisible(); }));
    EXPECT_FALSE(form.lstLeftFolderList->isVisible());
    EXPECT_EQ(form.lstRightFolderList->count(), 0) << "the prompt of an empty box is no folder";
    Add("/right");
    QTest::keyClick(&form, Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return form.lstLeftFolderList->isVisible(); }));
    Add("/left//x/");
    QTest::keyClick(form.OKButton, Qt::Key_Space);
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_THAT(saved[0][0], ElementsAre("/a/", "/b\xC3\xA9/", "/left/x/"));
    EXPECT_THAT(saved[0][1], ElementsAre("/right/"));
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FolderLists, AddTakesAtMostTwentyAndNothingTwice) {
    QTest::keyClick(form.cmdAdd, Qt::Key_Space);
    Add(std::string(kNoFolderPrompt));
    EXPECT_EQ(Said(0), "Add Folder to List: Please enter a folder name before pressing the Add button.");
    EXPECT_EQ(Said(1), Said(0));
    Add("/a");
    EXPECT_EQ(form.lstLeftFolderList->count(), 2);
    EXPECT_EQ(form.lstLeftFolderList->currentRow(), 0);
    for (const char* odd : {"/No Comparison Results", "/..", "/Press the folder icon with three dots -->",
                            "/\\Sub", "/;x=[y]", "/ blank "})
        Add(odd);
    EXPECT_EQ(form.lstLeftFolderList->count(), 8);
    for (int i = 9; i <= 20; ++i) Add("/" + std::to_string(i));
    EXPECT_EQ(box.messages.shown.size(), 2U);
    Add("/21");
    EXPECT_EQ(Said(2), "Maximum Folders in List: Only 20 folders may be saved per list.");
    EXPECT_EQ(form.lstLeftFolderList->count(), 20);
    // What is saved is read back as it was, whatever its folders are called.
    const PathHistory history(box.files, box.folders);
    ASSERT_TRUE(history.SaveFolderLists(form.Lists()).IsOk());
    PathHistory::Lists lists;
    ASSERT_TRUE(history.PopulateDirComboBoxesFromIniFile(lists).IsOk());
    EXPECT_EQ(lists[0], form.Lists()[0]);
    EXPECT_THAT(lists[1], ElementsAre(std::string(kNoFolderPrompt)));
}

TEST_F(FolderLists, KeysAddAndRemove) {
    form.txtNewFolderName->setFocus();
    QTest::keyClicks(form.txtNewFolderName, QStringLiteral("/new"));
    QTest::keyClick(form.txtNewFolderName, Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(form.lstLeftFolderList->count(), 3);
    form.lstLeftFolderList->setCurrentRow(0);
    QTest::keyClick(form.lstLeftFolderList, Qt::Key_Delete);
    EXPECT_EQ(form.lstLeftFolderList->count(), 2);
    form.lstLeftFolderList->clearSelection();
    QTest::keyClick(form.cmdDelete, Qt::Key_Space);
    EXPECT_EQ(Said(0),
              "Remove Folder from List: Please select a folder from the list before pressing the Remove "
              "button.");
    QTest::keyClick(form.txtNewFolderName, Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(saved.size(), 1U);
}

TEST_F(FolderLists, BrowseFillsTheBoxAndCancelDropsEverything) {
    box.messages.texts = {std::nullopt, "/picked"};
    QTest::keyClick(form.cmdBrowseForFolder, Qt::Key_Space);
    EXPECT_EQ(form.txtNewFolderName->text(), QString());
    QTest::keyClick(form.cmdBrowseForFolder, Qt::Key_Space);
    EXPECT_EQ(form.txtNewFolderName->text(), QStringLiteral("/picked"));
    Add("below");
    EXPECT_EQ(form.Lists()[0].back(), box.folders.startDir + "below/");
    QTest::keyClick(form.CancelButton, Qt::Key_Space);
    EXPECT_TRUE(saved.empty());
    EXPECT_FALSE(form.isVisible());
}

}  // namespace
}  // namespace vantrel
