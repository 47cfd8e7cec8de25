// The window that makes one of two files the same as the other, worked by keys.
#include "sync/forms/frm_file_sync.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "platform/forms/path_label.h"
#include "support/modal.h"
#include "support/shell_fixture.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using testing::FaultySystemCalls;
using ::testing::HasSubstr;
using testing::ScriptedProgress;
using testing::ScriptedQuestions;
using testing::TestToolbox;
using testing::WhenModal;

class FileSyncTest : public ::testing::Test {
  protected:
    FileSyncTest() {
        tools.folder.Write("one", "first");
        tools.folder.Write("two", "second");
    }
    // What came of the window while `act` worked it.
    std::optional<SyncedPair> Show(const std::function<void(frmFileSync&)>& act) {
        frmFileSync form(tools.Get(), wrappers, {{tools.folder / "one", tools.folder / "two"}});
        WhenModal([&](QWidget* shown) {
            EXPECT_EQ(shown, &form);
            form.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
            act(form);
            if (form.isVisible()) QTest::keyClick(&form, Qt::Key_Escape);
        });
        return form.ShowForm();
    }
    std::vector<std::string> Contents() const { return {tools.folder.Read("one"), tools.folder.Read("two")}; }

    FaultySystemCalls calls;
    TestToolbox tools{calls};
    ScriptedProgress progress;
    ScriptedQuestions questions;
    SystemShellOperations shell{
        {tools.files, tools.volumes, tools.clock, tools.loop, progress, questions, {}}};
    ShellWrappers wrappers{shell, tools.messages};
};

TEST_F(FileSyncTest, ShowsBothFilesAndReplacesTheOneChosen) {
    auto synced = Show([&](frmFileSync& form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("File Synchronization Method"));
        EXPECT_EQ(form.findChild<QLabel*>(QStringLiteral("lblConfirmMsg"))->text(),
                  QStringLiteral("Please specify the synchronization method to use.  Press OK to continue."));
        EXPECT_EQ(form.lblFile[Side::Right]->accessibleName().toStdString(), tools.folder / "two");
        for (const Side side : kBothSides) EXPECT_FALSE(form.pctFileSmallIcon[side]->pixmap().isNull());
        EXPECT_TRUE(form.optFileTwoSameAsFileOne->isChecked() && form.optFileTwoSameAsFileOne->hasFocus());
        QTest::keyClick(form.OKButton, Qt::Key_Space);
    });
    EXPECT_TRUE(synced);
    EXPECT_THAT(Contents(), ElementsAre("first", "first"));
    EXPECT_EQ(tools.messages.Line(0), "File Sync: File synchronization completed successfully.");

    tools.folder.Write("two", "second");
    synced = Show([&](frmFileSync& form) {
        QTest::keyClick(form.optFileTwoSameAsFileOne, Qt::Key_Down);
        EXPECT_TRUE(form.optFileOneSameAsFileTwo->isChecked());
        QTest::keyClick(form.OKButton, Qt::Key_Space);
    });
    EXPECT_TRUE(synced);
    EXPECT_THAT(Contents(), ElementsAre("second", "second"));
}

TEST_F(FileSyncTest, LeavingItLeavesBothFiles) {
    EXPECT_FALSE(Show([](frmFileSync& form) { QTest::keyClick(form.CancelButton, Qt::Key_Space); }));
    EXPECT_FALSE(Show([](frmFileSync& form) { QTest::keyClick(&form, Qt::Key_Escape); }));
    EXPECT_FALSE(Show([](frmFileSync& form) { QTest::keyClick(&form, Qt::Key_Return); }))
        << "Enter alone replaces nothing";
    EXPECT_THAT(Contents(), ElementsAre("first", "second"));
    EXPECT_TRUE(tools.messages.shown.empty());
}

TEST_F(FileSyncTest, WhatCannotBeDoneLeavesTheWindowOpen) {
    EXPECT_FALSE(Show([&](frmFileSync& form) {
        tools.folder.Write("two", "edited since");
        QTest::keyClick(form.OKButton, Qt::Key_Space);
        EXPECT_TRUE(form.isVisible());
        ASSERT_EQ(1U, questions.troubles.size());
        EXPECT_EQ(kChangedSinceSeen, questions.troubles[0].error.Number());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        // What goes wrong otherwise is reported under the routine's own name.
        calls.FailAll(testing::Call::Statx, EIO);
        QTest::keyClick(form.OKButton, Qt::Key_Space);
        calls.ClearFaults();
        EXPECT_TRUE(form.isVisible());
    }));
    ASSERT_EQ(1U, tools.messages.shown.size());
    EXPECT_THAT(tools.messages.Line(0), HasSubstr("frmFileSync.OKButton_Click"));
    EXPECT_THAT(Contents(), ElementsAre("first", "edited since"));
}

// Neither the key nor the button of the frame closes it while files are copied.
TEST_F(FileSyncTest, IsNotLeftBeforeItsWorkIsDone) {
    EXPECT_TRUE(Show([&](frmFileSync& form) {
        tools.messages.onMessage = [&](const Message&) {
            QTest::keyClick(&form, Qt::Key_Escape);
            form.close();
            form.OKButton->click();
            EXPECT_TRUE(form.isVisible());
        };
        QTest::keyClick(form.OKButton, Qt::Key_Space);
        tools.messages.onMessage = nullptr;
    }));
    EXPECT_EQ(tools.messages.shown.size(), 1U);
}

}  // namespace
}  // namespace vantrel
