#pragma once

#include "output.h"
#include "platform/locale/locale_formats.h"
#include "views/results_export.h"

namespace vantrel::cli {

// Aligned columns for a terminal, with totals at the end.
void WriteTextColumns(const ResultsReport& report, const LocaleFormats& locale, Output& out);

}  // namespace vantrel::cli
