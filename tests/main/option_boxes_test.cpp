// Every option of the table, in the options window, in the menu and in the help.
#include "main/option_boxes.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "main/forms/frm_options.h"
#include "main/forms/options/option_page.h"
#include "platform/forms/qt_text.h"
#include "program_support.h"
#include "settings/option_changes.h"
#include "support/places.h"
#include "sync/csync_settings.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::TestProgram;

// What other windows show and change as one works with them: no wish that is set beforehand.
const std::set<std::string_view> kStates{
    "NumSyncLogEntries",  // the synchronization history
    "ViewType",           // from here: the View menu and the strip between the panes
    "ViewNewerFiles",
    "ViewOlderFiles",
    "ViewIdenticalFiles",
    "ViewOrphanFiles",
    "ViewBinaryFiles",
    "ViewDifferentSubFolders",
    "ViewIdenticalSubFolders",
    "ViewOrphanSubFolders",
    "WindowState",  // from here: where the main window stands
    "Height",
    "Width",
    "Top",
    "Left",
    "SourceColumnOne",
    "SourceColumnTwo",
    "SourceColumnThree",
    "TargetColumnOne",
    "TargetColumnTwo",
    "TargetColumnThree",
    "FolderPaths",  // from here: the duplicate finder
    "IncludeSubFolders",
    "DupesFormLoadedPreviously",
    "RemoveWarningShown",
    "TrueSizesOffered",  // that a question was asked
};

std::string Plain(std::string_view caption) {
    std::string plain(caption);
    std::erase(plain, '&');
    return plain;
}

std::string HelpPage(const std::string& file) {
    std::ifstream stream(testing::HelpFolder() + "/" + file);
    std::stringstream page;
    page << stream.rdbuf();
    return QString::fromStdString(page.str()).simplified().toStdString();
}

// The part of the help that an anchor begins; empty where there is none.
std::string HelpAt(std::string_view place) {
    const std::size_t hash = place.find('#');
    const std::string page = HelpPage(std::string(place.substr(0, hash)));
    const std::size_t start = page.find("id=\"" + std::string(place.substr(hash + 1)) + "\"");
    return start == std::string::npos ? "" : page.substr(start, page.find("<h2", start) - start);
}

class OptionBoxesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        program.Start();
        Open(program.Get().options);
    }
    void Open(const Options& options) {
        window = std::make_unique<frmOptions>(
            frmOptions::Parts{.tools = program.Get().tools,
                              .sounds = program.Get().sounds,
                              .environment = program.Get().Environment(),
                              .take = [this](const Options& edited) { taken = edited; },
                              .showHelp = [](const std::string&, QWidget*) {}},
            options);
        window->show();
    }
    // The controls of a box: one, or all buttons of its group.
    std::vector<QWidget*> Controls(const OptionBox& box) {
        std::vector<QWidget*> controls;
        const QString name = ToQString(box.control);
        for (QWidget* widget : window->Page(box.tab).findChildren<QWidget*>())
            if (widget->objectName() == name || widget->objectName().startsWith(name + QLatin1Char('(')))
                controls.push_back(widget);
        return controls;
    }

    TestProgram program;
    std::unique_ptr<frmOptions> window;
    Options taken;
};

TEST_F(OptionBoxesTest, EveryOptionStandsInTheWindowOrIsAStateOfAnotherOne) {
    std::set<std::string_view> known;
    for (const OptionLine& line : OptionTable()) {
        EXPECT_NE(FindBox(line.key) != nullptr, kStates.contains(line.key))
            << line.key << ": a new option has its line in option_boxes.cpp";
        EXPECT_TRUE(known.insert(line.key).second) << line.key;
    }
    for (const OptionBox& box : OptionBoxes()) EXPECT_TRUE(known.contains(box.key)) << box.key;
    for (const std::string_view key : kStates) EXPECT_TRUE(known.contains(key)) << key;
}

