#include "json_lines.h"

#include <algorithm>
#include <cstdio>

#include "compare_output.h"

namespace vantrel::cli {

namespace {

// The word for scripts. Where the object itself is known it is what bears the name on the other side.
std::string_view ReasonWord(UnknownReason reason) {
    switch (reason) {
        case UnknownReason::SpecialObject:
            return "SpecialObject";
        case UnknownReason::LeadsNowhere:
            return "LeadsNowhere";
        case UnknownReason::NotTold:
            return "NotTold";
        case UnknownReason::None:
            break;
    }
    return "OtherSide";
}

void WriteHalf(const ShownHalf& half, Output& out) {
    if (!half.shown) {
        out << "null";
        return;
    }
    out << R"({"name":)";
    WriteJsonString(half.name, out);
    if (half.unknown) {
        out << R"(,"type":"Unknown","reason":")" << ReasonWord(half.reason) << R"("})";
        return;
    }
    out << R"(,"size":)" << half.size.Whole();
    if (half.modified) {
        out << R"(,"modified":)";
        WriteJsonString(UtcText(*half.modified), out);
    }
    out << R"(,"type":")" << ResultTypeText(half.type) << '"';
    if (half.incomplete) out << R"(,"incomplete":true)";
    out << '}';
}

bool NeedsEscape(char letter) {
    return letter == '"' || letter == '\\' || static_cast<unsigned char>(letter) < 0x20;
}

}  // namespace

void WriteJsonString(std::string_view text, Output& out) {
    out << '"';
    while (!text.empty()) {
        const auto plain =
            static_cast<std::size_t>(std::find_if(text.begin(), text.end(), NeedsEscape) - text.begin());
        out << text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        if (text[0] == '"' || text[0] == '\\') {
            out << '\\' << text[0];
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(text[0]));
            out << escape;
        }
        text.remove_prefix(1);
    }
    out << '"';
}

void WriteJsonLines(const CompareReport& report, Output& out) {
    for (const ReportPart& part : report.parts) {
        part.ForEach([&](const ShownPair& pair) {
            out << '{';
            if (!part.SubFolder().empty()) {
                out << R"("folder":)";
                WriteJsonString(part.SubFolder(), out);
                out << ',';
            }
            out << R"("left":)";
            WriteHalf(pair[Side::Left], out);
            out << R"(,"right":)";
            WriteHalf(pair[Side::Right], out);
            out << "}\n";
        });
    }
}

}  // namespace vantrel::cli
