// New sub-folders, additions to the filters, and the rule that every command does something.
#include <gmock/gmock.h>

#include <QListWidget>
#include <QTest>
#include <QToolButton>
#include <cerrno>

#include "main/command_table.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

class SmallOperations : public ::testing::Test {
  protected:
    SmallOperations() {
        program.Start();
        program.CompareSamples();
        program.messages.shown.clear();
    }
    void TearDown() override {
        EXPECT_FALSE(program.Get().busy.IsBusy());
        EXPECT_TRUE(program.Get().panes.IsConsistent());
    }
    void Run(const char* command) { program.Get().GetCommands().Run(command); }
    const PaneList& Pane(Side side) { return program.Get().panes.Pane(side); }
    bool HasRow(Side side, std::string_view text) {
        return std::ranges::any_of(Pane(side).Rows(), [&](const ResultRow& row) { return row.text == text; });
    }
    std::vector<std::string> Said() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < program.messages.shown.size(); ++i)
            lines.push_back(program.messages.Line(i));
        program.messages.shown.clear();
        return lines;
    }
    // The icon is pressed, and `typed` is what stands in the form at OK; without it the form is cancelled.
    void NewFolder(Side side, const char* typed) {
        ModalScript script;
        script.Await("frmCreateSubFolder", [typed](QWidget& form) {
            if (typed) QTest::keyClicks(form.focusWidget(), QString::fromUtf8(typed));
            QTest::keyClick(&form, typed ? Qt::Key_Return : Qt::Key_Escape);
        });
        QTest::keyClick(program.Window().Box(side).Icon(PathIcon::CreateSubFolder), Qt::Key_Space);
    }
    TestProgram program;
};

TEST_F(SmallOperations, ANewSubFolderIsMadeComparedAndSelected) {
    program.Select(Side::Left, "same.txt");
    NewFolder(Side::Right, "Brand new");
    EXPECT_TRUE(program.workspace.Exists("right/Brand new"));
    EXPECT_THAT(Said(), ElementsAre("New Folder Created: The folder \"Brand new\" was created."));
    const auto selected = Pane(Side::Right).SelectedObject();
    ASSERT_NE(selected, nullptr);
    EXPECT_EQ(selected->text, "\\Brand new");
    EXPECT_EQ(program.Get().panes.CurrentListview(), Side::Right);
    EXPECT_EQ(Pane(Side::Right).SelectedCount(), 1U);
    EXPECT_EQ(Pane(Side::Left).SelectedCount(), 0U);

    NewFolder(Side::Right, "Brand new");
    EXPECT_THAT(Said(),
                ElementsAre("Unable to Create New Folder: A folder named \"Brand new\"already exists."));
    NewFolder(Side::Left, nullptr);
    NewFolder(Side::Left, "   ");
    NewFolder(Side::Left, "../Beside");
    EXPECT_THAT(Said(), ElementsAre(HasSubstr("cannot contain")));
    EXPECT_FALSE(program.workspace.Exists("Beside"));
    EXPECT_TRUE(program.Get().results.HasResult());

    program.Get().options.autoCompareAfterCreationOfNewFolder = false;
    NewFolder(Side::Left, "[x],\\y");
    EXPECT_TRUE(program.workspace.Exists("left/[x],\\y"));
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
}

TEST_F(SmallOperations, ANewSubFolderNeedsAFolderToStandIn) {
    program.Window().SetPathText(Side::Left, program.workspace / "gone");
    program.Window().Box(Side::Left).Icon(PathIcon::CreateSubFolder)->click();
    EXPECT_THAT(Said(), ElementsAre("Unable to Create New Folder: The folder \"" +
                                    (program.workspace / "gone") + "\" was not found."));
}

TEST_F(SmallOperations, SelectedObjectsAreAddedToAFilter) {
    program.workspace.Write("left/a,b[1].txt", "1");
    program.workspace.Write("left/a.b1.txt", "1");
    Run("mnuFileCompareDirectories");
    program.Select(Side::Left, "\\Identical");
    program.Get().panes.Click(Side::Left, program.Row(Side::Left, "a,b[1].txt"), {.toggle = true});
    Run("mnuFilePopupAddToExcludeFilter");
    EXPECT_THAT(Said(), IsEmpty());
    EXPECT_FALSE(HasRow(Side::Left, "\\Identical"));
    EXPECT_FALSE(HasRow(Side::Left, "a,b[1].txt"));
    EXPECT_TRUE(HasRow(Side::Left, "a.b1.txt"));
    EXPECT_TRUE(HasRow(Side::Left, "same.txt"));
    // In the file at once, without the other options.
    const std::string filter = program.Get().options.excludeFileTypes;
    EXPECT_THAT(filter, HasSubstr("\\Identical"));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("ExcludeFileTypes=" + filter + "\r\n"));
    EXPECT_THAT(program.folder.Read("vantrel.ini"), Not(HasSubstr("SoundOn")));

    program.Get().options.autoCompareAfterFilter = false;
    program.Select(Side::Left, "same.txt");
    Run("mnuFileAddToIncludeFilter");
    EXPECT_EQ(program.Get().options.includeFileTypes, "same.txt");
    EXPECT_TRUE(program.Get().panes.ShowsNoResult());
    Run("mnuFileAddToIncludeFilter");
    EXPECT_THAT(Said(), ElementsAre("Add to Include Filter: No objects to add to filter. Please select "
                                    "files and/or folders and try again."));
}

