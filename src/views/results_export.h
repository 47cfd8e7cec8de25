#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "views/compare_report.h"
#include "views/text_pieces.h"

namespace vantrel {

// The results of a comparison for other programs and other people.
enum class ResultsFormat : std::uint8_t {
    Html,       // one page that needs nothing beside it, its columns sortable
    Csv,        // for spreadsheets: RFC 4180, a line for each pair; names as they are shown
    JsonLines,  // for programs: an object for each pair; names in the engine's form, so that none is lost
};

struct ResultsReport {
    PerSide<std::string> folders;
    std::vector<ReportPart> parts;
    std::string made;  // when, as it is shown
};

// Writes the pairs of all parts in order; times of CSV and JSON are UTC.
void WriteResults(const ResultsReport& report, ResultsFormat format, const LocaleFormats& locale,
                  TextPieces& out);

// The formats themselves.
void WriteResultsPage(const ResultsReport& report, const LocaleFormats& locale, TextPieces& out);
void WriteResultsCsv(const ResultsReport& report, TextPieces& out);
void WriteResultsJsonLines(const ResultsReport& report, TextPieces& out);

// Into a file, which is replaced as a whole or not at all. Lets events through.
Error SaveResults(const Toolbox& tools, const ResultsReport& report, ResultsFormat format,
                  const std::string& path);

// For scripts: what is in the way of an unknown half. Where the object itself is known, it is what bears the
// name on the other side.
std::string_view ReasonWord(UnknownReason reason);

}  // namespace vantrel
