#pragma once

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace vantrel {

// Hands a text of the engine to `out(std::string_view)` as a JSON string, with its quotes, a stretch at a
// time.
template <typename Out>
void WriteJsonString(std::string_view text, Out&& out) {
    const auto needsEscape = [](char letter) {
        return letter == '"' || letter == '\\' || static_cast<unsigned char>(letter) < 0x20;
    };
    out(std::string_view("\""));
    while (!text.empty()) {
        const auto plain =
            static_cast<std::size_t>(std::find_if(text.begin(), text.end(), needsEscape) - text.begin());
        out(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        char escape[8];
        if (text[0] == '"' || text[0] == '\\')
            std::snprintf(escape, sizeof escape, "\\%c", text[0]);
        else
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(text[0]));
        out(std::string_view(escape));
        text.remove_prefix(1);
    }
    out(std::string_view("\""));
}

}  // namespace vantrel
