#include "platform/files/disk_reads.h"

#include <sys/resource.h>

namespace vantrel {

std::uint64_t BytesReadFromDisk() {
    constexpr std::uint64_t kBlock = 512;  // of ru_inblock, whatever the disk has
    rusage usage{};
    return getrusage(RUSAGE_THREAD, &usage) == 0 ? static_cast<std::uint64_t>(usage.ru_inblock) * kBlock : 0;
}

}  // namespace vantrel
