#include "diagnostics/performance_check.h"

#include <string>

#include "platform/line_end.h"

namespace vantrel {
namespace {

constexpr std::string_view kUsage =
    "The steps required to use this class are:\r\n\r\n"
    "1) Call the BeginPerformanceCheck() method\r\n"
    "2) Call the EndPerformanceCheck() method\r\n"
    "3) Log the Performance to a text file or the debug window\r\n\r\n"
    "*Note - Steps 1 & 2 are mandatory while step 3 is optional.";

void ShowUsage(MessagePort& messages) {
    messages.Ask({"CPerformanceCheck - Invalid Usage",
                  std::string(kUsage),
                  MessageIcon::Information,
                  MessageButtons::Ok,
                  {}});
}

}  // namespace

std::string CPerformanceCheck::Entry(const LocaleFormats& locale, std::string_view what,
                                     std::string_view changes, std::string_view notes) const {
    std::string entry(kLineEnd);
    entry.append("*****").append(kLineEnd);
    entry.append(what).append(" checked on ");
    entry.append(locale.DateTime(FileTimeToLocalFileTime(clock_.Now()))).append(kLineEnd);
    entry.append("Changes Made: ").append(changes).append(kLineEnd);
    entry.append(notes).append(kLineEnd);
    entry.append("Elapsed Time: ").append(std::to_string(MilliSecondsElapsed())).append(" milliseconds");
    return entry;
}

Error CPerformanceCheck::LogPerformanceToTextFile(const LogTarget& target, std::string_view fileName,
                                                  std::string_view what, std::string_view changes,
                                                  std::string_view notes) {
    if (!start_ || !end_) {
        ShowUsage(target.messages);
        return {};
    }
    return target.files.AppendToFile(target.folders.appPath + std::string(fileName),
                                     Entry(target.locale, what, changes, notes));
}

}  // namespace vantrel
