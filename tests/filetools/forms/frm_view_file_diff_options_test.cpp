#include "filetools/forms/frm_view_file_diff_options.h"

#include <QCheckBox>
#include <QPushButton>

#include "filetools/forms/file_path_box.h"
#include "support/modal.h"
#include "viewer_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using vantrel::testing::ViewerTest;
using vantrel::testing::WhenModal;

using OptionsDialogTest = ViewerTest;

TEST_F(OptionsDialogTest, ChecksBothFilesBeforeItTakesThem) {
    Write("a\n", "b\n");
    frmViewFileDiffOptions dialog(Parts(), {});
    WhenModal([&](QWidget*) {
        const auto ok = [&](const std::string& left, const std::string& right) {
            dialog.txtFile[Side::Left]->SetPath(left);
            dialog.txtFile[Side::Right]->SetPath(right);
            QTest::keyClick(dialog.cmdShowDiffs, Qt::Key_Space);
        };
        ok("  ", Path(Side::Right));
        ok("/no such", Path(Side::Right));
        ok(Path(Side::Left), "");
        ok(Path(Side::Left), tools.folder.Path());
        EXPECT_THAT(Shown(),
                    ElementsAre("File Not Found: File 1 not specified.",
                                "File Not Found: \"/no such\" is not an existing file.",
                                "File Not Found: File 2 not specified.",
                                "File Not Found: \"" + tools.folder.Path() + "\"  is not an existing file."));
        EXPECT_TRUE(dialog.isVisible());
        dialog.chkIgnoreCase->setChecked(true);
        dialog.chkIgnoreWhiteSpace->setChecked(true);
        dialog.chkShowOptionsDialog->setChecked(false);
        QTest::keyClick(dialog.cmdHelp, Qt::Key_Space);
        ok(Path(Side::Right), Path(Side::Left));
    });
    EXPECT_TRUE(dialog.ShowForm());
    EXPECT_EQ(helpShown, 1);
    EXPECT_EQ(options.FileOne, Path(Side::Right));
    EXPECT_TRUE(settings.viewFileDiffIgnoreCase && settings.viewFileDiffIgnoreWhitespace);
    EXPECT_FALSE(settings.viewFileDiffPromptForOptions);
}

TEST_F(OptionsDialogTest, CancelLeavesAllAsItWas) {
    Write("a\n", "b\n");
    frmViewFileDiffOptions dialog(Parts(), {{"/one", "/two"}});
    WhenModal([&](QWidget*) {
        dialog.chkIgnoreCase->setChecked(true);
        tools.messages.texts = {Path(Side::Right)};
        QTest::keyClick(dialog.cmdBrowse[Side::Left], Qt::Key_Space);
        EXPECT_EQ(dialog.txtFile[Side::Left]->Path(), Path(Side::Right));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(dialog.ShowForm());
    EXPECT_EQ(options.FileOne, Path(Side::Left));
    EXPECT_FALSE(settings.viewFileDiffIgnoreCase);
}

// The dialog leads on to the viewer; where it is switched off, the viewer comes at once.
TEST_F(OptionsDialogTest, StandsInFrontOfTheViewerWhileTheOptionIsOn) {
    Write("a\n", "b\n");
    std::vector<std::string> windows;
    const auto see = [&](QWidget* shown) {
        windows.push_back(shown->objectName().toStdString());
        if (auto* dialog = qobject_cast<frmViewFileDiffOptions*>(shown))
            dialog->cmdShowDiffs->click();
        else
            static_cast<QDialog*>(shown)->reject();
    };
    WhenModal([&](QWidget* first) {
        see(first);
        WhenModal(see);
    });
    ShowFileDifferences(Parts(), {}, nullptr);
    EXPECT_THAT(windows, ElementsAre("frmViewFileDiffOptions", "frmFileDiffs"));
    settings.viewFileDiffPromptForOptions = false;
    WhenModal(see);
    ShowFileDifferences(Parts(), {}, nullptr);
    EXPECT_EQ(windows.back(), "frmFileDiffs");
    EXPECT_EQ(windows.size(), 3U);
    EXPECT_EQ(engine.Result(), nullptr);
}

}  // namespace
}  // namespace vantrel
