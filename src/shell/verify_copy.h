#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "platform/files/system_calls.h"

namespace vantrel::shell {

// Two files that are open for reading and keep being so, of which one was copied from the other.
struct OpenPair {
    int source = -1, copy = -1;
    std::uint64_t size = 0;  // bytes that both are to have
};

// A pair that is not longer is read at once: it is not worth a thread.
inline constexpr std::uint64_t kReadAtOnce = std::uint64_t{8} << 20;

// Reads both again, longer ones by so many threads. `goOn` is asked between two pieces; false ends
// it. 0 alike, 1 different or shorter, -ECANCELED, or minus the errno value.
int VerifyCopy(SystemCalls& calls, const OpenPair& pair, std::size_t threads,
               const std::function<bool()>& goOn);

}  // namespace vantrel::shell
