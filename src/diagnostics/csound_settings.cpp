#include "diagnostics/csound_settings.h"

namespace vantrel {

bool CSoundSettings::DoesThisPCSupportWave() {
    if (!supportsWave_) supportsWave_ = device_.NumberOfDevices() >= 1;
    return *supportsWave_;
}

void CSoundSettings::PlayWave(const std::string& file, bool async, bool& played) {
    played = DoesThisPCSupportWave() && device_.Play(file, async);
}

void CSoundSettings::PlayEvent(const std::string& file) {
    bool played = false;
    if (file != kNone) PlayWave(file, true, played);
}

}  // namespace vantrel