TEST_F(OptionBoxesTest, EveryControlHasItsCaptionItsTipAndItsPlaceInTheHelp) {
    for (const OptionBox& box : OptionBoxes()) {
        SCOPED_TRACE(box.key);
        const std::vector<QWidget*> controls = Controls(box);
        ASSERT_FALSE(controls.empty());
        for (const QWidget* control : controls) {
            const auto* events = qobject_cast<const QTreeWidget*>(control);
            const QString tip = events != nullptr ? events->topLevelItem(0)->toolTip(0) : control->toolTip();
            EXPECT_FALSE(tip.isEmpty()) << control->objectName().toStdString();
            EXPECT_EQ(FromQString(control->property(kHelpProperty).toString()), box.help);
            if (const auto* check = qobject_cast<const QCheckBox*>(control)) {
                EXPECT_EQ(Plain(check->text().toStdString()), Plain(box.caption));
            }
        }
        EXPECT_THAT(std::string(box.tip), ::testing::EndsWith("."));
        EXPECT_THAT(HelpAt(box.help), HasSubstr(Plain(box.caption))) << box.help;
    }
    for (const OptionTabInfo& info : OptionTabs()) EXPECT_NE(HelpAt(info.help), "") << info.help;
}

TEST_F(OptionBoxesTest, TabsHaveTheirNamesInTheirOrder) {
    std::vector<std::string> names;
    for (int i = 0; i < window->tbsOptions->count(); ++i)
        names.push_back(window->tbsOptions->tabText(i).toStdString());
    EXPECT_THAT(names, ElementsAre("General", "Compare", "Include/Exclude", "Synchronize", "Sounds",
                                   "Appearance", "View File Diffs", "Find Dupes", "Extras"));
}

// A box is pressed by its key, and at OK its option is the only one that is another.
TEST_F(OptionBoxesTest, EveryCheckBoxChangesItsOptionAndNoOther) {
    const Options before = program.Get().options;
    for (const OptionBox& box : OptionBoxes()) {
        const OptionLine& line = OptionOf(box.key);
        if (line.kind != OptionKind::Boolean) continue;
        Open(before);
        window->tbsOptions->setCurrentIndex(static_cast<int>(box.tab) - 1);
        program.messages.answers = {MessageAnswer::Ok};  // where it asks whether it is meant
        const std::vector<QWidget*> controls = Controls(box);
        ASSERT_EQ(controls.size(), 1U) << box.key;
        QTest::keyClick(controls[0], Qt::Key_Space);
        QTest::keyClick(window.get(), Qt::Key_Return);
        EXPECT_THAT(ChangedOptions(before, taken), ElementsAre(&line)) << box.key;
    }
}

// Whatever the file held, what the window shows is what it gives back. Each round has another value of each
// option.
TEST_F(OptionBoxesTest, EveryValueComesThroughTheWindow) {
    for (std::size_t round = 0; round < 8; ++round) {
        Options options = program.Get().options;
        for (const OptionBox& box : OptionBoxes()) {
            const OptionLine& line = OptionOf(box.key);
            std::vector<std::string> texts{OptionText(line, options)};
            if (const auto* word = std::get_if<WordField>(&line.field))
                for (const OptionWord& each : word->words) texts.emplace_back(each.text);
            else if (line.kind == OptionKind::Boolean)
                texts = {"True", "False"};
            else if (line.kind == OptionKind::Text || line.kind == OptionKind::FilterText)
                texts.emplace_back("/some thing?*.x");
            else if (line.kind == OptionKind::Number)
                texts.emplace_back("12345");
            TakeOptionText(line, texts[round % texts.size()], program.Get().Environment(), options);
        }
        // The cells of another method than the custom one are that method's.
        CSyncSettings(options).ConvertPredefinedToCustom();
        Open(options);
        QTest::keyClick(window.get(), Qt::Key_Return);
        EXPECT_THAT(ChangedOptions(options, taken), IsEmpty()) << "round " << round;
    }
}

TEST_F(OptionBoxesTest, NoAccessKeyIsGivenTwiceWithinATab) {
    for (const OptionTabInfo& info : OptionTabs()) {
        std::map<QChar, std::string> keys;
        const auto look = [&](const QString& caption) {
            const qsizetype at = caption.indexOf(QLatin1Char('&'));
            if (at < 0) return;
            const auto [place, isNew] = keys.emplace(caption[at + 1].toUpper(), caption.toStdString());
            EXPECT_TRUE(isNew) << info.caption << ": " << caption.toStdString() << " and " << place->second;
        };
        for (const QPushButton* button :
             {window->cmdOK, window->cmdCancel, window->cmdRestoreTab, window->cmdHelp})
            look(button->text());
        for (const auto* button : window->Page(info.tab).findChildren<QAbstractButton*>()) {
            look(button->text());
            EXPECT_TRUE(button->text().contains(QLatin1Char('&'))) << button->text().toStdString();
        }
        for (const auto* label : window->Page(info.tab).findChildren<QLabel*>())
            if (label->buddy() != nullptr) look(label->text());
    }
}

}  // namespace
}  // namespace vantrel
