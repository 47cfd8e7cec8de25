// Every toggle of the option table, from its line to the screen.
#include "settings/option_table.h"

#include <gmock/gmock.h>

#include <unistd.h>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "main/command_table.h"
#include "platform/forms/qt_text.h"
#include "program_support.h"
#include "support/places.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using vantrel::testing::TestProgram;

std::vector<const OptionLine*> Toggles() {
    std::vector<const OptionLine*> lines;
    for (const OptionLine& line : OptionTable())
        if (!line.toggle.item.empty()) lines.push_back(&line);
    return lines;
}

// What a user can see of the options, by the name of the thing.
using Sights = std::map<std::string, std::string>;

// The names of what is not the same in both.
std::set<std::string> Changed(const Sights& before, const Sights& after) {
    std::set<std::string> names;
    for (const auto& [name, text] : before)
        if (after.at(name) != text) names.insert(name);
    return names;
}

// What changes on the screen with each toggle besides its mark. For those that are not here the windows and
// commands that they govern have tests of their own.
const std::map<std::string, std::set<std::string>, std::less<>> kEffects{
    {"SoundOn", {"sounds"}},
    {"CompareSubFolders", {"records", "rows"}},
    {"SyncScrolling", {"scrolling"}},
    {"ExcludeSystemFiles", {"system files"}},
    {"ExcludeHiddenFiles", {"rows"}},
    {"ExcludeSystemFolders", {"system folders"}},
    {"ExcludeHiddenFolders", {"rows"}},
    {"RemindAboutFATNTFSIssue", {"messages"}},
    {"Ignore2SecDiff", {"rows"}},
    {"IgnoreDaylightSavings", {"rows", "messages"}},
    {"AutoCompleteFolderPath", {"proposal"}},
};

std::set<std::string> EffectsOf(const OptionLine& line) {
    const auto found = kEffects.find(line.key);
    return found == kEffects.end() ? std::set<std::string>() : found->second;
}

// The program with two folders on which every option of a comparison shows, and more rows than a pane has
// room for.
class Screen {
  public:
    explicit Screen(const std::string& settings = {}) {
        constexpr double kTime = 1'600'000'000;
        constexpr double kHour = 3'600;
        for (const char* side : {"left/", "right/"}) {
            const bool isLeft = side[0] == 'l';
            const std::string at = side;
            program_.workspace.Write(at + "two seconds", "1", isLeft ? kTime : kTime + 2);
            program_.workspace.Write(at + "an hour", "1", isLeft ? kTime : kTime + kHour);
            program_.workspace.Write(at + "Folder/in", isLeft ? "1" : "12", kTime);
            for (int i = 0; i < 60; ++i) program_.workspace.Write(at + "n" + std::to_string(i), "", kTime);
        }
        program_.workspace.Write("left/.hidden", "", kTime);
        program_.workspace.Write("left/.Hidden folder/in", "", kTime);
        program_.volumes.drives[program_.workspace / "left"].fileSystem = "FAT";
        program_.volumes.drives[program_.workspace / "right"].fileSystem = "NTFS";
        program_.Start(settings);
        program_.Window().setGeometry(0, 0, 700, 450);
        Compare();
    }

    Application& Get() { return program_.Get(); }
    // Some ask first whether they are really meant.
    void Press(const OptionLine& line) {
        program_.messages.answers = {MessageAnswer::Yes};
        Get().GetCommands().Action(line.toggle.item)->trigger();
        program_.messages.answers.clear();
    }

    bool IsChecked(const OptionLine& line) {
        return Get().GetCommands().Action(line.toggle.item)->isChecked();
    }

