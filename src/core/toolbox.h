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

// What the engine stands on: the system below it, and the ports to the user. Nothing in it is owned.
struct EngineSurroundings {
    const FileSystem& files;
    Volumes& volumes;
    Clock& clock;
    const LocaleFormats& locale;
    const ProgramFolders& folders;
    MessagePort& messages;
    EventLoopPort& loop;

    // The same with other messages.
    EngineSurroundings With(MessagePort& others) const {
        return {files, volumes, clock, locale, folders, others, loop};
    }
};

// The services that nearly every operation of the engine needs, handed down from whoever owns them.
struct Toolbox : EngineSurroundings {
    ErrorReporter& reporter;
    ComparisonLog& log;
    // What the user asked for, as Options::jobs, wherever it is kept; null: no workers.
    const std::int32_t* jobs = nullptr;
};

// A Toolbox with the reporter and the log that belong to its surroundings; these must outlive it. Each
// program makes one at its start.
class OwnedToolbox {
  public:
    explicit OwnedToolbox(const EngineSurroundings& around, const std::int32_t* jobs = nullptr)
        : reporter_(around.files, around.folders, around.clock, around.locale, around.messages, around.loop),
          log_(around.files, around.folders, around.clock, around.locale),
          tools_{around, reporter_, log_, jobs} {}
    OwnedToolbox(const OwnedToolbox&) = delete;
    OwnedToolbox& operator=(const OwnedToolbox&) = delete;

    const Toolbox& Get() const { return tools_; }

  private:
    ErrorReporter reporter_;
    ComparisonLog log_;
    Toolbox tools_;
};

}  // namespace vantrel
