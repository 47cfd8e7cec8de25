#pragma once

#include <optional>
#include <string>

#include "diagnostics/sound_device.h"

namespace vantrel {

// The wave files of four events. `SoundOn` is for the callers to test: the play methods do not ask it.
class CSoundSettings {
  public:
    static constexpr const char* kNone = "(none)";

    explicit CSoundSettings(SoundDevice& device) : device_(device) {}

    void PlayStartSound() { PlayEvent(StartSound); }
    std::string StartSound = kNone;
    void PlayExitSound() { PlayEvent(ExitSound); }
    std::string ExitSound = kNone;
    void PlaySyncCompleteSound() { PlayEvent(SyncCompleteSound); }
    std::string SyncCompleteSound = kNone;
    void PlayCompareCompleteSound() { PlayEvent(CompareCompleteSound); }
    std::string CompareCompleteSound = kNone;
    bool SoundOn = true;

    // Asked of the device when it is first needed, and then kept: looking for devices takes time that
    // start-up should not spend.
    bool DoesThisPCSupportWave();
    // `played` is false without a device and for a file that cannot be played.
    void PlayWave(const std::string& file, bool async, bool& played);

  private:
    void PlayEvent(const std::string& file);

    SoundDevice& device_;
    std::optional<bool> supportsWave_;
};

}  // namespace vantrel
