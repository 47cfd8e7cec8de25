#include <gmock/gmock.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <cerrno>

#include "diagnostics/csound_settings.h"
#include "diagnostics/forms/frm_confirmation.h"
#include "diagnostics/forms/frm_error_log.h"
#include "diagnostics/forms/qt_sound_device.h"
#include "platform/forms/qt_text.h"
#include "support/faulty_system_calls.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

void Press(QWidget& widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
}

class ErrorLogTest : public ::testing::Test {
  protected:
    testing::TempFolder folder;
    testing::FaultySystemCalls calls;
    FileSystem files{calls};
    ProgramFolders folders{folder.Path(), folder.Path(), folder.Path(), "vantrel"};
    testing::FakeClock clock;
    LocaleFormats locale{"C"};
    testing::ScriptedMessages messages;
    testing::ScriptedLoop loop;
    ErrorReporter reporter{files, folders, clock, locale, messages, loop};
    frmErrorLog form{files, reporter};

    std::string Shown() const { return FromQString(form.txtMsg->toPlainText()); }
};

TEST_F(ErrorLogTest, ShowsTheFileAndEmptiesIt) {
    form.DisplayFile(folder / "ERRORLOG.TXT");
    EXPECT_TRUE(folder.Exists("ERRORLOG.TXT"));
    EXPECT_EQ("No Errors Encountered During Last Comparison.", Shown());

    folder.Write("ERRORLOG.TXT", "\r\none\r\n\xFFtwo\r\n");
    form.DisplayFile(folder / "ERRORLOG.TXT");
    EXPECT_EQ("\none\n\xEF\xBF\xBDtwo\n", Shown());
    form.cmdClear->click();
    EXPECT_EQ("", folder.Read("ERRORLOG.TXT"));
    EXPECT_EQ("No Errors Encountered During Last Comparison.", Shown());

    form.setWindowTitle(QStringLiteral("Another Log"));
    form.DisplayFile(folder / "other.txt");
    EXPECT_EQ("", Shown());
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(ErrorLogTest, ShowsTheEndOfAHugeFile) {
    std::string text;
    for (int i = 0; text.size() < frmErrorLog::kMostBytes + 100; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    folder.Write("log", text + "the last one");
    form.DisplayFile(folder / "log");
    EXPECT_THAT(Shown(), ::testing::StartsWith("The log holds "));
    EXPECT_THAT(Shown(), ::testing::EndsWith("\nthe last one"));
    EXPECT_LT(Shown().size(), frmErrorLog::kMostBytes + 200);
}

TEST_F(ErrorLogTest, ReportsAFileThatCannotBeReadOrEmptied) {
    folder.Write("log", "text");
    form.DisplayFile(folder / "log");
    calls.FailAll(testing::Call::Open, EACCES);
    form.cmdClear->click();
    EXPECT_EQ("Unexpected Error in frmErrorLog.cmdClear_Click", messages.shown.at(0).title);
    EXPECT_EQ("text", Shown());
    form.DisplayFile(folder / "log");
    EXPECT_EQ("Unexpected Error in frmErrorLog.DisplayFile", messages.shown.at(1).title);
    EXPECT_EQ("", Shown());
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

TEST_F(ConfirmationTest, StandsOverTheWindowThatAsks) {
    QTimer::singleShot(0, [] {
        auto* shown = qobject_cast<frmConfirmation*>(QApplication::activeModalWidget());
        ASSERT_TRUE(shown);
        shown->cmdYes->click();
    });
    EXPECT_EQ(MessageAnswer::Yes, ShowConfirmation(copy));
}

// Whether or not the machine has sound, nothing takes long, and only a wave file is begun.
TEST(QtSoundDevice, NeverHoldsUpTheProgram) {
    testing::TempFolder folder;
    folder.Write("no.wav", "no wave file");
    SystemCalls calls;
    const FileSystem files(calls);
    QElapsedTimer timer;
    timer.start();
    {
        QtSoundDevice device(files);
        EXPECT_LT(timer.elapsed(), QtSoundDevice::kMostWaitForDevices);
        EXPECT_FALSE(device.Play(folder / "no.wav", true));
        EXPECT_FALSE(device.Play(folder / "missing.wav", false));
        EXPECT_FALSE(device.Play("/dev/zero", false));
        CSoundSettings sounds(device);
        EXPECT_EQ(device.NumberOfDevices() > 0, sounds.DoesThisPCSupportWave());
    }
    EXPECT_LT(timer.elapsed(), 5 * QtSoundDevice::kMostWaitForDevices + QtSoundDevice::kMostWaitForThread);
}

}  // namespace
}  // namespace vantrel
