#include "settings/sound_options.h"

namespace vantrel {

void ApplyOptions(const Options& options, CSoundSettings& sounds) {
    sounds.SoundOn = options.soundOn;
    sounds.StartSound = options.startSound;
    sounds.ExitSound = options.exitSound;
    sounds.CompareCompleteSound = options.comparisonCompleteSound;
    sounds.SyncCompleteSound = options.syncCompleteSound;
}

void CollectOptions(const CSoundSettings& sounds, Options& options) {
    options.soundOn = sounds.SoundOn;
    options.startSound = sounds.StartSound;
    options.exitSound = sounds.ExitSound;
    options.comparisonCompleteSound = sounds.CompareCompleteSound;
    options.syncCompleteSound = sounds.SyncCompleteSound;
}

}  // namespace vantrel
