// The options window, tab by tab, by keys.
#include "main/forms/frm_options.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTreeWidget>
#include <cerrno>
#include <optional>

#include "main/forms/frm_help.h"
#include "main/forms/options/option_pages.h"
#include "modal_support.h"
#include "program_support.h"
#include "settings/option_changes.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

struct NoSound : SoundDevice {
    int NumberOfDevices() override { return 0; }
    bool Play(const std::string&, bool) override { return false; }
};

// The window over the options of a fresh program, without the program's main window in between.
class OptionsWindow : public ::testing::Test {
  protected:
    void SetUp() override { options = DefaultOptions(program.Start().Environment()); }
    void TearDown() override {
        EXPECT_THAT(program.messages.answers, IsEmpty());
        EXPECT_THAT(program.messages.texts, IsEmpty());
    }

    frmOptions& Open(OptionTab tab, CSoundSettings* sounds = nullptr) {
        window = std::make_unique<frmOptions>(
            frmOptions::Parts{
                .tools = program.Get().tools,
                .sounds = sounds != nullptr ? *sounds : program.Get().sounds,
                .environment = program.Get().Environment(),
                .take = [this](const Options& edited) { taken = edited; },
                .showHelp = [this](const std::string& place, QWidget*) { places.push_back(place); }},
            options);
        window->tbsOptions->setCurrentIndex(static_cast<int>(tab) - 1);
        window->show();
        QApplication::setActiveWindow(window.get());
        window->Page(tab).FirstControl()->setFocus();
        return *window;
    }
    template <typename Widget>
    Widget& Child(const char* name) {
        auto* child = window->findChild<Widget*>(QString::fromLatin1(name));
        if (child == nullptr) throw std::runtime_error(std::string("no ") + name);
        return *child;
    }
    void Press(const char* name) { PressChild(*window, name); }
    void Type(const char* name, const char* text) {
        auto& box = Child<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, QString::fromLatin1(text));
    }
    std::vector<std::string> Items(const char* name) {
        std::vector<std::string> items;
        auto& list = Child<QListWidget>(name);
        for (int row = 0; row < list.count(); ++row) items.push_back(list.item(row)->text().toStdString());
        return items;
    }
    // The messages since the last call but those that ask for a path; none of them is left.
    std::vector<std::string> Told() {
        QCoreApplication::processEvents();
        std::vector<std::string> told;
        for (std::size_t i = 0; i < program.messages.shown.size(); ++i) {
            const std::string line = program.messages.Line(i);
            if (!line.ends_with("|*.lst") && !line.ends_with("|*.wav") &&
                !line.starts_with("Browse for Folder: "))
                told.push_back(line);
        }
        program.messages.shown.clear();
        return told;
    }

    TestProgram program;
    Options options;
    std::unique_ptr<frmOptions> window;
    std::optional<Options> taken;
    std::vector<std::string> places;
};

constexpr const char* kInvalid =
    " is not a valid Chunk Size value.\r\n\r\n"
    "Please enter a whole number in the range of 1 byte to 10 million bytes.";
constexpr const char* kLarge =
    "Large Chunk Memory Warning: Warning: You may experience memory related issues when \r\n"
    "using a chunk size larger than two million bytes.\r\n\r\n"
    "(Depending on your computer's configuration)";

TEST_F(OptionsWindow, WithoutAChangeOkGivesBackTheSameAndCancelNothing) {
    Open(OptionTab::General);
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_THAT(ChangedOptions(options, *taken), IsEmpty());
    taken.reset();
    Open(OptionTab::General);
    Press("chkConfirmCopy");
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(taken);
}

TEST_F(OptionsWindow, AChunkSizeIsCheckedWhereTheKeysLeaveItAndAtOk) {
    Open(OptionTab::Compare);
    for (const char* text : {"0", "10000001", "1.5", "many"}) {
        Type("txtChunkSize", text);
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        EXPECT_THAT(Told(), ElementsAre("Invalid Chunk Size: \"" + std::string(text) + "\"" + kInvalid));
        EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("txtChunkSize"));
        EXPECT_EQ(Child<QLineEdit>("txtChunkSize").selectedText(), QString::fromLatin1(text));
        QTest::keyClick(window.get(), Qt::Key_Return);
        EXPECT_THAT(Told(), ElementsAre(HasSubstr(kInvalid)));
        EXPECT_TRUE(window->isVisible());
    }
    // From another tab the way leads back here.
    window->tbsOptions->setCurrentIndex(0);
    EXPECT_THAT(Told(), ElementsAre(HasSubstr(kInvalid)));
    EXPECT_EQ(window->tbsOptions->currentIndex(), 1);
    // Once for each value; it stays.
    Type("txtChunkSize", "2000001");
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    EXPECT_THAT(Told(), ElementsAre(kLarge));
    EXPECT_NE(window->focusWidget()->objectName(), QStringLiteral("txtChunkSize"));
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_THAT(Told(), IsEmpty());
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->chunkSize, 2'000'001);
}

