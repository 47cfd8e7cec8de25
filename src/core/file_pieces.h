#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "core/ccompare.h"
#include "core/content_progress.h"
#include "core/toolbox.h"

namespace vantrel {

// Reads a whole file, to its end as it then is, and hands its bytes to `sink` in order, in pieces of about
// the size of a chunk. False when the user cancelled (CompareCancelled is then set). Throws ErrorException
// when the file cannot be opened or read. `progress` may be null.
bool ReadInPieces(const Toolbox& tools, CCompare& compare, std::string_view path, ContentProgress* progress,
                  const std::function<void(const char* bytes, std::size_t size)>& sink);

}  // namespace vantrel
