// The set-up of a search, the search, and the states of the window.
#include <QListWidget>
#include <QProgressBar>

#include <set>

#include "dupe_window_support.h"
#include "dupes/forms/dupe_command_table.h"
#include "dupes/forms/frm_dupe_exclusions.h"
#include "filetools/forms/file_path_box.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using vantrel::testing::DupeWindowTest;
using vantrel::testing::WhenModal;

using FindDuplicatesWindow = DupeWindowTest;

TEST_F(FindDuplicatesWindow, ShowsTheSettingsAndTheImportantThingsOnce) {
    settings.SetDupesFormLoadedPreviously(false);
    settings.SetCriteria({.names = false, .lastModTimes = true});
    settings.SetIncludeSubFolders(false);
    frmFindDuplicates& form = Window();
    EXPECT_EQ("Find Duplicate Files", form.windowTitle().toStdString());
    ASSERT_EQ(1U, box.messages.shown.size());
    EXPECT_EQ("IMPORTANT INFORMATION", box.messages.shown[0].title);
    EXPECT_TRUE(settings.DupesFormLoadedPreviously());
    EXPECT_EQ(drop / "in", form.lstFolders->item(0)->text().toStdString());
    EXPECT_FALSE(form.chkIncludeSubFolders->isChecked());
    for (std::size_t i = 0; i < frmFindDuplicates::kCriteria; ++i) {
        const std::string item = "mnuOptionsDupeCriteriaOption(" + std::to_string(i) + ")";
        EXPECT_EQ(i == 1 || i == 3, form.chkDupeCriteria[i]->isChecked()) << i;
        EXPECT_EQ(i == 1 || i == 3, form.GetCommands().Action(item)->isChecked()) << i;
    }
    EXPECT_TRUE(form.GetCommands().Action("mnuRemovalOptions(2)")->isChecked());
    EXPECT_TRUE(form.GetCommands().Action("mnuHashMethodOption(0)")->isChecked());
}

