#include <gmock/gmock.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <set>

#include "main/command_table.h"
#include "menu_texts.h"
#include "modal_support.h"
#include "program_support.h"

namespace vantrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using vantrel::testing::TestProgram;

std::string MarkOf(const QAction& action) {
    if (!action.isCheckable()) return {};
    const bool exclusive = action.actionGroup() != nullptr;
    if (action.isChecked()) return exclusive ? "(*) " : "[x] ";
    return exclusive ? "( ) " : "[ ] ";
}

void Describe(const QAction& action, int depth, std::string& out) {
    if (action.isSeparator()) return;
    const std::string caption = action.text().toStdString();
    out += std::string(static_cast<std::size_t>(depth) * 2, ' ') + MarkOf(action) +
           action.objectName().toStdString() + (caption.empty() ? "" : " " + caption) + "\n";
    if (action.menu())
        for (const QAction* child : action.menu()->actions()) Describe(*child, depth + 1, out);
}

TEST(Menus, ShowItemsCaptionsAndDefaultChecks) {
    TestProgram program;
    frmMain& window = program.Start().Window();
    std::string shown = "\n";
    for (const QAction* action : window.menuBar()->actions()) Describe(*action, 0, shown);
    for (const char* popup :
         {"mnuFilePopup", "mnuFolderPopup", "mnuDiffFileDblClick", "mnuDiffSubDirDblClick"})
        Describe(*window.GetCommands().Action(popup), 0, shown);
    EXPECT_EQ(shown, testing::kMenus);
}

// In every place where it stands, and it does then what the handler does.
TEST(Menus, ACommandIsEnabledExactlyWhenItHasAHandler) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    for (const auto table : {MainMenuEntries(), PopupMenuEntries()})
        for (const CommandEntry& entry : table) {
            if (entry.kind == CommandKind::Menu || entry.kind == CommandKind::Separator) continue;
            // One that is not shown counts as disabled.
            commands.Action(entry.name)->setVisible(true);
            EXPECT_EQ(commands.Action(entry.name)->isEnabled(), commands.IsEnabled(entry.name)) << entry.name;
            const std::string_view acting = entry.sameAs.empty() ? entry.name : entry.sameAs;
            int runs = 0;
            commands.SetHandler(entry.name, nullptr);
            commands.SetHandler(acting, nullptr);
            EXPECT_FALSE(commands.Action(entry.name)->isEnabled()) << entry.name;
            commands.Run(entry.name);
            commands.SetHandler(acting, [&runs] { ++runs; });
            EXPECT_TRUE(commands.Action(entry.name)->isEnabled()) << entry.name;
            commands.Action(entry.name)->trigger();
            EXPECT_EQ(1, runs) << entry.name;
        }
}

TEST(Menus, EveryCommandIsOneActionOfItsName) {
    TestProgram program;
    frmMain& window = program.Start().Window();
    std::set<std::string> captionsOfMenu;
    for (const QAction* action : window.findChildren<QAction*>()) {
        const std::string name = action->objectName().toStdString();
        for (const auto table : {MainMenuEntries(), PopupMenuEntries()})
            if (!name.empty() && std::ranges::find(table, name, &CommandEntry::name) != table.end()) {
                EXPECT_TRUE(captionsOfMenu.insert(name).second) << name;
            }
    }
}

// While a job runs the five menus are disabled together, and no way to a command leads through.
TEST(Menus, BusyStateHoldsForMenusStripsKeysAndPathBoxes) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    frmMain& window = application.Window();
    const auto looksDisabled = [&](bool disabled) {
        for (const char* menu : {"mnuFile", "mnuOptions", "mnuSelect", "mnuView", "mnuHelp"})
            EXPECT_NE(application.GetCommands().Menu(menu)->menuAction()->isEnabled(), disabled) << menu;
        for (const QToolButton* button : std::initializer_list<QToolButton*>{
                 window.Strip(ToolbarStyle::Coolbar).Button("mnuFileExit"),
                 window.Strip(ToolbarStyle::Toolbar).Button("mnuFileCompareDirectories"),
                 window.Box(Side::Left).Icon(PathIcon::UpToParent),
                 window.Box(Side::Right).Icon(PathIcon::Select),
                 window.Panes().Toggles().imgViews(ResultType::Newer)})
            EXPECT_NE(button->isEnabled(), disabled) << button->objectName().toStdString();
    };
    // The focus comes back to a button that lost it.
    QToolButton* focused = window.Box(Side::Left).Icon(PathIcon::Explore);
    focused->setFocus();
    looksDisabled(false);
    BusyState::Job job(application.busy), inner(application.busy);
    looksDisabled(true);
    EXPECT_NE(window.focusWidget(), focused);
    application.GetCommands().Action("mnuOptionsSoundOn")->trigger();
    EXPECT_TRUE(application.sounds.SoundOn);
    window.Strip(ToolbarStyle::Coolbar).Button("mnuFileExit")->click();
    EXPECT_TRUE(window.isVisible());
    window.Box(Side::Left).Icon(PathIcon::UpToParent)->click();
    EXPECT_EQ(window.PathText(Side::Left), program.left + "/");
    application.panes.SelectAll(Side::Left);
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedCount(), 0U);
    job.End();
    looksDisabled(true);
    inner.End();
    looksDisabled(false);
    EXPECT_EQ(window.focusWidget(), focused);
    application.panes.SelectAll(Side::Left);
    EXPECT_EQ(application.panes.Pane(Side::Left).SelectedCount(), 6U);
}

