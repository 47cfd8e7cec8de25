#pragma once

#include <string_view>

#include "platform/clock.h"
#include "platform/error.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/locale/locale_formats.h"

namespace vantrel {

inline constexpr std::string_view kErrorDetailFile = "ERR_DETAIL.TXT";  // in the program folder

// What an entry of that file needs of its surroundings.
struct ErrorDetailPlace {
    const FileSystem& files;
    const ProgramFolders& folders;
    Clock& clock;
    const LocaleFormats& locale;
};

// Adds an entry as ErrorReporter does it, and shows nothing: for what the user is not to be stopped for.
Error AppendErrorDetail(const ErrorDetailPlace& place, std::string_view routineName, const Error& error,
                        std::string_view detailText);

}  // namespace vantrel
