#include <gtest/gtest.h>

#include <QApplication>
#include <QKeySequence>
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
    const LocaleFormats locale("C");
    QtShellProgress progress(clock, locale);
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
    progress.End();

    QWidget busyWindow;
    progress.SetParentWindow(&busyWindow);
    progress.Begin(ShellOperation::Copy);
    clock.ticks += 500;
    EXPECT_FALSE(progress.CancelAsked());
    EXPECT_FALSE(progress.Window()->isModal()) << "it could not be closed";
    progress.End();
}

// They are meant for the window that had the focus before.
TEST(ShellProgressWindow, EnterAndTheBlankDoNotCancel) {
    const LocaleFormats locale("C");
    frmShellProgress window(locale);
    window.Show(ShellOperation::Copy, "");
    EXPECT_EQ(QStringLiteral("Copying..."), window.windowTitle());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Space}) {
        QTest::keyClick(&window, key);
        if (QWidget* focused = window.focusWidget()) QTest::keyClick(focused, key);
    }
    EXPECT_FALSE(window.Cancelled());
    EXPECT_FALSE(QKeySequence::mnemonic(window.cmdCancel->text()).isEmpty());
    window.cmdCancel->click();
    EXPECT_TRUE(window.Cancelled());
    EXPECT_FALSE(window.cmdCancel->isEnabled());
    window.Paint("/a", "", {1, 0}, {2, 0}, "about 1 minute left");
    EXPECT_EQ(QStringLiteral("Cancelling..."), window.lblCount->text());
    EXPECT_EQ(QString(), window.lblPace->text());
}

TEST(ShellProgressWindow, TellsCountsSpeedAndTimeLeft) {
    constexpr std::uint64_t kMega = 1 << 20;
    FakeClock clock;
    const LocaleFormats locale("C");
    QtShellProgress progress(clock, locale);
    progress.Begin(ShellOperation::Copy);
    progress.SetTitle("Together");
    clock.ticks += 5'000;
    EXPECT_FALSE(progress.CancelAsked());
    EXPECT_EQ(QStringLiteral("Together"), progress.Window()->windowTitle());
    EXPECT_EQ(QStringLiteral("Counting..."), progress.Window()->lblCount->text());
    EXPECT_EQ(QString(), progress.Window()->lblPace->text());
    progress.SetTotals({2'000, 400 * kMega});
    for (std::uint64_t second = 1; second <= 30; ++second) {
        clock.ticks += 1'000;
        progress.Advance({second * 10, second * 2 * kMega});
        EXPECT_FALSE(progress.CancelAsked());
    }
    EXPECT_EQ(QStringLiteral("300 of 2,000 object(s), 60 MB of 400 MB"), progress.Window()->lblCount->text());
    // 170 seconds, by either measure.
    EXPECT_EQ(QStringLiteral("2 MB/s, about 3 minutes left"), progress.Window()->lblPace->text());
    // The last seconds count, not the beginning.
    for (std::uint64_t second = 1; second <= 11; ++second) {
        clock.ticks += 1'000;
        progress.Advance({300 + second * 100, (60 + second * 20) * kMega});
        EXPECT_FALSE(progress.CancelAsked());
    }
    EXPECT_EQ(QStringLiteral("20 MB/s, about 10 seconds left"), progress.Window()->lblPace->text());
    progress.End();
}

TEST(ShellProgressWindow, RoundsTheTimeLeftUp) {
    for (const auto& [seconds, text] : {std::pair{0.0, "a few seconds left"},
                                        {4.9, "a few seconds left"},
                                        {5.1, "about 10 seconds left"},
                                        {55.0, "about 55 seconds left"},
                                        {56.0, "about 1 minute left"},
                                        {61.0, "about 2 minutes left"},
                                        {3'590.0, "about 60 minutes left"},
                                        {3'660.0, "about 1 h 1 min left"}})
        EXPECT_EQ(text, DescribeTimeLeft(seconds));
}

TEST(ShellQuestionBoxes, GiveTheAnswerOfTheirButtons) {
    const LocaleFormats locale("C");
    QtShellQuestions questions(locale);
    const struct {
        QMessageBox::StandardButton button;
        OverwriteAnswer answer;
    } overwrites[] = {
        {QMessageBox::Yes, OverwriteAnswer::Yes},       {QMessageBox::YesToAll, OverwriteAnswer::YesToAll},
        {QMessageBox::No, OverwriteAnswer::No},         {QMessageBox::NoToAll, OverwriteAnswer::NoToAll},
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
                  {"Skip All", ErrorAnswer::SkipAll},
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