// A toggle flips its own check and its option, changes nothing on the screen and does not compare again.
TEST(Menus, TogglesFlipTheirOptionAndNothingElse) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    for (const CommandEntry& entry : MainMenuEntries()) {
        if (entry.kind != CommandKind::Check) continue;
        QAction* action = application.GetCommands().Action(entry.name);
        const bool before = action->isChecked();
        program.messages.answers = {MessageAnswer::Yes};  // to those that ask whether they are meant
        action->trigger();
        EXPECT_EQ(action->isChecked(), !before) << entry.name;
        std::erase_if(program.messages.shown, [](const Message& each) { return each.title == "Warning!"; });
        EXPECT_TRUE(application.results.HasResult()) << entry.name;
    }
    // All of them arrive in the settings file, and come back from there.
    application.SaveOptions();
    std::vector<bool> saved;
    for (const CommandEntry& entry : MainMenuEntries())
        if (entry.kind == CommandKind::Check)
            saved.push_back(application.GetCommands().Action(entry.name)->isChecked());
    program.application.reset();
    Commands& again = program.Start().GetCommands();
    std::vector<bool> loaded;
    for (const CommandEntry& entry : MainMenuEntries())
        if (entry.kind == CommandKind::Check) loaded.push_back(again.Action(entry.name)->isChecked());
    EXPECT_EQ(loaded, saved);
    EXPECT_TRUE(program.messages.shown.empty());
}

TEST(Menus, OneItemOfAnExclusiveGroupIsChecked) {
    TestProgram program;
    Commands& commands = program.Start().GetCommands();
    testing::ModalScript script;
    script.Await("frmOptions", [](QWidget& options) { options.close(); });
    for (const CommandEntry& entry : MainMenuEntries()) {
        if (entry.kind != CommandKind::Exclusive || !commands.IsEnabled(entry.name)) continue;
        program.messages.texts = {"/elsewhere"};  // to the one that needs a folder
        commands.Run(entry.name);
        for (const CommandEntry& other : MainMenuEntries())
            if (other.kind == CommandKind::Exclusive && other.parent == entry.parent) {
                EXPECT_EQ(commands.Action(other.name)->isChecked(), other.name == entry.name) << other.name;
            }
    }
}

TEST(Menus, AChangeOfTheMethodComparesAgainOrDropsTheResult) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    application.GetCommands().Run("mnuOptionsCompareTypeThoroughString");
    EXPECT_EQ(application.compare.CompareMethod, CompareMethod::Contents);
    EXPECT_TRUE(application.results.HasResult());
    application.options.autoCompareAfterCompareMethodChange = false;
    application.GetCommands().Run("mnuOptionsCompareTypeQuick");
    EXPECT_TRUE(application.panes.ShowsNoResult());
}

TEST(Strips, ShareTheActionsAndHaveCaptionsOfTheirOwn) {
    TestProgram program;
    Application& application = program.Start();
    frmMain& window = application.Window();
    const CommandStrip& coolBar = window.Strip(ToolbarStyle::Coolbar);
    const CommandStrip& toolbar = window.Strip(ToolbarStyle::Toolbar);
    EXPECT_EQ(coolBar.objectName(), QStringLiteral("CoolBar"));
    EXPECT_EQ(toolbar.objectName(), QStringLiteral("VTToolbar"));
    EXPECT_TRUE(coolBar.isVisible());
    EXPECT_FALSE(toolbar.isVisible());
    application.GetCommands().Run("mnuOptionsToolbarShowToolbar");
    EXPECT_FALSE(coolBar.isVisible());
    EXPECT_TRUE(toolbar.isVisible());
    application.GetCommands().Run("mnuOptionsToolbarHide");
    EXPECT_FALSE(coolBar.isVisible() || toolbar.isVisible());

    EXPECT_EQ(toolbar.Button("mnuFileCompareFiles")->text(), QStringLiteral("Compare Files"));
    EXPECT_EQ(coolBar.Button("mnuFileCompareFiles")->text(), QStringLiteral("Compare"));
    EXPECT_EQ(toolbar.Button(kCommandOpenOptions)->text(), QStringLiteral("Properties"));
    application.GetCommands().SetHandler("mnuFilePrint", nullptr);
    EXPECT_FALSE(coolBar.Button("mnuFilePrint")->isEnabled());
    application.GetCommands().SetHandler("mnuFilePrint", [] {});
    EXPECT_TRUE(coolBar.Button("mnuFilePrint")->isEnabled());
    toolbar.Button(kCommandOpenHelp)->click();
    EXPECT_THAT(program.desktop.asked, Contains("open " + (program.folder / "help/index.html")));
}

