#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "shell/forms/frm_shell_progress.h"
#include "shell/forms/qt_shell_questions.h"
#include "support/modal.h"
#include "support/scripted_ports.h"

namespace vantrel::testing {
namespace {

TEST(ShellProgressWindow, AppearsAfterHalfASecondAndCancels) {
    FakeClock clock;
    QtShellProgress progress(clock);
    EXPECT_FALSE(progress.CancelAsked());
    progress.Begin(ShellOperation::Copy);
    progress.SetTotals({10, 4000});
    progress.Item("/left/a", "/right/a");
    clock.ticks += 499;
    EXPECT_FALSE(progress.CancelAsked());
    EXPECT_EQ(nullptr, progress.Window());
    clock.ticks += 1;
    progress.Advance({1, 1000});
    EXPECT_FALSE(progress.CancelAsked());
    frmShellProgress* window = progress.Window();
    ASSERT_NE(nullptr, window);
    EXPECT_TRUE(window->isVisible() && window->isModal());
    EXPECT_EQ(QStringLiteral("/left/a"), window->lblFileName->text());
    EXPECT_EQ(100, window->prgProgress->value());
    progress.Advance({2, 2000});
    EXPECT_FALSE(progress.CancelAsked());
    EXPECT_EQ(100, window->prgProgress->value());  // painted at its own pace
    clock.ticks += 50;
    EXPECT_FALSE(progress.CancelAsked());
    EXPECT_EQ(200, window->prgProgress->value());
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_TRUE(progress.CancelAsked());
    EXPECT_TRUE(window->isVisible());
    progress.End();
    EXPECT_EQ(nullptr, progress.Window());
    progress.Begin(ShellOperation::Delete);
    EXPECT_FALSE(progress.CancelAsked());
}

TEST(ShellQuestionBoxes, GiveTheAnswerOfTheirButtons) {
    const LocaleFormats locale("C");
    QtShellQuestions questions(locale);
    const struct {
        QMessageBox::StandardButton button;
        OverwriteAnswer answer;
    } overwrites[] = {
        {QMessageBox::Yes, OverwriteAnswer::Yes},
        {QMessageBox::YesToAll, OverwriteAnswer::YesToAll},
        {QMessageBox::No, OverwriteAnswer::No},
        {QMessageBox::Cancel, OverwriteAnswer::Cancel},
    };
    for (const auto& one : overwrites) {
        WhenModal([&](QWidget* window) {
            auto* box = qobject_cast<QMessageBox*>(window);
            EXPECT_TRUE(box->text().contains(QStringLiteral("/right/a")));
            QTest::keyClick(box->button(one.button), Qt::Key_Space);
        });
        EXPECT_EQ(one.answer,
                  questions.AskOverwrite({ShellOperation::Copy, "/left/a", "/right/a", 1, 2, {}, {}}));
    }
    const struct {
        const char* text;
        ErrorAnswer answer;
    } errors[] = {{"Retry", ErrorAnswer::Retry},
                  {"Skip", ErrorAnswer::Skip},
                  {"Cancel", ErrorAnswer::Cancel},
                  {nullptr, ErrorAnswer::Cancel}};
    for (const auto& one : errors) {
        WhenModal([&](QWidget* window) {
            EXPECT_TRUE(
                qobject_cast<QMessageBox*>(window)->informativeText().contains(QStringLiteral("full")));
            if (!one.text) QTest::keyClick(window, Qt::Key_Escape);
            for (QPushButton* button : window->findChildren<QPushButton*>()) {
                if (one.text && button->text().remove(QLatin1Char('&')) == QString::fromUtf8(one.text))
                    return QTest::keyClick(button, Qt::Key_Space);
            }
        });
        EXPECT_EQ(one.answer, questions.AskAboutError({ShellOperation::Copy, "/left/a",
                                                       Error(ErrorNumber::DiskFull, "Disk full")}));
    }
}

}  // namespace
}  // namespace vantrel::testing
