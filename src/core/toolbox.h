#pragma once

#include "diagnostics/comparison_log.h"
#include "diagnostics/error_reporter.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/locale_formats.h"
#include "platform/ports.h"
#include "platform/support_files.h"
#include "platform/volumes.h"

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
