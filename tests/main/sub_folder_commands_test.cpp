// The window of sub-folder differences: the ways to it, and what is done in it with real folders.
#include <gmock/gmock.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "main/forms/frm_sub_dir_diffs.h"
#include "main/sub_dir_command_table.h"
#include "modal_support.h"
#include "platform/forms/path_label.h"
#include "program_support.h"
#include "views/forms/dragged_paths.h"
#include "views/forms/toolbars.h"

namespace vantrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::ModalScript;
using vantrel::testing::PressButton;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

constexpr double kTime = 1'600'000'000;

class SubFolderCommandsTest : public ::testing::Test {
  protected:
    // Rows: Name.txt (with another letter case on the right), alone.txt, binary.txt, deep/newer.txt,
    // deep/older.txt, deep/right.txt, in.txt.
    void SetUp() override {
        testing::TempFolder& work = program.workspace;
        for (const char* side : {"left/Different/", "right/Different/"}) {
            const bool isLeft = side[0] == 'l';
            const std::string at = side;
            work.Write(at + "deep/newer.txt", isLeft ? "newer" : "old", isLeft ? kTime + 100 : kTime);
            work.Write(at + "deep/older.txt", isLeft ? "old" : "newer", isLeft ? kTime : kTime + 100);
            work.Write(at + "binary.txt", isLeft ? "ab" : "abc", kTime);
            work.Write(at + "same.txt", "same", kTime);
            work.Write(at + (isLeft ? "Name.txt" : "NAME.txt"), isLeft ? "1" : "22", kTime);
        }
        work.Write("left/Different/alone.txt", "left", kTime);
        work.Write("right/Different/deep/right.txt", "right", kTime);
        program.Start();
        Options& options = program.Get().options;
        options.showCopyConfirmations = options.showMoveConfirmations = options.showDeleteConfirmations =
            options.showSynchronizeConfirmations = options.promptForSyncMethod =
                options.autoCompareAfterFileOp = false;
        program.CompareSamples();
        program.messages.shown.clear();
        folders = {{program.left + "/Different", program.right + "/Different"}};
    }
    void TearDown() override { EXPECT_FALSE(program.Get().busy.IsBusy()); }

    // Opens the window by its command and does `act` in it, which need not close it. What `act` opens is
    // awaited in `script`.
    void InWindow(const std::function<void(frmSubDirDiffs&)>& act,
                  const char* command = "mnuFolderPopupViewDifferences") {
        program.Select(Side::Left, "\\Different");
        script.Await("frmSubDirDiffs", [&](QWidget& shown) {
            auto& window = dynamic_cast<frmSubDirDiffs&>(shown);
            act(window);
            std::string why;
            EXPECT_TRUE(window.Panes().IsConsistent(&why)) << why;
            window.close();
        });
        program.Get().GetCommands().Run(command);
    }
    static std::vector<std::string> Cells(frmSubDirDiffs& window, Side side) {
        std::vector<std::string> texts;
        const QAbstractItemModel* model = window.View(side).model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts.push_back(model->index(row, 0).data().toString().toStdString());
        return texts;
    }
    static void Select(frmSubDirDiffs& window, Side side, std::string_view text) {
        window.Panes().DeselectAll(side);
        window.Panes().SetCurrentListview(side);
        const PaneList& list = window.Panes().Pane(side);
        for (std::size_t row = 0; row < list.Count(); ++row)
            if (list[row].text == text) return window.Panes().Click(side, row, {});
        ADD_FAILURE() << "no row " << text;
    }
    std::string Read(const std::string& path) { return program.workspace.Read(path); }
    bool Exists(const std::string& path) { return program.workspace.Exists(path); }
    // The contents of all files in both folders and in the trash, sorted.
    std::vector<std::string> AllContents() {
        std::vector<std::string> all;
        for (const std::string& top : {program.workspace.Path(), program.trash.Path()})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(top))
                if (entry.is_regular_file() && entry.path().extension() != ".trashinfo") {
                    std::ifstream file(entry.path());
                    all.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
                }
        std::ranges::sort(all);
        return all;
    }

    TestProgram program;
    PerSide<std::string> folders;
    ModalScript script;
};

