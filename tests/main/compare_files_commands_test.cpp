// The way from the main window to the comparison of two files, and back into its rows.
#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "core/row_texts.h"
#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_compare_files.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

// What stands in the boxes when the window opens.
std::vector<std::string> Opened(TestProgram& program, const char* item = "mnuFileCompareFiles") {
    std::vector<std::string> paths;
    ModalScript script;
    script.Await("frmCompareFiles", [&](QWidget& window) {
        EXPECT_FALSE(program.Get().GetCommands().Action("mnuFile")->isEnabled());
        for (const Side side : kBothSides)
            paths.push_back(static_cast<frmCompareFiles&>(window).txtFile[side]->Path());
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    program.Get().GetCommands().Action(item)->trigger();
    EXPECT_TRUE(program.Get().GetCommands().Action("mnuFile")->isEnabled());
    return paths;
}

TEST(CompareFilesCommands, TheBoxesBeginWithTheSelectedPair) {
    TestProgram program;
    program.Start();
    EXPECT_THAT(Opened(program), ElementsAre("", "")) << "no folder is chosen yet";
    program.CompareSamples();
    const std::string left = program.left + "/", right = program.right + "/";
    EXPECT_THAT(Opened(program), ElementsAre(left, right)) << "nothing is selected";
    program.Select(Side::Right, "newer.txt");
    EXPECT_THAT(Opened(program), ElementsAre(left + "newer.txt", right + "newer.txt"));
    EXPECT_THAT(Opened(program, "mnuFilePopupCompareFiles"),
                ElementsAre(left + "newer.txt", right + "newer.txt"));
    program.Select(Side::Left, "alone.txt");
    EXPECT_THAT(Opened(program), ElementsAre(left + "alone.txt", right));
    program.Select(Side::Left, "\\Different");
    EXPECT_THAT(Opened(program), ElementsAre(left, right)) << "a folder";
    // The other pane can show another row at that place, or none.
    program.Select(Side::Left, "newer.txt");
    program.Get().GetCommands().Run("mnuSelectShowOnlySelected");
    program.Select(Side::Left, "newer.txt");
    EXPECT_THAT(Opened(program), ElementsAre(left + "newer.txt", right + "newer.txt"));
    program.workspace.Write("left/newer.txt.gone", "");
    ASSERT_EQ(0, rename((left + "newer.txt").c_str(), (left + "elsewhere").c_str()));
    EXPECT_THAT(Opened(program), ElementsAre(left, right + "newer.txt")) << "the file is gone";
}

// Compares, replaces a file by the window's own buttons, and closes it.
void Sync(TestProgram& program, const std::function<void(frmCompareFiles&)>& first, const char* option) {
    ModalScript script;
    script
        .Await("frmCompareFiles",
               [&](QWidget& window) {
                   if (first) first(static_cast<frmCompareFiles&>(window));
                   PressChild(window, "cmdSync");
                   QTest::keyClick(&window, Qt::Key_Escape);
               })
        .Await("frmFileSync", [&](QWidget& dialog) {
            PressChild(dialog, option);
            PressChild(dialog, "OKButton");
        });
    program.Get().GetCommands().Run("mnuFileCompareFiles");
}

TEST(CompareFilesCommands, ASyncBringsTheRowsOfThePairIntoLine) {
    for (const bool exchanged : {false, true}) {
        TestProgram program;
        Application& application = program.Start();
        program.CompareSamples();
        program.Select(Side::Left, "binary.txt");
        const std::size_t row = program.Row(Side::Left, "binary.txt");
        const auto exchange = [&](frmCompareFiles& window) {
            if (!exchanged) return;
            window.txtFile[Side::Left]->SetPath(program.right + "/binary.txt");
            window.txtFile[Side::Right]->SetPath(program.left + "/binary.txt");
        };
        // Each time the right file becomes what the left one is.
        Sync(program, exchange, exchanged ? "optFileOneSameAsFileTwo" : "optFileTwoSameAsFileOne");
        EXPECT_EQ(program.workspace.Read("right/binary.txt"), "1234");
        EXPECT_EQ(program.messages.shown.back().text, "File synchronization completed successfully.");
        std::string why;
        EXPECT_TRUE(application.panes.IsConsistent(&why)) << why;
        for (int look = 0; look < 2; ++look) {
            for (const Side side : kBothSides) {
                const ResultRow& now = application.panes.Pane(side)[row];
                EXPECT_EQ(now.type, ResultType::Same);
                EXPECT_EQ(SizeText(now, program.locale), "4");
                EXPECT_EQ(DateText(now, program.locale), "2020-09-13 12:26:40");
            }
            application.panes.ApplyViewTypes();  // it lasts
        }
        // What is done with the row then finds the files as the row says.
        program.Select(Side::Right, "binary.txt");
        program.messages.shown.clear();
        program.messages.answers = {MessageAnswer::Yes};
        application.GetCommands().Run("mnuFileDeletePermanently");
        EXPECT_NE(0, access((program.right + "/binary.txt").c_str(), F_OK));
    }
}

TEST(CompareFilesCommands, ASyncOfOtherFilesLeavesTheRowsAlone) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    program.Select(Side::Left, "binary.txt");
    const std::size_t row = program.Row(Side::Left, "binary.txt");
    Sync(
        program,
        [&](frmCompareFiles& window) { window.txtFile[Side::Right]->SetPath(program.right + "/same.txt"); },
        "optFileTwoSameAsFileOne");
    EXPECT_EQ(program.workspace.Read("right/same.txt"), "1234");
    EXPECT_EQ(application.panes.Pane(Side::Left)[row].type, ResultType::Binary);
    // The difference viewer, with its dialog in front, opens over the window, and so do the bytes.
    ModalScript script;
    const auto leave = [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); };
    script
        .Await("frmCompareFiles",
               [&](QWidget& window) {
                   PressChild(window, "cmdShowDiffs");
                   PressChild(window, "cmdCompare");
                   PressChild(window, "cmdShowBytes");
                   leave(window);
               })
        .Await("frmViewFileDiffOptions", leave)
        .Await("frmHexDump", leave);
    application.GetCommands().Run("mnuFileCompareFiles");
    EXPECT_EQ(application.viewFileDiffs.FileTwo, program.right + "/binary.txt");
}

}  // namespace
}  // namespace vantrel
