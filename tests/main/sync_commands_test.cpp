// Synchronising from the main window: the runs, the method menu and the history.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>

#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::ModalScript;
using vantrel::testing::PressButton;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

void PressReturn(QWidget& window) {
    QTest::keyClick(&window, Qt::Key_Return);
}

class SyncCommandsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        program.Start();
        program.CompareSamples();
        program.sound.played.clear();
    }
    void TearDown() override {
        EXPECT_FALSE(program.Get().busy.IsBusy());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
    void Run(const char* command) { program.Get().GetCommands().Run(command); }
    bool Ticked(const char* item) { return program.Get().GetCommands().Action(item)->isChecked(); }
    std::string Read(const std::string& path) { return program.workspace.Read(path); }

    TestProgram program;
};

TEST_F(SyncCommandsTest, AWholeRunByKeysBringsTheFoldersIntoLine) {
    ModalScript script;
    script
        .Await("frmSyncWizard",
               [&](QWidget& wizard) {
                   EXPECT_TRUE(program.Get().busy.IsBusy());
                   auto* methods = wizard.findChild<QComboBox*>(QStringLiteral("cboSyncMethod"));
                   QTest::keyClick(methods, Qt::Key_Home);
                   PressChild(wizard, "chkPromptForSyncMethod");
                   PressReturn(wizard);
               })
        .Await("frmConfirmSync", [](QWidget& confirm) { PressButton(confirm, "Continue"); });
    program.Window().Panes().View(Side::Left).setFocus();
    Run("mnuFileAutoSynch");

    EXPECT_EQ(Read("right/binary.txt"), "1234");
    EXPECT_EQ(Read("right/newer.txt"), "1234");
    EXPECT_EQ(Read("right/alone.txt"), "left");
    EXPECT_EQ(Read("right/Different/in.txt"), "12");
    EXPECT_FALSE(program.workspace.Exists("right/Alone"));
    EXPECT_TRUE(program.trash.Exists("Trash/files/Alone/in.txt"));
    EXPECT_EQ(program.folder.Read("SyncHist.Log").size(), 773U);
    EXPECT_THAT(program.folder.Read("SyncHist.Log"), HasSubstr("Completed Successfully"));
    EXPECT_THAT(program.sound.played, ElementsAre(program.folders.SupportFile(program.files, "vtdone.wav")));
    EXPECT_THAT(program.messages.shown, IsEmpty());
    EXPECT_EQ(program.Window().focusWidget(), &program.Window().Panes().View(Side::Left));
    // Compared again; and what the wizard took stands in the menus.
    const PaneList& rows = program.Get().panes.Pane(Side::Left);
    for (std::size_t row = 0; row < rows.Count(); ++row)
        EXPECT_TRUE(rows[row].type == ResultType::Same || rows[row].type == ResultType::IdenticalFolder)
            << rows[row].text;
    EXPECT_TRUE(Ticked("mnuOptionsSyncMakeRightSameAsLeft"));
    EXPECT_FALSE(Ticked("mnuOptionsPromptForSyncMethod"));

    // The second run asks for no method and has nothing to do.
    Run("mnuOptionsConfirmSynchronize");
    Run("mnuFileAutoSynch");
    EXPECT_EQ(program.folder.Read("SyncHist.Log").size(), 2 * 773U);
}

TEST_F(SyncCommandsTest, TheSoundComesBeforeTheRefreshAndOnlyWhereAllWasDone) {
    Options& options = program.Get().options;
    options.promptForSyncMethod = options.showSynchronizeConfirmations = false;
    struct Refresh : ResultPanesObserver {
        explicit Refresh(TestProgram& program) : program_(program) { program.Get().panes.AddObserver(this); }
        ~Refresh() override { program_.Get().panes.RemoveObserver(this); }
        void RowsReset() override {
            ++resets;
            sounds = program_.sound.played.size();
        }
        int resets = 0;
        std::size_t sounds = 0;
        TestProgram& program_;
    } refresh(program);
    Run("mnuFileAutoSynch");
    EXPECT_EQ(refresh.resets, 1);
    EXPECT_EQ(refresh.sounds, 1U);

    // A file stands where a folder is to go.
    program.workspace.Write("left/clash", "a file");
    program.workspace.Write("right/clash/inner", "in a folder");
    Run("mnuOptionsSyncAddOrphansToRight");
    Run("mnuFileCompareDirectories");
    program.sound.played.clear();
    ModalScript script;
    script.Await("msgShellError", [](QWidget& box) { PressButton(box, "Skip"); });
    Run("mnuFileAutoSynch");
    EXPECT_THAT(program.sound.played, IsEmpty());
    EXPECT_EQ(Read("right/clash/inner"), "in a folder");
    EXPECT_THAT(program.folder.Read("SyncHist.Log"), HasSubstr("Cancelled"));
}