TEST_F(SubFolderCommandsTest, TheWindowShowsWhatTheComparisonKept) {
    InWindow([&](frmSubDirDiffs& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("View Sub-Folder Differences"));
        EXPECT_THAT(Cells(window, Side::Left), ElementsAre("alone.txt", "binary.txt", "deep/newer.txt",
                                                           "deep/older.txt", "", "in.txt", "Name.txt"));
        EXPECT_THAT(Cells(window, Side::Right),
                    ElementsAre("", "binary.txt", "deep/newer.txt", "deep/older.txt", "deep/right.txt",
                                "in.txt", "NAME.txt"));
        for (const Side side : kBothSides)
            EXPECT_EQ(window.lblFolder[side]->accessibleName().toStdString(), folders[side]);
        EXPECT_TRUE(window.lblLeftAlone->isHidden());
        EXPECT_EQ(window.StatusBar1->PanelText(1), QStringLiteral("Total 6 object(s)  (17 Bytes)"));
        for (const CommandEntry& entry : SubDirDiffsTables().menuBar) {
            if (entry.kind != CommandKind::Command) continue;
            EXPECT_TRUE(window.GetCommands().Action(entry.name)->isEnabled()) << entry.name;
        }
    });
    EXPECT_TRUE(program.Get().results.HasResult());  // nothing was changed
}

TEST_F(SubFolderCommandsTest, TheDialogOffersTheFoldersThatDifferAndOpensTheChosenOne) {
    Application& application = program.Get();
    application.panes.DeselectAll(Side::Left);
    int asked = 0;
    {
        script
            .Await("frmSpecifySubFolder",
                   [&](QWidget& dialog) {
                       ++asked;
                       auto* list = dialog.findChild<QListView*>(QStringLiteral("lstSubFolders"));
                       EXPECT_EQ(list->model()->rowCount(), 1);
                       EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("OKButton"));
                       list->clearSelection();
                       PressChild(dialog, "OKButton");
                       EXPECT_EQ(program.messages.Line(0),
                                 "No Folder Selected: Please select a folder before pressing the OK button");
                       QTest::keyClick(list, Qt::Key_Home);
                       QTest::keyClick(list, Qt::Key_Space);
                       PressChild(dialog, "OKButton");
                   })
            .Await("frmSubDirDiffs", [&](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
        application.GetCommands().Run("mnuFileShowSubDirDiffs");
    }
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedObject()->text, "\\Different");
    // With its row selected, nothing is asked.
    InWindow([](frmSubDirDiffs&) {}, "mnuFileShowSubDirDiffs");
    InWindow([](frmSubDirDiffs&) {}, "mnuDblClickShowDiffs");
    program.Window().Popups().DoubleClick(Side::Left, program.Row(Side::Left, "\\Different"), {});
    QMenu* menu = application.GetCommands().Menu("mnuDiffSubDirDblClick");
    EXPECT_THAT(program.VisibleItems(menu), Contains("mnuDblClickShowDiffs: Show Sub-Folder Differences"));
    menu->close();

    application.panes.ChooseView(kViewSimilar);
    program.messages.shown.clear();
    application.GetCommands().Run("mnuFileShowSubDirDiffs");
    EXPECT_EQ(program.messages.Line(0),
              "No Sub-Folders To Display: There are no sub-folders with differences");
}

