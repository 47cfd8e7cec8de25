// Copying, moving and deleting from the panes, by keys, menus and drops.
#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QTest>
#include <filesystem>

#include "modal_support.h"
#include "program_support.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using vantrel::testing::ModalScript;
using vantrel::testing::PressButton;
using vantrel::testing::TestProgram;

class FileCommandsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        program.Start();
        program.CompareSamples();
        program.messages.onMessage = [this](const Message&) { EXPECT_TRUE(program.Get().busy.IsBusy()); };
    }
    void TearDown() override {
        EXPECT_FALSE(program.Get().busy.IsBusy());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        EXPECT_TRUE(program.Get().panes.IsConsistent());
    }
    void Run(const char* command) { program.Get().GetCommands().Run(command); }
    bool Exists(const std::string& path) { return program.workspace.Exists(path); }
    bool HasRow(Side side, std::string_view text) {
        const PaneList& list = program.Get().panes.Pane(side);
        for (std::size_t row = 0; row < list.Count(); ++row)
            if (list[row].text == text) return true;
        return false;
    }
    std::string Said(std::size_t index) { return program.messages.Line(index); }

    TestProgram program;
};

TEST_F(FileCommandsTest, DeleteKeySendsTheSelectionToTheTrashAndComparesAgain) {
    program.messages.answers = {MessageAnswer::No, MessageAnswer::Yes};
    PaneView& view = program.Window().Panes().View(Side::Left);
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Home);
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    const auto selected = program.Get().panes.Pane(Side::Left).SelectedRows();
    ASSERT_EQ(selected.size(), 2U);
    std::vector<std::string> names;
    for (const std::size_t row : selected)
        names.emplace_back(program.Get().panes.Pane(Side::Left)[row].realName);

    QTest::keyClick(&view, Qt::Key_Delete);
    for (const std::string& name : names) EXPECT_TRUE(Exists("left/" + name)) << name;
    QTest::keyClick(&view, Qt::Key_Delete);
    EXPECT_THAT(program.messages.confirmations[1].names,
                ElementsAre(program.left + "/" + names[0], program.left + "/" + names[1]));
    for (const std::string& name : names) {
        EXPECT_FALSE(Exists("left/" + name)) << name;
        EXPECT_TRUE(program.trash.Exists("Trash/files/" + name)) << name;
    }
    EXPECT_EQ(Said(2), "Delete Succeeded: Selected item(s) sent to the Recycle Bin");
    EXPECT_TRUE(program.Get().results.HasResult());
    EXPECT_FALSE(HasRow(Side::Left, names[0]));
    EXPECT_EQ(program.Get().panes.CurrentListview(), Side::Left);
    EXPECT_EQ(program.Window().focusWidget(), &view);
}

