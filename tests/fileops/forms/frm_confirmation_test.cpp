#include "fileops/forms/frm_confirmation.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

void Press(QWidget& widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
}

class ConfirmationTest : public ::testing::Test {
  protected:
    frmConfirmation form;
    Confirmation copy{"Confirm", "Copy them?", "Copy", {"/a/x", "/a/y"}, "/a", "/b"};

    // Does `act` while the form stands.
    MessageAnswer Show(const Confirmation& confirmation, const std::function<void()>& act) {
        QTimer::singleShot(0, &form, act);
        return form.ShowForm(confirmation);
    }
};

TEST_F(ConfirmationTest, GivesTheAnswerOfButtonsAndKeys) {
    EXPECT_EQ(MessageAnswer::Yes, Show(copy, [this] { form.cmdYes->click(); }));
    EXPECT_EQ(MessageAnswer::Yes, form.Answer());
    EXPECT_EQ(MessageAnswer::No, Show(copy, [this] { form.cmdNo->click(); }));
    EXPECT_EQ(MessageAnswer::Yes, Show(copy, [this] { Press(form, Qt::Key_Return); }));
    EXPECT_EQ(MessageAnswer::No, Show(copy, [this] { Press(form, Qt::Key_Escape); }));
    EXPECT_EQ(MessageAnswer::No, Show(copy, [this] { form.close(); }));

    Confirmation remove = copy;
    remove.operation = "Delete";
    EXPECT_EQ(MessageAnswer::No, Show(remove, [this] { Press(form, Qt::Key_Return); }));
}

TEST_F(ConfirmationTest, ListsTheNamesOnDemand) {
    Show(copy, [this] {
        EXPECT_EQ(QStringLiteral("Confirm"), form.windowTitle());
        EXPECT_EQ(QStringLiteral("Copy them?"), form.lblMsg->text());
        EXPECT_FALSE(form.imgIcon->pixmap(Qt::ReturnByValue).isNull());
        const int height = form.height();
        EXPECT_EQ(QStringLiteral("&Details..."), form.cmdDetails->text());
        EXPECT_FALSE(form.txtDetails->isVisible());
        form.cmdDetails->click();
        EXPECT_EQ(QStringLiteral("&Hide"), form.cmdDetails->text());
        EXPECT_EQ(QStringLiteral("COPY x FROM /a TO /b\nCOPY y FROM /a TO /b\n"),
                  form.txtDetails->toPlainText());
        EXPECT_TRUE(form.txtDetails->isVisible());
        EXPECT_GT(form.height(), height);
        form.cmdDetails->click();
        EXPECT_EQ(QStringLiteral("&Details..."), form.cmdDetails->text());
        EXPECT_EQ(QString(), form.txtDetails->toPlainText());
        EXPECT_EQ(height, form.height());
        form.close();
    });
}

TEST_F(ConfirmationTest, ShowsWhereTheObjectsGoAndWarnsWhereTheyAreGone) {
    copy.target = "/data/" + std::string(400, 'x') + "/end";
    Show(copy, [&] {
        EXPECT_TRUE(form.lblTo->isVisible() && form.lblTarget->isVisible());
        EXPECT_TRUE(form.lblTarget->text().endsWith(QStringLiteral("/end")));
        EXPECT_EQ(ToQString(copy.target), form.lblTarget->accessibleName());
        EXPECT_LT(form.width(), 1'000);
        form.close();
    });
    Confirmation remove{"Confirm", "Delete them?", "Delete", {"/a/x"}, "/a", ""};
    const auto icon = [this] { return form.imgIcon->pixmap(Qt::ReturnByValue).toImage(); };
    QImage toBin;
    Show(remove, [&] {
        EXPECT_FALSE(form.lblTo->isVisible() || form.lblTarget->isVisible());
        toBin = icon();
        form.close();
    });
    remove.question = "You are about to permanently delete 1 item(s).";
    Show(remove, [&] {
        EXPECT_FALSE(icon().isNull());
        EXPECT_NE(toBin, icon());
        form.close();
    });
}

TEST_F(ConfirmationTest, StandsOverTheWindowThatAsks) {
    QTimer::singleShot(0, [] {
        auto* shown = qobject_cast<frmConfirmation*>(QApplication::activeModalWidget());
        ASSERT_TRUE(shown);
        shown->cmdYes->click();
    });
    EXPECT_EQ(MessageAnswer::Yes, ShowConfirmation(copy));
}

}  // namespace
}  // namespace vantrel
