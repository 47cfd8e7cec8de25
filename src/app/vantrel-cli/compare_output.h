#pragma once

#include "core/comparison_results.h"
#include "output.h"
#include "platform/locale/locale_formats.h"
#include "views/cview_selections.h"

namespace vantrel::cli {

struct CompareReport {
    const ComparisonResults& results;
    const CViewSelections& view;
    const LocaleFormats& locale;

    // The row of that number as the view shows it: a placeholder where the view hides it.
    const ResultRow& Row(Side side, std::size_t number) const {
        static const ResultRow placeholder;
        const ResultRow& row = results.hold[side][number];
        return view.Shows(row.type) ? row : placeholder;
    }
    // Whether the view shows a half of the pair at least.
    bool Shows(std::size_t number) const {
        return Row(Side::Left, number).IsReal() || Row(Side::Right, number).IsReal();
    }
    // What differs below a sub-folder is shown where a differing sub-folder is.
    bool ShowsSubFolderRecords() const { return view.Shows(ResultType::DifferentFolder); }
};

// One JSON object a line: a line for each pair, then one for each record of a sub-folder.
void WriteJsonLines(const CompareReport& report, Output& out);

// Aligned columns for a terminal, with totals at the end.
void WriteTextColumns(const CompareReport& report, Output& out);

}  // namespace vantrel::cli
