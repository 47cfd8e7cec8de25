#include "platform/memory.h"

#include <malloc.h>
#include <sys/mman.h>

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

void AskForLargePages(void* begin, std::size_t bytes) {
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (address + kLargePage - 1) / kLargePage * kLargePage;
    const std::uintptr_t end = (address + bytes) / kLargePage * kLargePage;
    // Where the system has none to give, everything goes on with small ones.
    if (first < end) madvise(static_cast<char*>(begin) + (first - address), end - first, MADV_HUGEPAGE);
}

void ReturnFreedMemory() {
    malloc_trim(0);
}

}  // namespace vantrel