// What is left out is told once, and the run is no success and not heard as one.
TEST_F(SyncCommandsTest, ARunThatLeavesSomethingOutIsToldAndSilent) {
    Options& options = program.Get().options;
    options.promptForSyncMethod = options.showSynchronizeConfirmations = false;
    program.workspace.Write("right/pipe", "a file");
    ASSERT_EQ(0, mkfifo((program.workspace / "left/pipe").c_str(), 0600));
    Run("mnuFileCompareDirectories");
    program.sound.played.clear();
    program.messages.shown.clear();
    Run("mnuFileAutoSynch");
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.Line(0), HasSubstr("Left alone: 1 object(s) of the left folder"));
    EXPECT_THAT(program.sound.played, IsEmpty());
    EXPECT_EQ(Read("right/alone.txt"), "left");
    EXPECT_EQ(Read("right/pipe"), "a file");
    EXPECT_THAT(program.folder.Read("SyncHist.Log"), HasSubstr("Cancelled"));
}

// Again, for the comparison may have been a silent one, or long ago.
TEST_F(SyncCommandsTest, AFolderInsideTheOtherIsToldBeforeARun) {
    program.Get().options.promptForSyncMethod = false;
    program.Window().SetPathText(Side::Right, program.workspace / "left/Different");
    Run("mnuFileCompareDirectories");
    program.messages.shown.clear();
    ModalScript script;
    script.Await("frmConfirmSync", [](QWidget& confirm) { PressButton(confirm, "Cancel"); });
    Run("mnuFileAutoSynch");
    ASSERT_LE(1U, program.messages.shown.size());
    EXPECT_EQ(program.messages.Line(0), "Synchronization: " + DescribeNesting(program.Get().results));
}

TEST_F(SyncCommandsTest, AFolderIsNotEmptiedWithoutAYes) {
    Options& options = program.Get().options;
    options.promptForSyncMethod = options.showSynchronizeConfirmations = false;
    std::filesystem::remove_all(program.workspace / "left");
    program.workspace.MakeFolder("left");
    Run("mnuFileCompareDirectories");
    Run("mnuOptionsSyncMakeRightSameAsLeft");
    program.messages.shown.clear();
    Run("mnuFileAutoSynch");
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.Line(0), HasSubstr("Nothing was found in the left folder"));
    EXPECT_EQ(program.messages.shown[0].defaultAnswer, MessageAnswer::No);
    EXPECT_TRUE(program.workspace.Exists("right/newer.txt"));
    EXPECT_FALSE(program.folder.Exists("SyncHist.Log"));
    program.messages.answers = {MessageAnswer::Yes};
    Run("mnuFileAutoSynch");
    EXPECT_FALSE(program.workspace.Exists("right/newer.txt"));
}

TEST_F(SyncCommandsTest, DecliningLeavesEverything) {
    for (const char* declineAt : {"frmSyncWizard", "frmConfirmSync"}) {
        ModalScript script;
        for (const char* window : {"frmSyncWizard", "frmConfirmSync"}) {
            const bool decline = std::string(window) == declineAt;
            script.Await(window, [decline](QWidget& dialog) {
                if (decline)
                    dialog.close();
                else
                    PressReturn(dialog);
            });
            if (decline) break;
        }
        Run("mnuFileAutoSynch");
        EXPECT_TRUE(program.Get().results.HasResult());
        EXPECT_FALSE(program.workspace.Exists("right/alone.txt"));
        EXPECT_FALSE(program.folder.Exists("SyncHist.Log"));
        EXPECT_THAT(program.sound.played, IsEmpty());
    }
}

