#include "filetools/forms/frm_file_diffs.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <filesystem>
#include <map>
#include <set>

#include "filetools/forms/diff_command_table.h"
#include "filetools/forms/diffs_bar_view.h"
#include "filetools/forms/file_path_box.h"
#include "viewer_support.h"
#include "views/forms/toolbars.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;
using vantrel::testing::ViewerTest;

// Row 3 changed, row 5 on the left only, row 8 on the right only.
constexpr const char* kLeft = "1\n2\nthree x\n4\nfive\n6\n7\n9\n";
constexpr const char* kRight = "1\n2\nthree y\n4\n6\n7\neight\n9\n";

const char* const kNeedResult[] = {"mnuFileShowFirstDiff", "mnuFileShowNextDiff", "mnuFileShowPreviousDiff",
                                   "mnuFileShowLastDiff",  "mnuFileFind",         "mnuFileToggleBookmark",
                                   "mnuExtrasSaveAsPatch"};
const char* const kNeedMore[] = {"mnuFileFindNext", "mnuFileFindPrevious", "mnuFileNextBookmark",
                                 "mnuFilePreviousBookmark", "mnuFileClearAllBookmarks"};

class FileDiffsTest : public ViewerTest {
  protected:
    void ExpectPromptState() {
        EXPECT_FALSE(Window().HasResult());
        EXPECT_EQ(Window().grdFile[Side::Left]->Prompt().toStdString(), kPrompt);
        EXPECT_THAT(Window().rtfLineDiff[0]->Text(), HasSubstr("Click on a line"));
        EXPECT_EQ(Window().rtfLineDiff[1]->Text(), "");
        EXPECT_FALSE(Window().pctContainer->Line());
        for (const char* command : kNeedResult) EXPECT_FALSE(IsEnabled(command)) << command;
        for (const char* command : kNeedMore) EXPECT_FALSE(IsEnabled(command)) << command;
        EXPECT_TRUE(IsEnabled("mnuFileCompare"));
    }
};

// Every command of the menus has a handler and is reached by its key and by its button alone; printing has
// none yet.
TEST_F(FileDiffsTest, EveryKeyAndButtonRunsItsCommand) {
    Open(kLeft, kRight);
    Commands& commands = Window().GetCommands();
    std::map<std::string, int> ran;
    std::set<std::string> keys;
    for (const CommandEntry& entry : FileDiffTables().menuBar) {
        if (entry.kind == CommandKind::Menu || entry.kind == CommandKind::Separator) continue;
        const std::string name(entry.name);
        commands.SetHandler(name, [&ran, name] { ++ran[name]; });
    }
    for (const CommandEntry& entry : FileDiffTables().menuBar) {
        if (entry.key.empty()) continue;
        EXPECT_TRUE(keys.insert(std::string(entry.key)).second) << entry.key;
        ran.clear();
        const QKeySequence sequence(
            QString::fromLatin1(entry.key.data(), static_cast<int>(entry.key.size())));
        const QKeyCombination key = sequence[0];
        Key(key.key(), key.keyboardModifiers());
        EXPECT_THAT(ran, ElementsAre(Pair(std::string(entry.name), 1))) << entry.key;
    }
    for (const DiffToolbarEntry& entry : FileDiffToolbar()) {
        ran.clear();
        auto* button =
            Window().Toolbar1->findChild<CommandButton*>(QString::fromLatin1(entry.command.data()));
        ASSERT_NE(button, nullptr) << entry.command;
        EXPECT_EQ(button->toolTip().toStdString(), entry.tip);
        EXPECT_FALSE(button->icon().isNull()) << entry.icon;
        button->click();
        EXPECT_THAT(ran, ElementsAre(Pair(std::string(entry.command), 1)));
    }
}