TEST_F(FindDuplicatesWindow, AChangedCriterionIsWrittenAndEmptiesTheLists) {
    WriteSamples();
    for (std::size_t i = 0; i < frmFindDuplicates::kCriteria; ++i) {
        Search().SelectGroup(0);
        ASSERT_GT(Window().Details().rowCount(), 0);
        const DupeCriteria before = settings.Criteria();
        const std::string item = "mnuOptionsDupeCriteriaOption(" + std::to_string(i) + ")";
        const bool on = !Window().chkDupeCriteria[i]->isChecked();
        Key(Window().chkDupeCriteria[i], Qt::Key_Space);
        EXPECT_EQ(on, Window().GetCommands().Action(item)->isChecked()) << i;
        EXPECT_FALSE(before == settings.Criteria()) << i;
        EXPECT_THAT(Lines(), IsEmpty());
        EXPECT_EQ(0, Window().Details().rowCount());
        EXPECT_EQ("", Status());
        Run(item.c_str());
        EXPECT_EQ(!on, Window().chkDupeCriteria[i]->isChecked()) << i;
        EXPECT_TRUE(before == settings.Criteria()) << i;
    }
    Search();
    Key(Window().chkIncludeSubFolders, Qt::Key_Space);
    EXPECT_FALSE(settings.IncludeSubFolders());
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(FindDuplicatesWindow, FoldersAreAddedEditedDroppedAndRemoved) {
    for (const char* name : {"x", "y", "z"}) drop.MakeFolder(name);
    frmFindDuplicates& form = Window();
    const auto key = [&](int what) { QTest::keyClick(form.lstFolders, static_cast<Qt::Key>(what)); };

    form.txtPath->setText(QString::fromStdString(drop / "x/"));
    Key(form.txtPath, Qt::Key_Return);
    EXPECT_TRUE(form.txtPath->text().isEmpty());
    box.messages.texts = {drop / "y"};
    Key(form.cmdSelectFolder, Qt::Key_Space);
    EXPECT_THAT(settings.FolderPaths(), ElementsAre(drop / "in", drop / "x", drop / "y"));
    EXPECT_THAT(Shown(), ElementsAre("Browse for Folder: Specify the folder to be searched."));
    box.messages.texts = {drop / "x"};
    Key(form.cmdSelectFolder, Qt::Key_Space);
    EXPECT_EQ("Find Duplicates: The specified folder is already in the list.", Shown().back());

    form.lstFolders->setCurrentRow(1);
    box.messages.texts = {drop / "z"};
    key(Qt::Key_Return);
    EXPECT_THAT(Shown(), ElementsAre("Edit Folder Path: Make the desired edits to the folder path then press "
                                     "the OK button."));
    box.messages.texts = {"relative"};
    key(Qt::Key_Return);
    EXPECT_EQ(box.folder / "relative", settings.FolderPaths()[1]);
    Shown();
    key(Qt::Key_Delete);
    EXPECT_THAT(settings.FolderPaths(), ElementsAre(drop / "in", drop / "y"));
    form.lstFolders->clearSelection();
    Key(form.cmdRemoveFolder, Qt::Key_Space);
    EXPECT_THAT(Shown(), ElementsAre("Remove Folder from List: Select one of the folders from the list."));

    Q_EMIT form.lstFolders->PathsDropped({drop / "x", drop / "nothing", drop / "z"});
    EXPECT_THAT(settings.FolderPaths(), ElementsAre(drop / "in", drop / "y", drop / "x", drop / "z"));
    EXPECT_EQ(4, form.lstFolders->count());
}

TEST_F(FindDuplicatesWindow, OptionsThatProtectAreUncheckedOnlyByYes) {
    Window();
    for (const int option : {1, 2, 3}) {
        const std::string item = "mnuIgnoreOptions(" + std::to_string(option) + ")";
        Run(item.c_str());
        EXPECT_TRUE(Window().GetCommands().Action(item)->isChecked());
        box.messages.answers = {MessageAnswer::Yes};
        Run(item.c_str());
        EXPECT_FALSE(Window().GetCommands().Action(item)->isChecked());
        EXPECT_EQ(2U, Shown().size());
    }
    EXPECT_FALSE(settings.IgnoreSystemFiles() || settings.IgnoreHiddenFiles() ||
                 settings.IgnoreFilesInWindowsDir());
    Run("mnuIgnoreOptions(0)");
    EXPECT_FALSE(settings.IgnoreZeroByteFiles());
    Run("mnuRemovalOptions(3)");  // no folder is chosen
    EXPECT_EQ("Change Remove Method: No folder was selected.  Remove method not changed.", Shown().back());
    EXPECT_TRUE(Window().GetCommands().Action("mnuRemovalOptions(2)")->isChecked());
    Run("mnuRemovalOptions(0)");
    EXPECT_EQ(RemovalMethod::Delete, settings.RemoveMethod());
    Run("mnuHashMethodOption(2)");
    EXPECT_EQ(HashMethod::Md5, settings.HashMethod());
}

TEST_F(FindDuplicatesWindow, ARefusedSearchLeavesTheListsAlone) {
    WriteSamples();
    Search().SelectGroup(1);
    const std::string before = Status();
    settings.SetFolderPaths({drop / "gone"});
    Search();
    EXPECT_THAT(Shown(), ElementsAre("Find Duplicates: Problem accessing folder:\r\n" + (drop / "gone") +
                                     "\r\nMake sure that the folder exists and that you have permission to "
                                     "access it."));
    EXPECT_EQ(2U, Lines().size());
    EXPECT_EQ(2, Window().Details().rowCount());
    EXPECT_EQ(before, Status());
}

// While a search runs nothing else can begin, and ESC ends it.
TEST_F(FindDuplicatesWindow, ASearchDisablesAllAndIsCancelledByEsc) {
    WriteSamples();
    settings.SetCriteria({.contents = true});
    Search().SelectGroup(0);
    bool sawDisabled = false;
    box.loop.onYield = [&] {
        frmFindDuplicates& form = Window();
        sawDisabled = !form.cmdFindDupes->isEnabled() && !form.cmdCancel->isEnabled() &&
                      !form.lstDupeGroups->isEnabled() &&
                      !form.GetCommands().Action("mnuFile")->isEnabled() &&
                      !form.GetCommands().Action("mnuOptions")->isEnabled();
        form.grab();  // paints lists whose results are being replaced
        QTest::keyClick(&form, Qt::Key_Escape);
    };
    Search();
    box.loop.onYield = nullptr;
    EXPECT_TRUE(sawDisabled);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ("Search cancelled by user.", Status());
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_TRUE(Window().cmdFindDupes->isEnabled());
    EXPECT_TRUE(Window().GetCommands().Action("mnuFile")->isEnabled());
    EXPECT_FALSE(Window().ProgressBar1->isVisible());
    EXPECT_EQ(nullptr, QApplication::overrideCursor());
}

TEST_F(FindDuplicatesWindow, ClosedWhileItSearchesItClosesBehindTheSearch) {
    WriteSamples();
    Window();
    box.loop.onYield = [&] { Window().close(); };
    Search();
    box.loop.onYield = nullptr;
    EXPECT_FALSE(Window().IsBusy());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Window().isVisible(); }));
}