TEST_F(SubFolderCommandsTest, KeysSelectCopyAndDeleteAndTheMainResultsAreDropped) {
    InWindow([&](frmSubDirDiffs& window) {
        PaneView& left = window.View(Side::Left);
        QTest::keyClick(&left, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(window.StatusBar1->PanelText(1), QStringLiteral("Selected 6 object(s)  (17 Bytes)"));
        window.GetCommands().Run("mnuSelectNewer");
        EXPECT_THAT(window.Panes().Pane(Side::Left).SelectedRows(), ElementsAre(2));
        window.GetCommands().Run("mnuFileCopy");
        EXPECT_EQ(Read("right/Different/deep/newer.txt"), "newer");
        EXPECT_EQ(window.Panes().Pane(Side::Right)[2].type, ResultType::Same);
        EXPECT_THAT(window.Panes().Pane(Side::Left).SelectedRows(), IsEmpty());

        // What was just made there is known again.
        Select(window, Side::Right, "deep/newer.txt");
        QTest::keyClick(&window.View(Side::Right), Qt::Key_Delete);
        EXPECT_EQ(program.trash.Read("Trash/files/newer.txt"), "newer");
        EXPECT_THAT(program.messages.shown, IsEmpty());
        QTest::mouseClick(left.viewport(), Qt::LeftButton, {}, QPoint(5, left.viewport()->height() - 5));

        QTest::keyClick(&left, Qt::Key_D, Qt::ControlModifier);
        QTest::keyClick(&left, Qt::Key_Delete);
        EXPECT_EQ(program.messages.Line(0),
                  "Unable to Recycle: No files selected.  Please select some files and try again. ");
        Select(window, Side::Left, "alone.txt");
        QTest::keyClick(&left, Qt::Key_Delete);
        EXPECT_EQ(program.trash.Read("Trash/files/alone.txt"), "left");
        Select(window, Side::Left, "in.txt");
        QTest::keyClick(&left, Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_FALSE(Exists("left/Different/in.txt") || program.trash.Exists("Trash/files/in.txt"));
        EXPECT_TRUE(Exists("right/Different/in.txt"));
    });
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
}

// The names that files bear on their side stay theirs, and with the option the folders are compared again.
TEST_F(SubFolderCommandsTest, MovesKeepNamesAndTheFoldersAreComparedAgain) {
    program.Get().options.autoCompareAfterFileOp = true;
    InWindow([&](frmSubDirDiffs& window) {
        Select(window, Side::Right, "deep/right.txt");
        window.GetCommands().Run("mnuFileMove");
        Select(window, Side::Left, "Name.txt");
        window.GetCommands().Run("mnuFileMove");
    });
    EXPECT_EQ(Read("left/Different/deep/right.txt"), "right");
    EXPECT_FALSE(Exists("right/Different/deep/right.txt"));
    EXPECT_EQ(Read("right/Different/NAME.txt"), "1");
    EXPECT_FALSE(Exists("left/Different/Name.txt") || Exists("right/Different/Name.txt"));
    EXPECT_FALSE(program.Get().panes.ShowsNoResult());
    InWindow([&](frmSubDirDiffs& window) {
        EXPECT_THAT(Cells(window, Side::Left), ElementsAre("alone.txt", "binary.txt", "deep/newer.txt",
                                                           "deep/older.txt", "deep/right.txt", "in.txt", ""));
    });
}

TEST_F(SubFolderCommandsTest, ASynchronizationBringsAllOrTheSelectedFilesIntoLine) {
    program.Get().operations->syncSettings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    program.Get().options.showSynchronizeConfirmations = program.Get().options.promptForSyncMethod = true;
    InWindow([&](frmSubDirDiffs& window) {
        Select(window, Side::Left, "binary.txt");
        script.Await("frmSyncWizard", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); })
            .Await("frmConfirmSync", [](QWidget& confirm) { PressButton(confirm, "Continue"); });
        window.GetCommands().Run("mnuFileSynchronizeSelectedFiles");
    });
    EXPECT_EQ(Read("right/Different/binary.txt"), "ab");
    EXPECT_EQ(Read("right/Different/deep/newer.txt"), "old");
    EXPECT_THAT(program.sound.played, Contains(HasSubstr("vtdone.wav")));
    EXPECT_FALSE(program.folder.Exists("SyncHist.Log"));

    program.Get().GetCommands().Run("mnuFileCompareDirectories");
    program.Get().options.promptForSyncMethod = program.Get().options.showSynchronizeConfirmations = false;
    InWindow([&](frmSubDirDiffs& window) {
        window.txtFilter->setText(QStringLiteral("nothing"));  // what is not shown is taken in all the same
        window.GetCommands().Run("mnuFileSynchronizeSubFolders");
    });
    EXPECT_EQ(Read("right/Different/deep/newer.txt"), "newer");
    EXPECT_EQ(Read("right/Different/deep/older.txt"), "old");
    EXPECT_EQ(Read("right/Different/alone.txt"), "left");
    EXPECT_EQ(Read("right/Different/NAME.txt"), "1");
    EXPECT_FALSE(Exists("right/Different/deep/right.txt"));
    EXPECT_EQ(Read("left/Different/deep/older.txt"), "old");
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
}

