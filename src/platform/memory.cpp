#include "platform/memory.h"

#include <malloc.h>

#include <charconv>
#include <string>
#include <string_view>

namespace vantrel {

std::uint64_t AvailableMemory(const FileSystem& files) {
    constexpr std::size_t kMostBytes = std::size_t{64} << 10;
    constexpr std::string_view kKey = "MemAvailable:";
    std::string told;
    if (const Error error = files.ReadWholeFile("/proc/meminfo", kMostBytes, told); !error.IsOk()) return 0;
    const std::size_t key = told.find(kKey);
    if (key == std::string::npos) return 0;
    const std::size_t digits = told.find_first_not_of(' ', key + kKey.size());
    if (digits == std::string::npos) return 0;
    std::uint64_t kibibytes = 0;
    std::from_chars(told.data() + digits, told.data() + told.size(), kibibytes);
    return kibibytes << 10;
}

void ReturnFreedMemory() {
    malloc_trim(0);
}

void KeepNoFreedMemory() {
    // Setting it once also ends its growth with what is freed (mallopt(3)).
    mallopt(M_MMAP_THRESHOLD, 256 << 10);
}

}  // namespace vantrel
