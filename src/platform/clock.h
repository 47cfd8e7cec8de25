#pragma once

#include <cstdint>

#include "platform/locale/file_time.h"

namespace vantrel {

// Time as the program sees it; tests put their own in its place.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual std::uint32_t GetTickCount() = 0;  // milliseconds, wraps; only differences have a meaning
    virtual FileTime Now() = 0;                // UTC
    virtual void Sleep(std::uint32_t milliseconds) = 0;
};

class SystemClock : public Clock {
  public:
    std::uint32_t GetTickCount() override;
    FileTime Now() override;
    void Sleep(std::uint32_t milliseconds) override;
};

}  // namespace vantrel
