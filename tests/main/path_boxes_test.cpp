#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "platform/names/names.h"
#include "platform/names/uri_list.h"
#include "program_support.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using vantrel::testing::TestProgram;

class PathBoxes : public ::testing::Test {
  protected:
    void SetUp() override { program.Start(); }
    QLineEdit* Edit(Side side) { return program.Window().Box(side).Combo()->lineEdit(); }
    // What becomes of a drop on a path box: its text, or "refused".
    std::string Drop(Side side, QMimeData* data) {
        const std::unique_ptr<QMimeData> owned(data);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Edit(side), &enter);
        if (!enter.isAccepted()) return "refused";
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Edit(side), &drop);
        return drop.isAccepted() ? Edit(side)->text().toStdString() : "refused";
    }
    TestProgram program;
};

TEST_F(PathBoxes, HaveTipsNamesAndThePromptOfAFirstRun) {
    const PathBox& left = program.Window().Box(Side::Left);
    const PathBox& right = program.Window().Box(Side::Right);
    EXPECT_EQ(left.Combo()->objectName(), QStringLiteral("cboSourcePath"));
    EXPECT_EQ(left.Combo()->toolTip(), QStringLiteral("Left Folder Path"));
    EXPECT_EQ(right.Combo()->toolTip(), QStringLiteral("Right Folder Path"));
    EXPECT_EQ(left.Icon(PathIcon::Select)->toolTip(), QStringLiteral("Select Left Folder"));
    EXPECT_EQ(right.Icon(PathIcon::Select)->toolTip(), QStringLiteral("Select Right Folder"));
    EXPECT_EQ(right.Icon(PathIcon::Explore)->objectName(), QStringLiteral("imgSelectTarget(3)"));
    EXPECT_EQ(left.Path(), kNoFolderPrompt);
    for (const QWidget* widget : program.Window().findChildren<QToolButton*>())
        if (!widget->objectName().isEmpty() &&
            !widget->objectName().startsWith(QStringLiteral("qt_menubar"))) {
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        }
}

TEST_F(PathBoxes, AnEditOfOneCharacterEmptiesThePanes) {
    for (const Side side : kBothSides) {
        program.CompareSamples();
        Edit(side)->end(false);
        QTest::keyClick(Edit(side), Qt::Key_Backspace);
        EXPECT_TRUE(program.Get().panes.ShowsNoResult());
    }
}

TEST_F(PathBoxes, EnterCompares) {
    program.workspace.MakeFolder("one");
    program.workspace.MakeFolder("two");
    program.Window().SetPathText(Side::Left, program.workspace / "one");
    program.Window().SetPathText(Side::Right, program.workspace / "two");
    QTest::keyClick(Edit(Side::Right), Qt::Key_Return);
    EXPECT_EQ(program.Window().PathText(Side::Left), program.workspace / "one/");
    EXPECT_THAT(program.Window().Box(Side::Left).Folders(), ElementsAre(program.workspace / "one/"));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), ::testing::HasSubstr(program.workspace / "two/"));
}

TEST_F(PathBoxes, TypingIsCompletedByOneLevelAndGoesOnOverTheProposal) {
    program.workspace.MakeFolder("Letters/Old");
    Edit(Side::Left)->clear();
    QTest::keyClicks(Edit(Side::Left), QString::fromStdString(program.workspace / "Le"));
    EXPECT_EQ(Edit(Side::Left)->text().toStdString(), program.workspace / "Letters/");
    EXPECT_EQ(Edit(Side::Left)->selectedText(), QStringLiteral("tters/"));
    QTest::keyClicks(Edit(Side::Left), QStringLiteral("x"));
    EXPECT_EQ(Edit(Side::Left)->text().toStdString(), program.workspace / "Lex");
    // Taking away is not typing: nothing is proposed.
    QTest::keyClick(Edit(Side::Left), Qt::Key_Backspace);
    EXPECT_EQ(Edit(Side::Left)->text().toStdString(), program.workspace / "Le");
    program.Get().options.autoCompleteFolderPath = false;
    QTest::keyClicks(Edit(Side::Left), QStringLiteral("t"));
    EXPECT_EQ(Edit(Side::Left)->text().toStdString(), program.workspace / "Let");
}