// Whatever became of the folders since the comparison: no content is lost, and the user hears of it.
TEST_F(SubFolderCommandsTest, WhatChangedSinceTheComparisonIsToldAndNothingIsLost) {
    InWindow([&](frmSubDirDiffs& window) {
        program.workspace.Write("right/Different/binary.txt", "changed since", kTime + 500);
        program.workspace.Write("left/Different/in.txt", "changed as well", kTime + 500);
        const auto before = AllContents();
        for (const char* command : {"mnuFileCopy", "mnuFileMove"}) {
            Select(window, Side::Left, "binary.txt");
            program.messages.shown.clear();
            script.Await("msgShellError", [](QWidget& box) { PressButton(box, "Skip"); });
            window.GetCommands().Run(command);
            EXPECT_EQ(AllContents(), before) << command;
        }
        Select(window, Side::Left, "in.txt");
        script.Await("msgShellError", [](QWidget& box) { PressButton(box, "Skip"); });
        window.GetCommands().Run("mnuFileDeletePermanently");
        EXPECT_EQ(AllContents(), before);
        EXPECT_EQ(window.Panes().Pane(Side::Left)[1].type, ResultType::Binary);  // not called done
    });
    program.Get().GetCommands().Run("mnuFileCompareDirectories");
    InWindow([&](frmSubDirDiffs& window) {
        std::filesystem::rename(folders[Side::Left], program.left + "/elsewhere");
        const auto before = AllContents();
        Select(window, Side::Left, "alone.txt");
        QTest::keyClick(&window.View(Side::Left), Qt::Key_Return);
        EXPECT_EQ(program.messages.shown.back().title + ": " + program.messages.shown.back().text,
                  "Open Object: The object \"" + folders[Side::Left] + "/alone.txt\" was not found.");
        script.Await("msgShellError", [](QWidget& box) { PressButton(box, "Skip"); });
        window.GetCommands().Run("mnuFileMove");
        EXPECT_EQ(AllContents(), before);
    });
}

TEST_F(SubFolderCommandsTest, WhatLiesBehindALinkIsShownAndLeftAlone) {
    testing::TempFolder& work = program.workspace;
    work.Write("out/x", "outside", kTime);
    std::filesystem::create_directory_symlink(work / "out", work / "left/Different/link");
    work.Write("right/Different/link/x", "other", kTime);
    std::filesystem::create_symlink("nowhere", work / "left/Different/broken");
    work.Write("right/Different/broken", "opposite", kTime);
    program.Get().GetCommands().Run("mnuFileCompareDirectories");
    InWindow([&](frmSubDirDiffs& window) {
        EXPECT_THAT(window.lblLeftAlone->text().toStdString(),
                    HasSubstr("1 row tells of what lies behind a link to a folder"));
        EXPECT_TRUE(window.lblLeftAlone->isVisible());
        const QAbstractItemModel* model = window.View(Side::Left).model();
        const auto tip = [&](const char* name) {
            for (int row = 0; row < model->rowCount(); ++row)
                if (model->index(row, 0).data().toString() == QLatin1String(name))
                    return model->index(row, 0).data(Qt::ToolTipRole).toString().toStdString();
            ADD_FAILURE() << "no row " << name;
            return std::string();
        };
        EXPECT_EQ(tip("link/x"), "This lies behind a link to a folder. It is shown, and left alone.");
        EXPECT_THAT(tip("broken"), HasSubstr("it is left alone"));
        const auto before = AllContents();
        for (const char* command :
             {"mnuFileCopy", "mnuFileMove", "mnuFileDeletePermanently", "mnuFileDeleteRecycle"}) {
            program.messages.shown.clear();
            Select(window, Side::Left, "link/x");
            window.GetCommands().Run(command);
            EXPECT_THAT(program.messages.Line(0), HasSubstr("1 of the selected files lie behind a link"));
            EXPECT_EQ(program.messages.shown.size(), 1U);
        }
        Select(window, Side::Right, "link/x");
        window.GetCommands().Run("mnuFileCopy");
        program.Get().operations->syncSettings.SetSyncMethod(SyncMethod::MakeLeftSameAsRight);
        window.Panes().Click(Side::Right, std::nullopt, {});
        Select(window, Side::Right, "link/x");
        program.messages.shown.clear();
        window.GetCommands().Run("mnuFileSynchronizeSelectedFiles");
        EXPECT_EQ(program.messages.shown.front().title, "Synchronization");
        EXPECT_EQ(AllContents(), before);
        // On its own side a file can go.
        Select(window, Side::Right, "link/x");
        window.GetCommands().Run("mnuFileDeletePermanently");
        EXPECT_FALSE(Exists("right/Different/link/x"));
        EXPECT_EQ(Read("out/x"), "outside");
    });
}

