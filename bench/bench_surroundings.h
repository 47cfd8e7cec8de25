#pragma once

#include <string>

#include "core/toolbox.h"
#include "platform/files/system_calls.h"
#include "platform/files/volumes.h"
#include "platform/forms/qt_ports.h"
#include "silent_messages.h"

namespace vantrel::bench {

// What a window of the program stands on, as the real program has it; asks nobody, and keeps its files in
// `folder`.
struct BenchSurroundings {
    explicit BenchSurroundings(const std::string& folder)
        : folders{folder + "/", folder + "/", folder + "/", "vantrel"} {}

    SystemCalls calls;
    FileSystem files{calls};
    SystemVolumes volumes{files};
    SystemClock clock;
    LocaleFormats locale{"C"};
    ProgramFolders folders;
    SilentMessages messages;
    QtEventLoop loop;
    OwnedToolbox owned{{files, volumes, clock, locale, folders, messages, loop}};
};

}  // namespace vantrel::bench