    // Compares once: that alone takes a while, since the progress window is shown for its time.
    Sights Look() {
        Sights sights{{"messages", ""}};
        sights["records"] = Get().results.SubFolderDiffs.IsEmpty() ? "none" : "some";
        sights["proposal"] = Proposal();
        program_.messages.shown.clear();
        program_.sound.played.clear();
        Compare();
        sights["rows"] = Rows();
        sights["sounds"] = std::to_string(program_.sound.played.size());
        for (const auto& message : program_.messages.shown) sights["messages"] += message.title + "\n";
        sights["scrolling"] = Scrolling();
        sights["system files"] = Get().compare.ExcludeSystemFiles ? "left out" : "compared";
        sights["system folders"] = Get().compare.ExcludeSystemFolders ? "left out" : "compared";
        return sights;
    }

    void Compare() {
        for (const char* side : {"left", "right"})
            Get().Window().SetPathText(side[0] == 'l' ? Side::Left : Side::Right, program_.workspace / side);
        Get().compare.AlreadyNotifiedAboutFATNTFS = false;
        Get().GetCommands().Run("mnuFileCompareDirectories");
        ASSERT_TRUE(Get().results.HasResult());
    }

  private:
    // Whether the left path box completes the first letters of a folder.
    std::string Proposal() {
        QLineEdit* edit = Get().Window().Box(Side::Left).Combo()->lineEdit();
        edit->clear();
        QTest::keyClicks(edit, ToQString(program_.workspace / "lef"));
        return FromQString(edit->text()) == program_.workspace / "lef" ? "none" : "completed";
    }

    std::string Rows() {
        std::string rows;
        for (const Side side : kBothSides)
            for (std::size_t i = 0; i < Get().panes.Pane(side).Count(); ++i) {
                const ResultRow& row = Get().panes.Pane(side)[i];
                rows += std::string(row.text) + " " + std::to_string(static_cast<int>(row.type)) + "\n";
            }
        return rows;
    }

    std::string Scrolling() {
        QCoreApplication::processEvents();
        PanesWidget& panes = Get().Window().Panes();
        panes.View(Side::Right).SetTopItem(0);
        panes.View(Side::Left).verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
        EXPECT_GT(panes.View(Side::Left).TopItem(), 0);
        return panes.View(Side::Right).TopItem() == panes.View(Side::Left).TopItem() ? "coupled" : "apart";
    }

    TestProgram program_;
};

TEST(OptionTable, TogglesAreThoseOfTheMenusWithTheirCaptions) {
    TestProgram program;
    const Commands& commands = program.Start().GetCommands();
    std::set<std::string_view> ofMenus, ofTable;
    for (const auto table : {MainMenuEntries(), PopupMenuEntries()})
        for (const CommandEntry& entry : table)
            if (entry.kind == CommandKind::Check) ofMenus.insert(entry.name);
    for (const OptionLine* line : Toggles()) {
        EXPECT_TRUE(ofTable.insert(line->toggle.item).second) << line->toggle.item;
        EXPECT_EQ(FromQString(commands.Action(line->toggle.item)->text()), line->toggle.caption);
        EXPECT_EQ(line->kind, OptionKind::Boolean) << line->key;
    }
    EXPECT_EQ(ofTable, ofMenus);
}

// Without the mark of its access key, in the part that the anchor begins.
TEST(OptionTable, TheHelpNamesEveryToggleWhereItsLineSays) {
    for (const OptionLine* line : Toggles()) {
        const std::string place(line->toggle.help);
        const std::size_t hash = place.find('#');
        std::ifstream file(testing::HelpFolder() + "/" + place.substr(0, hash));
        std::stringstream page;
        page << file.rdbuf();
        const std::string text = QString::fromStdString(page.str()).simplified().toStdString();
        const std::size_t start = text.find("id=\"" + place.substr(hash + 1) + "\"");
        ASSERT_NE(start, std::string::npos) << place;
        std::string caption(line->toggle.caption);
        std::erase(caption, '&');
        EXPECT_THAT(text.substr(start, text.find("<h2", start) - start), HasSubstr(caption)) << place;
    }
}

