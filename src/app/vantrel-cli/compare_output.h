#pragma once

#include "compare_report.h"
#include "output.h"
#include "platform/locale/locale_formats.h"

namespace vantrel::cli {

// What the writers of a comparison print.
struct CompareReport {
    const PerSide<std::string>& folders;
    std::vector<ReportPart> parts;
};

// One JSON object a line: a line for each pair, then one for each record of a sub-folder.
void WriteJsonLines(const CompareReport& report, Output& out);

// Aligned columns for a terminal, with totals at the end.
void WriteTextColumns(const CompareReport& report, const LocaleFormats& locale, Output& out);

}  // namespace vantrel::cli
