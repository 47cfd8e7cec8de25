#pragma once

#include <string_view>

#include "core/ccompare.h"
#include "core/toolbox.h"
#include "platform/currency.h"
#include "platform/files/sighting.h"
#include "platform/locale/file_time.h"

namespace vantrel {

// A file time as a date value: days since 30 December 1899, the fraction being the time of day. No zone is
// applied: UTC stays UTC, local stays local.
double FileTimeToVBTime(FileTime fileTime);
double LocalFileTimeToVBTime(FileTime localFileTime);
// The way back, to the nearest millisecond; saturates, and not-a-number gives 0 ticks.
FileTime VBTimeToFileTime(double date);

// First minus second, in seconds with their fraction. Files are compared by their UTC times: the same two
// instants can be an hour apart on the wall's clock when it is changed between them.
double CalcDateDiffLocalFT(FileTime first, FileTime second);
// The same in whole seconds, half to even: 0 for times up to half a second apart.
Currency DifferenceInSeconds(FileTime first, FileTime second);

// 0 where the options of `compare` forgive a difference of exactly so many seconds, otherwise `difference`.
Currency FAT_NTFS_TimeDiffAllowance(Currency difference, const CCompare& compare);

// How the left time stands to the right one, the allowances applied: above 0 when the left one is newer.
Currency AllowedTimeDifference(FileTime left, FileTime right, const CCompare& compare);

// UTC, all of them.
struct FileDateTimes {
    FileTime creation, access, write;
    std::uint8_t accessRest = 0, writeRest = 0;  // nanoseconds below a tick: 0 to 99
};

// Reads the times of a regular file, or of what a link to one leads to. A failure is reported under the
// routine's own name and gives false, as below.
bool GetFileDateTimes(const Toolbox& tools, std::string_view path, FileDateTimes& out);
// Sets them, to the nanosecond. The time of creation cannot be set: it is left out without an error. A link,
// a read-only file, and one that is not the one in `seen` any more, are not changed, which is a failure.
bool SetFileDateTimes(const Toolbox& tools, std::string_view path, const FileDateTimes& times,
                      const Sighting& seen = {});
// Sets the last-write time alone, from a local file time; the same otherwise, but without the report, which
// its caller makes for the first of many.
Error SetLastWriteTime(const Toolbox& tools, std::string_view path, FileTime local,
                       const Sighting& seen = {});
void ReportLastWriteTime(const Toolbox& tools, const Error& error);

}  // namespace vantrel
