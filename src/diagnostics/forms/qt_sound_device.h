#pragma once

#include <QThread>
#include <memory>

#include "diagnostics/sound_device.h"
#include "platform/files/file_system.h"

namespace vantrel {

// Sound through Qt. The libraries below it wait for the sound server without a limit, so all talk with it is
// on a thread of its own, begun with the object: the program never waits longer than the times given here,
// and a server that hangs is a machine without sound. Needs the application object.
class QtSoundDevice : public SoundDevice {
  public:
    static constexpr int kMostWaitForDevices = 300;   // milliseconds, once
    static constexpr int kMostWaitForSound = 10'000;  // of a Play that is not `async`
    static constexpr int kMostWaitForThread = 200;    // at the end

    explicit QtSoundDevice(const FileSystem& files);
    // A thread that hangs in the sound server is left behind; the process then ends without unloading its
    // libraries.
    ~QtSoundDevice() override;
    QtSoundDevice(const QtSoundDevice&) = delete;
    QtSoundDevice& operator=(const QtSoundDevice&) = delete;

    int NumberOfDevices() override;
    // What is no wave file is not played. A sound that still plays is cut off by the next one.
    bool Play(const std::string& file, bool async) override;

  private:
    struct State;
    class Player;

    bool IsWaveFile(const std::string& file) const;

    const FileSystem& files_;
    std::shared_ptr<State> state_;
    bool waitedForDevices_ = false;
    QThread* thread_;
    Player* player_;
};

}  // namespace vantrel
