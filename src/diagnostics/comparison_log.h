#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/locale/locale_formats.h"

namespace vantrel {

// ERRORLOG.TXT in the program folder: what went wrong during the last comparison.
class ComparisonLog {
  public:
    ComparisonLog(const FileSystem& files, const ProgramFolders& folders, Clock& clock,
                  const LocaleFormats& locale)
        : files_(files), folders_(folders), clock_(clock), locale_(locale) {}

    std::string Path() const;
    // An empty file, in place of any old one.
    Error Recreate();
    // One entry: a blank line, date and time, "Errors encountered during comparison", and the lines given.
    void Append(std::initializer_list<std::string_view> lines);
    // One line that is no error, such as how many special objects were passed over.
    void AppendNote(std::string_view line);
    // What kept the first of the entries that are missing from being written; each is given once. Whoever
    // runs a comparison tells the user.
    Error TakeFailure() { return std::exchange(failure_, {}); }

  private:
    void Write(const std::string& text);

    const FileSystem& files_;
    const ProgramFolders& folders_;
    Clock& clock_;
    const LocaleFormats& locale_;
    Error failure_;
};

}  // namespace vantrel