TEST_F(FileCommandsTest, ShiftDeleteIsForGoodAndGoesWithoutAQuestionWhereTheOptionSaysSo) {
    Run("mnuOptionsConfirmDelete");
    Run("mnuOptionsAutoCompareAfterFileOp");
    program.Select(Side::Right, "\\Alone");
    QTest::keyClick(&program.Window().Panes().View(Side::Right), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_FALSE(Exists("right/Alone"));
    EXPECT_FALSE(program.trash.Exists("Trash/files/Alone"));
    EXPECT_THAT(program.messages.shown, IsEmpty());
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
    EXPECT_EQ(program.Get().panes.CurrentListview(), Side::Right);
}

TEST_F(FileCommandsTest, CopiesAndMovesToTheOtherFolderAndAsksBeforeOverwriting) {
    program.messages.answers = {MessageAnswer::Yes, MessageAnswer::Yes};
    program.Select(Side::Left, "alone.txt");
    Run("mnuFileCopySelectedFilesToTargetDirectory");
    EXPECT_TRUE(Exists("left/alone.txt") && Exists("right/alone.txt"));
    EXPECT_EQ(Said(0), "Confirm Copy: You are about to copy 1 objects(s).\r\n\r\nDo you wish to continue?");

    ModalScript script;
    script.Await("msgOverwrite", [](QWidget& box) { PressButton(box, "Yes"); });
    program.Select(Side::Left, "newer.txt");
    Run("mnuFilePopupMoveToOtherFolder");
    EXPECT_EQ(program.workspace.Read("right/newer.txt"), "1234");
    EXPECT_FALSE(Exists("left/newer.txt"));
    EXPECT_TRUE(HasRow(Side::Right, "newer.txt"));
}

TEST_F(FileCommandsTest, CopiesAndMovesToAnyFolder) {
    program.workspace.MakeFolder("any");
    const std::string any = program.workspace / "any";
    program.messages.texts = {any, std::nullopt, any};
    program.messages.answers = {MessageAnswer::Yes, MessageAnswer::Yes};
    program.Select(Side::Left, "\\Different");
    Run("mnuFolderPopupCopyToAnyFolder");
    EXPECT_EQ(program.workspace.Read("any/Different/in.txt"), "12");
    program.Select(Side::Left, "alone.txt");
    Run("mnuFileMoveSelectedFilesToSpecifiedDirectory");
    EXPECT_TRUE(Exists("left/alone.txt")) << "the pick was cancelled";
    program.Select(Side::Left, "alone.txt");
    Run("mnuFileMoveSelectedFilesToSpecifiedDirectory");
    EXPECT_TRUE(Exists("any/alone.txt") && !Exists("left/alone.txt"));
    EXPECT_FALSE(HasRow(Side::Left, "alone.txt"));
}

TEST_F(FileCommandsTest, NothingSelectedIsAMessageAndNoPickOfAFolder) {
    for (const char* command :
         {"mnuFileCopySelectedFilesToSpecifiedDirectory", "mnuFileMoveSelectedFilesToTargetDirectory",
          "mnuFileSendSelectedFilesToRecycleBin", "mnuFileDeletePermanently"})
        Run(command);
    std::vector<std::string> titles;
    for (const Message& message : program.messages.shown) titles.push_back(message.title);
    EXPECT_THAT(titles,
                ElementsAre("Unable to Copy", "Unable to Move", "Unable to Delete", "Unable to Delete"));
    program.messages.onMessage = nullptr;
    Run("mnuFileShowFileProperties");
    EXPECT_EQ(Said(4), "Show Property Page: Unable to display property page. No valid file is selected.");
}

TEST_F(FileCommandsTest, DroppedFilesAreCopiedOrMovedIntoThePane) {
    program.workspace.Write("drop/one file.txt", "1");
    program.workspace.Write("drop/Folder/two.txt", "22");
    const auto drop = [&](const char* name, Qt::KeyboardModifiers keys) {
        program.messages.answers = {MessageAnswer::Yes};
        const std::unique_ptr<QMimeData> data(
            MimeDataOfPaths({program.workspace / ("drop/" + std::string(name))}));
        QWidget* pane = program.Window().Panes().View(Side::Right).viewport();
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, keys);
        QCoreApplication::sendEvent(pane, &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, keys);
        QCoreApplication::sendEvent(pane, &event);
        QCoreApplication::processEvents();
    };
    drop("one file.txt", Qt::ControlModifier);
    EXPECT_TRUE(Exists("drop/one file.txt"));
    EXPECT_EQ(program.workspace.Read("right/one file.txt"), "1");
    EXPECT_TRUE(HasRow(Side::Right, "one file.txt"));
    drop("Folder", Qt::NoModifier);
    EXPECT_FALSE(Exists("drop/Folder"));
    EXPECT_EQ(program.workspace.Read("right/Folder/two.txt"), "22");
    EXPECT_EQ(program.messages.confirmations.size(), 2U);
    Run("mnuOptionsConfirmCopy");
    drop("one file.txt", Qt::ShiftModifier);
    EXPECT_EQ(program.messages.confirmations.size(), 2U) << "moves by drop ask by the option for copies";
}

TEST_F(FileCommandsTest, WhileOneRunsThePathsTakeNoInputAndEscapeAsksToCancel) {
    QLineEdit* edit = program.Window().Box(Side::Left).Combo()->lineEdit();
    bool looked = false;
    program.messages.onMessage = [&](const Message&) {
        QTest::keyClicks(edit, QStringLiteral("x"));
        QTest::keyClick(edit, Qt::Key_Return);
        EXPECT_EQ(edit->text().toStdString(), program.left + "/");
        EXPECT_FALSE(program.loop.CancelRequested());
        QTest::keyClick(&program.Window(), Qt::Key_Escape);
        EXPECT_TRUE(program.loop.CancelRequested());
        looked = true;
    };
    program.messages.answers = {MessageAnswer::Yes};
    program.Select(Side::Left, "alone.txt");
    Run("mnuFileDeletePermanently");
    EXPECT_TRUE(looked);
    EXPECT_TRUE(Exists("left/alone.txt")) << "cancelled before it was reached";
    QTest::keyClicks(edit, QStringLiteral("x"));
    EXPECT_NE(edit->text().toStdString(), program.left + "/");
}

TEST_F(FileCommandsTest, ThePropertyPageShowsTheSelectedObjectAndSetsPermissions) {
    program.Select(Side::Left, "alone.txt");
    ModalScript script;
    script.Await("frmProperties", [&](QWidget& page) {
        EXPECT_EQ(page.windowTitle(), QStringLiteral("alone.txt Properties"));
        for (auto* box : page.findChildren<QCheckBox*>())
            if (box->accessibleName() == QStringLiteral("Owner Execute")) QTest::keyClick(box, Qt::Key_Space);
        PressButton(page, "OK");
    });
    Run("mnuFilePopupProperties");
    EXPECT_NE(std::filesystem::status(program.left + "/alone.txt").permissions() &
                  std::filesystem::perms::owner_exec,
              std::filesystem::perms::none);
}

}  // namespace
}  // namespace vantrel