TEST(Popups, FitTheSelectedItem) {
    TestProgram program;
    Application& application = program.Start();
    PopupMenus& popups = application.Window().Popups();
    Commands& commands = application.GetCommands();
    EXPECT_EQ(popups.Prepare(Side::Left), commands.Menu("mnuFile"));
    program.CompareSamples();
    EXPECT_EQ(popups.Prepare(Side::Left), commands.Menu("mnuFile"));

    program.Select(Side::Left, "newer.txt");
    QMenu* menu = popups.Prepare(Side::Left);
    EXPECT_EQ(menu, commands.Menu("mnuFilePopup"));
    EXPECT_EQ(menu->defaultAction(), commands.Action("mnuFilePopupOpen"));
    EXPECT_THAT(program.VisibleItems(menu), Contains("mnuFilePopupShowDifferences: Show File Differences"));
    program.Select(Side::Left, "alone.txt");
    EXPECT_THAT(program.VisibleItems(popups.Prepare(Side::Left)),
                Not(Contains("mnuFilePopupShowDifferences: Show File Differences")));

    program.Select(Side::Right, "\\Different");
    menu = popups.Prepare(Side::Right);
    EXPECT_EQ(menu, commands.Menu("mnuFolderPopup"));
    EXPECT_EQ(menu->defaultAction(), commands.Action("mnuFolderPopupExplore"));
    EXPECT_THAT(program.VisibleItems(menu),
                Contains("mnuFolderPopupViewDifferences: Show Sub-Folder Differences"));
    EXPECT_TRUE(commands.Action("mnuFolderPopupHyphen0")->isVisible());
    EXPECT_THAT(program.VisibleItems(menu),
                Contains("mnuGoToFolderThisSide: Change this side's folder to \"Different\""));
    EXPECT_THAT(program.VisibleItems(menu),
                Contains("mnuGoToFolderBothSidesRunCompare: Compare this sub-folder to \"Different\" in the "
                         "other pane"));
    program.Select(Side::Right, "\\Identical");
    popups.Prepare(Side::Right);
    EXPECT_FALSE(commands.Action("mnuFolderPopupViewDifferences")->isVisible());
    EXPECT_FALSE(commands.Action("mnuFolderPopupHyphen0")->isVisible());
}

TEST(Popups, DoubleClickOpensExploresOrAsks) {
    TestProgram program;
    Application& application = program.Start();
    program.CompareSamples();
    const auto kind = [&](std::string_view name) {
        return DoubleClickFor(application.panes.Pane(Side::Left)[program.Row(Side::Left, name)]);
    };
    EXPECT_EQ(kind("alone.txt"), DoubleClickKind::OpenFile);
    EXPECT_EQ(kind("same.txt"), DoubleClickKind::FileMenu);
    EXPECT_EQ(kind("\\Different"), DoubleClickKind::SubFolderMenu);
    EXPECT_EQ(kind("\\Identical"), DoubleClickKind::ExploreFolder);

    program.desktop.asked.clear();
    program.Select(Side::Left, "alone.txt");
    PopupMenus& popups = application.Window().Popups();
    popups.DoubleClick(Side::Left, program.Row(Side::Left, "alone.txt"), {});
    program.Select(Side::Left, "\\Identical");
    popups.DoubleClick(Side::Left, program.Row(Side::Left, "\\Identical"), {});
    EXPECT_THAT(program.desktop.asked,
                ElementsAre("open " + program.left + "/alone.txt", "explore " + program.left + "/Identical"));
    // The hint before the file manager comes once, also over restarts.
    ASSERT_EQ(program.messages.shown.size(), 1U);
    EXPECT_EQ(program.messages.shown[0].title, "Explore");
    program.application.reset();
    program.Start();
    program.Window().Box(Side::Left).Icon(PathIcon::Explore)->click();
    EXPECT_EQ(program.messages.shown.size(), 1U);
}

}  // namespace
}  // namespace vantrel
