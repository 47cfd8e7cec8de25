// The windows of synchronisation, driven by keys as a person does.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "settings/options.h"
#include "support/test_toolbox.h"
#include "sync/forms/frm_confirm_sync.h"
#include "sync/forms/frm_custom_sync.h"
#include "sync/forms/frm_sync_log.h"
#include "sync/forms/frm_sync_wizard.h"
#include "sync/sync_history.h"

namespace vantrel {
namespace {

const PerSide<std::string> kFolders{{"/data/left/", "/data/right/"}};

template <typename T>
T* Child(QWidget& window, const char* name) {
    T* child = window.findChild<T*>(QString::fromLatin1(name));
    EXPECT_TRUE(child) << name;
    return child;
}

// Chooses an item as a click into the open list does.
void Choose(QComboBox* combo, const char* text) {
    const int index = combo->findText(QString::fromLatin1(text));
    ASSERT_GE(index, 0) << text;
    combo->setCurrentIndex(index);
    Q_EMIT combo->activated(index);
}

TEST(SyncWizard, OffersTheMethodsInTheirOrderAndDescribesThem) {
    Options options;
    CSyncSettings settings(options);
    frmSyncWizard wizard(settings, {true, false}, kFolders);
    auto* methods = Child<QComboBox>(wizard, "cboSyncMethod");
    ASSERT_EQ(8, methods->count());
    EXPECT_EQ(QStringLiteral("Custom"), methods->itemText(7));
    EXPECT_EQ(2, methods->currentIndex());
    auto* custom = Child<QPushButton>(wizard, "cmdCustomSettings");
    EXPECT_FALSE(custom->isEnabled());
    EXPECT_FALSE(Child<QLabel>(wizard, "imgSyncMethod")->pixmap().isNull());

    Choose(methods, "Custom");
    EXPECT_TRUE(custom->isEnabled());
    EXPECT_TRUE(Child<QLabel>(wizard, "imgSyncMethod")->pixmap().isNull());
    EXPECT_EQ(QStringLiteral("Create your own custom sync method. Press the Set Custom Settings button below "
                             "to select your custom settings."),
              Child<QLabel>(wizard, "lblSyncMethodDescription")->text());
}

TEST(SyncWizard, OkTakesMethodAndFlagsAndEscapeTakesNothing) {
    Options options;
    CSyncSettings settings(options);
    settings.SetSyncMethod(9);
    {
        frmSyncWizard wizard(settings, {true, false}, kFolders);
        wizard.show();
        EXPECT_EQ(2, Child<QComboBox>(wizard, "cboSyncMethod")->currentIndex())
            << "for a method that is none";
        QTest::keyClick(&wizard, Qt::Key_Escape);
        EXPECT_EQ(QDialog::Rejected, wizard.result());
        EXPECT_EQ(9, settings.SyncMethod());
    }
    frmSyncWizard wizard(settings, {true, false}, kFolders);
    wizard.show();
    Choose(Child<QComboBox>(wizard, "cboSyncMethod"), "Make Right Folder Same As Left Folder");
    QTest::keyClick(Child<QCheckBox>(wizard, "chkPromptForSyncMethod"), Qt::Key_Space);
    QTest::keyClick(Child<QCheckBox>(wizard, "chkSyncSelectedOnly"), Qt::Key_Space);
    QTest::keyClick(&wizard, Qt::Key_Return);
    EXPECT_EQ(QDialog::Accepted, wizard.result());
    EXPECT_EQ(0, settings.SyncMethod());
    EXPECT_FALSE(wizard.ChosenFlags().promptForSyncMethod);
    EXPECT_TRUE(wizard.ChosenFlags().syncSelectedOnly);
}

TEST(CustomSync, APartnerFollowsItsClickedCombo) {
    Options options;
    CSyncSettings settings(options);
    settings.SetSyncMethod(SyncMethod::Custom);
    frmCustomSync window(settings);
    window.show();
    auto* leftNew = Child<QComboBox>(window, "cboNew(0)");
    auto* rightOld = Child<QComboBox>(window, "cboOld(1)");
    auto* leftBinary = Child<QComboBox>(window, "cboBinary(0)");
    auto* rightBinary = Child<QComboBox>(window, "cboBinary(1)");

    Choose(leftNew, "Copy to other folder");
    EXPECT_EQ(QStringLiteral("Replace with newer files from other folder"), rightOld->currentText());
    Choose(rightBinary, "Replace with object from other folder");
    EXPECT_EQ(QStringLiteral("Copy to other folder"), leftBinary->currentText());
    Choose(leftNew, "Leave");
    EXPECT_EQ(QStringLiteral("Leave"), rightOld->currentText());
    Choose(rightOld, "Delete from this folder");
    Choose(leftNew, "Leave");
    EXPECT_EQ(QStringLiteral("Delete from this folder"), rightOld->currentText());

    QTest::mouseClick(Child<QPushButton>(window, "OKButton"), Qt::LeftButton);
    EXPECT_EQ(SyncAction::Leave, settings.Action(Side::Left, SyncCell::New));
    EXPECT_EQ(SyncAction::Delete, settings.Action(Side::Right, SyncCell::Old));
    EXPECT_EQ(SyncAction::Replace, settings.Action(Side::Right, SyncCell::Binary));
    EXPECT_EQ(3, settings.SyncMethod());
}

SyncPlan SmallPlan() {
    SyncPlan plan;
    plan.folders = kFolders;
    const auto action = [](Side side, SyncAction what, const char* name, std::uint32_t number) {
        PlannedAction planned;
        planned.side = side;
        planned.action = what;
        planned.type = ResultType::Orphan;
        planned.name = name;
        planned.number = number;
        return planned;
    };
    plan.deletes[Side::Left].push_back(action(Side::Left, SyncAction::Delete, "d", 0));
    plan.copies[Side::Left].push_back(action(Side::Left, SyncAction::Copy, "c", 1));
    plan.copies[Side::Right].push_back(action(Side::Right, SyncAction::Copy, "r", 2));
    SyncPlan::SubFolder folder;
    folder.folder = "\\Sub";
    folder.deletes[Side::Left].push_back(action(Side::Left, SyncAction::Delete, "x/a", 0));
    folder.copies[Side::Left].push_back(action(Side::Left, SyncAction::Copy, "x/b", 1));
    for (auto* actions : {&folder.deletes[Side::Left], &folder.copies[Side::Left]})
        actions->front().folder = "\\Sub";
    plan.subFolders.push_back(folder);
    return plan;
}

std::vector<std::string> Lines(QAbstractItemView* list) {
    std::vector<std::string> lines;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        lines.push_back((list->model()->index(row, 0).data().toString() + QStringLiteral(" | ") +
                         list->model()->index(row, 1).data().toString())
                            .toStdString());
    return lines;
}

TEST(ConfirmSync, ListsEverythingAndOnlyContinueProceeds) {
    const SyncPlan plan = SmallPlan();
    const LocaleFormats locale("C");
    frmConfirmSync window(plan, locale);
    window.show();
    EXPECT_EQ(
        (std::vector<std::string>{"c | Copy -->", "d | Delete", "Sub/x/a | Delete", "Sub/x/b | Copy -->"}),
        Lines(Child<QAbstractItemView>(window, "lvwFolderOne")));
    EXPECT_EQ((std::vector<std::string>{"r | <-- Copy"}),
              Lines(Child<QAbstractItemView>(window, "lvwFolderTwo")));
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(QDialog::Rejected, window.result()) << "Enter alone must not start it";
    window.show();
    QTest::mouseClick(Child<QPushButton>(window, "OKButton"), Qt::LeftButton);
    EXPECT_EQ(QDialog::Accepted, window.result());
}

TEST(ConfirmSync, TellsWhatTheListsDoNot) {
    SyncPlan plan = SmallPlan();
    const LocaleFormats locale("C");
    EXPECT_FALSE(frmConfirmSync(plan, locale).findChild<QLabel*>(QStringLiteral("lblNotes")));
    plan.specialObjects = 2;
    plan.copies[Side::Left].front().linkChange = LinkChange::LinkForFile;
    frmConfirmSync window(plan, locale);
    EXPECT_EQ(
        QStringLiteral("2 special objects passed over.\nA link is put in a file's place by 1 copy action."),
        Child<QLabel>(window, "lblNotes")->text());
    const QAbstractItemModel* model = Child<QAbstractItemView>(window, "lvwFolderOne")->model();
    EXPECT_EQ(QStringLiteral("c\nA link is put in this file's place."),
              model->index(0, 0).data(Qt::ToolTipRole).toString());
    EXPECT_EQ(QStringLiteral("d"), model->index(1, 0).data(Qt::ToolTipRole).toString());
}

TEST(ConfirmSync, AddsUpWhatIsDoneAndMarksWhatIsGone) {
    SyncPlan plan = SmallPlan();
    PlannedAction& copy = plan.copies[Side::Left].front();
    copy.isWholeFolder = true;
    copy.contents.objects = 1'499;
    copy.contents.specialObjects = 2;
    copy.room = Currency::FromWhole(3 << 20);
    plan.deletes[Side::Left].front().contents.objects = 9;
    plan.copies[Side::Right].front().type = ResultType::Older;
    const LocaleFormats locale("C");
    frmConfirmSync window(plan, locale);
    window.show();
    const auto text = [&](const char* name) { return Child<QLabel>(window, name)->text().toStdString(); };
    const auto bold = [&](const char* name) { return Child<QLabel>(window, name)->font().bold(); };
    EXPECT_EQ("Copied: 1,499 objects, 3 MB", text("lblCopied(0)"));
    EXPECT_EQ("To the Recycle Bin: 10 objects", text("lblRecycled(0)"));
    EXPECT_EQ("Deleted for good: 1 object", text("lblDeleted(0)"));
    EXPECT_TRUE(bold("lblDeleted(0)") && !bold("lblRecycled(0)"));
    EXPECT_EQ("Over something newer: 1 object", text("lblOverNewer(1)"));
    SyncPlan ofSubFolder = plan;  // as from the window of its differences
    ofSubFolder.deletes[Side::Left].front().forGood = true;
    EXPECT_EQ(11U, FiguresOf(ofSubFolder)[Side::Left].deleted);
    EXPECT_TRUE(bold("lblOverNewer(1)"));
    for (const char* absent : {"lblOverNewer(0)", "lblRecycled(1)", "lblDeleted(1)"})
        EXPECT_FALSE(window.findChild<QLabel*>(QString::fromLatin1(absent))) << absent;

    const QAbstractItemModel* model = Child<QAbstractItemView>(window, "lvwFolderOne")->model();
    const auto marked = [&](int row) {
        return model->index(row, 1).data(Qt::FontRole).value<QFont>().bold();
    };
    EXPECT_TRUE(!marked(0) && !marked(1) && marked(2) && !marked(3)) << "the third one is deleted for good";
    EXPECT_EQ(QStringLiteral("Delete\nThis is deleted for good, not to the Recycle Bin."),
              model->index(2, 1).data(Qt::ToolTipRole).toString());
}

TEST(CustomSync, EachActionSaysInItsTipWhatItDoes) {
    Options options;
    CSyncSettings settings(options);
    frmCustomSync window(settings);
    for (auto* combo : window.findChildren<QComboBox*>()) {
        for (int item = 0; item < combo->count(); ++item) {
            const QString tip = combo->itemData(item, Qt::ToolTipRole).toString();
            combo->setCurrentIndex(item);
            EXPECT_EQ(tip, combo->toolTip());
            EXPECT_EQ(combo->itemText(item).startsWith(QStringLiteral("Delete")),
                      tip.contains(QStringLiteral("deleted")))
                << tip.toStdString();
        }
    }
    EXPECT_EQ(QStringLiteral("Newer files of the left folder stay as they are."),
              Child<QComboBox>(window, "cboNew(0)")->itemData(0, Qt::ToolTipRole).toString());
}

TEST(SyncLog, ShowsTheOldestFirstAndChecksTheNumber) {
    testing::TestToolbox tools;
    const SyncHistory history(tools.Get());
    for (const char* folder : {"/a/", "/b/", "/c/"})
        ASSERT_TRUE(history.Append(folder, "/x/", kSyncCompleted, 20).IsOk());
    std::int32_t entries = 2;
    frmSyncLog window(tools.Get(), entries);
    window.show();
    auto* list = Child<QTreeWidget>(window, "lvwSyncHistory");
    ASSERT_EQ(2, list->topLevelItemCount()) << "an over-long history is trimmed at once";
    EXPECT_EQ(QStringLiteral("/b/"), list->topLevelItem(0)->text(1));
    EXPECT_EQ(QStringLiteral("Completed Successfully"), list->topLevelItem(0)->text(3));

    auto* number = Child<QLineEdit>(window, "txtNumEntries");
    number->setText(QStringLiteral("abc"));
    QTest::mouseClick(Child<QPushButton>(window, "cmdOK"), Qt::LeftButton);
    EXPECT_EQ(
        "Invalid Number of Entries: \"abc\" is not a valid number of entries.\r\n\r\nPlease enter a whole "
        "number in the range of 1 to 32000.",
        tools.messages.Line(0));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(QStringLiteral("abc"), number->selectedText());
    number->setText(QStringLiteral("1.5"));
    QTest::mouseClick(Child<QPushButton>(window, "cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(2, entries);
}

}  // namespace
}  // namespace vantrel
