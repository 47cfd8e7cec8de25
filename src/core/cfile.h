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
    Currency Size;               // by the SizeRule of the run; of what a link leads to, as the time
    FileTime LastWrite;          // UTC
    const Seen* seen = nullptr;  // of the file, or the link, itself; in the SeenPool of that CDir
    bool isLink = false;

    std::int32_t ModifiedDateHigh() const { return LastWrite.High(); }
    std::int32_t ModifiedDateLow() const { return LastWrite.Low(); }
};

// One half of a pair, as the scan saw it.
struct ScannedFile {
    Currency size;       // by the size rule
    FileTime lastWrite;  // UTC
};

}  // namespace vantrel
