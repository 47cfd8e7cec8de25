#include "support/child_process.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

namespace vantrel::testing {
namespace {

constexpr std::chrono::seconds kPatience{5};
constexpr unsigned kSecondsOfAChild = 120;

// The system's list of the threads of this process, which the language's library cannot count.
bool IsAlone() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {}) == 1;
}

}  // namespace

pid_t ForkAlone() {
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (!IsAlone() && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const pid_t child = fork();
    if (child == 0) alarm(kSecondsOfAChild);
    return child;
}

}  // namespace vantrel::testing