TEST_F(PathBoxes, DropsOfTextAndOfFilesReplaceThePath) {
    program.workspace.Write("folder/na\\xffme.txt", "");
    program.workspace.MakeFolder("folder/sub folder");
    const std::string base = program.workspace / "folder";
    EXPECT_EQ(Drop(Side::Left, MimeDataOfPaths({base + "/sub folder", base})), base + "/sub folder");
    program.workspace.Write("folder/file.txt", "");
    EXPECT_EQ(Drop(Side::Left, MimeDataOfPaths({base + "/file.txt"})), base);
    auto* text = new QMimeData;
    text->setText(QString::fromStdString(base));
    EXPECT_EQ(Drop(Side::Right, text), base);
    EXPECT_EQ(Drop(Side::Right, new QMimeData), "refused");
    const BusyState::Job job(program.Get().busy);
    EXPECT_EQ(Drop(Side::Right, MimeDataOfPaths({base + "/file.txt"})), "refused");
}

TEST_F(PathBoxes, IconsSelectGoUpAndExplore) {
    frmMain& window = program.Window();
    window.SetPathText(Side::Right, program.workspace / "gone");
    program.messages.texts = {std::nullopt, program.workspace.Path() + "x"};
    window.Box(Side::Right).Icon(PathIcon::Select)->click();
    EXPECT_EQ(window.PathText(Side::Right), program.workspace / "gone");
    window.Box(Side::Right).Icon(PathIcon::Select)->click();
    EXPECT_EQ(window.PathText(Side::Right), program.workspace / "x");
    window.SetPathText(Side::Left, "/usr/share");
    for (const char* expected : {"/usr", "/", "/"}) {
        window.Box(Side::Left).Icon(PathIcon::UpToParent)->click();
        EXPECT_EQ(window.PathText(Side::Left), expected);
    }
    program.desktop.asked.clear();
    window.Box(Side::Left).Icon(PathIcon::Explore)->click();
    EXPECT_THAT(program.desktop.asked, ElementsAre("explore /"));
}

TEST_F(PathBoxes, AClickIntoThePromptSelectsItAndOneIntoAPathDoesNot) {
    QTest::mouseClick(Edit(Side::Left), Qt::LeftButton, {}, QPoint(20, 8));
    EXPECT_EQ(Edit(Side::Left)->selectedText().toStdString(), kNoFolderPrompt);
    QTest::keyClicks(Edit(Side::Left), QStringLiteral("/x"));
    EXPECT_EQ(Edit(Side::Left)->text(), QStringLiteral("/x"));
    QTest::mouseClick(Edit(Side::Left), Qt::LeftButton, {}, QPoint(5, 8));
    EXPECT_FALSE(Edit(Side::Left)->hasSelectedText());
}

TEST_F(PathBoxes, AnAddressBecomesThePathThatItNames) {
    program.workspace.MakeFolder("a folder");
    program.workspace.Write("a folder/file.txt", "");
    const std::string folder = program.workspace / "a folder";
    const auto paste = [this](const std::string& text) {
        Edit(Side::Left)->clear();
        QApplication::clipboard()->setText(QString::fromStdString(text));
        QTest::keyClick(Edit(Side::Left), Qt::Key_V, Qt::ControlModifier);
        return Edit(Side::Left)->text().toStdString();
    };
    EXPECT_EQ(paste(FileUri(folder)), folder);
    EXPECT_EQ(paste(FileUri(folder + "/file.txt") + "\r\n" + FileUri("/usr")), folder);
    EXPECT_EQ(paste("  file://localhost/usr  "), "/usr");
    EXPECT_EQ(paste("file://elsewhere/usr"), "file://elsewhere/usr");
    EXPECT_EQ(paste("/tmp/file:"), "/tmp/file:");
    // One that is typed stays as it is, and names the same folder.
    Edit(Side::Left)->clear();
    QTest::keyClicks(Edit(Side::Left), QString::fromStdString(FileUri(folder)));
    EXPECT_EQ(program.Window().PathText(Side::Left), folder);
    auto* text = new QMimeData;
    text->setText(QString::fromStdString(FileUri(folder)));
    EXPECT_EQ(Drop(Side::Right, text), folder);
}

TEST_F(PathBoxes, TheDialogStartsAtHomeUntilAFolderIsKnown) {
    const std::string home = PathFromUser("~/");
    ASSERT_FALSE(home.empty());
    const auto start = [this](const std::string& text) {
        program.Window().Box(Side::Left).Combo()->setEditText(QString::fromStdString(text));
        program.messages.texts = {std::nullopt};
        program.Window().Box(Side::Left).Icon(PathIcon::Select)->click();
        return program.messages.startFolders.back();
    };
    EXPECT_EQ(start(std::string(kNoFolderPrompt)), home);
    EXPECT_EQ(start(""), home);
    EXPECT_EQ(start("/usr"), "/usr");
    EXPECT_EQ(start("/no/such/folder"), program.folder.Path());
}