// A value that no one could have entered here does not get through unseen.
TEST_F(OptionsWindow, AChunkSizeOutOfRangeInTheFileIsToldAtOk) {
    options.chunkSize = 99'999'999;
    Open(OptionTab::Sounds);
    EXPECT_THAT(Told(), IsEmpty());
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_THAT(Told(), ElementsAre("Invalid Chunk Size: \"99999999\"" + std::string(kInvalid)));
    EXPECT_EQ(window->tbsOptions->currentIndex(), 1);
    EXPECT_FALSE(taken);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(OptionsWindow, FilterTypesAreAddedAndRemovedInTheListInView) {
    options.excludeFileTypes = "*.bak";
    Open(OptionTab::IncludeExclude);
    EXPECT_THAT(Items("lstIncludeFilters"), ElementsAre("*"));
    Press("cmdAdd");
    Press("cmdDelete");
    EXPECT_THAT(Told(),
                ElementsAre("Add File Type: Please enter a file type before pressing the Add button.",
                            "Delete File Type: Please select a file type from the list before pressing the "
                            "Remove button."));
    // Enter adds while something is typed.
    Type("txtFilter", "*.txt, *.md,,*.txt");
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    EXPECT_THAT(Items("lstIncludeFilters"), ElementsAre("*.txt", "*.md"));
    Press("optFilterType(1)");
    EXPECT_FALSE(Child<QListWidget>("lstIncludeFilters").isVisible());
    auto& exclude = Child<QListWidget>("lstExcludeFilters");
    EXPECT_TRUE(exclude.isVisible());
    Type("txtFilter", "*.tmp");
    Press("cmdAdd");
    exclude.setFocus();
    QTest::keyClick(&exclude, Qt::Key_Home);
    QTest::keyClick(&exclude, Qt::Key_Delete);
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->includeFileTypes, "*.txt,*.md");
    EXPECT_EQ(taken->excludeFileTypes, "*.tmp");
}

TEST_F(OptionsWindow, AListTooLongForTheSettingsFileIsMarked) {
    options.includeFileTypes = std::string(256, 'x');
    Open(OptionTab::IncludeExclude);
    EXPECT_TRUE(Child<QLabel>("lblTooLong").isVisible());
    Press("optFilterType(1)");
    EXPECT_FALSE(Child<QLabel>("lblTooLong").isVisible());
}

TEST_F(OptionsWindow, FilterListsAreSavedLoadedAndBegunAnew) {
    const std::string file = program.workspace / "a.lst";
    options.includeFileTypes = "*.txt";
    options.excludeFileTypes = "*.bak,*.tmp";
    Open(OptionTab::IncludeExclude);
    program.messages.texts = {file};
    Press("cmdSaveList");
    EXPECT_EQ(program.workspace.Read("a.lst"), "*.txt\r\n*.bak,*.tmp\r\n");
    EXPECT_THAT(Told(), IsEmpty());

    program.messages.answers = {MessageAnswer::Cancel};
    Press("cmdNewList");
    EXPECT_THAT(Told(), ElementsAre("Save Filters: Do wish to save the current filters?"));
    EXPECT_THAT(Items("lstExcludeFilters"), ElementsAre("*.bak", "*.tmp"));
    // Yes, and then no file: nothing is lost.
    program.messages.answers = {MessageAnswer::Yes};
    program.messages.texts = {std::nullopt};
    Press("cmdNewList");
    EXPECT_THAT(Items("lstIncludeFilters"), ElementsAre("*.txt"));
    program.messages.answers = {MessageAnswer::No};
    Press("cmdNewList");
    Told();
    EXPECT_THAT(Items("lstIncludeFilters"), IsEmpty());
    EXPECT_THAT(Items("lstExcludeFilters"), IsEmpty());
    Press("cmdNewList");  // of nothing
    EXPECT_THAT(Told(), IsEmpty());

    program.messages.texts = {std::nullopt, file};
    Press("cmdLoadList");
    EXPECT_THAT(Items("lstExcludeFilters"), IsEmpty());
    Press("cmdLoadList");
    EXPECT_THAT(Items("lstIncludeFilters"), ElementsAre("*.txt"));
    EXPECT_THAT(Items("lstExcludeFilters"), ElementsAre("*.bak", "*.tmp"));
}

