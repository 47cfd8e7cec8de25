#include "views/results_export.h"

#include "platform/files/replace_file.h"
#include "platform/locale/utc_text.h"
#include "platform/names/csv_text.h"
#include "platform/names/json_text.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

void WriteJsonText(std::string_view text, TextPieces& out) {
    WriteJsonString(text, [&](std::string_view part) { out << part; });
}

void WriteJsonHalf(const ShownHalf& half, TextPieces& out) {
    if (!half.shown) {
        out << "null";
        return;
    }
    out << R"({"name":)";
    WriteJsonText(half.name, out);
    if (half.unknown) {
        out << R"(,"type":"Unknown","reason":")" << ReasonWord(half.reason) << R"("})";
        return;
    }
    out << R"(,"size":)" << half.size.Whole();
    UtcChars room;
    if (half.modified) out << R"(,"modified":")" << UtcText(*half.modified, room) << '"';
    out << R"(,"type":")" << ResultTypeText(half.type) << '"';
    if (half.incomplete) out << R"(,"incomplete":true)";
    out << '}';
}

void WriteCsvHalf(const ShownHalf& half, TextPieces& out) {
    if (!half.shown) {
        out << ",,,,,";
        return;
    }
    out << ',' << CsvField(DisplayName(half.name)) << ',';
    if (half.unknown) {
        out << ",,Unknown," << ReasonWord(half.reason);
        return;
    }
    out << half.size.Whole() << ',';
    UtcChars room;
    if (half.modified) out << UtcText(*half.modified, room);
    out << ',' << ResultTypeText(half.type) << ',';
    if (half.incomplete) out << "incomplete";
}

}  // namespace

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

void WriteResultsJsonLines(const ResultsReport& report, TextPieces& out) {
    for (const ReportPart& part : report.parts) {
        part.ForEach([&](const ShownPair& pair) {
            out << '{';
            if (!part.SubFolder().empty()) {
                out << R"("folder":)";
                WriteJsonText(part.SubFolder(), out);
                out << ',';
            }
            out << R"("left":)";
            WriteJsonHalf(pair[Side::Left], out);
            out << R"(,"right":)";
            WriteJsonHalf(pair[Side::Right], out);
            out << "}\n";
        });
    }
}

void WriteResultsCsv(const ResultsReport& report, TextPieces& out) {
    out << "Sub-Folder,Left Name,Left Size,Left Modified,Left Type,Left Note,"
           "Right Name,Right Size,Right Modified,Right Type,Right Note\r\n";
    for (const ReportPart& part : report.parts) {
        const std::string folder =
            part.SubFolder().empty() ? std::string() : CsvField(DisplayName(part.SubFolder()));
        part.ForEach([&](const ShownPair& pair) {
            out << folder;
            for (const Side side : kBothSides) WriteCsvHalf(pair[side], out);
            out << "\r\n";
        });
    }
}

void WriteResults(const ResultsReport& report, ResultsFormat format, const LocaleFormats& locale,
                  TextPieces& out) {
    switch (format) {
        case ResultsFormat::Html:
            WriteResultsPage(report, locale, out);
            break;
        case ResultsFormat::Csv:
            WriteResultsCsv(report, out);
            break;
        case ResultsFormat::JsonLines:
            WriteResultsJsonLines(report, out);
            break;
    }
    out.Flush();
}

Error SaveResults(const Toolbox& tools, const ResultsReport& report, ResultsFormat format,
                  const std::string& path) {
    return ReplaceFileInPieces(tools.files, path, [&](const PieceSink& sink) {
        TextPieces out([&](std::string_view piece) {
            sink(piece);
            tools.loop.Yield();
        });
        WriteResults(report, format, tools.locale, out);
    });
}

}  // namespace vantrel
