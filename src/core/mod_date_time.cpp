#include "core/mod_date_time.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <limits>
#include <span>
#include <string>

#include "platform/files/file_times.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr double kMillisecondsPerDay = 86'400'000;
constexpr double kDaysFrom1601 = 109'205;  // from 1601-01-01 to 1899-12-30

// A tick count read as a number scaled by 10,000 is a count of milliseconds.
double DateValue(FileTime time) {
    return static_cast<double>(time.ticks) / Currency::kScale / kMillisecondsPerDay - kDaysFrom1601;
}

// Which differences, in seconds and without their sign, are forgiven.
constexpr std::array<std::int64_t, 2> kTwoSeconds{1, 2};
constexpr std::array<std::int64_t, 1> kOneHour{3'600};
constexpr std::array<std::int64_t, 7> kBoth{1, 2, 3'598, 3'599, 3'600, 3'601, 3'602};

std::span<const std::int64_t> Forgiven(const CCompare& compare) {
    if (compare.IgnoreFAT_NTFS_TwoSecDiff) {
        return compare.IgnoreFAT_NTFS_DaylightSavings ? std::span<const std::int64_t>(kBoth) : kTwoSeconds;
    }
    return compare.IgnoreFAT_NTFS_DaylightSavings ? std::span<const std::int64_t>(kOneHour)
                                                  : std::span<const std::int64_t>();
}

constexpr std::string_view kSetRoutine = "modDateTime.SetFileDateTimes";

// The failure of one step under this module's own text; the system's number and text stay beside it. What the
// program itself refuses has its reason below.
Error FailureOf(std::string_view step, std::string_view path, const Error& cause) {
    std::string text = "\"Error encountered ";
    text.append(step).append(" the file ").append(DisplayName(path)).append("\"");
    if (cause.SystemNumber() == 0) text.append("\r\n\r\n").append(cause.Description());
    return cause.WithDescription(std::move(text));
}

// True where there is nothing to report.
bool Report(const Toolbox& tools, std::string_view routine, const Error& error) {
    if (!error.IsOk()) tools.reporter.ReportError(routine, error);
    return error.IsOk();
}

Error ChangeTimes(const Toolbox& tools, std::string_view path, const Sighting& seen, TimesToSet times) {
    FileInfo info;
    Error failed = tools.files.Stat(path, LinkPolicy::DoNotFollow, info);
    if (failed.IsOk() && info.isLink) failed = Error::FromErrno(ELOOP);
    if (failed.IsOk() && info.kind == EntryKind::Folder) failed = Error::FromErrno(EISDIR);
    if (failed.IsOk() && (info.attributes & kReadOnly) != 0) failed = Error::FromErrno(EACCES);
    if (!failed.IsOk()) return FailureOf("opening", path, failed);
    failed = SetExactTimes(tools.files, path, seen, times);
    return failed.IsOk() ? failed : FailureOf("setting the timestamps of", path, failed);
}

constexpr std::uint32_t kNanosecondsOfTick = 100;

std::uint8_t RestOf(const timespec& time) {
    return static_cast<std::uint8_t>(time.tv_nsec % kNanosecondsOfTick);
}

timespec Exact(FileTime time, std::uint8_t rest) {
    timespec exact = TimespecOf(time);
    exact.tv_nsec += rest;
    return exact;
}

}  // namespace

double FileTimeToVBTime(FileTime fileTime) {
    return DateValue(fileTime);
}

double LocalFileTimeToVBTime(FileTime localFileTime) {
    return DateValue(localFileTime);
}

FileTime VBTimeToFileTime(double date) {
    constexpr double kLimit = 9.2e14;  // milliseconds that ticks can hold
    const double milliseconds = std::round((date + kDaysFrom1601) * kMillisecondsPerDay);
    if (std::isnan(milliseconds)) return {};
    if (std::abs(milliseconds) > kLimit) {
        return {milliseconds < 0 ? std::numeric_limits<std::int64_t>::min()
                                 : std::numeric_limits<std::int64_t>::max()};
    }
    return {static_cast<std::int64_t>(milliseconds) * Currency::kScale};
}

double CalcDateDiffLocalFT(FileTime first, FileTime second) {
    std::int64_t ticks = 0;
    if (__builtin_sub_overflow(first.ticks, second.ticks, &ticks)) {
        return (static_cast<double>(first.ticks) - static_cast<double>(second.ticks)) /
               FileTime::kTicksPerSecond;
    }
    return static_cast<double>(ticks) / FileTime::kTicksPerSecond;
}

// In whole numbers throughout: a double cannot tell half a second from its neighbours over long spans.
Currency DifferenceInSeconds(FileTime first, FileTime second) {
    std::int64_t ticks = 0;
    if (__builtin_sub_overflow(first.ticks, second.ticks, &ticks)) {
        ticks = first < second ? std::numeric_limits<std::int64_t>::min()
                               : std::numeric_limits<std::int64_t>::max();
    }
    std::int64_t seconds = ticks / FileTime::kTicksPerSecond;
    const std::int64_t rest = ticks % FileTime::kTicksPerSecond;
    const std::int64_t twice = 2 * (rest < 0 ? -rest : rest);
    if (twice > FileTime::kTicksPerSecond || (twice == FileTime::kTicksPerSecond && seconds % 2 != 0)) {
        seconds += rest < 0 ? -1 : 1;
    }
    return Currency::FromWhole(seconds);
}

Currency FAT_NTFS_TimeDiffAllowance(Currency difference, const CCompare& compare) {
    const Currency magnitude = difference < Currency() ? -difference : difference;
    const auto matches = [magnitude](std::int64_t seconds) {
        return magnitude == Currency::FromWhole(seconds);
    };
    return std::ranges::any_of(Forgiven(compare), matches) ? Currency() : difference;
}

Currency AllowedTimeDifference(FileTime left, FileTime right, const CCompare& compare) {
    return FAT_NTFS_TimeDiffAllowance(DifferenceInSeconds(left, right), compare);
}

bool GetFileDateTimes(const Toolbox& tools, std::string_view path, FileDateTimes& out) {
    ExactTimes times;
    const Error failed = ReadExactTimes(tools.files, path, times);
    if (!failed.IsOk())
        return Report(tools, "modDateTime.GetFileDateTimes", FailureOf("opening", path, failed));
    out = {times.created, FileTimeOf(times.accessed), FileTimeOf(times.lastWrite), RestOf(times.accessed),
           RestOf(times.lastWrite)};
    return true;
}

bool SetFileDateTimes(const Toolbox& tools, std::string_view path, const FileDateTimes& times,
                      const Sighting& seen) {
    const timespec access = Exact(times.access, times.accessRest),
                   write = Exact(times.write, times.writeRest);
    return Report(tools, kSetRoutine, ChangeTimes(tools, path, seen, {&access, &write}));
}

Error SetLastWriteTime(const Toolbox& tools, std::string_view path, FileTime local, const Sighting& seen) {
    const timespec write = TimespecOf(LocalFileTimeToFileTime(local));
    return ChangeTimes(tools, path, seen, {nullptr, &write});
}

void ReportLastWriteTime(const Toolbox& tools, const Error& error) {
    Report(tools, kSetRoutine, error);
}

}  // namespace vantrel
