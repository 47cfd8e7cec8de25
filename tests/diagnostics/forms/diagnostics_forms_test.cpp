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
#include "diagnostics/forms/frm_error_log.h"
#include "diagnostics/forms/qt_sound_device.h"
#include "platform/forms/qt_text.h"
#include "support/faulty_system_calls.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

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
        SoundOptions options;
        CSoundSettings sounds(device, options);
        EXPECT_EQ(device.NumberOfDevices() > 0, sounds.DoesThisPCSupportWave());
    }
    EXPECT_LT(timer.elapsed(), 5 * QtSoundDevice::kMostWaitForDevices + QtSoundDevice::kMostWaitForThread);
}

}  // namespace
}  // namespace vantrel
