#include "diagnostics/error_reporter.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <stdexcept>

#include "diagnostics/comparison_log.h"
#include "diagnostics/csound_settings.h"
#include "diagnostics/performance_check.h"
#include "support/faulty_system_calls.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

const std::string kEnd =
    "\r\n* If this problem persists, please contact our technical support staff for assistance.\r\n"
    "  (Refer to the Troubleshooting section of the Help file for details.)";

class DiagnosticsTest : public ::testing::Test {
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

    std::string Now() const { return locale.DateTime(FileTimeToLocalFileTime(clock.now)); }
};

TEST_F(DiagnosticsTest, ReportsNameNumberAndText) {
    reporter.ReportError("frmMain.CompareDirs", Error(ErrorNumber::Raised, "No luck"));
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ(
        "Unexpected Error in frmMain.CompareDirs: Error: No luck\r\nSource: frmMain.CompareDirs\r\n"
        "No: -2147221504\r\n" +
            kEnd,
        messages.Line(0));
    EXPECT_EQ(MessageIcon::Warning, messages.shown[0].icon);
    EXPECT_FALSE(folder.Exists("ERR_DETAIL.TXT"));

    const Error error = Error::FromErrno(EACCES, "/x");
    reporter.ReportError("frMain.Odd", error, "   ");
    EXPECT_EQ("DLL Error: " + GetErrorText(EACCES) + "\r\nError: " + error.Description() +
                  "\r\nSource: frMain.Odd\r\nNo: 13\r\n" + kEnd,
              messages.shown.at(1).text);

    reporter.ReportError("frmMain.Quiet", Error(ErrorNumber::InvalidPropertyValue, "x"), "detail");
    EXPECT_EQ(2U, messages.shown.size());
    EXPECT_FALSE(folder.Exists("ERR_DETAIL.TXT"));
}

TEST_F(DiagnosticsTest, DetailsAreAddedToTheirFile) {
    folder.Write("ERR_DETAIL.TXT", "before");
    reporter.ReportError("A.b", Error(ErrorNumber::DiskFull, "Disk full"), "some detail");
    const std::string report = "Error: Disk full\r\nSource: A.b\r\nNo: 61\r\n";
    EXPECT_EQ("before\r\n" + Now() + "\r\n" + report + "\r\n- More Information - \r\nsome detail\r\n",
              folder.Read("ERR_DETAIL.TXT"));
    EXPECT_EQ(report + "\r\nSee the ERR_DETAIL.TXT file before proceeding.\r\n" + kEnd,
              messages.shown.at(0).text);

    calls.FailAll(testing::Call::Open, EROFS);
    reporter.ReportError("A.b", Error(ErrorNumber::DiskFull, "Disk full"), "some detail");
    EXPECT_EQ(1U, messages.shown.size());
}

struct Job : RunningJob {
    bool running = true;
    std::string events;
    bool RunningCompare() const override { return running; }
    void UnloadCompareProgress() override { events += "unload "; }
};

TEST_F(DiagnosticsTest, ClosesTheProgressWindowBeforeItsMessage) {
    Job job;
    loop.onYield = [&] { job.events += "yield "; };
    messages.onMessage = [&](const Message&) { job.events += "message "; };
    reporter.SetRunningJob(&job);
    reporter.ReportError("A.b", Error(ErrorNumber::DiskFull, ""));
    job.running = false;
    reporter.ReportError("A.b", Error(ErrorNumber::DiskFull, ""));
    EXPECT_EQ("unload yield message message ", job.events);
}

TEST_F(DiagnosticsTest, GuardReportsWhateverComesOut) {
    EXPECT_TRUE(reporter.Guard("A.b", [] {}));
    EXPECT_FALSE(reporter.Guard("A.b", [] { throw ErrorException(Error(ErrorNumber::DiskFull, "full")); }));
    EXPECT_FALSE(reporter.Guard("A.b", [] { throw std::runtime_error("odd"); }));
    EXPECT_THAT(messages.shown.at(0).text, ::testing::HasSubstr("No: 61\r\n"));
    EXPECT_THAT(messages.shown.at(1).text, ::testing::StartsWith("Error: odd\r\n"));

    messages.onMessage = [](const Message&) { throw std::runtime_error("inside the reporter"); };
    EXPECT_FALSE(reporter.Guard("A.b", [] { throw std::runtime_error("odd"); }));
}

