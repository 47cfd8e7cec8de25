#include "platform/clock.h"

#include <cerrno>
#include <ctime>

namespace vantrel {

std::uint32_t SystemClock::GetTickCount() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(std::uint64_t(now.tv_sec) * 1000 +
                                      std::uint64_t(now.tv_nsec) / 1'000'000);
}

FileTime SystemClock::Now() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return FileTime::FromUnix(now.tv_sec, static_cast<std::uint32_t>(now.tv_nsec));
}

void SystemClock::Sleep(std::uint32_t milliseconds) {
    timespec left{static_cast<time_t>(milliseconds / 1000),
                  static_cast<long>(milliseconds % 1000) * 1'000'000};
    while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
    }
}

}  // namespace vantrel
