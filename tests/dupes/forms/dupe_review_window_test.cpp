// The groups, the files of one, their marks and their removal.
#include <QHeaderView>
#include <QPlainTextEdit>

#include "dupe_window_support.h"
#include "dupes/forms/dupe_preview.h"
#include "dupes/forms/frm_restore_dupes.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using vantrel::testing::DupeWindowTest;
using vantrel::testing::WhenModal;

using DupeReview = DupeWindowTest;

TEST_F(DupeReview, AGroupShowsItsFilesInEightColumnsWithoutAMark) {
    WriteSamples();
    Search();
    EXPECT_THAT(Lines(), ElementsAre("one.txt - (3 files)", "two.txt - (2 files)"));
    EXPECT_EQ("5 duplicates found in 2 groups.  (14 Bytes)", Status());
    EXPECT_EQ(0, Window().Details().rowCount());
    Key(Window().lstDupeGroups, Qt::Key_Home);
    Window().SelectGroup(0);
    std::vector<std::string> captions;
    for (int i = 0; i < Window().Details().columnCount(); ++i)
        captions.push_back(
            Window().Details().headerData(i, Qt::Horizontal, Qt::DisplayRole).toString().toStdString());
    EXPECT_THAT(captions, ElementsAre("Name", "Path", "Size", "Create Date/Time", "Last Mod Date/Time",
                                      "Attributes", "Version Stamp", "CRC32"));
    EXPECT_THAT(Column(DupeColumn::Path), ElementsAre(In("a/one.txt"), In("b/one.txt"), In("c/one.txt")));
    EXPECT_THAT(Column(DupeColumn::Crc32), ElementsAre("Not calculated", "Not calculated", "Not calculated"));
    EXPECT_EQ("2017-07-14 02:40:00", Cell(0, DupeColumn::LastModTime));
    EXPECT_EQ("0 files marked, 0 Bytes to win, 0 kept", Marks());
}

// A blank marks what is selected; the marks of a group end when another one is opened.
TEST_F(DupeReview, MarksBelongToTheOpenGroup) {
    WriteSamples();
    Search().SelectGroup(0);
    SelectFiles({1, 2});
    Key(Window().lvwDupeDetails, Qt::Key_Space);
    EXPECT_EQ("2 files marked, 4 Bytes to win, 1 kept", Marks());
    SelectFiles({2});
    Key(Window().lvwDupeDetails, Qt::Key_Space);
    EXPECT_EQ("1 files marked, 2 Bytes to win, 2 kept", Marks());
    Window().SelectGroup(1);
    EXPECT_EQ("0 files marked, 0 Bytes to win, 0 kept", Marks());
    Run("mnuMarkKeep");
    Window().Details().Mark({0}, true);
    Window().SelectGroup(0);
    EXPECT_EQ("1 files marked, 4 Bytes to win, 1 kept", Marks());
}

TEST_F(DupeReview, CrcIsForAGroup) {
    WriteSamples();
    Search();
    Key(Window().cmdCRC32, Qt::Key_Space);
    EXPECT_THAT(Shown(), ElementsAre("Compare Contents: Select a group of duplicates."));
    Window().SelectGroup(1);
    const std::string status = Status();
    Key(Window().cmdCRC32, Qt::Key_Space);
    EXPECT_EQ(Cell(0, DupeColumn::Crc32), Cell(1, DupeColumn::Crc32));
    EXPECT_NE("Not calculated", Cell(0, DupeColumn::Crc32));
    EXPECT_EQ(status, Status());
}

TEST_F(DupeReview, RemovalFollowsInRowsLinesAndCounts) {
    WriteSamples();
    Search().SelectGroup(0);
    Key(Window().cmdRemoveMarkedFiles, Qt::Key_Space);
    EXPECT_THAT(Shown(), ElementsAre("Remove Files: No files have been checkmarked.\r\n\r\nTo checkmark a "
                                     "file for removal, \r\nclick once in the box to the left of the file."));
    settings.SetRemoveMethod(RemovalMethod::Delete);
    Window().Details().Mark({2}, true);
    Key(Window().cmdRemoveMarkedFiles, Qt::Key_Space);
    EXPECT_FALSE(box.files.Exists(In("c/one.txt")));
    EXPECT_THAT(Lines(), ElementsAre("one.txt - (2 files)", "two.txt - (2 files)"));
    EXPECT_THAT(Column(DupeColumn::Path), ElementsAre(In("a/one.txt"), In("b/one.txt")));
    EXPECT_EQ("4 duplicates found in 2 groups.  (12 Bytes)", Status());
    SelectFiles({0});
    Run("mnuDetailsRemoveFile");
    EXPECT_FALSE(box.files.Exists(In("a/one.txt")));
    EXPECT_TRUE(box.files.Exists(In("b/one.txt")));
    EXPECT_THAT(Lines(), ElementsAre("two.txt - (2 files)"));
    EXPECT_EQ(0, Window().Details().rowCount());
    EXPECT_EQ("2 duplicates found in 1 groups.  (8 Bytes)", Status());
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_TRUE(Window().Finder().Results().IsConsistent());
}

