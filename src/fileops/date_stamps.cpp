#include "fileops/date_stamps.h"

#include <cmath>
#include <cstdio>

#include "core/mod_date_time.h"
#include "core/row_texts.h"
#include "fileops/expectations.h"
#include "platform/locale/numeric_text.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr const char* kUnable = "Unable to Change File Date/Time";
constexpr int kNoon = 12;

bool Refuse(const Toolbox& tools, const std::string& text) {
    tools.messages.Ask({.title = kUnable, .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
    return false;
}

std::string ShownTime(const Toolbox& tools, FileTime utc) {
    return tools.locale.DateTime(FileTimeToLocalFileTime(utc));
}

bool MayChange(const Toolbox& tools, const std::string& name, const FileDateTimes& times) {
    const std::string text =
        "The Dates/Times of the selected file, " + DisplayName(name) +
        ", are about to be changed to:\r\n\r\n\t\tLast Modified: " + ShownTime(tools, times.write) +
        "\r\n\t\tLast Accessed: " + ShownTime(tools, times.access) + "\r\n\r\nDo you wish to continue?";
    return tools.messages.Ask({.title = "Confirm Date/Time Change",
                               .text = text,
                               .icon = MessageIcon::Question,
                               .buttons = MessageButtons::YesNo,
                               .defaultAnswer = {}}) == MessageAnswer::Yes;
}

bool IsReadOnly(const Toolbox& tools, const std::string& path) {
    FileInfo info;
    return tools.files.Stat(path, LinkPolicy::DoNotFollow, info).IsOk() && (info.attributes & kReadOnly) != 0;
}

}  // namespace

bool SyncTimeStamp(const Toolbox& tools, const StampPair& pair) {
    if (pair.row == nullptr || pair.row->kind != RowKind::File)
        return Refuse(tools, "No file selected.  Please select a file and try again.");
    const std::string path = ObjectPath(pair.folder, *pair.row), name(pair.row->realName);
    const bool isKnown = pair.counterpart != nullptr && pair.counterpart->kind == RowKind::File;
    const std::string other =
        isKnown ? ObjectPath(pair.otherFolder, *pair.counterpart) : JoinPath(pair.otherFolder, name);
    if (!tools.files.FileExists(other)) return Refuse(tools, "The selected file is an Orphan");
    FileDateTimes times;
    if (!GetFileDateTimes(tools, other, times)) return false;
    if (pair.confirm && !MayChange(tools, name, times)) return false;
    if (IsReadOnly(tools, path))
        return Refuse(tools,
                      "The file \"" + DisplayName(name) +
                          "\" is read-only.\r\n\r\nSelect Properties from the File menu and remove this "
                          "attribute.");
    return SetFileDateTimes(tools, path, times, SightingOf(*pair.row));
}

std::vector<FileToStamp> SelectedFiles(const Toolbox& tools, const ResultList& rows,
                                       const std::string& folder) {
    std::vector<FileToStamp> files;
    for (const ResultRow& row : rows) {
        if (!row.selected || row.kind != RowKind::File) continue;
        FileToStamp file{std::string(row.realName), ObjectPath(folder, row), SightingOf(row), {}};
        FileInfo info;
        if (tools.files.Stat(file.path, LinkPolicy::Follow, info).IsOk())
            file.lastWrite = FileTimeToLocalFileTime(info.lastWrite);
        files.push_back(std::move(file));
    }
    return files;
}

TwelveHourTime ToTwelveHours(const CalendarTime& time) {
    return {time.hour > kNoon ? time.hour - kNoon : time.hour, time.minute, time.second, time.hour >= kNoon};
}

int HourOfDay(int hour, bool pm) {
    if (pm) return hour == kNoon ? hour : hour + kNoon;
    return hour == kNoon ? 0 : hour;
}

std::string ClockText(FileTime local) {
    const CalendarTime time = ToCalendar(local);
    const int hour = time.hour % kNoon == 0 ? kNoon : time.hour % kNoon;
    char text[48] = {};
    std::snprintf(text, sizeof text, "%02d:%02d:%02d %s", hour, time.minute, time.second,
                  time.hour < kNoon ? "AM" : "PM");
    return text;
}

std::optional<int> TimeField(std::string_view text, int least, int most) {
    if (text.empty()) text = "0";
    const auto value = NumericValue(text);
    if (!value || !(*value >= least && *value <= most) || std::floor(*value) != *value) return std::nullopt;
    return static_cast<int>(*value);
}

}  // namespace vantrel