TEST_F(OptionsWindow, WhatIsNoFilterListReplacesNothing) {
    options.includeFileTypes = "*.txt";
    Open(OptionTab::IncludeExclude);
    program.workspace.Write("picture.lst", std::string("\x89PNG\r\n\x1A\n\0\0", 10));
    program.messages.texts = {program.workspace / "picture.lst", program.workspace / "gone.lst"};
    Press("cmdLoadList");
    EXPECT_THAT(Told(), ElementsAre("Load a Filter List: \"" + program.workspace / "picture.lst" +
                                    "\" is no filter list: it holds something else than text.\r\n\r\n"
                                    "The filters have not been changed."));
    Press("cmdLoadList");
    EXPECT_THAT(Told(), ElementsAre(HasSubstr("frmOptions.cmdLoadList")));
    program.messages.texts = {program.workspace / "no/such/a.lst"};
    Press("cmdSaveList");
    EXPECT_THAT(Told(), ElementsAre(HasSubstr("frmOptions.cmdSaveList")));
    EXPECT_THAT(Items("lstIncludeFilters"), ElementsAre("*.txt"));
}

TEST_F(OptionsWindow, TheCustomTableIsOpenToTheCustomMethodOnly) {
    Open(OptionTab::Synchronize);
    auto& methods = Child<QComboBox>("cboSyncMethod");
    auto& leftNew = Child<QComboBox>("cboNew(0)");
    auto& rightOld = Child<QComboBox>("cboOld(1)");
    QTest::keyClick(&methods, Qt::Key_Home);
    EXPECT_FALSE(leftNew.isEnabled());
    EXPECT_EQ(leftNew.currentText(), QStringLiteral("Copy to other folder"));
    EXPECT_EQ(Child<QComboBox>("cboOrphan(1)").currentText(), QStringLiteral("Delete from this folder"));
    QTest::keyClick(&methods, Qt::Key_End);
    EXPECT_TRUE(leftNew.isEnabled());
    EXPECT_TRUE(Child<QLabel>("lblLeftFolder").isEnabled());
    EXPECT_EQ(
        Child<QLabel>("lblSyncMethodDescription").text(),
        QStringLiteral("Create your own custom sync method. Specify the actions to be performed on each "
                       "type by selecting values from the options below."));
    QTest::keyClick(&leftNew, Qt::Key_Home);
    EXPECT_EQ(rightOld.currentText(), QStringLiteral("Leave"));
    QTest::keyClick(&leftNew, Qt::Key_Down);
    EXPECT_EQ(rightOld.currentText(), QStringLiteral("Replace with newer files from other folder"));
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->syncMethod, SyncMethod::Custom);
    EXPECT_EQ(taken->leftFolderNewFilesAction, SyncAction::Copy);
    EXPECT_EQ(taken->rightFolderOldFilesAction, SyncAction::Replace);
    EXPECT_EQ(taken->rightFolderOrphanFilesAction, SyncAction::Delete);
}