TEST_F(SubFolderCommandsTest, AJobDisablesTheWindowAndKeepsItOpen) {
    InWindow([&](frmSubDirDiffs& window) {
        const BusyState::Job job(program.Get().busy);
        EXPECT_FALSE(window.SubDirDiffsToolbar->isEnabled());
        for (const char* menu : {"mnuFile", "mnuSelect"})
            EXPECT_FALSE(window.GetCommands().Menu(menu)->menuAction()->isEnabled());
        EXPECT_FALSE(window.txtFilter->isEnabled());
        EXPECT_FALSE(program.Get().GetCommands().Menu("mnuFile")->menuAction()->isEnabled());
        QTest::keyClick(&window.View(Side::Left), Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(window.Panes().Pane(Side::Left).SelectedCount(), 0U);
        window.close();
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
    });
}

TEST_F(SubFolderCommandsTest, PairsAreShownInTheViewersAndWhatIsNoneIsTold) {
    InWindow([&](frmSubDirDiffs& window) {
        Commands& commands = window.GetCommands();
        commands.Run("mnuFileShowDifferences");
        Select(window, Side::Left, "alone.txt");
        commands.Run("mnuFileShowDifferences");
        EXPECT_EQ(program.messages.Line(0), "Show File Differences: No file is selected");
        EXPECT_EQ(program.messages.Line(1), "Show File Differences: The selected file has no counterpart");
        Select(window, Side::Right, "Name.txt");
        script.Await("frmViewFileDiffOptions", [](QWidget& dialog) { PressChild(dialog, "cmdShowDiffs"); })
            .Await("frmFileDiffs",
                   [&](QWidget& viewer) {
                       EXPECT_FALSE(commands.Action("mnuFileCopy")->isEnabled() && !commands.IsBusy());
                       EXPECT_EQ(program.Get().viewFileDiffs.FileTwo, folders[Side::Right] + "/NAME.txt");
                       QTest::keyClick(&viewer, Qt::Key_Escape);
                   })
            .Await("frmCompareFiles", [&](QWidget& compare) {
                EXPECT_EQ(compare.findChild<QLineEdit*>(QStringLiteral("txtFileOne"))->text().toStdString(),
                          folders[Side::Left] + "/Name.txt");
                QTest::keyClick(&compare, Qt::Key_Escape);
            });
        commands.Run("mnuFileShowDifferences");
        commands.Run("mnuFileCompareFiles");
        QTest::keyClick(&window.View(Side::Right), Qt::Key_Return);
        EXPECT_EQ(program.desktop.asked.back(), "open " + folders[Side::Right] + "/NAME.txt");
    });
    EXPECT_TRUE(program.Get().results.HasResult());
}

TEST_F(SubFolderCommandsTest, PrintOffersWhatThePanesShow) {
    InWindow([&](frmSubDirDiffs& window) {
        script.Await("frmPrintOptions", [](QWidget& options) { QTest::keyClick(&options, Qt::Key_Escape); });
        window.GetCommands().Run("mnuFilePrint");
        window.txtFilter->setText(QStringLiteral("nowhere"));
        program.messages.shown.clear();
        window.GetCommands().Run("mnuFilePrint");
        EXPECT_EQ(program.messages.Line(0), "Unable to Print: There are no items to print.");
    });
}

TEST_F(SubFolderCommandsTest, ADropOfTheOtherPanesRowsMovesOrCopies) {
    InWindow([&](frmSubDirDiffs& window) {
        const auto drop = [&](Side from, const std::string& path, Qt::KeyboardModifiers keys) {
            const std::unique_ptr<QMimeData> data(MimeDataOfPaths({path}));
            Q_EMIT window.View(Other(from)).UrisDropped(data->urls(), keys);
            QTest::qWait(0);
        };
        Select(window, Side::Left, "alone.txt");
        drop(Side::Left, folders[Side::Left] + "/binary.txt", {});  // not what is selected there
        EXPECT_FALSE(Exists("right/Different/alone.txt"));
        drop(Side::Left, folders[Side::Left] + "/alone.txt", Qt::ControlModifier);
        EXPECT_EQ(Read("right/Different/alone.txt"), "left");
        EXPECT_EQ(Read("left/Different/alone.txt"), "left");
        Select(window, Side::Right, "deep/right.txt");
        drop(Side::Right, folders[Side::Right] + "/deep/right.txt", {});
        EXPECT_EQ(Read("left/Different/deep/right.txt"), "right");
        EXPECT_FALSE(Exists("right/Different/deep/right.txt"));
    });
}

TEST_F(SubFolderCommandsTest, TheButtonDeletesForGoodOnlyWithShift) {
    InWindow([&](frmSubDirDiffs& window) {
        const auto press = [&](Qt::KeyboardModifiers keys) {
            QWidget* button = window.SubDirDiffsToolbar->Button(kCommandDeleteByButton);
            const QPoint place = button->mapTo(&window, button->rect().center());
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, keys, place);
        };
        Select(window, Side::Left, "alone.txt");
        press({});
        EXPECT_TRUE(program.trash.Exists("Trash/files/alone.txt"));
        Select(window, Side::Left, "in.txt");
        press(Qt::ShiftModifier);
        EXPECT_FALSE(Exists("left/Different/in.txt") || program.trash.Exists("Trash/files/in.txt"));
    });
}

