#pragma once

#include <optional>
#include <string>

#include "diagnostics/sound_device.h"
#include "diagnostics/sound_options.h"

namespace vantrel {

// The wave files of four events, as the options have them at the moment: the members are those of the object
// given, which must outlive this one. `SoundOn` is for the callers to test: the play methods do not ask it.
class CSoundSettings {
  public:
    static constexpr const char* kNone = "(none)";

    CSoundSettings(SoundDevice& device, SoundOptions& options)
        : StartSound(options.startSound),
          ExitSound(options.exitSound),
          SyncCompleteSound(options.syncCompleteSound),
          CompareCompleteSound(options.comparisonCompleteSound),
          SoundOn(options.soundOn),
          device_(device) {}

    void PlayStartSound() { PlayEvent(StartSound); }
    std::string& StartSound;
    void PlayExitSound() { PlayEvent(ExitSound); }
    std::string& ExitSound;
    void PlaySyncCompleteSound() { PlayEvent(SyncCompleteSound); }
    std::string& SyncCompleteSound;
    void PlayCompareCompleteSound() { PlayEvent(CompareCompleteSound); }
    std::string& CompareCompleteSound;
    bool& SoundOn;

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
