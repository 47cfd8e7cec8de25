#pragma once

#include <cstdint>
#include <string_view>

#include "core/toolbox.h"

namespace vantrel {

// What an object takes with everything below it, as a copy of it would: links count with their own size.
struct TreeSize {
    Currency bytes;
    std::uint64_t files = 0;
    std::uint64_t folders = 0;  // below the object itself
};

// Counted by workers where `tools.jobs` has some. Yields while it waits, or for every entry without workers;
// `cancel`, where given, is read at the same places and ends the count. An object that does not exist is an
// error, and so is a folder that cannot be listed to its end: then `size` holds all that could be counted.
Error CountTreeSize(const Toolbox& tools, std::string_view path, TreeSize& size,
                    const bool* cancel = nullptr);

}  // namespace vantrel
