// The comparison of two files by all methods, worked by keys.
#include "filetools/forms/frm_compare_files.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <algorithm>

#include "filetools/forms/file_path_box.h"
#include "settings/options.h"
#include "support/faulty_system_calls.h"
#include "support/modal.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using testing::Call;
using ::testing::ElementsAre;
using testing::FaultySystemCalls;
using ::testing::HasSubstr;
using testing::TestToolbox;
using testing::WhenModal;

class CompareFilesTest : public ::testing::Test {
  protected:
    CompareFilesTest() {
        options.jobs = 1;  // so that all yields are counted
        tools.folder.Write("one", "content", 1'000'000'000);
        tools.folder.Write("two", "Content", 1'000'000'000);
    }
    std::string Path(Side side) { return tools.folder / (side == Side::Left ? "one" : "two"); }
    CompareFilesParts Parts() {
        const auto note = [this](const char* what) {
            return [this, what](const CompareFilesParts::Paths& paths, QWidget* over) {
                EXPECT_EQ(over, window.get());
                EXPECT_FALSE(window->cmdCompare->isEnabled() || window->cmdSync->isEnabled() ||
                             window->cmdShowDiffs->isEnabled());
                asked.push_back(std::string(what) + " " + paths[Side::Left] + " " + paths[Side::Right]);
            };
        };
        return {.tools = tools.Get(),
                .options = options,
                .requestCancel = [this] { tools.loop.cancelled = true; },
                .openFile = [this](const std::string& path) { asked.push_back("open " + path); },
                .showDifferences = note("differences"),
                .showBytes = note("bytes"),
                .sync = note("sync"),
                .showErrorLog = [this](QWidget*) { asked.emplace_back("log"); },
                .showHelp = [this] { asked.emplace_back("help"); }};
    }
    frmCompareFiles& Open() {
        window = std::make_unique<frmCompareFiles>(Parts());
        for (const Side side : kBothSides) window->txtFile[side]->SetPath(Path(side));
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *window;
    }
    void Key(int key, Qt::KeyboardModifiers keys = {}) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window.get(), static_cast<Qt::Key>(key), keys);
    }
    // A button that is pressed so is seen to go down before it acts.
    void Alt(int key) {
        Key(key, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([this] {
            return std::ranges::none_of(window->findChildren<QPushButton*>(),
                                        [](const QPushButton* button) { return button->isDown(); });
        }));
    }
    std::string Cell(int row, int column) {
        return window->lvwCompareFiles->topLevelItem(row)->text(column).toStdString();
    }
    std::vector<std::string> Column(int column) {
        std::vector<std::string> texts;
        for (int row = 0; row < window->lvwCompareFiles->topLevelItemCount(); ++row)
            texts.push_back(Cell(row, column));
        return texts;
    }
    std::vector<std::string> Shown() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < tools.messages.shown.size(); ++i) lines.push_back(tools.messages.Line(i));
        tools.messages.shown.clear();
        return lines;
    }
    void ExpectIdle() {
        EXPECT_TRUE(window->cmdCompare->isEnabled() && window->cmdSync->isEnabled() &&
                    window->cmdShowDiffs->isEnabled() && window->cmdCancel->isEnabled());
        EXPECT_EQ(window->cmdCancel->text(), QStringLiteral("C&lose"));
        EXPECT_EQ(window->lblStatusInfo->text(), QString());
        EXPECT_EQ(window->prgBinaryCompare->value(), 0);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_FALSE(window->IsBusy() || tools.loop.cancelled);
    }

    FaultySystemCalls calls;
    TestToolbox tools{calls};
    Options options;
    std::vector<std::string> asked;
    std::unique_ptr<frmCompareFiles> window;
};

TEST_F(CompareFilesTest, ListsWhatEachMethodFindsInBothFiles) {
    frmCompareFiles& form = Open();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Compare Two Files"));
    const QTreeWidgetItem* header = form.lvwCompareFiles->headerItem();
    EXPECT_EQ(header->text(frmCompareFiles::FileTwo), QStringLiteral("File #2"));
    EXPECT_THAT(Column(frmCompareFiles::Method),
                ElementsAre("   Size", "   Date/Time", "   Attributes", "   Version", "   Binary Contents",
                            "   CRC32", "   SHA1"));
    EXPECT_THAT(Column(frmCompareFiles::Result), ElementsAre("", "", "", "", "", "", ""))
        << "nothing is compared unasked";
    Alt(Qt::Key_C);
    EXPECT_THAT(Column(frmCompareFiles::Result),
                ElementsAre("The files are the same size", "The files are the same",
                            "The files have the same attributes", "Version not available for both files",
                            "The files are different", "The files are different", "The files are different"));
    EXPECT_EQ(Cell(0, frmCompareFiles::FileOne), "7 Bytes");
    EXPECT_THAT(Cell(4, frmCompareFiles::FileTwo), HasSubstr("01000011 01101111"));
    EXPECT_EQ(Cell(5, frmCompareFiles::FileOne), "FEC530A9");
    ExpectIdle();
    EXPECT_EQ(form.focusWidget(), form.cmdCompare);

    form.lvwCompareFiles->setFocus();
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("Size\t7 Bytes\t7 Bytes\tThe files are the same size"));
}