TEST_F(FileDiffsTest, OpensOnTheResultAndWalksThroughTheDifferences) {
    Open(kLeft, kRight);
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_EQ(Window().CurrentRow(), 3);
    for (const char* command : kNeedResult) EXPECT_TRUE(IsEnabled(command)) << command;
    for (const char* command : kNeedMore) EXPECT_FALSE(IsEnabled(command)) << command;
    EXPECT_TRUE(IsEnabled("mnuFilePrint"));
    std::vector<std::int32_t> rows;
    for (int step = 0; step < 3; ++step) {
        Key(Qt::Key_F7);
        rows.push_back(Window().CurrentRow());
    }
    EXPECT_THAT(rows, ElementsAre(5, 8, 8));
    EXPECT_THAT(Shown(), ElementsAre("Next Difference: No more differences"));
    Key(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(Window().CurrentRow(), 5);
    Key(Qt::Key_F7, Qt::ControlModifier);
    Key(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_EQ(Window().CurrentRow(), 3);
    EXPECT_THAT(Shown(), ElementsAre("Previous Difference: No more differences"));
    Key(Qt::Key_F7, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Window().CurrentRow(), 8);
}

TEST_F(FileDiffsTest, ShowsTheTwoLinesOfTheRowThatIsPressed) {
    Open(kLeft, kRight);
    LineBox* const* boxes = Window().rtfLineDiff.data();
    Click(Side::Right, 3);
    EXPECT_EQ(boxes[0]->Text(), "three x");
    EXPECT_THAT(boxes[0]->Marks(), ElementsAre(TextRange{6, 7}));
    EXPECT_THAT(boxes[1]->Marks(), ElementsAre(TextRange{6, 7}));
    Click(Side::Right, 5);  // padding: the other side's line is marked whole
    EXPECT_EQ(boxes[0]->Text(), "five");
    EXPECT_THAT(boxes[0]->Marks(), ElementsAre(TextRange{0, 4}));
    EXPECT_EQ(boxes[1]->Text(), "");
    Click(Side::Left, 6);
    EXPECT_EQ(boxes[1]->Text(), "6");
    EXPECT_THAT(boxes[0]->Marks(), IsEmpty());
    EXPECT_THAT(boxes[1]->Marks(), IsEmpty());
}

// The boxes ask the options when a row is shown; the result itself stays until the next comparison.
TEST_F(FileDiffsTest, TakesChangedOptionsWithTheNextComparison) {
    Open("same\nWord\tA\n", "same\nword B\n");
    const auto flip = [&](const char* item) { Window().GetCommands().Action(item)->trigger(); };
    EXPECT_TRUE(Window().rtfLineDiff[0]->UnderlinesBlanks());
    EXPECT_THAT(Window().rtfLineDiff[0]->Marks().front(), (TextRange{0, 1}));
    flip("mnuOptionsIgnoreCase");
    flip("mnuOptionsIgnoreWhitespace");
    EXPECT_TRUE(settings.viewFileDiffIgnoreCase);
    EXPECT_TRUE(Window().GetCommands().Action("mnuOptionsIgnoreWhitespace")->isChecked());
    EXPECT_EQ(Window().CurrentRow(), 2);
    Click(Side::Left, 2);
    EXPECT_FALSE(Window().rtfLineDiff[0]->UnderlinesBlanks());
    EXPECT_NE(Window().rtfLineDiff[0]->Marks().front(), (TextRange{0, 1}));
    Write("same\nWORD\n", "same\nword\n");
    Key(Qt::Key_F5);
    EXPECT_THAT(Shown(), ElementsAre("Compare Files: The files are identical"));
    ExpectPromptState();
}

TEST_F(FileDiffsTest, KeepsBookmarksInOrder) {
    Open(kLeft, kRight);
    for (const std::int32_t row : {7, 2, 5}) {
        Click(Side::Left, row);
        Key(Qt::Key_F2, Qt::ControlModifier);
    }
    EXPECT_THAT(Window().Contents().bookmarks.Rows(), ElementsAre(2, 5, 7));
    EXPECT_EQ(Window().Contents().MarkerOf(5), RowMarker::BookmarkArrow);
    Key(Qt::Key_F2);
    EXPECT_EQ(Window().CurrentRow(), 7);
    EXPECT_EQ(Window().Contents().MarkerOf(5), RowMarker::Bookmark);
    Key(Qt::Key_F2);
    EXPECT_THAT(Shown(), ElementsAre("Next Bookmark: No more bookmarks"));
    Key(Qt::Key_F2, Qt::ShiftModifier);
    Key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(Window().CurrentRow(), 2);
    Key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_THAT(Shown(), ElementsAre("Previous Bookmark: No more bookmarks"));
    QTest::mouseDClick(Window().grdFile[Side::Right]->viewport(), Qt::LeftButton, {},
                       PointOf(Side::Right, 2));
    EXPECT_FALSE(Window().IsRowBookmarked(2));
    Key(Qt::Key_F2, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(Window().Contents().bookmarks.IsEmpty());
    for (const char* command : kNeedMore) EXPECT_FALSE(IsEnabled(command)) << command;
}

TEST_F(FileDiffsTest, FindsTextAndLineNumbersFromTheCurrentLine) {
    Open(kLeft, kRight);
    const auto find = [&](const char* text) {
        tools.messages.texts.push_back(text);
        Key(Qt::Key_F, Qt::ControlModifier);
        return Window().CurrentRow();
    };
    EXPECT_EQ(find("FIVE"), 5);
    EXPECT_EQ(find(" 7."), 7);  // the number of a line
    EXPECT_EQ(find("eight"), 8);
    EXPECT_EQ(find("THREE"), 3);  // behind the current row there is none
    EXPECT_THAT(Shown(), ::testing::Each(HasSubstr("Find: Enter search text.")));
    Key(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_THAT(Shown(), ElementsAre("Find: Search text not found"));
    EXPECT_EQ(find("nowhere"), 3);
    EXPECT_THAT(Shown().back(),
                "Find: Search text was not found.  Try searching from the beginning of the file.");
    EXPECT_FALSE(IsEnabled("mnuFileFindNext"));
    Click(Side::Left, 1);
    find("nowhere");
    EXPECT_THAT(Shown().back(), "Find: Search text was not found.");
    tools.messages.texts.push_back(std::nullopt);
    Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Window().CurrentRow(), 1);
}

TEST_F(FileDiffsTest, TellsWhatIsWrongWithTheFilesAndReturnsToThePrompt) {
    options.FileOne = Path(Side::Left);
    options.FileTwo = Path(Side::Right);
    Open();
    EXPECT_THAT(Shown(), ElementsAre("File Does Not Exist: File One is not an existing file."));
    ExpectPromptState();
    tools.folder.Write("one.txt", "a");
    Key(Qt::Key_F5);
    EXPECT_THAT(Shown(), ElementsAre("File Does Not Exist: File Two is not an existing file."));
    tools.folder.Write("two.txt", std::string("b\0c", 3));
    Key(Qt::Key_F5);
    const std::vector<std::string> binary = Shown();
    ASSERT_EQ(binary.size(), 1U);
    EXPECT_THAT(binary[0], HasSubstr("the differences are not viewable."));
    ExpectPromptState();
    Click(Side::Left, 1);
    Window().pctDiffsBar->Clicked(5);
    EXPECT_THAT(Shown(), ElementsAre("Navigate Differences: This feature only works when two files have been "
                                     "compared and there are differences."));
    // A file that vanishes while its result stands.
    Write(kLeft, kRight);
    Key(Qt::Key_F5);
    ASSERT_TRUE(Window().HasResult());
    std::filesystem::remove(tools.folder / "two.txt");
    Key(Qt::Key_F7);
    EXPECT_EQ(Window().CurrentRow(), 5);
    Key(Qt::Key_F5);
    EXPECT_THAT(Shown(), ElementsAre("File Does Not Exist: File Two is not an existing file."));
    ExpectPromptState();
}

TEST_F(FileDiffsTest, DropsTheResultWhenAPathChanges) {
    Open(kLeft, kRight);
    options.Encodings[Side::Left] = "UTF-16LE";
    QTest::keyClicks(Window().txtFile[Side::Left], QStringLiteral("x"));
    ExpectPromptState();
    EXPECT_EQ(options.Encodings[Side::Left], "");
    tools.messages.texts.push_back(Path(Side::Left));
    Key(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(Window().txtFile[Side::Left]->Path(), Path(Side::Left));
    QTest::keyClick(Window().txtFile[Side::Left], Qt::Key_Return);
    EXPECT_TRUE(Window().HasResult());
}

// At each yield of a comparison in turn: ESC ends it and leaves the prompt, and closing the window ends it
// and then closes.
TEST_F(FileDiffsTest, EndsARunByEscapeAndByClosingTheWindow) {
    std::string many;
    for (int line = 0; line < 40'000; ++line)
        many += "line " + std::to_string(line) + " of very many lines\n";
    Write(kLeft + many, many + kRight);
    for (const bool close : {false, true}) {
        Open();
        ASSERT_TRUE(Window().HasResult());
        tools.loop.yields = 0;
        Key(Qt::Key_F5);
        const std::size_t yields = tools.loop.yields;
        ASSERT_GT(yields, 2U);
        for (std::size_t at = 1; at <= yields; ++at) {
            if (!Window().isVisible()) Open();
            tools.loop.yields = 0;
            bool acted = false;
            tools.loop.onYield = [&] {
                if (tools.loop.yields != at) return;
                acted = true;
                EXPECT_TRUE(Window().IsBusy());
                EXPECT_EQ(Window().GetNextDiff(), frmFileDiffs::kNotNow);
                if (close)
                    Window().close();
                else
                    QTest::keyClick(&Window(), Qt::Key_Escape);
            };
            Window().GetCommands().Run("mnuFileCompare");
            tools.loop.onYield = nullptr;
            if (!acted) break;  // the files were read in fewer steps this time
            EXPECT_FALSE(Window().HasResult());
            EXPECT_TRUE(QTest::qWaitFor([&] { return Window().isVisible() != close; }));
            if (close) window.reset();
            EXPECT_THAT(Shown(), IsEmpty());
        }
        window.reset();
    }
}

TEST_F(FileDiffsTest, ShowsFilesInTheEditorOrTheirProgram) {
    Open(kLeft, kRight);
    const auto run = [&](const char* item) { Window().GetCommands().Run(item); };
    run("mnuViewFileOneUseNotepad");
    run("mnuViewFileTwoUseAssociated");
    EXPECT_THAT(desktop.asked, ElementsAre("edit " + Path(Side::Left), "open " + Path(Side::Right)));
    desktop.works = false;
    tools.messages.answers = {MessageAnswer::Yes};
    run("mnuViewFileTwoUseAssociated");
    EXPECT_THAT(desktop.asked.back(), "edit " + Path(Side::Right));
    EXPECT_THAT(Shown(),
                ElementsAre("View File in Associated Program: Unable to show the file in the associated "
                            "program.\r\nMake sure that a program has been associated with files of this "
                            "type.\r\n\r\nWould you like to view the file in Notepad?",
                            "View File in Notepad: Unable to show the file in the Notepad."));
    std::filesystem::remove(tools.folder / "one.txt");
    run("mnuViewFileOneUseNotepad");
    EXPECT_THAT(Shown(), ElementsAre("View File in Notepad: File One does not exist."));
}

}  // namespace
}  // namespace vantrel