TEST_F(DupeReview, TheFirstWarningAndTheLastCopyAreAskedAbout) {
    WriteSamples();
    settings.SetRemoveWarningShown(false);
    Search().SelectGroup(1);
    Window().Details().Mark({0}, true);
    Window().Details().Mark({1}, true);
    Key(Window().cmdRemoveMarkedFiles, Qt::Key_Space);  // Cancel
    EXPECT_TRUE(settings.RemoveWarningShown());
    ASSERT_EQ(1U, box.messages.shown.size());
    Key(Window().cmdRemoveMarkedFiles, Qt::Key_Space);  // No
    ASSERT_EQ(2U, box.messages.shown.size());
    EXPECT_NE(std::string::npos, box.messages.shown[1].text.find("two.txt - (2 files)"));
    EXPECT_TRUE(box.files.Exists(In("a/two.txt")) && box.files.Exists(In("b/two.txt")));
    EXPECT_EQ(2, Window().Details().rowCount());
    EXPECT_TRUE(Window().Details().IsMarked(0));
}

TEST_F(DupeReview, CommandsOnAFileNeedASelection) {
    WriteSamples();
    Search().SelectGroup(0);
    for (const auto& [command, title] : std::vector<std::pair<const char*, std::string>>{
             {"mnuFileViewFile", "View File"},
             {"mnuFileRenameFile", "Rename File"},
             {"mnuDetailsRemoveFile", "Remove File"},
             {"mnuFileAddFileToExcludeList", "Add File to Exclude List"},
             {"mnuFileProperties", "Show Property Page"},
             {"mnuFileOpenFolder", "Open the Folder"},
             {"mnuFileShowFileDiffs", "Show File Differences"}}) {
        Run(command);
        EXPECT_THAT(Shown(), ElementsAre(title + ": No file has been selected."));
    }
    EXPECT_FALSE(Window().GetCommands().Action("mnuFileCompareFiles")->isEnabled());
    SelectFiles({1});
    Key(Window().lvwDupeDetails, Qt::Key_Return);
    Run("mnuDetailsProperties");
    Run("mnuDetailsOpenFolder");
    Run("mnuFileShowFileDiffs");
    EXPECT_THAT(Shown(), ElementsAre("Show File Differences: Select two files of the group."));
    SelectFiles({0, 2});
    Run("mnuFileShowFileDiffs");
    EXPECT_THAT(shellCalls.asked, ElementsAre("open " + In("b/one.txt"), "properties " + In("b/one.txt"),
                                              "differences " + In("a/one.txt") + " " + In("c/one.txt")));
    EXPECT_THAT(desktop.asked, ElementsAre("explore " + In("b")));
    Run("mnuDetailsAddFile");
    EXPECT_THAT(Shown(), ElementsAre("Add File to Exclude List: 'one.txt' has been added to the Exclude "
                                     "Files list."));
}

TEST_F(DupeReview, ARenamedFileLeavesAGroupOfEqualNames) {
    WriteSamples();
    Search().SelectGroup(0);
    SelectFiles({1});
    box.messages.texts = {"other.txt"};
    Key(Window().lvwDupeDetails, Qt::Key_F2);
    EXPECT_TRUE(box.files.Exists(In("b/other.txt")));
    EXPECT_THAT(Lines(), ElementsAre("one.txt - (2 files)", "two.txt - (2 files)"));
    EXPECT_THAT(Column(DupeColumn::Path), ElementsAre(In("a/one.txt"), In("c/one.txt")));
    settings.SetCriteria({.names = false});
    Search().SelectGroup(0);
    SelectFiles({0});
    box.messages.texts = {"third.txt"};
    Run("mnuFileRenameFile");
    EXPECT_THAT(Column(DupeColumn::Name), ::testing::Contains("third.txt"));
}

TEST_F(DupeReview, RulesMarkTheGroupsShownAndProtectedFoldersKeepTheirFiles) {
    WriteSamples();
    settings.SetFolderPaths({In("c"), In("a"), In("b")});
    Window();
    Window().lstFolders->setCurrentRow(1);
    Run("mnuFoldersProtect");
    EXPECT_THAT(settings.ProtectedFolders(), ElementsAre(In("a")));
    Search();
    Window().txtFilter->setText(QStringLiteral("ONE"));
    EXPECT_THAT(Lines(), ElementsAre("one.txt - (3 files)"));
    Run("mnuMarkAllButFirst");
    ASSERT_EQ(1U, box.messages.shown.size());
    EXPECT_TRUE(box.messages.Line(0).starts_with("Mark Files: 1 files were marked."));
    EXPECT_EQ("1 files marked, 2 Bytes to win, 2 kept", Marks());
    Window().txtFilter->clear();
    box.messages.texts = {"two*"};
    Run("mnuMarkByPattern");
    EXPECT_EQ("2 files marked, 6 Bytes to win, 3 kept", Marks());
    // Marks in several groups are told before they go.
    Shown();
    Key(Window().cmdRemoveMarkedFiles, Qt::Key_Space);
    EXPECT_THAT(
        Shown(),
        ElementsAre("Remove Files: 2 files marked, 6 Bytes to win, 3 kept\r\n\r\nThe marked files are "
                    "in 2 groups.  Do you want to remove all of them?"));
    EXPECT_TRUE(box.files.Exists(In("b/one.txt")));
    Run("mnuMarkNothing");
    EXPECT_EQ("0 files marked, 0 Bytes to win, 0 kept", Marks());
}