TEST_F(OptionsWindow, SoundsAreChosenPlayedAndTakenAway) {
    options.startSound = "/sounds/gone.wav";
    program.workspace.Write("a.wav", "");
    const std::string file = program.workspace / "a.wav";
    Open(OptionTab::Sounds);
    auto& events = Child<QTreeWidget>("lvwEvents");
    auto& spec = Child<QLineEdit>("txtWaveFileSpec");
    std::vector<std::string> names;
    for (int row = 0; row < events.topLevelItemCount(); ++row)
        names.push_back(events.topLevelItem(row)->text(0).toStdString());
    EXPECT_THAT(names, ElementsAre("Start Vantrel", "Exit Vantrel", "Comparison Completed",
                                   "Synchronization Completed"));
    EXPECT_EQ(spec.text(), QStringLiteral("/sounds/gone.wav"));
    EXPECT_THAT(events.topLevelItem(0)->toolTip(1).toStdString(), HasSubstr("not found"));
    QTest::keyClick(&events, Qt::Key_Down);
    EXPECT_EQ(spec.text(), QStringLiteral("(none)"));
    program.sound.played.clear();
    Press("cmdPlay");
    EXPECT_THAT(Told(), ElementsAre("Unable to Play Wave File Sound: Please select a valid Wave file."));
    EXPECT_THAT(program.sound.played, IsEmpty());
    program.messages.texts = {std::nullopt, file};
    Press("cmdBrowseForWave");
    EXPECT_EQ(spec.text(), QStringLiteral("(none)"));
    Press("cmdBrowseForWave");
    Press("cmdPlay");
    EXPECT_THAT(program.sound.played, ElementsAre(file));
    EXPECT_EQ(events.topLevelItem(1)->text(1).toStdString(), file);
    QTest::keyClick(&events, Qt::Key_Down);
    Press("cmdNoWaveFile");
    EXPECT_EQ(events.topLevelItem(2)->text(1), QStringLiteral("(none)"));
    QTest::keyClick(&events, Qt::Key_Down);
    Type("txtWaveFileSpec", "/x.wav");
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->startSound, "/sounds/gone.wav");
    EXPECT_EQ(taken->exitSound, file);
    EXPECT_EQ(taken->comparisonCompleteSound, "(none)");
    EXPECT_EQ(taken->syncCompleteSound, "/x.wav");
}

TEST_F(OptionsWindow, WithoutASoundDeviceSoundsCannotBeTurnedOn) {
    NoSound none;
    options.soundOn = false;
    CSoundSettings sounds(none, options);
    Open(OptionTab::Sounds, &sounds);
    Press("chkSoundsOn");
    EXPECT_THAT(Told(),
                ElementsAre("No Wave File Support: This PC does not support the playing of wave files"));
    EXPECT_FALSE(Child<QCheckBox>("chkSoundsOn").isChecked());
    Type("txtWaveFileSpec", "/x.wav");
    Press("cmdPlay");
    EXPECT_THAT(Told(), ElementsAre("Play Wave File: Unable to play the specified .wav file."));
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_FALSE(taken.value().soundOn);
}

