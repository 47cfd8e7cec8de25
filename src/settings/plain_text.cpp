#include "settings/plain_text.h"

#include <unicode/utf8.h>

#include <cstdint>

namespace vantrel {

bool IsPlainText(std::string_view text) {
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t next = 0; next < size;) {
        UChar32 point = 0;
        U8_NEXT(text.data(), next, size, point);
        const bool isAllowed = point == '\n' || point == '\r' || point == '\t';
        if (point < 0 || (point < 0x20 && !isAllowed) || (point >= 0x7F && point < 0xA0)) return false;
    }
    return true;
}

}  // namespace vantrel