TEST_F(DupeReview, GroupsAreSortedAndFilteredAndTheOpenOneStaysOpen) {
    WriteSamples();
    Search().SelectGroup(0);
    Run("mnuViewOrder(1)");
    EXPECT_THAT(Lines(), ElementsAre("two.txt - (2 files)", "one.txt - (3 files)"));
    EXPECT_EQ(3, Window().Details().rowCount());
    Key(&Window(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(Window().txtFilter->hasFocus());
    QTest::keyClicks(Window().txtFilter, QStringLiteral("two"));
    EXPECT_THAT(Lines(), ElementsAre("two.txt - (2 files)"));
    EXPECT_EQ(0, Window().Details().rowCount());
    Search();  // order and filter hold on
    EXPECT_THAT(Lines(), ElementsAre("two.txt - (2 files)"));
}

TEST_F(DupeReview, ExportsWhatIsShown) {
    WriteSamples();
    Search();
    for (const auto& [command, head] : std::vector<std::pair<const char*, std::string>>{
             {"mnuFileExportCsv", "label"}, {"mnuFileExportJson", "{\"label\":\"one.txt\""}}) {
        box.messages.texts = {drop / "out"};
        Run(command);
        EXPECT_EQ("Export Groups: 2 groups have been exported.", Shown().back());
        std::string content;
        ASSERT_TRUE(box.files.ReadWholeFile(drop / "out", 10'000, content).IsOk());
        EXPECT_NE(std::string::npos, content.find(In("b/two.txt")));
    }
}

TEST_F(DupeReview, WhatWentToDupesCanComeBack) {
    WriteSamples();
    Run("mnuFileRestoreFromDupes");
    EXPECT_THAT(Shown(),
                ElementsAre("Restore from DUPES: There are no files in the DUPES folder that could be "
                            "restored."));
    Search().SelectGroup(0);
    Window().Details().Mark({0}, true);
    Window().Details().Mark({1}, true);
    Key(Window().cmdRemoveMarkedFiles, Qt::Key_Space);
    EXPECT_FALSE(box.files.Exists(In("a/one.txt")) || box.files.Exists(In("b/one.txt")));
    WhenModal([](QWidget* modal) {
        auto& dialog = static_cast<frmRestoreDupes&>(*modal);
        EXPECT_FALSE(dialog.cmdRestore->isEnabled());
        QTest::keyClick(dialog.cmdSelectAll, Qt::Key_Space);
        QTest::keyClick(dialog.cmdRestore, Qt::Key_Space);
    });
    Run("mnuFileRestoreFromDupes");
    EXPECT_THAT(Shown(), ElementsAre("Restore from DUPES: 2 files were restored."));
    EXPECT_TRUE(box.files.Exists(In("a/one.txt")) && box.files.Exists(In("b/one.txt")));
}

TEST_F(DupeReview, ThePreviewShowsTextsAndPicturesOfModestSize) {
    QImage picture(30, 20, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (const char* name : {"a/same.png", "b/same.png"}) {
        drop.MakeFolder("in/" + std::string(name, 1));
        ASSERT_TRUE(picture.save(QString::fromStdString(In(name))));
    }
    for (const char* folder : {"a/", "b/"}) {
        Write(std::string(folder) + "text",
              "Gr\xC3\xBC\xC3\x9F"
              "e\n");
        Write(std::string(folder) + "zero", std::string("a\0b", 3));
        ASSERT_EQ(0, link(In(std::string(folder) + "text").c_str(),
                          In(std::string(folder) + "text.again").c_str()));
    }
    Search();
    const auto select = [&](const std::string& label) {
        for (int row = 0; row < Window().Groups().rowCount(); ++row)
            if (Lines()[static_cast<std::size_t>(row)].starts_with(label + " - ")) Window().SelectGroup(row);
        SelectFiles({0});
    };
    DupePreview& preview = *Window().picPreview;
    select("same.png");
    EXPECT_TRUE(preview.lblPicture->isVisible());
    EXPECT_FALSE(preview.lblPicture->pixmap(Qt::ReturnByValue).isNull());
    select("text");
    EXPECT_TRUE(preview.txtText->isVisible());
    EXPECT_EQ(
        "Gr\xC3\xBC\xC3\x9F"
        "e\n",
        preview.txtText->toPlainText().toStdString());
    EXPECT_TRUE(preview.lblAbout->text().contains(QStringLiteral("text.again")));
    select("zero");
    EXPECT_EQ("There is no preview of this kind of file.", preview.lblPicture->text().toStdString());
    Run("mnuViewPreview");
    EXPECT_FALSE(preview.isVisible());
}

}  // namespace
}  // namespace vantrel
