#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/locale/locale_formats.h"
#include "platform/ports.h"

namespace vantrel {

// A small stopwatch in milliseconds.
class CPerformanceCheck {
  public:
    explicit CPerformanceCheck(Clock& clock) : clock_(clock) {}

    void BeginPerformanceCheck() { start_ = clock_.GetTickCount(); }
    void EndPerformanceCheck() { end_ = clock_.GetTickCount(); }
    // End minus start, right across the wrap of the tick count; 0 before both are set.
    std::uint32_t MilliSecondsElapsed() const { return start_ && end_ ? *end_ - *start_ : 0; }

    struct LogTarget {
        const FileSystem& files;
        const ProgramFolders& folders;
        const LocaleFormats& locale;
        MessagePort& messages;
    };
    // Appends an entry to `fileName` in the program folder. Before both ends are set it shows how this class
    // is used.
    Error LogPerformanceToTextFile(const LogTarget& target, std::string_view fileName, std::string_view what,
                                   std::string_view changes, std::string_view notes);

  private:
    std::string Entry(const LocaleFormats& locale, std::string_view what, std::string_view changes,
                      std::string_view notes) const;

    Clock& clock_;
    std::optional<std::uint32_t> start_, end_;
};

}  // namespace vantrel
