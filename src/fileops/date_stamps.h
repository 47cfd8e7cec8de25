#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/result_list.h"
#include "core/toolbox.h"
#include "platform/files/sighting.h"

namespace vantrel {

// The date/time of files, changed without touching their contents. The time of creation cannot be set on this
// platform: it is left as it is, and no text says otherwise.

// The selected file of a pane and its counterpart.
struct StampPair {
    const ResultRow* row = nullptr;          // null: nothing is selected
    const ResultRow* counterpart = nullptr;  // null: not known
    std::string folder, otherFolder;
    bool confirm = true;
};
// Gives the selected file the times of last access and last write of its counterpart, to the nanosecond.
// Tells what stands in the way. Whether the file was changed.
bool SyncTimeStamp(const Toolbox& tools, const StampPair& pair);

// A file of the list whose date is to be set.
struct FileToStamp {
    std::string name, path;
    Sighting seen;
    std::optional<FileTime> lastWrite;  // local; nothing where it could not be read
};
// The selected rows that are files, with their times as they are now.
std::vector<FileToStamp> SelectedFiles(const Toolbox& tools, const ResultList& rows,
                                       const std::string& folder);

// A time of day by a clock of twelve hours: 12 AM is midnight, 12 PM noon.
struct TwelveHourTime {
    int hour = 0, minute = 0, second = 0;
    bool pm = false;
};
// As the fields of a window are filled: midnight is hour 0.
TwelveHourTime ToTwelveHours(const CalendarTime& time);
int HourOfDay(int hour, bool pm);
// "03:04:05 PM"
std::string ClockText(FileTime local);
// A number within `least` and `most`; empty counts as 0.
std::optional<int> TimeField(std::string_view text, int least, int most);

}  // namespace vantrel
