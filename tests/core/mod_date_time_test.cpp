#include "core/mod_date_time.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <utility>

#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using testing::TestToolbox;

constexpr std::int64_t kSecond = FileTime::kTicksPerSecond;
const FileTime kMoment = FileTime::FromUnix(1'600'000'000, 0);

TEST(ModDateTimeTest, DateValues) {
    EXPECT_DOUBLE_EQ(FileTimeToVBTime({0}), -109'205);
    EXPECT_DOUBLE_EQ(FileTimeToVBTime(FileTime::FromUnix(0, 0)), 25'569);
    EXPECT_DOUBLE_EQ(LocalFileTimeToVBTime(FileTime::FromUnix(-2'209'161'600 + 43'200, 0)), 0.5);
    for (const std::int64_t seconds : std::initializer_list<std::int64_t>{
             -100'000'000'000, -1, 0, 1'600'000'000, 4'000'000'001, 100'000'000'000}) {
        const FileTime time = FileTime::FromUnix(seconds, 123'000'000);
        EXPECT_NEAR(static_cast<double>(VBTimeToFileTime(FileTimeToVBTime(time)).ticks - time.ticks), 0,
                    100'000);
    }
    EXPECT_EQ(VBTimeToFileTime(1e300).ticks, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(VBTimeToFileTime(std::nan("")).ticks, 0);
}

TEST(ModDateTimeTest, DifferencesRoundHalfToEven) {
    const std::pair<std::int64_t, std::int64_t> cases[]{
        {0, 0},          {4'000'000, 0},   {5'000'000, 0},    {5'000'001, 1},  {15'000'000, 2}, {-1, 0},
        {-5'000'000, 0}, {-5'000'001, -1}, {-15'000'000, -2}, {25'000'000, 2}, {35'000'000, 4},
    };
    for (const auto& [ticks, seconds] : cases) {
        const FileTime other{kMoment.ticks + ticks};
        EXPECT_EQ(DifferenceInSeconds(other, kMoment).Whole(), seconds) << ticks;
        EXPECT_EQ(std::nearbyint(CalcDateDiffLocalFT(other, kMoment)), static_cast<double>(seconds)) << ticks;
    }
    const FileTime first{std::numeric_limits<std::int64_t>::min()};
    const FileTime last{std::numeric_limits<std::int64_t>::max()};
    EXPECT_LT(DifferenceInSeconds(first, last), Currency::FromWhole(-900'000'000'000));
    EXPECT_GT(DifferenceInSeconds(last, first), Currency::FromWhole(900'000'000'000));
    EXPECT_NEAR(CalcDateDiffLocalFT(last, first), 1.8446744e12, 1e6);
}

TEST(ModDateTimeTest, AllowancesAreExactMatches) {
    for (const bool twoSeconds : {false, true}) {
        for (const bool daylight : {false, true}) {
            CCompare compare;
            compare.IgnoreFAT_NTFS_TwoSecDiff = twoSeconds;
            compare.IgnoreFAT_NTFS_DaylightSavings = daylight;
            for (std::int64_t seconds = -7'300; seconds <= 7'300; ++seconds) {
                const std::int64_t size = std::abs(seconds);
                const std::int64_t pastHour = std::abs(size - 3'600);
                const bool forgiven = (twoSeconds && size <= 2) || (daylight && pastHour == 0) ||
                                      (twoSeconds && daylight && pastHour <= 2);
                const Currency difference = Currency::FromWhole(seconds);
                ASSERT_EQ(FAT_NTFS_TimeDiffAllowance(difference, compare), forgiven ? Currency() : difference)
                    << seconds << ' ' << twoSeconds << daylight;
            }
        }
    }
    CCompare both;
    both.IgnoreFAT_NTFS_DaylightSavings = true;
    EXPECT_EQ(AllowedTimeDifference({kMoment.ticks + 3'601 * kSecond}, kMoment, both), Currency());
    EXPECT_EQ(AllowedTimeDifference({kMoment.ticks + 25'000'000}, kMoment, both), Currency()) << "2.5 is 2";
    EXPECT_EQ(AllowedTimeDifference({kMoment.ticks - 35'000'000}, kMoment, both).Whole(), -4) << "3.5 is 4";
}

TEST(ModDateTimeTest, FileTimesAreReadAndSet) {
    TestToolbox box;
    const std::string file = box.folder / "f";
    box.folder.Write("f", "x", 1'000);
    FileDateTimes times;
    ASSERT_TRUE(GetFileDateTimes(box.Get(), file, times));
    EXPECT_EQ(times.write, FileTime::FromUnix(1'000, 0));

    times.write = FileTime::FromUnix(-77, 123'456'700);
    times.access = FileTime::FromUnix(5'000'000'000, 0);
    ASSERT_TRUE(SetFileDateTimes(box.Get(), file, times));
    FileDateTimes again;
    ASSERT_TRUE(GetFileDateTimes(box.Get(), file, again));
    EXPECT_EQ(again.write, times.write);
    EXPECT_EQ(again.access, times.access);

    ASSERT_TRUE(SetLastWriteTime(box.Get(), file, FileTimeToLocalFileTime(kMoment)).IsOk());
    ASSERT_TRUE(GetFileDateTimes(box.Get(), file, again));
    EXPECT_EQ(again.write, kMoment);
    EXPECT_EQ(again.access, times.access);
    EXPECT_TRUE(box.messages.shown.empty());
}

TEST(ModDateTimeTest, FailuresAreReportedUnderTheRoutinesName) {
    TestToolbox box;
    FileDateTimes times;
    EXPECT_FALSE(GetFileDateTimes(box.Get(), box.folder / "gone", times));
    box.folder.MakeFolder("folder");
    EXPECT_FALSE(SetFileDateTimes(box.Get(), box.folder / "folder", times));
    box.folder.Write("fixed", "x", 1'000);
    std::filesystem::permissions(box.folder / "fixed", std::filesystem::perms::owner_read);
    const Error error = SetLastWriteTime(box.Get(), box.folder / "fixed", kMoment);
    ASSERT_FALSE(error.IsOk());
    ReportLastWriteTime(box.Get(), error);
    ASSERT_EQ(box.messages.shown.size(), 3U);
    EXPECT_EQ(box.messages.shown[0].title, "Unexpected Error in modDateTime.GetFileDateTimes");
    EXPECT_NE(box.messages.shown[0].text.find("\"Error encountered opening the file " +
                                              (box.folder / "gone") + "\""),
              std::string::npos);
    EXPECT_EQ(box.messages.shown[1].title, "Unexpected Error in modDateTime.SetFileDateTimes");
}

TEST(ModDateTimeTest, TimesGoAcrossToTheNanosecondAndOnlyOntoTheFileThatWasSeen) {
    TestToolbox box;
    box.folder.Write("from", "x");
    box.folder.Write("to", "y", 1'000);
    const timespec odd[2] = {{1'234'567'890, 987'654'321}, {1'700'000'000, 123'456'789}};
    ASSERT_EQ(0, utimensat(AT_FDCWD, (box.folder / "from").c_str(), odd, 0));
    OpenFolder opened;
    FolderEntry entry;
    ASSERT_TRUE(box.files.Open(box.folder.Path(), opened).IsOk() && opened.LookAt("to", entry));
    const Sighting seen = SightingOf(entry);
    FileDateTimes times;
    ASSERT_TRUE(GetFileDateTimes(box.Get(), box.folder / "from", times));
    box.folder.Write("to", "changed since, and the same file");
    ASSERT_TRUE(SetFileDateTimes(box.Get(), box.folder / "to", times, seen));
    struct stat now {};
    ASSERT_EQ(0, stat((box.folder / "to").c_str(), &now));
    EXPECT_EQ(odd[1].tv_nsec, now.st_mtim.tv_nsec);
    EXPECT_EQ(odd[0].tv_nsec, now.st_atim.tv_nsec);

    // Another file, and a link to the very one that was seen.
    std::filesystem::rename(box.folder / "to", box.folder / "kept");
    box.folder.Write("to", "another", 1'000);
    EXPECT_FALSE(SetFileDateTimes(box.Get(), box.folder / "to", times, seen));
    std::filesystem::remove(box.folder / "to");
    std::filesystem::create_symlink("kept", box.folder / "to");
    times.write = {};
    EXPECT_FALSE(SetFileDateTimes(box.Get(), box.folder / "to", times));
    ASSERT_EQ(0, stat((box.folder / "kept").c_str(), &now));
    EXPECT_EQ(odd[1].tv_nsec, now.st_mtim.tv_nsec);
    EXPECT_EQ(2U, box.messages.shown.size());
}

}  // namespace
}  // namespace vantrel
