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
          reporter(files, folders, clock, locale, messages, loop),
          log(files, folders, clock, locale),
          toolbox_{files, volumes, clock, locale, folders, messages, loop, reporter, log} {}

    const Toolbox& Get() const { return toolbox_; }

    TempFolder folder;
    FileSystem files;
    SystemVolumes volumes;
    FakeClock clock;
    LocaleFormats locale;
    ProgramFolders folders;
    ScriptedMessages messages;
    ScriptedLoop loop;
    ErrorReporter reporter;
    ComparisonLog log;

  private:
    static SystemCalls& OwnCalls() {
        static SystemCalls calls;
        return calls;
    }
    Toolbox toolbox_;
};

}  // namespace vantrel::testing
