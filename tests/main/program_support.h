#pragma once

#include <QMimeData>
#include <memory>
#include <string>
#include <vector>

#include "main/application.h"
#include "support/fake_volumes.h"
#include "support/faulty_system_calls.h"
#include "support/recording_desktop.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel::testing {

class RecordingSound : public SoundDevice {
  public:
    int NumberOfDevices() override { return 1; }
    bool Play(const std::string& file, bool) override {
        played.push_back(file);
        return true;
    }
    std::vector<std::string> played;
};

// The whole program on a folder of its own, with scripted messages and a window on the offscreen platform.
class TestProgram {
  public:
    TestProgram();
    ~TestProgram();

    // Makes the context and loads the window; the file stands for an earlier run of the program.
    Application& Start();
    Application& Start(const std::string& settings);
    Application& Get() { return *application; }
    frmMain& Window() { return application->Window(); }

    // Whether a comparison ends with its summary where the options say so: it would wait to be closed.
    bool showsSummaries = false;

    // Two folders with one pair of every type, compared; `left` and `right` are their paths.
    void CompareSamples();
    std::string left, right;
    // Number of the row with this text in the pane of `side`.
    std::size_t Row(Side side, std::string_view text);
    void Select(Side side, std::string_view text);
    // Name and caption of what stands in a menu and is visible.
    std::vector<std::string> VisibleItems(QMenu* menu) const;

    TempFolder folder;     // of the program
    TempFolder workspace;  // what is compared
    TempFolder trash;
    FaultySystemCalls calls;
    FileSystem files{calls};
    FakeVolumes volumes;
    FakeClock clock;
    LocaleFormats locale{"C"};
    ProgramFolders folders{folder.Path(), folder.Path(), folder.Path(), "vantrel"};
    ScriptedMessages messages;
    QtEventLoop loop;
    RecordingDesktop desktop;
    RecordingSound sound;
    std::unique_ptr<Application> application;
};

}  // namespace vantrel::testing