TEST_F(PathBoxes, TheSidesAreSwapped) {
    program.CompareSamples();
    auto* swap = program.Window().findChild<QToolButton*>(QStringLiteral("cmdSwapSides"));
    ASSERT_NE(swap, nullptr);
    swap->setFocus();
    QTest::keyClick(swap, Qt::Key_Space);
    EXPECT_EQ(program.Window().PathText(Side::Left), program.right + "/");
    EXPECT_EQ(program.Window().PathText(Side::Right), program.left + "/");
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
    const BusyState::Job job(program.Get().busy);
    EXPECT_FALSE(swap->isEnabled());
}

TEST_F(PathBoxes, TheLastPartnerOfAFolderIsOfferedWhenItIsChosen) {
    for (const char* name : {"a", "b", "c", "d"}) program.workspace.MakeFolder(name);
    const auto compare = [this](const char* left, const char* right) {
        program.Window().SetPathText(Side::Left, program.workspace / left);
        program.Window().SetPathText(Side::Right, program.workspace / right);
        program.Get().GetCommands().Run("mnuFileCompareDirectories");
    };
    const auto offer = [this](Side side) {
        return program.Window().findChild<QPushButton*>(
            side == Side::Left ? QStringLiteral("cmdSourcePartner") : QStringLiteral("cmdTargetPartner"));
    };
    // By the arrow keys, as in the open list.
    const auto choose = [this](Side side, const std::string& path) {
        QComboBox* box = program.Window().Box(side).Combo();
        box->setFocus();
        const int goal = box->findText(QString::fromStdString(path));
        ASSERT_GE(goal, 0);
        while (box->currentIndex() != goal)
            QTest::keyClick(box, box->currentIndex() < goal ? Qt::Key_Down : Qt::Key_Up);
        ASSERT_EQ(box->currentText().toStdString(), path);
    };
    compare("a", "b");
    compare("a", "d");
    compare("c", "b");
    choose(Side::Left, program.workspace / "a/");
    ASSERT_TRUE(offer(Side::Right)->isVisible());
    EXPECT_FALSE(offer(Side::Left)->isVisible());
    QTest::keyClick(offer(Side::Right), Qt::Key_Space);
    EXPECT_EQ(program.Window().PathText(Side::Right), program.workspace / "d/");
    EXPECT_FALSE(offer(Side::Right)->isVisible());
    // From the other side, and not what stands there already.
    program.Window().Box(Side::Right).Combo()->setCurrentIndex(0);
    choose(Side::Right, program.workspace / "d/");
    EXPECT_FALSE(offer(Side::Left)->isVisible());
    choose(Side::Left, program.workspace / "c/");
    ASSERT_TRUE(offer(Side::Right)->isVisible());
    // It goes with any other change.
    program.Window().SetPathText(Side::Right, "/usr");
    EXPECT_FALSE(offer(Side::Right)->isVisible());
    // A folder that was taken out of the list is not offered.
    program.Window().Box(Side::Right).SetFolders({program.workspace / "b/"});
    choose(Side::Left, program.workspace / "a/");
    EXPECT_FALSE(offer(Side::Right)->isVisible());
}

TEST_F(PathBoxes, GoToFolderCommands) {
    frmMain& window = program.Window();
    Commands& commands = program.Get().GetCommands();
    program.CompareSamples();
    program.Select(Side::Left, "\\Different");
    commands.Run("mnuGoToFolderThisSide");
    EXPECT_EQ(window.PathText(Side::Left), program.left + "/Different");
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());

    program.CompareSamples();
    program.Select(Side::Right, "\\Different");
    commands.Run("mnuGoToFolderBothSidesRunCompare");
    EXPECT_EQ(window.PathText(Side::Left), program.left + "/Different/");
    EXPECT_EQ(window.PathText(Side::Right), program.right + "/Different/");
    EXPECT_TRUE(program.Get().results.HasResult());

    commands.Run("mnuFileCompareParents");
    EXPECT_EQ(window.PathText(Side::Left), program.left + "/");
    EXPECT_TRUE(program.Get().results.HasResult());

    program.Select(Side::Right, "\\Alone");
    program.messages.texts = {program.left};
    commands.Run("mnuCompareSubFolderToOtherFolder");
    EXPECT_EQ(window.PathText(Side::Left), program.left + "/");
    EXPECT_EQ(window.PathText(Side::Right), program.right + "/Alone/");
    EXPECT_TRUE(program.Get().results.HasResult());
}

}  // namespace
}  // namespace vantrel
