#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace vantrel {

// A file time: 100-nanosecond ticks since 1601-01-01 00:00. Times before that are negative. Whether it is UTC
// or local is said by who hands it out: all that comes from the file system is UTC.
struct FileTime {
    std::int64_t ticks = 0;

    static constexpr std::int64_t kTicksPerSecond = 10'000'000;
    // Seconds from 1601-01-01 to 1970-01-01.
    static constexpr std::int64_t kUnixEpochSeconds = 11'644'473'600;

    static constexpr FileTime FromWords(std::int32_t high, std::int32_t low) {
        return {static_cast<std::int64_t>(static_cast<std::uint64_t>(static_cast<std::uint32_t>(high)) << 32 |
                                          static_cast<std::uint32_t>(low))};
    }
    constexpr std::int32_t High() const { return static_cast<std::int32_t>(ticks >> 32); }
    constexpr std::int32_t Low() const { return static_cast<std::int32_t>(ticks & 0xFFFFFFFF); }

    // From and to a Unix time stamp; what lies outside the range of ticks becomes the nearest end of it.
    // Nanoseconds below a tick are cut, towards the past.
    static FileTime FromUnix(std::int64_t seconds, std::uint32_t nanoseconds);
    // `nanoseconds` is 0 to 999,999,900.
    void ToUnix(std::int64_t& seconds, std::uint32_t& nanoseconds) const;

    friend constexpr auto operator<=>(FileTime, FileTime) = default;
};

// The same instant as the clock on the wall showed it, by the rules of the local zone at that instant, and
// back. Of a local time that occurred twice the earlier instant is taken; one that was skipped is read with
// the offset in force before the gap. Cheap enough for every row of a long list.
FileTime FileTimeToLocalFileTime(FileTime utc);
FileTime LocalFileTimeToFileTime(FileTime local);
// Reads the zone anew, from TZ or the system's setting. The first conversion does it by itself.
void ReloadLocalZone();

// A time taken apart by the Gregorian calendar, extended to all years; the year before 1 is 0.
struct CalendarTime {
    std::int32_t year = 0;
    std::int32_t month = 1;  // 1 to 12
    std::int32_t day = 1;    // 1 to 31
    std::int32_t hour = 0, minute = 0, second = 0;
    std::int32_t ticks = 0;    // 100-nanosecond ticks within the second
    std::int32_t weekday = 0;  // 0 is Sunday
};
CalendarTime ToCalendar(FileTime time);
// Saturates at the ends of the range of ticks. A month beyond 12, a day beyond its month and so on are
// carried over.
FileTime FromCalendar(const CalendarTime& time);

// "2020-09-13T12:26:40.0000000Z", for data that other programs read. Years outside 0 to 9999 have a sign and
// six digits, as in "+012345-01-01T00:00:00.0000000Z".
std::string UtcText(FileTime utc);

}  // namespace vantrel