TEST_F(OptionsWindow, TheFontIsShownAlsoWhereItIsGone) {
    options.fontName = "No Such Font";
    options.fontSize = 11;
    Open(OptionTab::Appearance);
    EXPECT_EQ(Child<QLabel>("lblCurrentFont").text(), QStringLiteral("Current Font: No Such Font 11"));
    EXPECT_TRUE(Child<QLabel>("lblFontMissing").isVisible());
    ModalScript script;
    for (const int size : {60, 14})
        script.Await("FontDialog", [size](QWidget& dialog) {
            auto& fonts = static_cast<QFontDialog&>(dialog);
            fonts.setCurrentFont(QFont(QFontDatabase::families().constFirst(), size));
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    Press("cmdChangeFont");
    EXPECT_THAT(Child<QLabel>("lblCurrentFont").text().toStdString(), ::testing::EndsWith(" 50"));
    Press("cmdChangeFont");
    EXPECT_FALSE(Child<QLabel>("lblFontMissing").isVisible());
    Press("optToolbarStyle(2)");
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->fontSize, 14);
    EXPECT_NE(taken->fontName, "No Such Font");
    EXPECT_EQ(taken->coolbarStyle, CoolbarStyle::Hidden);
}

TEST_F(OptionsWindow, UncheckingWhatGuardsFilesIsWarnedOf) {
    constexpr const char* kEnd =
        " SHOULD NOT BE DELETED.\r\n"
        "Deleting these files may cause your computer to become unstable or unusable.\r\n\r\n"
        "You are strongly discouraged from unchecking this option.";
    Open(OptionTab::FindDupes);
    for (const auto& [box, text] :
         {std::pair{"chkIgnoreSystemFiles", "System files to possible deletion.\r\n\r\nMost System files"},
          {"chkIgnoreHiddenFiles", "Hidden files to possible deletion.\r\n\r\nMost Hidden files"},
          {"chkIgnoreFilesInWinDirTree",
           "Windows files to possible deletion.\r\n\r\n"
           "Most duplicate files found within the Windows folder tree"}}) {
        const std::string warning =
            std::string("Warning!: Unchecking this option can expose critical ") + text + kEnd;
        Press(box);
        EXPECT_THAT(Told(), ElementsAre(warning));
        EXPECT_TRUE(Child<QCheckBox>(box).isChecked()) << "by default";
        program.messages.answers = {MessageAnswer::Ok};
        Press(box);
        EXPECT_THAT(Told(), ElementsAre(warning));
        EXPECT_FALSE(Child<QCheckBox>(box).isChecked());
    }
    Press("chkIgnoreHiddenFiles");
    EXPECT_THAT(Told(), IsEmpty());
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_FALSE(taken->ignoreSystemFiles);
    EXPECT_TRUE(taken->ignoreHiddenFiles);
    EXPECT_FALSE(taken->ignoreFilesInWindowsDir);
}

TEST_F(OptionsWindow, AnotherFolderForDuplicatesIsAskedFor) {
    options.removalMethod = RemovalMethod::Recycle;
    Open(OptionTab::FindDupes);
    program.messages.texts = {std::nullopt};
    Press("optRemovalMethods(3)");
    EXPECT_THAT(Told(), ElementsAre("Change Remove Method: No folder was selected. Remove method will be set "
                                    "to Move To DUPES."));
    EXPECT_TRUE(Child<QRadioButton>("optRemovalMethods(2)").isChecked());
    program.messages.texts = {"/elsewhere"};
    Press("optRemovalMethods(3)");
    ModalScript script;
    script.Await("frmDupeExclusions", [](QWidget& dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit*>(QStringLiteral("txtFileName")),
                         QStringLiteral("*.mine"));
        PressChild(dialog, "cmdAddFile");
        PressChild(dialog, "cmdOK");
    });
    Press("cmdFilesToExclude");
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->removalMethod, RemovalMethod::MoveToOtherFolder);
    EXPECT_EQ(taken->userDefinedMoveFolderPath, "/elsewhere");
    EXPECT_THAT(taken->excludeFiles, ::testing::EndsWith("?*.mine"));
}