TEST_F(FindDuplicatesWindow, TellsWhatCouldNotBeSearched) {
    WriteSamples();
    calls.FailAll(vantrel::testing::Call::GetDents, EIO);
    Search();
    EXPECT_EQ("1 folder could not be searched", Window().lblFigures->text().toStdString());
    EXPECT_TRUE(Window().lblFigures->toolTip().contains(QStringLiteral("/in")));
    calls.ClearFaults();
    Search();
    EXPECT_EQ("", Window().lblFigures->text().toStdString());
}

// Without folders, groups and answers every command ends by itself, and says so where it has nothing to act
// on.
TEST_F(FindDuplicatesWindow, EveryCommandCanBeGivenAtOnce) {
    settings.SetFolderPaths({});
    Window();
    std::set<std::string_view> keys;
    for (const auto table : {FindDuplicatesTables().menuBar, FindDuplicatesTables().popups})
        for (const CommandEntry& entry : table) {
            if (entry.kind == CommandKind::Menu || entry.kind == CommandKind::Separator) continue;
            EXPECT_TRUE(entry.key.empty() || keys.insert(entry.key).second) << entry.key;
            const bool compares =
                entry.name == "mnuFileCompareFiles" || entry.sameAs == "mnuFileCompareFiles";
            EXPECT_NE(compares, Window().GetCommands().IsEnabled(entry.name)) << entry.name;
            if (compares || entry.name == "mnuFileExit") continue;
            if (entry.name == "mnuOptionsFilesToExclude")
                WhenModal([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
            Run(std::string(entry.name).c_str());
            EXPECT_FALSE(Window().IsBusy()) << entry.name;
        }
    EXPECT_EQ(nullptr, QApplication::overrideCursor());
    for (const std::string& line : Shown()) EXPECT_EQ(std::string::npos, line.find("Error #")) << line;
    Run("mnuFileExit");
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(FindDuplicatesWindow, ExclusionsAreACopyUntilOk) {
    settings.SetExcludeFiles({"*.a", "*.b"});
    frmDupeExclusions dialog(box.Get(), settings, [this] { ++saved; });
    dialog.show();
    EXPECT_EQ("Dupes - File Exclusions", dialog.windowTitle().toStdString());
    EXPECT_EQ(2, dialog.lstFilesToExclude->count());
    QTest::keyClick(dialog.cmdAddFile, Qt::Key_Space);
    QTest::keyClick(dialog.cmdRemoveFile, Qt::Key_Space);
    EXPECT_THAT(
        Shown(),
        ElementsAre("Add File Name: Please enter a file name before pressing the Add button.",
                    "Remove File Name: Please select a file name from the list before pressing the Remove "
                    "button."));
    QTest::keyClicks(dialog.txtFileName, QStringLiteral("what?.c"));
    QTest::keyClick(dialog.txtFileName, Qt::Key_Return);
    EXPECT_TRUE(dialog.txtFileName->text().isEmpty());
    dialog.lstFilesToExclude->setCurrentRow(0);
    QTest::keyClick(dialog.cmdRemoveFile, Qt::Key_Space);
    EXPECT_THAT(settings.ExcludeFiles(), ElementsAre("*.a", "*.b"));
    QTest::keyClick(dialog.txtFileName, Qt::Key_Return);  // that is OK now
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_THAT(settings.ExcludeFiles(), ElementsAre("*.b", "what?.c"));
    EXPECT_EQ(1, saved);
}

}  // namespace
}  // namespace vantrel
