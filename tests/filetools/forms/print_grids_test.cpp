#include <QComboBox>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>

#include "support/modal.h"
#include "viewer_support.h"
#include "views/forms/frm_print_options.h"

namespace vantrel {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using vantrel::testing::WhenModal;

using PrintGridsTest = vantrel::testing::ViewerTest;

TEST_F(PrintGridsTest, PrintsTheGridsThatAreChosen) {
    Open("same\nchanged here\n", "same\nchanged there\n");
    const std::string pdf = tools.folder / "grids.pdf";
    tools.messages.texts = {pdf};
    WhenModal([&](QWidget* shown) {
        auto& dialog = dynamic_cast<frmPrintOptions&>(*shown);
        EXPECT_FALSE(IsEnabled("mnuFile"));
        dialog.cboPrinters->setCurrentText(QStringLiteral("Print to File (PDF)"));
        QTest::keyClick(dialog.optSide[frmPrintOptions::RightPane], Qt::Key_Space);
        QTest::keyClick(dialog.cmdPrint, Qt::Key_Space);
        dialog.reject();
    });
    Key(Qt::Key_P, Qt::ControlModifier);
    EXPECT_THAT(Shown(), ::testing::Contains("Print: Printing is complete."));
    QProcess process;
    process.start(QStringLiteral("pdftotext"),
                  {QStringLiteral("-layout"), QString::fromStdString(pdf), QStringLiteral("-")});
    ASSERT_TRUE(process.waitForFinished());
    const std::string text = process.readAllStandardOutput().toStdString();
    EXPECT_THAT(text, HasSubstr("Vantrel - Page 1 "));
    EXPECT_THAT(text, HasSubstr("two.txt"));
    EXPECT_THAT(text, HasSubstr("\n2.changed there\n"));
    EXPECT_THAT(text, Not(HasSubstr("changed here")));
    EXPECT_THAT(text, Not(HasSubstr("one.txt")));
    Window().ResetToPromptState();
    EXPECT_FALSE(IsEnabled("mnuFilePrint"));
}

}  // namespace
}  // namespace vantrel