TEST_F(SubFolderCommandsTest, TypingFiltersAndTheWindowKeepsItsSize) {
    QSize size;
    InWindow([&](frmSubDirDiffs& window) {
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(window.txtFilter, QStringLiteral("/DEEP/"));
        EXPECT_THAT(Cells(window, Side::Right),
                    ElementsAre("deep/newer.txt", "deep/older.txt", "deep/right.txt"));
        EXPECT_EQ(window.StatusBar1->PanelText(3), QStringLiteral("3 of 7 rows"));
        // Only what is shown is selected, and acted on.
        QTest::keyClick(window.txtFilter, Qt::Key_Return);
        QTest::keyClick(&window.View(Side::Left), Qt::Key_A, Qt::ControlModifier);
        window.GetCommands().Run("mnuFileCopy");
        EXPECT_EQ(Read("right/Different/deep/newer.txt"), "newer");
        EXPECT_EQ(Read("right/Different/deep/older.txt"), "old");
        EXPECT_EQ(Read("right/Different/binary.txt"), "abc");
        EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("lblOperation"))->text(),
                  QStringLiteral("Copied 2 (8 Bytes)"));
        QTest::keyClick(window.txtFilter, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(Cells(window, Side::Right).size(), 7U);
        window.windowHandle()->resize(700, 500);  // as the user does it
        QCoreApplication::processEvents();
        size = window.size();
    });
    program.Get().GetCommands().Run("mnuFileCompareDirectories");
    InWindow([&](frmSubDirDiffs& window) {
        EXPECT_EQ(window.size(), size);
        for (const int width : {900, 640}) {
            window.resize(width, 500);
            QTest::qWait(0);
            for (const Side side : kBothSides) {
                PaneView& view = window.View(side);
                const PaneView::Widths columns = view.ColumnWidths();
                EXPECT_LE(columns[0] + columns[1] + columns[2], view.viewport()->width());
                EXPECT_GT(columns[0], columns[1]);
            }
        }
    });
}

TEST_F(SubFolderCommandsTest, BothPanesScrollTogetherByBarKeysAndWheelWhereTheOptionIsOn) {
    for (int i = 0; i < 200; ++i)
        program.workspace.Write("left/Different/many/" + std::to_string(i), "x", kTime);
    program.Get().GetCommands().Run("mnuFileCompareDirectories");
    for (const bool coupled : {true, false}) {
        program.Get().options.syncScrolling = coupled;
        InWindow([&](frmSubDirDiffs& window) {
            PaneView &left = window.View(Side::Left), &right = window.View(Side::Right);
            QTest::keyClick(&left, Qt::Key_End);
            EXPECT_GT(left.TopItem(), 0);
            EXPECT_EQ(right.TopItem(), coupled ? left.TopItem() : 0);
            right.SetTopItem(20);
            EXPECT_EQ(left.TopItem() == 20, coupled);
        });
    }
}

}  // namespace
}  // namespace vantrel