TEST_F(CompareFilesTest, MethodsThatAreNotCheckedDoNotRun) {
    frmCompareFiles& form = Open();
    form.lvwCompareFiles->setFocus();
    for (int row = 0; row < 7; ++row) {
        if (row != 1) Key(Qt::Key_Space);
        Key(Qt::Key_Down);
    }
    Alt(Qt::Key_C);
    EXPECT_THAT(Column(frmCompareFiles::Result),
                ElementsAre("", "The files are the same", "", "", "", "", ""));
    for (int row = 0; row < 6; ++row) Key(Qt::Key_Up);
    EXPECT_TRUE(form.lvwCompareFiles->hasFocus());
    form.lvwCompareFiles->setCurrentItem(form.lvwCompareFiles->topLevelItem(1));
    Key(Qt::Key_Space);
    Alt(Qt::Key_C);
    EXPECT_THAT(Column(frmCompareFiles::Result), ElementsAre("", "", "", "", "", "", ""));
    EXPECT_TRUE(Shown().empty());
}

TEST_F(CompareFilesTest, PathsThatNameNoFileLeaveTheFindingsAsTheyAre) {
    frmCompareFiles& form = Open();
    Alt(Qt::Key_C);
    form.txtFile[Side::Right]->SetPath(tools.folder.Path());
    form.txtFile[Side::Right]->setFocus();
    Key(Qt::Key_Return);
    form.txtFile[Side::Left]->SetPath("");
    Alt(Qt::Key_D);
    EXPECT_THAT(Shown(), ElementsAre("File Not Found: " + tools.folder.Path() + "  is not an existing file.",
                                     "File Not Found: File 1 not specified."));
    EXPECT_EQ(Cell(0, frmCompareFiles::Result), "The files are the same size");
    Alt(Qt::Key_S);
    form.txtFile[Side::Left]->SetPath(Path(Side::Left));
    Alt(Qt::Key_S);
    QTest::keyClick(form.cmdViewFile[Side::Right], Qt::Key_Space);
    EXPECT_THAT(Shown(), ElementsAre("File Sync: File 1 does not exist.", "File Sync: File 2 does not exist.",
                                     "File Sync: File 2 does not exist."));
    EXPECT_TRUE(asked.empty());
    ExpectIdle();
}

TEST_F(CompareFilesTest, LeadsOnToWhatElseCanBeDone) {
    frmCompareFiles& form = Open();
    const std::string both = Path(Side::Left) + " " + Path(Side::Right);
    EXPECT_FALSE(form.cmdShowBytes->isEnabled()) << "nothing is known to differ";
    Alt(Qt::Key_C);
    Alt(Qt::Key_B);
    Alt(Qt::Key_D);
    Alt(Qt::Key_S);
    QTest::keyClick(form.cmdViewFile[Side::Left], Qt::Key_Space);
    Alt(Qt::Key_H);
    EXPECT_THAT(asked, ElementsAre("bytes " + both, "differences " + both, "sync " + both,
                                   "open " + Path(Side::Left), "help"));
    tools.messages.texts = {Path(Side::Left)};
    QTest::keyClick(form.cmdFile[Side::Right], Qt::Key_Space);
    EXPECT_EQ(form.txtFile[Side::Right]->Path(), Path(Side::Left));
    Alt(Qt::Key_C);
    EXPECT_EQ(Cell(4, frmCompareFiles::Result), "The files are the same") << "one file by one name";
    EXPECT_FALSE(form.cmdShowBytes->isEnabled());
    ExpectIdle();
    Alt(Qt::Key_L);
    EXPECT_FALSE(form.isVisible());
}

