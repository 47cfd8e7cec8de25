#pragma once

#include <string>
#include <string_view>

#include "core/ccompare.h"
#include "core/content_progress.h"
#include "core/toolbox.h"
#include "platform/hashes.h"

namespace vantrel {

// SHA-1 of texts and whole files, as 40 upper-case hexadecimal digits. All but IsSHA1Available throw
// ErrorException where this machine's library has no SHA-1.
bool IsSHA1Available();
std::string ConvertSHAHashToHex(const Sha1::Digest& digest);
std::string SHA1OfText(std::string_view text);
// Read in pieces of ChunkSize, with a look at the cancel flag between them; "0" when cancelled, with
// CompareCancelled set. Throws ErrorException when the file cannot be read. `progress` may be null.
std::string SHA1OfFile(const Toolbox& tools, CCompare& compare, std::string_view path,
                       ContentProgress* progress = nullptr);

}  // namespace vantrel
