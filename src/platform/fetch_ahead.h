#pragma once

#include <cstddef>

namespace vantrel {

// For long loops over what lies in memory in another order than theirs, where the wait for the memory is
// most of what a step takes: they name what they will touch so many steps later.
inline constexpr std::size_t kStepsAhead = 8;

// Has the processor fetch the line of memory at `address` while other work goes on. Any address will do.
inline void FetchAhead(const void* address) {
    __builtin_prefetch(address);
}

}  // namespace vantrel