TEST(OptionTable, EveryToggleShowsItsEffectAndNoOther) {
    Screen screen;
    const Sights first = screen.Look();
    std::vector<const OptionLine*> quiet;
    for (const OptionLine* line : Toggles()) {
        SCOPED_TRACE(line->key);
        const std::set<std::string> expected = EffectsOf(*line);
        // What has to follow at once is seen here, or this test does not know it yet.
        EXPECT_TRUE(line->shownBy == ShownBy::CheckMark || !expected.empty());
        const bool before = screen.IsChecked(*line);
        screen.Press(*line);
        EXPECT_EQ(screen.IsChecked(*line), !before);
        if (expected.empty()) {
            quiet.push_back(line);
        } else {
            EXPECT_EQ(Changed(first, screen.Look()), expected);
            screen.Press(*line);
            EXPECT_EQ(screen.IsChecked(*line), before);
            // The records of the last analysis went with either press.
            if (expected.contains("records")) screen.Compare();
        }
    }
    // All that have no effect here are pressed now.
    EXPECT_EQ(Changed(first, screen.Look()), std::set<std::string>());
    for (const OptionLine* line : quiet) screen.Press(*line);
    for (const OptionLine* line : Toggles())
        EXPECT_EQ(screen.IsChecked(*line), line->defaultText == "True") << line->key;
}

// What follows a toggle at once follows the loading of the options as well.
TEST(OptionTable, WhatIsLoadedIsShown) {
    const Sights defaults = Screen().Look();
    for (const OptionLine* line : Toggles()) {
        if (line->shownBy == ShownBy::CheckMark) continue;
        SCOPED_TRACE(line->key);
        const bool isOn = line->defaultText != "True";
        Screen loaded("[" + std::string(line->section) + "]\r\n" + std::string(line->key) +
                      (isOn ? "=True\r\n" : "=False\r\n"));
        EXPECT_EQ(loaded.IsChecked(*line), isOn);
        EXPECT_EQ(Changed(defaults, loaded.Look()), EffectsOf(*line));
    }
}

TEST(OptionTable, TheFontIsThatOfPanesAndPathBoxes) {
    TestProgram program;
    for (const char* size : {"21", "13"}) {
        frmMain& window = program.Start("[Options]\r\nFontSize=" + std::string(size) + "\r\n").Window();
        for (const Side side : kBothSides) {
            EXPECT_EQ(window.Panes().View(side).font().pointSize(), std::stoi(size));
            EXPECT_EQ(window.Box(side).Combo()->font(), window.Panes().View(side).font());
        }
        program.application.reset();
    }
}

// A machine whose library lets nobody have SHA-1. A process asks for it once, so this is one of its own.
TEST(OptionTable, ShaIsGrayAndNotTakenWhereItIsNotOffered) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const vantrel::testing::TempFolder folder;
    folder.Write("openssl.cnf",
                 "openssl_conf = all\n[all]\nalg_section = algorithms\n[algorithms]\n"
                 "default_properties = fips=yes\n");
    ASSERT_EQ(0, setenv("OPENSSL_CONF", (folder / "openssl.cnf").c_str(), 1));
    const auto look = [] {
        TestProgram program;
        Application& application = program.Start("[Options]\r\nCompareType=SHA\r\n");
        const bool gray = !application.GetCommands().Action("mnuOptionsCompareTypeSHA")->isEnabled();
        _exit(gray && application.options.compareType == CompareMethod::SizeAndDate ? 7 : 1);
    };
    EXPECT_EXIT(look(), ::testing::ExitedWithCode(7), "");
    ASSERT_EQ(0, unsetenv("OPENSSL_CONF"));
}

// The smaller pieces that a run takes over a slow connection become the option.
TEST(OptionTable, AnAnswerWithinARunStays) {
    TestProgram program;
    Application& application = program.Start("[Options]\r\nCompareType=Thorough\r\n");
    program.clock.step = 10'001;
    program.messages.answers = {MessageAnswer::Yes};
    program.CompareSamples();
    EXPECT_EQ(application.options.chunkSize, 10'000);
    application.SaveOptions();
    EXPECT_THAT(program.folder.Read("vantrel.ini"), HasSubstr("ChunkSize=0000010000"));
}

}  // namespace
}  // namespace vantrel
