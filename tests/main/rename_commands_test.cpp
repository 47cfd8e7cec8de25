// New names and times from the main window.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <filesystem>

#include "fileops/forms/frm_file_date_times.h"
#include "fileops/forms/frm_rename_multiple.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

class RenameCommands : public ::testing::Test {
  protected:
    void SetUp() override {
        program.Start();
        program.CompareSamples();
    }
    void TearDown() override {
        EXPECT_FALSE(program.Get().busy.IsBusy());
        EXPECT_TRUE(program.Get().panes.IsConsistent());
    }
    void Run(const char* command) { program.Get().GetCommands().Run(command); }
    FileTime Time(const std::string& path) {
        FileInfo info;
        EXPECT_TRUE(program.files.Stat(path, LinkPolicy::DoNotFollow, info).IsOk());
        return info.lastWrite;
    }

    std::string OperationLineText() {
        return program.Window().findChild<QLabel*>(QStringLiteral("lblOperation"))->text().toStdString();
    }

    TestProgram program;
};

TEST_F(RenameCommands, SeveralRowsOpenTheWindowAndAreComparedAgain) {
    Run("mnuFileChangeFilename");
    EXPECT_EQ("Unable to Rename: No object selected. Please select a folder or a file and try again.",
              program.messages.Line(0));
    program.Select(Side::Right, "newer.txt");
    program.Get().panes.Click(Side::Right, program.Row(Side::Right, "\\Different"), {.toggle = true});
    ModalScript script;
    script.Await("frmRenameMultiple", [](QWidget& window) {
        auto& form = static_cast<frmRenameMultiple&>(window);
        QTest::keyClick(form.chkAddSuffixToFilename, Qt::Key_Space);
        QTest::keyClicks(form.txtNameSuffix, QStringLiteral("2"));
        PressChild(window, "cmdOK");
    });
    Run("mnuFilePopupRename");
    EXPECT_TRUE(program.workspace.Exists("right/newer2.txt") && program.workspace.Exists("right/Different2"));
    EXPECT_TRUE(program.workspace.Exists("left/newer.txt"));
    EXPECT_LT(program.Row(Side::Right, "newer2.txt"), program.Get().panes.Pane(Side::Right).Count());
    EXPECT_EQ(Side::Right, program.Get().panes.CurrentListview());
    EXPECT_EQ("Renamed 2", OperationLineText());
}

TEST_F(RenameCommands, OneRowAsksForItsNameAndFollowsTheOptionOfDates) {
    Run("mnuOptionsAutoCompareAfterDateTimeChange");
    program.Select(Side::Left, "newer.txt");
    program.messages.texts = {std::nullopt, "a/b", "other.txt"};
    Run("mnuFileChangeFilename");
    Run("mnuFileChangeFilename");
    EXPECT_THAT(program.messages.Line(program.messages.shown.size() - 1), HasSubstr("cannot contain \"/\""));
    EXPECT_FALSE(program.Get().panes.ShowsNoResult());
    Run("mnuFileChangeFilename");
    EXPECT_TRUE(program.workspace.Exists("left/other.txt"));
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
}

TEST_F(RenameCommands, TheSelectedFileGetsTheTimesOfItsCounterpart) {
    const auto refused = [&](const char* row, const char* text) {
        if (*row != '\0') program.Select(Side::Left, row);
        Run("mnuSyncTimeStamp");
        EXPECT_EQ(std::string("Unable to Change File Date/Time: ") + text,
                  program.messages.Line(program.messages.shown.size() - 1));
    };
    refused("", "No file selected.  Please select a file and try again.");
    refused("\\Different", "No file selected.  Please select a file and try again.");
    refused("alone.txt", "The selected file is an Orphan");

    const std::string left = program.left + "/newer.txt", right = program.right + "/newer.txt";
    const FileTime before = Time(left);
    ASSERT_NE(before, Time(right));
    program.Select(Side::Left, "newer.txt");
    program.messages.answers = {MessageAnswer::No};
    Run("mnuFilePopupSyncFileDateTime");
    EXPECT_EQ(before, Time(left));
    const std::string question = program.messages.Line(program.messages.shown.size() - 1);
    EXPECT_THAT(question,
                HasSubstr("Confirm Date/Time Change: The Dates/Times of the selected file, newer.txt, are "
                          "about to be changed to:\r\n\r\n\t\tLast Modified: "));
    namespace fs = std::filesystem;
    fs::permissions(left, fs::perms(0400));
    program.messages.answers = {MessageAnswer::Yes};
    refused(
        "newer.txt",
        "The file \"newer.txt\" is read-only.\r\n\r\nSelect Properties from the File menu and remove this "
        "attribute.");
    fs::permissions(left, fs::perms(0600));
    program.messages.answers = {MessageAnswer::Yes};
    program.Select(Side::Left, "newer.txt");
    Run("mnuSyncTimeStamp");
    EXPECT_EQ(Time(left), Time(right));
    EXPECT_EQ("Set the time of 1", OperationLineText());
    EXPECT_TRUE(program.Get().results.HasResult());
}

TEST_F(RenameCommands, ADateIsSetOnTheSelectedFiles) {
    program.Select(Side::Right, "newer.txt");
    program.Get().panes.SelectAll(Side::Right);
    Run("mnuOptionsConfirmDateTimeChange");
    ModalScript script;
    script.Await("frmFileDateTimes", [](QWidget& window) {
        auto& form = static_cast<frmFileDateTimes&>(window);
        form.txtHour->setText(QStringLiteral("1"));
        PressChild(window, "cmdOK");
    });
    Run("mnuFilePopupSetDateTime");
    EXPECT_EQ(Time(program.right + "/newer.txt"), Time(program.right + "/same.txt"));
    EXPECT_EQ("Set the time of 3", OperationLineText());
}

}  // namespace
}  // namespace vantrel
