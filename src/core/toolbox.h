#pragma once

#include "diagnostics/comparison_log.h"
#include "diagnostics/error_reporter.h"
#include "platform/clock.h"
#include "platform/files/file_system.h"
#include "platform/files/support_files.h"
#include "platform/files/volumes.h"
#include "platform/locale/locale_formats.h"
#include "platform/ports.h"

namespace vantrel {

// The services that nearly every operation of the engine needs, made once at start and handed down. Nothing
// in it is owned.
struct Toolbox {
    const FileSystem& files;
    Volumes& volumes;
    Clock& clock;
    const LocaleFormats& locale;
    const ProgramFolders& folders;
    MessagePort& messages;
    EventLoopPort& loop;
    ErrorReporter& reporter;
    ComparisonLog& log;
};

}  // namespace vantrel
