#include "json_lines.h"

#include "platform/names/json_text.h"

namespace vantrel::cli {

void WriteJsonString(std::string_view text, Output& out) {
    vantrel::WriteJsonString(text, [&](std::string_view part) { out << part; });
}

}  // namespace vantrel::cli
