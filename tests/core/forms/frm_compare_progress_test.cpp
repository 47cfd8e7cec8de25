#include "core/forms/frm_compare_progress.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "platform/forms/animation_view.h"
#include "platform/forms/qt_text.h"
#include "support/places.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

class frmCompareProgressTest : public ::testing::Test {
  protected:
    QLabel* Label(const char* name) { return window.findChild<QLabel*>(QLatin1String(name)); }
    std::string Text(const char* name) { return FromQString(Label(name)->text()); }
    QProgressBar* Bar() { return window.findChild<QProgressBar*>(QStringLiteral("ProgressBar")); }
    AnimationView& Anim() {
        return dynamic_cast<AnimationView&>(*window.findChild<QWidget*>(QStringLiteral("animFolder")));
    }
    static void PressEscape(QWidget& widget) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }

    testing::TestToolbox tools;
    QtEventLoop loop;
    QWidget mainWindow;
    LocaleFormats locale{"C"};
    frmCompareProgress window{loop, tools.files, tools.folders, locale, &mainWindow};
};

TEST_F(frmCompareProgressTest, PaintsWhatWasSetLastAtThePaceOfTheLoop) {
    window.SetMessage("Examining the left folder.  Press ESC to cancel...");
    window.Show();
    EXPECT_EQ(Text("lblMessage"), "Examining the left folder.  Press ESC to cancel...");
    window.SetBarRange(4);
    loop.YieldNow();
    for (int i = 0; i <= 3; ++i) {
        window.SetFileName("<b>file" + std::to_string(i));
        window.SetBarValue(i);
        EXPECT_EQ(Text("lblFileName"), "");
    }
    loop.YieldNow();
    EXPECT_EQ(Text("lblFileName"), "<b>file3");
    EXPECT_EQ(Bar()->value() * 4, Bar()->maximum() * 3);
    EXPECT_EQ(Text("lblCount"), "3 of 4");
    window.SetBarRange(0);
    window.SetBarValue(12'345);
    loop.YieldNow();
    EXPECT_EQ(Text("lblCount"), "12,345 found");
}

TEST_F(frmCompareProgressTest, HasABarThatIsHonest) {
    window.Show();
    EXPECT_EQ(Bar()->maximum(), 0) << "unknown so far";
    for (const auto& [maximum, value, percent] : {std::tuple(std::int64_t{200}, std::int64_t{50}, 25),
                                                  {std::int64_t{1} << 60, std::int64_t{1} << 59, 50},
                                                  {std::int64_t{10}, std::int64_t{11}, 100},
                                                  {std::int64_t{10}, std::int64_t{-1}, 0}}) {
        window.SetBarRange(maximum);
        window.SetBarValue(value);
        loop.YieldNow();
        EXPECT_EQ(Bar()->value() * 100, Bar()->maximum() * percent) << maximum;
    }
    window.SetBarRange(0);
    loop.YieldNow();
    EXPECT_EQ(Bar()->maximum(), 0);
}

TEST_F(frmCompareProgressTest, CutsALongNameInTheMiddleAndKeepsItsSize) {
    window.Show();
    const int width = window.width();
    window.SetFileName("/start/" + std::string(4'000, 'x') + "\xE2\x80\xAE/end.txt");
    loop.YieldNow();
    const std::string shown = Text("lblFileName");
    EXPECT_EQ(shown.rfind("/start/", 0), 0u);
    EXPECT_EQ(shown.find("\xE2\x80\xAE"), std::string::npos) << "would turn the line around";
    EXPECT_NE(shown.find("\xE2\x80\xA6"), std::string::npos);
    EXPECT_EQ(shown.substr(shown.size() - 8), "/end.txt");
    loop.YieldNow();
    EXPECT_EQ(window.width(), width);
}

TEST_F(frmCompareProgressTest, CancelsAndUnloadsOnEscapeInAnyWindowAndWhenClosed) {
    for (const int way : {0, 1, 2, 3}) {
        loop.ResetCancel();
        window.Show();
        if (way == 0) PressEscape(window);
        if (way == 1) PressEscape(mainWindow);
        if (way == 2) window.close();
        if (way == 3) window.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
        EXPECT_TRUE(loop.CancelRequested()) << way;
        EXPECT_FALSE(window.isVisible());
        window.SetMessage("late");
        loop.YieldNow();
        EXPECT_FALSE(window.isVisible());
    }
    loop.ResetCancel();
    window.Show();
    window.Unload();
    EXPECT_FALSE(loop.CancelRequested());
    PressEscape(mainWindow);
    EXPECT_FALSE(loop.CancelRequested()) << "no run, nothing to cancel";
}

// They are meant for the window that had the focus before.
TEST_F(frmCompareProgressTest, EnterAndTheBlankDoNotCancel) {
    window.Show();
    window.WaitUntilPainted();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Space}) {
        QTest::keyClick(&window, key);
        if (QWidget* focused = window.focusWidget()) QTest::keyClick(focused, key);
    }
    EXPECT_FALSE(loop.CancelRequested());
    EXPECT_TRUE(window.isVisible());
    const auto* cancel = window.findChild<QPushButton*>(QStringLiteral("cmdCancel"));
    EXPECT_FALSE(QKeySequence::mnemonic(cancel->text()).isEmpty()) << "the one way by the keyboard but ESC";
}

TEST_F(frmCompareProgressTest, LeavesEscapeToAQuestionThatStandsOverTheRun) {
    window.Show();
    QMessageBox question(&window);
    question.setModal(true);
    question.show();
    PressEscape(question);
    EXPECT_FALSE(question.isVisible());
    EXPECT_FALSE(loop.CancelRequested());
}

TEST_F(frmCompareProgressTest, WaitsForTheFirstPaintingAloneAndOnlyWhereSomebodyWaits) {
    auto* timer = window.findChild<QTimer*>(QStringLiteral("Timer1"));
    EXPECT_EQ(timer->interval(), 250);
    timer->setInterval(60'000);
    struct Paintings : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint;
            return false;
        }
        int count = 0;
    } paintings;
    window.installEventFilter(&paintings);
    window.WaitUntilPainted();  // not shown: returns at once
    window.Show();
    window.WaitUntilPainted();
    EXPECT_EQ(paintings.count, 1);
    EXPECT_TRUE(timer->isActive()) << "did not wait for it";
    window.WaitUntilPainted();
    EXPECT_EQ(paintings.count, 1) << "it is painted";
    window.Unload();

    paintings.count = 0;
    window.SetWaits(false);
    window.Show();
    window.WaitUntilPainted();
    EXPECT_EQ(paintings.count, 0);
    window.Unload();
    window.SetWaits(true);

    // One that cannot be painted keeps nobody.
    window.setUpdatesEnabled(false);
    timer->setInterval(1);
    window.Show();
    window.WaitUntilPainted();
    EXPECT_FALSE(timer->isActive());
    timer->setInterval(60'000);
    window.Unload();
    window.Show();
    QTimer::singleShot(0, &window, [this] { PressEscape(window); });
    window.WaitUntilPainted();
    EXPECT_TRUE(loop.CancelRequested());
}

TEST_F(frmCompareProgressTest, PlaysTheSupportFilesAndDoesWithoutThem) {
    window.Show();
    window.SetAnimation("scanfiles.avi");
    EXPECT_FALSE(Anim().IsPlaying());
    window.SetAnimation("");
    tools.folder.Write("damaged.avi", "RIFF");
    window.SetAnimation("damaged.avi");
    EXPECT_FALSE(Anim().IsPlaying());
    tools.folders.executableFolder = testing::AssetsFolder() + "/support/";
    for (const char* file : {"filetreelist.avi", "scanfiles.avi", "small_find_computer.avi"}) {
        window.SetAnimation(file);
        ASSERT_TRUE(Anim().IsPlaying()) << file;
        EXPECT_EQ(Anim().FrameShown(), 0u);
        const QImage first = window.grab().toImage();
        QElapsedTimer elapsed;
        elapsed.start();
        while (Anim().FrameShown() < 3 && elapsed.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_NE(window.grab().toImage(), first);
    }
    window.Unload();
    EXPECT_FALSE(Anim().IsPlaying());
}

}  // namespace
}  // namespace vantrel