// A cancel is no error: it passes through the guards of routines, unreported, to the run that it ends.
TEST_F(DiagnosticsTest, ACancelEndsTheRunAndNothingElse) {
    struct SomethingCancelled : Cancelled {};
    bool wentOn = false;
    const auto routine = [&] {
        reporter.Guard("A.inner", [] { throw SomethingCancelled(); });
        wentOn = true;
    };
    EXPECT_THROW(reporter.Guard("A.outer", routine), SomethingCancelled);
    EXPECT_FALSE(reporter.GuardRun("A.run", routine));
    EXPECT_FALSE(wentOn);
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(reporter.GuardRun("A.run", [] {}));
    EXPECT_FALSE(reporter.GuardRun("A.run", [] { throw std::bad_alloc(); }));
    EXPECT_THAT(messages.shown.at(0).text, ::testing::StartsWith("Error: Out of memory\r\n"));
}

TEST_F(DiagnosticsTest, TheLogOfAComparisonBeginsEmpty) {
    ComparisonLog log(files, folders, clock, locale);
    folder.Write("ERRORLOG.TXT", "old");
    ASSERT_TRUE(log.Recreate().IsOk());
    EXPECT_EQ("", folder.Read("ERRORLOG.TXT"));
    log.Append({"File Name: a", "Process: b", "Error: c"});
    log.AppendNote("left out");
    EXPECT_TRUE(log.TakeFailure().IsOk());
    EXPECT_EQ("\r\n" + Now() +
                  "\r\nErrors encountered during comparison\r\nFile Name: a\r\nProcess: b\r\n"
                  "Error: c\r\nleft out\r\n",
              folder.Read("ERRORLOG.TXT"));
    calls.FailAll(testing::Call::Open, EACCES);
    EXPECT_EQ(ErrorNumber::PermissionDenied, log.Recreate().Number());
    log.Append({"x"});
    log.AppendNote("y");
    EXPECT_EQ(ErrorNumber::PermissionDenied, log.TakeFailure().Number());
    EXPECT_TRUE(log.TakeFailure().IsOk());
}

TEST_F(DiagnosticsTest, PerformanceIsLoggedAfterBothEnds) {
    CPerformanceCheck check(clock);
    const CPerformanceCheck::LogTarget target{files, folders, locale, messages};
    clock.ticks = 0xFFFFFF00;
    check.BeginPerformanceCheck();
    ASSERT_TRUE(check.LogPerformanceToTextFile(target, "perf.txt", "scan", "none", "notes").IsOk());
    EXPECT_EQ(
        "CPerformanceCheck - Invalid Usage: The steps required to use this class are:\r\n\r\n"
        "1) Call the BeginPerformanceCheck() method\r\n2) Call the EndPerformanceCheck() method\r\n"
        "3) Log the Performance to a text file or the debug window\r\n\r\n"
        "*Note - Steps 1 & 2 are mandatory while step 3 is optional.",
        messages.Line(0));
    EXPECT_FALSE(folder.Exists("perf.txt"));
    clock.ticks += 0x101;
    check.EndPerformanceCheck();
    EXPECT_EQ(0x101U, check.MilliSecondsElapsed());
    ASSERT_TRUE(check.LogPerformanceToTextFile(target, "perf.txt", "scan", "none", "notes").IsOk());
    EXPECT_EQ("\r\n*****\r\nscan checked on " + Now() +
                  "\r\nChanges Made: none\r\nnotes\r\nElapsed Time: 257 milliseconds",
              folder.Read("perf.txt"));
}

struct FakeSound : SoundDevice {
    int devices = 1;
    std::vector<std::string> played;
    int NumberOfDevices() override { return devices; }
    bool Play(const std::string& file, bool async) override {
        played.push_back(file + (async ? "" : " waited for"));
        return file != "/missing.wav";
    }
};

TEST(CSoundSettings, PlaysWhatIsNamedWhereThereIsADevice) {
    FakeSound device;
    SoundOptions options{false, CSoundSettings::kNone, CSoundSettings::kNone, "/c.wav", "/s.wav"};
    CSoundSettings sounds(device, options);  // whether sounds are on is for the callers, not for the methods
    sounds.PlayStartSound();
    sounds.PlayExitSound();
    sounds.PlaySyncCompleteSound();
    sounds.PlayCompareCompleteSound();
    options.exitSound = "/x.wav";
    sounds.PlayExitSound();
    options.startSound = "/b.wav";
    sounds.PlayStartSound();
    bool played = true;
    sounds.PlayWave("/missing.wav", false, played);
    EXPECT_FALSE(played);
    EXPECT_THAT(device.played,
                ::testing::ElementsAre("/s.wav", "/c.wav", "/x.wav", "/b.wav", "/missing.wav waited for"));

    FakeSound none;
    none.devices = 0;
    CSoundSettings silent(none, options);
    played = true;
    silent.PlayWave("/c.wav", true, played);
    EXPECT_FALSE(played || silent.DoesThisPCSupportWave());
    EXPECT_TRUE(none.played.empty());
}

}  // namespace
}  // namespace vantrel