TEST_F(SyncCommandsTest, TheSelectionAloneForOneRun) {
    program.Get().options.autoCompareAfterSync = false;
    program.Get().options.showSynchronizeConfirmations = false;
    program.Select(Side::Left, "newer.txt");
    bool ticked = false;
    const auto wizard = [&](QWidget& window) {
        ticked = window.findChild<QCheckBox*>(QStringLiteral("chkSyncSelectedOnly"))->isChecked();
        PressReturn(window);
    };
    ModalScript script;
    script.Await("frmSyncWizard", wizard);
    Run("mnuFilePopupSync");
    EXPECT_TRUE(ticked);
    EXPECT_EQ(Read("right/newer.txt"), "1234");
    EXPECT_FALSE(program.workspace.Exists("right/alone.txt"));
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());

    // Without a result it compares first.
    script.Await("frmSyncWizard", wizard);
    Run("mnuFileAutoSynch");
    EXPECT_FALSE(ticked);
    EXPECT_EQ(Read("right/alone.txt"), "left");
}

TEST_F(SyncCommandsTest, WithoutAComparisonThatCanBeMadeItSaysSo) {
    program.Window().SetPathText(Side::Left, program.workspace / "gone");
    Run("mnuFileAutoSynch");
    EXPECT_EQ(program.messages.shown.back().title, "Synchronization");
    EXPECT_EQ(program.messages.shown.back().text,
              "Unable to synchronize.  No comparison has been executed yet.");
}

TEST_F(SyncCommandsTest, TheMethodMenuSetsTheTableAndTheSettingsFileKeepsIt) {
    CSyncSettings& settings = program.Get().operations->syncSettings;
    Run("mnuOptionsSyncAddOrphansToLeft");
    EXPECT_TRUE(Ticked("mnuOptionsSyncAddOrphansToLeft"));
    EXPECT_FALSE(Ticked("mnuOptionsSyncReplaceOlderCopyOrphans"));
    EXPECT_EQ(settings.Action(Side::Right, SyncCell::Orphan), SyncAction::Copy);
    // A click on the ticked item does nothing, also to a table that was changed by hand.
    settings.SetAction(Side::Right, SyncCell::Orphan, SyncAction::Leave);
    Run("mnuOptionsSyncAddOrphansToLeft");
    EXPECT_EQ(settings.Action(Side::Right, SyncCell::Orphan), SyncAction::Leave);

    ModalScript script;
    script.Await("frmOptions", [](QWidget& options) {
        auto* table = options.findChild<QWidget*>(QStringLiteral("fraCustomSync"));
        EXPECT_TRUE(table->isEnabled());
        for (auto* combo : table->findChildren<QComboBox*>()) QTest::keyClick(combo, Qt::Key_Home);
        PressReturn(options);
    });
    settings.SetAction(Side::Left, SyncCell::Orphan, SyncAction::Delete);
    Run("mnuOptionsSyncCustomize");
    Run("mnuOptionsSyncCustomize");
    EXPECT_TRUE(Ticked("mnuOptionsSyncCustomize"));
    EXPECT_EQ(settings.Action(Side::Left, SyncCell::Orphan), SyncAction::Leave);
    settings.SetAction(Side::Left, SyncCell::Orphan, SyncAction::Delete);
    program.Get().SaveOptions();
    program.application.reset();
    program.Start();
    EXPECT_TRUE(Ticked("mnuOptionsSyncCustomize"));
    EXPECT_EQ(program.Get().operations->syncSettings.Action(Side::Left, SyncCell::Orphan),
              SyncAction::Delete);
    program.messages.answers = {MessageAnswer::Yes};
    Run("mnuOptionsRestoreDefaults");
    EXPECT_TRUE(Ticked("mnuOptionsSyncReplaceOlderCopyOrphans"));
    EXPECT_EQ(program.Get().operations->syncSettings.Action(Side::Left, SyncCell::Orphan), SyncAction::Copy);
}

TEST_F(SyncCommandsTest, TheHistoryShowsTheRunsAndChangesItsLength) {
    program.Get().options.promptForSyncMethod = false;
    program.Get().options.showSynchronizeConfirmations = false;
    Run("mnuFileAutoSynch");
    ModalScript script;
    script.Await("frmSyncLog", [&](QWidget& log) {
        auto* list = log.findChild<QTreeWidget*>(QStringLiteral("lvwSyncHistory"));
        ASSERT_EQ(list->topLevelItemCount(), 1);
        EXPECT_EQ(list->topLevelItem(0)->text(1).toStdString(), program.left + "/");
        auto* entries = log.findChild<QLineEdit*>(QStringLiteral("txtNumEntries"));
        entries->setText(QStringLiteral("7"));
        PressButton(log, "OK");
    });
    Run("mnuViewSyncHistory");
    EXPECT_EQ(program.Get().options.numSyncLogEntries, 7);
}

}  // namespace
}  // namespace vantrel