TEST_F(SmallOperations, TheExtensionOfOneFileIsAddedToAFilter) {
    program.workspace.Write("left/plain", "1");
    program.workspace.Write("left/x.dat", "1");
    Run("mnuFileCompareDirectories");
    program.Select(Side::Left, "plain");
    Run("mnuFileAddExtensionToExcludeFilter");
    EXPECT_EQ(program.Get().options.excludeFileTypes, "");
    program.Select(Side::Left, "same.txt");
    Run("mnuFilePopupAddExtToExcludeFilter");
    EXPECT_EQ(program.Get().options.excludeFileTypes, "*.txt");
    EXPECT_FALSE(HasRow(Side::Left, "same.txt"));
    EXPECT_TRUE(HasRow(Side::Left, "x.dat"));
    program.Get().panes.SelectAll(Side::Left);
    Run("mnuFileAddExtensionToIncludeFilter");
    program.Get().panes.DeselectAll(Side::Left);
    Run("mnuFileAddExtensionToIncludeFilter");
    Run("mnuFileAddExtensionToExcludeFilter");
    EXPECT_THAT(Said(),
                ElementsAre("Add Extension to Include Filter: More than one file selected.  Please select "
                            "only one file.",
                            "Add Extension to Include Filter: No file extensions to add to the Include "
                            "filter. Please select a file and try again.",
                            "Add Extension to Exclude Filter: No file extensions to add to the Exclude "
                            "filter. Please select a file and try again."));
    EXPECT_EQ(program.Get().options.includeFileTypes, "");
}

TEST_F(SmallOperations, AFilterThatCannotBeKeptIsInForceAndItIsTold) {
    program.Get().options.excludeFileTypes = std::string(250, 'x');
    program.Select(Side::Left, "same.txt");
    Run("mnuFileAddToExcludeFilter");
    EXPECT_THAT(Said(), ElementsAre(HasSubstr("longer than the 255 characters")));
    EXPECT_FALSE(HasRow(Side::Left, "same.txt"));
    program.calls.FailAll(testing::Call::Rename, EIO);
    program.Select(Side::Left, "alone.txt");
    Run("mnuFileAddToExcludeFilter");
    program.calls.ClearFaults();
    EXPECT_FALSE(HasRow(Side::Left, "alone.txt"));
    const auto said = Said();
    EXPECT_TRUE(std::ranges::any_of(said, [](const std::string& line) {
        return line.starts_with("Unexpected Error in frMain.mnuFileAddToExcludeFilter");
    })) << ::testing::PrintToString(said);
}

TEST_F(SmallOperations, FolderListsAreEditedAsACopy) {
    const std::string first = program.left + "/";
    ModalScript script;
    script.Await("frmMaintainFolderLists", [&](QWidget& form) {
        QListWidget& list = *form.findChild<QListWidget*>(QStringLiteral("lstLeftFolderList"));
        ASSERT_EQ(list.count(), 1);
        EXPECT_EQ(list.item(0)->text().toStdString(), first);
        list.setCurrentRow(0);
        PressChild(form, "cmdDelete");
        QTest::keyClicks(form.findChild<QWidget*>(QStringLiteral("txtNewFolderName")),
                         QString::fromStdString(program.workspace / "other"));
        PressChild(form, "cmdAdd");
        PressChild(form, "OKButton");
    });
    Run("frmOptionsMaintainFolderLists");
    EXPECT_THAT(program.Window().Box(Side::Left).Folders(), ElementsAre(program.workspace / "other/"));
    EXPECT_THAT(program.Window().Box(Side::Right).Folders(), ElementsAre(program.right + "/"));
    EXPECT_TRUE(program.Get().panes.ShowsNoResult()) << "the left box shows another folder now";
    EXPECT_EQ(program.Get().Comparison().Dir(Side::Left).Path(), program.workspace / "other/");
    EXPECT_THAT(program.folder.Read("vantrel.ini"), Not(HasSubstr(first)));
}

// The web items have a handler once the program was built with their addresses.
TEST(EveryCommand, HasAHandler) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    std::vector<std::string_view> without;
    for (const auto table : {MainMenuEntries(), PopupMenuEntries()})
        for (const CommandEntry& entry : table)
            if (entry.kind != CommandKind::Menu && entry.kind != CommandKind::Separator &&
                !entry.name.starts_with("mnuHelpWeb") && !commands.IsEnabled(entry.name))
                without.push_back(entry.name);
    EXPECT_THAT(without, IsEmpty());
    for (const Side side : kBothSides)
        for (const PathIcon icon :
             {PathIcon::Select, PathIcon::UpToParent, PathIcon::CreateSubFolder, PathIcon::Explore})
            EXPECT_TRUE(program.Window().Box(side).Icon(icon)->isEnabled());
}

}  // namespace
}  // namespace vantrel
