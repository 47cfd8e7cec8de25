#include "platform/locale/utc_text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace vantrel {

std::string_view UtcText(FileTime utc, UtcChars& room) {
    const CalendarTime parts = ToCalendar(utc);
    // All values fit: years of file times have five digits at most.
    char* at = room.data();
    const auto add = [&at](std::uint32_t value, std::size_t digits) {
        at += digits;
        for (char* digit = at; digits > 0; --digits, value /= 10)
            *--digit = static_cast<char>('0' + value % 10);
    };
    const bool common = parts.year >= 0 && parts.year <= 9'999;
    if (!common) *at++ = parts.year < 0 ? '-' : '+';
    add(static_cast<std::uint32_t>(std::abs(parts.year)), common ? 4 : 6);
    for (const auto& [mark, value] :
         {std::pair{'-', parts.month}, std::pair{'-', parts.day}, std::pair{'T', parts.hour},
          std::pair{':', parts.minute}, std::pair{':', parts.second}}) {
        *at++ = mark;
        add(static_cast<std::uint32_t>(value), 2);
    }
    *at++ = '.';
    add(static_cast<std::uint32_t>(parts.ticks), 7);
    *at++ = 'Z';
    return {room.data(), static_cast<std::size_t>(at - room.data())};
}

}  // namespace vantrel
