#include "json_lines.h"

#include "compare_output.h"
#include "platform/names/json_text.h"

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
    if (half.modified) out << R"(,"modified":")" << UtcText(*half.modified) << '"';
    out << R"(,"type":")" << ResultTypeText(half.type) << '"';
    if (half.incomplete) out << R"(,"incomplete":true)";
    out << '}';
}

}  // namespace

void WriteJsonString(std::string_view text, Output& out) {
    vantrel::WriteJsonString(text, [&](std::string_view part) { out << part; });
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
