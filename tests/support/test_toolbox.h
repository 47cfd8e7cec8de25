#pragma once

#include "core/toolbox.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel::testing {

// A whole Toolbox whose program folder is a temporary one, with scripted ports and a fake clock. `calls` may
// be a forwarding one that fails where the test says so.
class TestToolbox {
  public:
    TestToolbox() : TestToolbox(OwnCalls()) {}
    explicit TestToolbox(SystemCalls& calls)
        : files(calls),
          volumes(files),
          locale("C"),
          folders{folder.Path(), folder.Path(), folder.Path(), "vantrel"},
          toolbox_({files, volumes, clock, locale, folders, messages, loop}) {}

    const Toolbox& Get() const { return toolbox_.Get(); }

    TempFolder folder;
    FileSystem files;
    SystemVolumes volumes;
    FakeClock clock;
    LocaleFormats locale;
    ProgramFolders folders;
    ScriptedMessages messages;
    ScriptedLoop loop;

  private:
    static SystemCalls& OwnCalls() {
        static SystemCalls calls;
        return calls;
    }
    OwnedToolbox toolbox_;

  public:
    ErrorReporter& reporter = Get().reporter;
    ComparisonLog& log = Get().log;
};

}  // namespace vantrel::testing
