// Every window of the program, one line each, held against the rules that all of them keep to.
#include <gmock/gmock.h>

#include <QApplication>
#include <QTest>
#include <QWindow>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "dupes/forms/frm_restore_dupes.h"
#include "fileops/forms/frm_confirmation.h"
#include "fileops/forms/frm_properties.h"
#include "main/forms/frm_help.h"
#include "main/help_key.h"
#include "modal_support.h"
#include "program_support.h"
#include "shell/forms/frm_shell_progress.h"
#include "support/places.h"
#include "sync/forms/frm_custom_sync.h"
#include "sync/forms/frm_file_sync.h"
#include "window_rules_support.h"

namespace vantrel {
namespace {

using ::testing::IsSupersetOf;
using vantrel::testing::ModalScript;
using vantrel::testing::PressChild;
using vantrel::testing::TestProgram;

// Brings one window up over a program that has compared two folders, and looks at it while it is shown.
struct Stage {
    TestProgram& program;
    const char* window;
    std::function<void(QWidget&)> look;

    // The window is modal and comes out of `open`.
    void Modal(const std::function<void()>& open) const {
        ModalScript script;
        script.Await(window, [this](QWidget& shown) { LookAndClose(shown); });
        open();
    }
    void Command(const char* command) const {
        Modal([&] { program.Get().GetCommands().Run(command); });
    }
    void CommandOnFile(const char* command) const {
        program.Select(Side::Left, "newer.txt");
        Command(command);
    }
    void Show(QWidget& shown) const {
        shown.show();
        LookAndClose(shown);
    }
    void LookAndClose(QWidget& shown) const {
        QApplication::processEvents();
        look(shown);
        shown.close();
    }
};

void OpenMain(const Stage& stage) {
    stage.program.Select(Side::Left, "newer.txt");
    stage.Show(stage.program.Window());
}

void OpenHelp(const Stage& stage) {
    stage.program.desktop.works = false;
    stage.program.Get().GetCommands().Run("mnuHelpContents");
    stage.Show(*stage.program.Window().findChild<frmHelp*>());
}

void OpenCompareProgress(const Stage& stage) {
    const TestProgram& program = stage.program;
    frmCompareProgress window(stage.program.loop, program.files, program.folders, program.locale,
                              &stage.program.Window());
    window.Show();
    stage.LookAndClose(window);
}

void OpenShellProgress(const Stage& stage) {
    frmShellProgress window(stage.program.locale, &stage.program.Window());
    window.Show(ShellOperation::Copy, {});
    window.Paint(stage.program.left + "/alone.txt", stage.program.right + "/alone.txt", {1, 10}, {2, 20},
                 "1 KB a second");
    stage.LookAndClose(window);
}

void OpenConfirmation(const Stage& stage) {
    stage.Modal([&stage] {
        ShowConfirmation({.title = "Copy",
                          .question = "Copy the selected objects?",
                          .operation = "Copy",
                          .names = {stage.program.left + "/alone.txt"},
                          .source = stage.program.left,
                          .target = stage.program.right});
    });
}

void OpenFileDiffs(const Stage& stage) {
    stage.program.Get().options.viewFileDiffPromptForOptions = false;
    stage.CommandOnFile("mnuFileShowFileDiffs");
}

void OpenSyncConfirmation(const Stage& stage) {
    stage.program.Get().options.promptForSyncMethod = false;
    stage.Command("mnuFileAutoSynch");
}

void OpenCreateSubFolder(const Stage& stage) {
    stage.Modal(
        [&stage] { stage.program.Window().Box(Side::Left).Icon(PathIcon::CreateSubFolder)->click(); });
}

void OpenCustomSync(const Stage& stage) {
    CSyncSettings settings(stage.program.Get().options);
    frmCustomSync window(settings, &stage.program.Window());
    stage.Show(window);
}

void OpenFileSync(const Stage& stage) {
    const TestProgram& program = stage.program;
    frmFileSync window(stage.program.Get().tools, stage.program.Get().operations->Wrappers(),
                       {{program.left + "/newer.txt", program.right + "/newer.txt"}},
                       &stage.program.Window());
    stage.Show(window);
}

void OpenRestoreDupes(const Stage& stage) {
    frmRestoreDupes window(stage.program.Get().tools,
                           {{"2026-01-01 12:00:00", "/home/someone/a.txt", "/stored/a.txt", 12}},
                           &stage.program.Window());
    stage.Show(window);
}

void OpenRename(const Stage& stage) {
    stage.program.Get().panes.SetCurrentListview(Side::Left);
    stage.program.Get().panes.SelectAll();
    stage.Command("mnuFileChangeFilename");
}

void OpenSubFolder(const Stage& stage) {
    stage.program.Select(Side::Left, "\\Different");
    stage.Command("mnuFileShowSubDirDiffs");
}

void OpenPrintPreview(const Stage& stage) {
    ModalScript script;
    script
        .Await("frmPrintOptions",
               [](QWidget& options) {
                   PressChild(options, "cmdPreview");
                   options.close();
               })
        .Await("frmPrintPreview", [&stage](QWidget& preview) { stage.LookAndClose(preview); });
    stage.program.Get().GetCommands().Run("mnuFilePrint");
}

enum class Enter {
    PressesButton,
    DoesWhatTheControlSays,  // windows to work in
};

struct WindowEntry {
    const char* name;
    std::function<void(const Stage&)> open;
    Enter enter = Enter::PressesButton;
    friend void PrintTo(const WindowEntry& entry, std::ostream* out) { *out << entry.name; }
};

std::function<void(const Stage&)> By(const char* command) {
    return [command](const Stage& stage) { stage.Command(command); };
}
std::function<void(const Stage&)> OnFile(const char* command) {
    return [command](const Stage& stage) { stage.CommandOnFile(command); };
}

// A new window is a line here, and a line in the table of help_key.cpp.
const WindowEntry kWindows[] = {
    {"frmMain", OpenMain, Enter::DoesWhatTheControlSays},
    {"frmAbout", By("mnuHelpAboutBox")},
    {"frmCompareFiles", OnFile("mnuFileCompareFiles")},
    {"frmCompareProgress", OpenCompareProgress, Enter::DoesWhatTheControlSays},
    {"frmCompareResults", By("mnuViewCompareResultsSummary")},
    {"frmConfirmSync", OpenSyncConfirmation},
    {"frmConfirmation", OpenConfirmation},
    {"frmCreateSubFolder", OpenCreateSubFolder},
    {"frmCustomSync", OpenCustomSync},
    {"frmDupeExclusions", By("mnuOptionsFindDupesFilesToExclude")},
    {"frmErrorLog", By("mnuViewErrorLog")},
    {"frmFileDateTimes", OnFile("mnuSetDateTimeStamp")},
    {"frmFileDiffs", OpenFileDiffs, Enter::DoesWhatTheControlSays},
    {"frmFileSync", OpenFileSync},
    {"frmFindDuplicates", By("mnuFileFindDuplicateFiles"), Enter::DoesWhatTheControlSays},
    {"frmHelp", OpenHelp, Enter::DoesWhatTheControlSays},
    {"frmHexDump", OnFile("mnuFileHexDump"), Enter::DoesWhatTheControlSays},
    {"frmMaintainFolderLists", By("frmOptionsMaintainFolderLists")},
    {"frmOptions", By("ShowOptions")},
    {"frmPrintOptions", By("mnuFilePrint")},
    {"frmPrintPreview", OpenPrintPreview},
    {"frmProperties", OnFile("mnuFileShowFileProperties")},
    {"frmRenameMultiple", OpenRename},
    {"frmRestoreDupes", OpenRestoreDupes},
    {"frmSaveResults", By("mnuFileSaveResults")},
    {"frmSelect", By("mnuSelectOther")},
    {"frmShellProgress", OpenShellProgress, Enter::DoesWhatTheControlSays},
    {"frmSpecifySubFolder", By("mnuFileShowSubDirDiffs")},
    {"frmSubDirDiffs", OpenSubFolder, Enter::DoesWhatTheControlSays},
    {"frmSyncLog", By("mnuViewSyncHistory")},
    {"frmSyncWizard", By("mnuFileAutoSynch")},
    {"frmViewFileDiffOptions", OnFile("mnuFileShowFileDiffs")},
};
// These have nothing that takes the focus but a Cancel of the toolkit's, or are a part of a window.
constexpr const char* kWithoutControls[] = {"frmSplash", "frmPrintProgress", "frmFileSyncMethods"};

// A person who wants to see all windows names a folder for their pictures, and how they are to look: "dark",
// a font size, or both, as in "dark 16".
void SavePicture(QWidget& window) {
    const QString folder = qEnvironmentVariable("VANTREL_WINDOW_PICTURES");
    if (folder.isEmpty()) return;
    int tab = 0;
    testing::ForEachTab(window, [&] {
        window.grab().save(QStringLiteral("%1/%2-%3.png").arg(folder, window.objectName()).arg(tab++));
    });
}

void TakeLooks() {
    const QString look = qEnvironmentVariable("VANTREL_WINDOW_LOOK");
    if (look.startsWith(QLatin1String("dark"))) {
        QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        QApplication::setPalette(dark);
    }
    if (const int size = look.section(QLatin1Char(' '), -1).toInt(); size > 0) {
        QFont font = QApplication::font();
        font.setPointSize(size);
        QApplication::setFont(font);
    }
}

class WindowTest : public ::testing::TestWithParam<WindowEntry> {
  protected:
    void SetUp() override {
        TakeLooks();
        program.showsSummaries = true;
        program.Start("[Options]\r\nShowGraphAfterCompare=False\r\n");
        program.CompareSamples();
    }
    void Open(const std::function<void(QWidget&)>& look) {
        int looks = 0;
        GetParam().open({program, GetParam().name, [&](QWidget& window) {
                             ++looks;
                             look(window);
                         }});
        EXPECT_EQ(looks, 1);
    }
    TestProgram program;
};

TEST_P(WindowTest, KeepsToTheRules) {
    Open([](QWidget& window) {
        EXPECT_EQ(window.objectName(), QLatin1String(GetParam().name));
        testing::ExpectNamesForScreenReaders(window);
        testing::ExpectAccessKeysWithoutClashes(window);
        testing::ExpectReachableByTab(window);
        testing::ExpectFitsSmallScreen(window);
        testing::ExpectCurrentRows(window);
        if (GetParam().enter == Enter::PressesButton) testing::ExpectDefaultButton(window);
        EXPECT_TRUE(!HelpPageOf(GetParam().name).empty() || window.objectName() == QLatin1String("frmHelp"));
        SavePicture(window);
    });
}

TEST_P(WindowTest, ComesBackInTheSizeThatItWasGiven) {
    if (std::string(GetParam().name) == "frmMain") return;  // it has a test of its own
    QSize given;
    bool fixed = false;
    Open([&](QWidget& window) {
        fixed = window.minimumSize() == window.maximumSize();
        given = testing::LeastSize(window) + QSize(7, 5);
        if (!fixed) window.windowHandle()->resize(given);
        QApplication::processEvents();
    });
    if (fixed) return;
    Open([&](QWidget& window) { EXPECT_EQ(window.size(), given); });
}

INSTANTIATE_TEST_SUITE_P(AllWindows, WindowTest, ::testing::ValuesIn(kWindows),
                         [](const auto& entry) { return std::string(entry.param.name); });

// No window is forgotten above: each one that the sources name is there.
TEST(Windows, AreAllInTheTable) {
    std::set<std::string> named, known;
    constexpr std::string_view kNaming = "setObjectName(QStringLiteral(\"";
    for (const auto& file : std::filesystem::recursive_directory_iterator(testing::SourceFolder())) {
        if (file.path().extension() != ".cpp") continue;
        std::ifstream in(file.path());
        const std::string text{std::istreambuf_iterator<char>(in), {}};
        for (std::size_t at = 0; (at = text.find(kNaming, at)) != std::string::npos;) {
            at += kNaming.size();
            if (std::string name = text.substr(at, text.find('"', at) - at); name.starts_with("frm"))
                named.insert(std::move(name));
        }
    }
    for (const WindowEntry& entry : kWindows) known.insert(entry.name);
    known.insert(std::begin(kWithoutControls), std::end(kWithoutControls));
    EXPECT_GT(named.size(), 20U);
    EXPECT_THAT(known, IsSupersetOf(named));
}

// On the help pages that the table names.
TEST(Windows, HaveAPageOfTheHelpThatIsThere) {
    for (const WindowEntry& entry : kWindows)
        if (const std::string page(HelpPageOf(entry.name)); !page.empty()) {
            EXPECT_TRUE(std::filesystem::exists(testing::HelpFolder() + "/" + page)) << page;
        }
}

}  // namespace
}  // namespace vantrel
