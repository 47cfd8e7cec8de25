#pragma once

#include <string>

namespace vantrel {

// What is played at the four events: paths of wave files, or CSoundSettings::kNone.
struct SoundOptions {
    bool soundOn{};
    std::string startSound;
    std::string exitSound;
    std::string comparisonCompleteSound;
    std::string syncCompleteSound;
};

}  // namespace vantrel
