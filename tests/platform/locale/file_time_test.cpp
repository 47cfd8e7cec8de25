#include "platform/locale/file_time.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>

namespace vantrel {
namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

// The local zone for one test.
class LocalZone {
  public:
    explicit LocalZone(const char* rules) {
        if (const char* zone = std::getenv("TZ")) saved_ = zone;
        setenv("TZ", rules, 1);
        ReloadLocalZone();
    }
    ~LocalZone() {
        setenv("TZ", saved_.c_str(), 1);
        ReloadLocalZone();
    }
    LocalZone(const LocalZone&) = delete;
    LocalZone& operator=(const LocalZone&) = delete;

  private:
    std::string saved_ = "UTC";
};

// Rules written out, so that no zone table of the machine matters.
constexpr const char* kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";

FileTime At(std::int64_t seconds, std::uint32_t nanoseconds = 0) {
    return FileTime::FromUnix(seconds, nanoseconds);
}

std::int64_t LocalMinusUtc(std::int64_t unixSeconds) {
    return (FileTimeToLocalFileTime(At(unixSeconds)).ticks - At(unixSeconds).ticks) /
           FileTime::kTicksPerSecond;
}

TEST(FileTimeTest, UnixStamps) {
    EXPECT_EQ(At(0).ticks, 116'444'736'000'000'000);
    EXPECT_EQ(At(-FileTime::kUnixEpochSeconds, 199).ticks, 1);
    EXPECT_EQ(At(-FileTime::kUnixEpochSeconds - 1, 999'999'999).ticks, -1) << "cut towards the past";
    EXPECT_EQ(At(kMax, 0).ticks, kMax);
    EXPECT_EQ(At(kMin, 0).ticks, kMin);

    std::mt19937_64 random(4);
    for (int i = 0; i < 100'000; ++i) {
        const auto any = static_cast<std::int64_t>(random());
        for (const std::int64_t ticks : {any, any % 1'000'000'000'000'000, kMin + std::abs(any % 50'000'000),
                                         kMax - std::abs(any % 50'000'000), kMin, kMax}) {
            std::int64_t seconds = 0;
            std::uint32_t nanoseconds = 0;
            FileTime{ticks}.ToUnix(seconds, nanoseconds);
            ASSERT_LE(nanoseconds, 999'999'900U);
            ASSERT_EQ(At(seconds, nanoseconds).ticks, ticks);
            ASSERT_EQ(FromCalendar(ToCalendar({ticks})).ticks, ticks);
        }
    }
}

TEST(FileTimeTest, LocalTimeFollowsTheRulesOfTheInstant) {
    const LocalZone zone(kBerlin);
    EXPECT_EQ(LocalMinusUtc(1'600'000'000), 7'200);   // September 2020
    EXPECT_EQ(LocalMinusUtc(1'610'000'000), 3'600);   // January 2021
    EXPECT_EQ(LocalMinusUtc(-1'000'000'000), 3'600);  // before 1970
    EXPECT_EQ(LocalMinusUtc(4'118'000'000), 7'200);   // June 2100
    // To the second at both changes of 2021.
    EXPECT_EQ(LocalMinusUtc(1'616'893'199), 3'600);
    EXPECT_EQ(LocalMinusUtc(1'616'893'200), 7'200);
    EXPECT_EQ(LocalMinusUtc(1'635'641'999), 7'200);
    EXPECT_EQ(LocalMinusUtc(1'635'642'000), 3'600);
    EXPECT_EQ(FileTimeToLocalFileTime(At(1'600'000'000, 123'456'700)).ticks % FileTime::kTicksPerSecond,
              1'234'567);
    EXPECT_EQ(FileTimeToLocalFileTime({kMax}).ticks, kMax);
}

TEST(FileTimeTest, LocalTimeAgreesWithTheSystem) {
    for (const char* rules : {kBerlin, kNewYork, "UTC", "<+0545>-5:45", "LHST-10:30LHDT-11,M10.1.0,M4.1.0"}) {
        const LocalZone zone(rules);
        std::mt19937_64 random(5);
        for (int i = 0; i < 20'000; ++i) {
            // Now and then near a change: hours around the last Sundays of March and October 2021.
            const std::int64_t bases[]{0, 1'616'893'200, 1'635'642'000};
            const std::time_t utc =
                bases[i % 3] + static_cast<std::int64_t>(random() % 200'000) * (i % 3 == 0 ? 30'000 : 1) -
                (i % 3 == 0 ? 3'000'000'000 : 100'000);
            std::tm expected{};
            ASSERT_NE(localtime_r(&utc, &expected), nullptr);
            const FileTime local = FileTimeToLocalFileTime(At(utc));
            const CalendarTime parts = ToCalendar(local);
            ASSERT_EQ(parts.year, expected.tm_year + 1'900) << rules << ' ' << utc;
            ASSERT_EQ(parts.month, expected.tm_mon + 1);
            ASSERT_EQ(parts.day, expected.tm_mday);
            ASSERT_EQ(parts.hour, expected.tm_hour);
            ASSERT_EQ(parts.minute, expected.tm_min);
            ASSERT_EQ(parts.second, expected.tm_sec);
            ASSERT_EQ(parts.weekday, expected.tm_wday);
            // Back: the same instant, or the earlier one of two that the clock showed alike.
            const FileTime back = LocalFileTimeToFileTime(local);
            ASSERT_LE(back.ticks, At(utc).ticks);
            ASSERT_EQ(FileTimeToLocalFileTime(back).ticks, local.ticks);
        }
    }
}

TEST(FileTimeTest, LocalTimesSkippedAndRepeated) {
    const LocalZone zone(kBerlin);
    const auto toUtc = [](std::int64_t localSeconds) {
        std::int64_t seconds = 0;
        std::uint32_t nanoseconds = 0;
        LocalFileTimeToFileTime(At(localSeconds)).ToUnix(seconds, nanoseconds);
        return seconds;
    };
    EXPECT_EQ(toUtc(1'616'893'200 + 3'600 + 1'800), 1'616'893'200 + 1'800) << "02:30 does not exist: 03:30";
    EXPECT_EQ(toUtc(1'635'642'000 + 3'600 + 1'800), 1'635'642'000 - 1'800) << "02:30 twice: the first";
}

TEST(FileTimeTest, UtcText) {
    EXPECT_EQ(UtcText(At(1'600'000'000)), "2020-09-13T12:26:40.0000000Z");
    EXPECT_EQ(UtcText(At(951'782'400 + 86'399, 999'999'999)), "2000-02-29T23:59:59.9999999Z");
    EXPECT_EQ(UtcText({0}), "1601-01-01T00:00:00.0000000Z");
    EXPECT_EQ(UtcText({-1}), "1600-12-31T23:59:59.9999999Z");
    EXPECT_EQ(UtcText(At(253'402'300'799)), "9999-12-31T23:59:59.0000000Z");
    EXPECT_EQ(UtcText(At(253'402'300'800)), "+010000-01-01T00:00:00.0000000Z");
    EXPECT_EQ(UtcText(At(-62'167'219'200)), "0000-01-01T00:00:00.0000000Z");
    EXPECT_EQ(UtcText(At(-62'167'219'201)), "-000001-12-31T23:59:59.0000000Z");
    EXPECT_EQ(UtcText({kMin}).size(), UtcText({kMax}).size());
}

TEST(FileTimeTest, FromCalendarCarriesOver) {
    EXPECT_EQ(UtcText(FromCalendar({.year = 2021, .month = 14, .day = 29, .hour = 25})),
              "2022-03-02T01:00:00.0000000Z");
    EXPECT_EQ(UtcText(FromCalendar({.year = 2021, .month = 0, .day = 1})), "2020-12-01T00:00:00.0000000Z");
}

}  // namespace
}  // namespace vantrel
