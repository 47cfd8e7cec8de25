#include "settings/chunk_size.h"

#include <cmath>

#include "platform/locale/numeric_text.h"

namespace vantrel {

std::optional<std::int32_t> ChunkSizeOf(std::string_view text) {
    const std::optional<double> value = NumericValue(text);
    if (!value || *value < 1 || *value > kMostChunkSize || *value != std::floor(*value)) return std::nullopt;
    return static_cast<std::int32_t>(*value);
}

}  // namespace vantrel
