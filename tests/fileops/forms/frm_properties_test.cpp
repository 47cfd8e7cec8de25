#include "fileops/forms/frm_properties.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <filesystem>

#include "support/modal.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

TEST(PropertyPage, CountsATreeAndChangesPermissions) {
    TestToolbox box;
    box.folder.Write("Sub/a", "12345");
    box.folder.Write("Sub/deep/b", "1234567");
    std::filesystem::permissions(box.folder / "Sub/a", std::filesystem::perms(0640));
    frmProperties page(box.Get());
    WhenModal([&](QWidget*) {
        QTest::qWait(0);
        EXPECT_TRUE(page.lblSize->text().contains(QStringLiteral("12 bytes")))
            << page.lblSize->text().toStdString();
        EXPECT_TRUE(page.lblSize->text().contains(QStringLiteral("2 file(s), 1 folder(s)")));
        EXPECT_EQ(QStringLiteral("Folder"), page.lblType->text());
        QTest::keyClick(&page, Qt::Key_Escape);
    });
    page.ShowForm(box.folder / "Sub");
    WhenModal([&](QWidget*) {
        EXPECT_FALSE(page.cmdApply->isEnabled());
        EXPECT_TRUE(page.chkPermissions[1]->isChecked());
        QTest::keyClick(page.chkPermissions[7], Qt::Key_Space);  // others: write
        EXPECT_TRUE(page.cmdApply->isEnabled());
        QTest::keyClick(page.cmdOK, Qt::Key_Space);
    });
    page.ShowForm(box.folder / "Sub/a");
    EXPECT_EQ(std::filesystem::perms(0642), std::filesystem::status(box.folder / "Sub/a").permissions());
    EXPECT_TRUE(box.messages.shown.empty());
    page.ShowForm(box.folder / "gone");
    EXPECT_EQ(1U, box.messages.shown.size());
}

}  // namespace
}  // namespace vantrel::testing
