#include "platform/locale/file_time.h"

#include <array>
#include <ctime>
#include <limits>
#include <utility>

#include "platform/locale/utc_text.h"

namespace vantrel {

namespace {

constexpr std::int64_t kDay = 86'400;

constexpr std::int64_t FloorDivide(std::int64_t value, std::int64_t by) {
    return value / by - (value % by < 0 ? 1 : 0);
}

__extension__ typedef __int128 Wide;

constexpr FileTime Saturated(std::int64_t unixSeconds, std::int64_t ticks) {
    constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();
    const Wide total = (Wide{unixSeconds} + FileTime::kUnixEpochSeconds) * FileTime::kTicksPerSecond + ticks;
    if (total < kLowest) return {kLowest};
    return {total > kHighest ? kHighest : static_cast<std::int64_t>(total)};
}

// Days from 1970-01-01; years run from March, so that the leap day is a year's last.
constexpr std::int64_t DaysFromCivil(std::int64_t year, std::int64_t month, std::int64_t day) {
    year += FloorDivide(month - 1, 12);
    month -= FloorDivide(month - 1, 12) * 12;
    if (month <= 2) --year;
    const std::int64_t era = FloorDivide(year, 400);
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146'097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719'468;
}

// Offsets of the local zone, by days of UTC. A day whose two ends have one offset has it throughout; on the
// few days of a change the system is asked each time.
class ZoneCache {
  public:
    void Reload() {
        tzset();
        days_.fill({});
        loaded_ = true;
    }

    // Seconds that local time is ahead of UTC at that instant.
    std::int64_t OffsetAt(std::int64_t unixSeconds) {
        if (!loaded_) Reload();
        const std::int64_t day = FloorDivide(unixSeconds, kDay);
        Day& entry = days_[static_cast<std::size_t>(day) % days_.size()];
        if (entry.day != day) {
            const std::int64_t first = AskSystem(day * kDay);
            entry = {day, first, AskSystem(day * kDay + kDay - 1) != first};
        }
        return entry.changes ? AskSystem(unixSeconds) : entry.offset;
    }

  private:
    static std::int64_t AskSystem(std::int64_t unixSeconds) {
        const std::time_t time = unixSeconds;
        std::tm local{};
        return localtime_r(&time, &local) != nullptr ? local.tm_gmtoff : 0;
    }

    struct Day {
        std::int64_t day = std::numeric_limits<std::int64_t>::min();
        std::int64_t offset = 0;
        bool changes = false;
    };
    std::array<Day, 1024> days_{};
    bool loaded_ = false;
};

ZoneCache& Zone() {
    static ZoneCache zone;
    return zone;
}

std::int64_t UnixSeconds(FileTime time) {
    return FloorDivide(time.ticks, FileTime::kTicksPerSecond) - FileTime::kUnixEpochSeconds;
}

std::int64_t TicksOfSecond(FileTime time) {
    const std::int64_t rest = time.ticks % FileTime::kTicksPerSecond;
    return rest < 0 ? rest + FileTime::kTicksPerSecond : rest;
}

}  // namespace

FileTime FileTime::FromUnix(std::int64_t seconds, std::uint32_t nanoseconds) {
    return Saturated(seconds, nanoseconds / 100);
}

void FileTime::ToUnix(std::int64_t& seconds, std::uint32_t& nanoseconds) const {
    seconds = UnixSeconds(*this);
    nanoseconds = static_cast<std::uint32_t>(TicksOfSecond(*this) * 100);
}

FileTime FileTimeToLocalFileTime(FileTime utc) {
    const std::int64_t seconds = UnixSeconds(utc);
    return Saturated(seconds + Zone().OffsetAt(seconds), TicksOfSecond(utc));
}

FileTime LocalFileTimeToFileTime(FileTime local) {
    const std::int64_t seconds = UnixSeconds(local);
    // No zone is a whole day from UTC, so these are the offsets before and after any change near by.
    const std::int64_t before = Zone().OffsetAt(seconds - kDay);
    const std::int64_t after = Zone().OffsetAt(seconds + kDay);
    std::int64_t offset = before;
    if (after != before && Zone().OffsetAt(seconds - before) != before &&
        Zone().OffsetAt(seconds - after) == after) {
        offset = after;
    }
    return Saturated(seconds - offset, TicksOfSecond(local));
}

void ReloadLocalZone() {
    Zone().Reload();
}

CalendarTime ToCalendar(FileTime time) {
    const std::int64_t seconds = UnixSeconds(time);
    const std::int64_t days = FloorDivide(seconds, kDay);
    const auto secondOfDay = static_cast<std::int32_t>(seconds - days * kDay);

    const std::int64_t shifted = days + 719'468;  // from 0000-03-01
    const std::int64_t era = FloorDivide(shifted, 146'097);
    const std::int64_t dayOfEra = shifted - era * 146'097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;

    CalendarTime parts;
    parts.day = static_cast<std::int32_t>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    parts.month = static_cast<std::int32_t>(monthFromMarch + (monthFromMarch < 10 ? 3 : -9));
    parts.year = static_cast<std::int32_t>(era * 400 + yearOfEra + (parts.month <= 2 ? 1 : 0));
    parts.hour = secondOfDay / 3'600;
    parts.minute = secondOfDay / 60 % 60;
    parts.second = secondOfDay % 60;
    parts.ticks = static_cast<std::int32_t>(TicksOfSecond(time));
    parts.weekday = static_cast<std::int32_t>(days + 4 - FloorDivide(days + 4, 7) * 7);
    return parts;
}

FileTime FromCalendar(const CalendarTime& time) {
    const std::int64_t days = DaysFromCivil(time.year, time.month, time.day);
    const std::int64_t seconds =
        days * kDay + std::int64_t{time.hour} * 3'600 + std::int64_t{time.minute} * 60 + time.second;
    return Saturated(seconds, time.ticks);
}

std::string UtcText(FileTime utc) {
    UtcChars room;
    return std::string(UtcText(utc, room));
}

}  // namespace vantrel
