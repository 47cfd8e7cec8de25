#pragma once

#include <cstdint>
#include <string_view>

#include "platform/currency.h"
#include "platform/files/seen.h"
#include "platform/locale/file_time.h"

namespace vantrel {

// One file of a scanned folder. The texts live in the pool of the CDir that holds it.
struct CFile {
    std::string_view FileName;   // without path, as it stands on the disk
    std::string_view Key;        // the name folded
    Currency Size;               // by SizeByRule; of what a link leads to, as the time
    FileTime LastWrite;          // UTC
    const Seen* seen = nullptr;  // of the file, or the link, itself; in the SeenPool of that CDir
    bool isLink = false;

    std::int32_t ModifiedDateHigh() const { return LastWrite.High(); }
    std::int32_t ModifiedDateLow() const { return LastWrite.Low(); }
};

// The size that a found file has for the system: its low word minus its high word, both taken as signed
// 32-bit numbers. True below 2 GiB, negative from there up to 4 GiB. Classification, display and the
// comparison of contents all see this value.
constexpr Currency SizeByRule(std::uint64_t bytes) {
    const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes));
    const auto high = static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes >> 32));
    return Currency::FromWhole(std::int64_t{low} - std::int64_t{high});
}

}  // namespace vantrel