// A long step can be cancelled by the button and by ESC, and only while it runs.
TEST_F(CompareFilesTest, LongStepsCanBeCancelled) {
    for (const char* name : {"one", "two"}) tools.folder.Write(name, std::string(3'000'000, 'x'));
    for (const bool byKey : {false, true}) {
        frmCompareFiles& form = Open();
        int cancelled = 0;
        tools.loop.onYield = [&] {
            if (form.cmdCancel->text() != QStringLiteral("Cancel")) return;
            ++cancelled;
            EXPECT_THAT(form.lblStatusInfo->text().toStdString(), HasSubstr("..."));
            EXPECT_FALSE(form.cmdCompare->isEnabled() || form.cmdSync->isEnabled() ||
                         form.cmdFile[Side::Left]->isEnabled());
            EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
            if (byKey)
                QTest::keyClick(&form, Qt::Key_Escape);
            else
                form.cmdCancel->click();
            EXPECT_EQ(form.cmdCancel->text(), QStringLiteral("C&lose"));
        };
        Alt(Qt::Key_C);
        tools.loop.onYield = nullptr;
        EXPECT_EQ(cancelled, 1);
        EXPECT_THAT(Shown(), ElementsAre("Compare Files: User cancelled the comparison"));
        EXPECT_EQ(Cell(3, frmCompareFiles::Result), "Version not available for both files");
        EXPECT_EQ(Cell(4, frmCompareFiles::Result), "");
        EXPECT_TRUE(form.isVisible());
        ExpectIdle();
    }
}

// Whenever the window is closed, the run ends first; it does not begin the steps that follow.
TEST_F(CompareFilesTest, AWindowThatIsClosedAtWorkClosesBehindIt) {
    for (const char* name : {"one", "two"}) tools.folder.Write(name, std::string(3'000'000, 'x'));
    for (const std::size_t at : {std::size_t{1}, std::size_t{4}, std::size_t{12}}) {
        frmCompareFiles& form = Open();
        tools.loop.yields = 0;
        tools.loop.onYield = [&] {
            if (tools.loop.yields == at) form.close();
            EXPECT_TRUE(form.isVisible());
        };
        Alt(Qt::Key_C);
        tools.loop.onYield = nullptr;
        EXPECT_EQ(Cell(6, frmCompareFiles::Result), "") << at;
        QCoreApplication::processEvents();
        EXPECT_FALSE(form.isVisible()) << at;
        Shown();
    }
}

TEST_F(CompareFilesTest, TroubleIsReportedAndTheLogOffered) {
    frmCompareFiles& form = Open();
    calls.FailAll(Call::PRead, EIO);
    Alt(Qt::Key_C);
    calls.ClearFaults();
    const std::vector<std::string> told = Shown();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0], HasSubstr("frmCompareFiles.cmdCompare_Click"));
    EXPECT_EQ(Cell(3, frmCompareFiles::Result), "Version not available for both files");
    EXPECT_EQ(Cell(5, frmCompareFiles::Result), "");
    ExpectIdle();

    // Of these the size says nothing by the words: they are judged by size and date.
    for (const Side side : kBothSides) ASSERT_EQ(0, truncate(Path(side).c_str(), off_t{1} << 31));
    for (const int row : {5, 6}) form.lvwCompareFiles->topLevelItem(row)->setCheckState(0, Qt::Unchecked);
    tools.messages.answers = {MessageAnswer::Yes};
    Alt(Qt::Key_C);
    EXPECT_THAT(Shown(), ElementsAre(HasSubstr("Errors were encountered during the comparison.")));
    EXPECT_THAT(asked, ElementsAre("log"));
    ExpectIdle();
}

TEST_F(CompareFilesTest, TheKeyboardReachesEverythingInOrder) {
    frmCompareFiles& form = Open();
    form.txtFile[Side::Left]->setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 12; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        Key(Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("txtFileOne", "cmdFileOne", "cmdViewFileOne", "txtFileTwo", "cmdFileTwo",
                                   "cmdViewFileTwo", "lvwCompareFiles", "cmdCompare", "cmdShowDiffs",
                                   "cmdSync", "cmdCancel", "cmdHelp"));
    Alt(Qt::Key_2);
    EXPECT_EQ(QApplication::focusWidget(), form.txtFile[Side::Right]);
    WhenModal([&](QWidget* shown) {
        EXPECT_EQ(shown, &form);
        EXPECT_EQ(form.txtFile[Side::Left]->Path(), "/a");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    form.hide();
    form.ShowForm({{"/a", ""}});
    EXPECT_FALSE(form.isVisible());
}

}  // namespace
}  // namespace vantrel
