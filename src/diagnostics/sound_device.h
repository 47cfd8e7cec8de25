#pragma once

#include <string>

namespace vantrel {

// What stands behind the sounds. None of its calls may stop the program, whatever the machine's sound does.
class SoundDevice {
  public:
    virtual ~SoundDevice() = default;
    // Number of outputs that can play a wave file.
    virtual int NumberOfDevices() = 0;
    // Plays `file`, a full path in the engine's form, and returns at once when `async`, otherwise when it has
    // been played. True when the sound was begun.
    virtual bool Play(const std::string& file, bool async) = 0;
};

}  // namespace vantrel
