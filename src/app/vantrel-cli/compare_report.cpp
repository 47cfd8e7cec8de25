#include "compare_report.h"

#include <algorithm>

namespace vantrel::cli {

namespace {

ShownHalf HalfOf(const ResultRow& row, const CViewSelections& view) {
    ShownHalf half{
        row.type, row.IsReal() && view.Shows(row.type), row.text, std::max(row.size, Currency()), {}};
    if (row.kind == RowKind::File) half.modified = row.lastWrite;
    return half;
}

ShownHalf HalfOf(const SubFolderRecord& record) {
    return {record.type, !record.IsBlank(), record.name, std::max(record.size, Currency()), record.lastWrite};
}

}  // namespace

std::string_view ReportPart::SubFolder() const {
    return diffs_ ? std::string_view(diffs_->Name()) : std::string_view();
}

std::size_t ReportPart::Count() const {
    return diffs_ ? diffs_->Records(Side::Left).size() : (*hold_)[Side::Left].Count();
}

ShownPair ReportPart::Pair(std::size_t number) const {
    ShownPair pair;
    for (const Side side : kBothSides)
        pair[side] = diffs_ ? HalfOf(diffs_->Records(side)[number]) : HalfOf((*hold_)[side][number], *view_);
    return pair;
}

std::vector<ReportPart> PartsOf(const ComparisonResults& results, const CViewSelections& view) {
    std::vector<ReportPart> parts{ReportPart(results.hold, view)};
    if (view.Shows(ResultType::DifferentFolder))
        for (const CSubFolderDiffs& diffs : results.SubFolderDiffs) parts.emplace_back(diffs);
    return parts;
}

}  // namespace vantrel::cli
