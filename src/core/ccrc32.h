#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/ccompare.h"
#include "core/content_progress.h"
#include "core/toolbox.h"

namespace vantrel {

// CRC-32 of texts and whole files. Hexadecimal texts have 8 upper-case digits.
class CCRC32 {
  public:
    // Both must outlive the object.
    CCRC32(const Toolbox& tools, CCompare& compare) : tools_(tools), compare_(compare) {}

    static std::int32_t GetLongCRC32OfString(std::string_view text);
    static std::string GetHexCRC32OfString(std::string_view text);
    // Read in pieces of ChunkSize, with a look at the cancel flag between them. A cancelled reading gives "0"
    // and 0, with CompareCancelled set. Both throw ErrorException when the file cannot be read. `progress`
    // may be null.
    std::string GetHexCRC32OfFile(std::string_view path, ContentProgress* progress = nullptr);
    std::int32_t GetLongCRC32OfFile(std::string_view path, ContentProgress* progress = nullptr);

  private:
    const Toolbox& tools_;
    CCompare& compare_;
};

}  // namespace vantrel