TEST_F(OptionsWindow, TheDefaultsOfOneTabLeaveTheOthersAlone) {
    const Options defaults = options;
    for (const OptionLine& line : OptionTable())
        if (const auto* member = std::get_if<bool Options::*>(&line.field)) options.** member ^= true;
    options.jobs = 20'000;
    options.protectedDupeFolders = "/a?/b";
    Open(OptionTab::Extras);
    EXPECT_EQ(Child<QSpinBox>("txtJobs").value(), 20'000);
    Press("cmdRestoreTab");
    EXPECT_EQ(Child<QSpinBox>("txtJobs").value(), 0);
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(taken);
    for (const OptionLine& line : OptionTable()) {
        const OptionBox* box = FindBox(line.key);
        const Options& expected = box != nullptr && box->tab == OptionTab::Extras ? defaults : options;
        EXPECT_EQ(OptionText(line, *taken), OptionText(line, expected)) << line.key;
    }
}

TEST_F(OptionsWindow, FOneLeadsToThePlaceOfTheControl) {
    Open(OptionTab::Compare);
    const auto help = [&](const char* control) {
        Child<QWidget>(control).setFocus();
        QTest::keyClick(window.get(), Qt::Key_F1);
        QCoreApplication::processEvents();
    };
    help("txtChunkSize");
    help("chkIgnore2SecDiff");
    window->tbsOptions->setFocus();
    Press("cmdHelp");
    EXPECT_THAT(places,
                ElementsAre("options.html#chunk-size", "options.html#comparison", "options.html#method"));
}

// From the commands of the main window to what they show, and back.
TEST(OptionsCommands, EachLandsOnItsTab) {
    TestProgram program;
    Application& application = program.Start();
    ModalScript script;
    const std::pair<const char*, OptionTab> commands[] = {{"ShowOptions", OptionTab::General},
                                                          {"mnuOptionsChunkSize", OptionTab::Compare},
                                                          {"mnuOptionsFilters", OptionTab::IncludeExclude},
                                                          {"mnuOptionsSyncCustomize", OptionTab::Synchronize},
                                                          {"mnuOptionsChangeSounds", OptionTab::Sounds},
                                                          {"mnuOptionsAppearance", OptionTab::Appearance}};
    for (const auto& each : commands) {
        script.Await("frmOptions", [&](QWidget& window) {
            auto& form = static_cast<frmOptions&>(window);
            EXPECT_EQ(form.tbsOptions->currentIndex() + 1, static_cast<int>(each.second)) << each.first;
            EXPECT_EQ(form.focusWidget(), form.Page(each.second).FirstControl()) << each.first;
            PressChild(window, "cmdCancel");
        });
        application.GetCommands().Run(each.first);
    }
}

TEST(OptionsCommands, OkShowsWritesAndComparesAgainWhatCancelLeaves) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nAutoCompareAfterFilter=False\r\n");
    program.CompareSamples();
    ModalScript script;
    const auto change = [&](const char* command, const std::function<void(QWidget&)>& act, const char* end) {
        script.Await("frmOptions", [act, end](QWidget& window) {
            act(window);
            PressChild(window, end);
        });
        application.GetCommands().Run(command);
    };
    const auto pressing = [](const char* name) {
        return [name](QWidget& window) { PressChild(window, name); };
    };
    Commands& commands = application.GetCommands();
    change("mnuOptionsAppearance", pressing("optToolbarStyle(2)"), "cmdCancel");
    EXPECT_FALSE(commands.Action("mnuOptionsToolbarHide")->isChecked());
    change("mnuOptionsAppearance", pressing("optToolbarStyle(2)"), "cmdOK");
    EXPECT_TRUE(commands.Action("mnuOptionsToolbarHide")->isChecked());
    EXPECT_FALSE(program.Window().Strip(ToolbarStyle::Coolbar).isVisible());
    EXPECT_TRUE(application.results.HasResult());
    // Another method makes another result at once.
    change("mnuOptionsChunkSize", pressing("optComparisonMethod(1)"), "cmdOK");
    EXPECT_EQ(application.compare.CompareMethod, CompareMethod::Contents);
    EXPECT_TRUE(application.results.HasResult());
    // Other filters are written at once, and the result goes where none is to follow.
    change(
        "mnuOptionsFilters",
        [](QWidget& window) {
            QTest::keyClicks(window.findChild<QLineEdit*>(QStringLiteral("txtFilter")),
                             QStringLiteral("*.txt"));
            PressChild(window, "cmdAdd");
        },
        "cmdOK");
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("IncludeFileTypes=*.txt"));
    EXPECT_FALSE(application.results.HasResult());
    EXPECT_THAT(program.messages.shown, IsEmpty());
}

TEST(OptionsCommands, WhereTheFiltersCannotBeWrittenTheOptionsHoldAndItIsTold) {
    TestProgram program;
    Application& application = program.Start();
    program.calls.FailAll(vantrel::testing::Call::Rename, EROFS);
    ModalScript script;
    script.Await("frmOptions", [](QWidget& window) {
        QTest::keyClicks(window.findChild<QLineEdit*>(QStringLiteral("txtFilter")), QStringLiteral("*.txt"));
        PressChild(window, "cmdAdd");
        PressChild(window, "cmdOK");
    });
    application.GetCommands().Run("mnuOptionsFilters");
    EXPECT_EQ(application.options.includeFileTypes, "*.txt");
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_THAT(program.messages.Line(0), HasSubstr("frmOptions.cmdOK_Click"));
    program.messages.shown.clear();
    program.calls.FailAll(vantrel::testing::Call::Rename, 0);
}

TEST(OptionsCommands, TheHelpOpensAtTheAnchorOverTheWindow) {
    TestProgram program;
    program.folder.Write("help/options.html", "<h2 id=\"sounds\">Sounds</h2>");
    Application& application = program.Start();
    ModalScript script;
    script.Await("frmOptions", [](QWidget& window) {
        PressChild(window, "cmdHelp");
        const auto* help = window.findChild<frmHelp*>();
        EXPECT_EQ(help != nullptr ? help->browser->source().fragment() : QString(), QStringLiteral("sounds"));
        PressChild(window, "cmdCancel");
    });
    application.GetCommands().Run("mnuOptionsChangeSounds");
    EXPECT_THAT(program.desktop.asked, ::testing::Not(::testing::Contains(HasSubstr("options.html"))));
}

}  // namespace
}  // namespace vantrel
