#include "compare_report.h"

#include <algorithm>

namespace vantrel::cli {

namespace {

ShownHalf HalfOf(const ResultRow& row, const CViewSelections& view) {
    ShownHalf half;
    half.type = row.type;
    half.name = row.text;
    half.incomplete = row.incomplete;
    if (row.IsUnknown()) {
        half.unknown = true;
        half.shown = view.AreCustomSettingsSameAsAllViewType();
        half.reason = row.reason;
        return half;
    }
    half.shown = row.IsReal() && view.Shows(row.type);
    half.size = std::max(row.size, Currency());
    if (row.kind == RowKind::File) half.modified = row.lastWrite;
    return half;
}

ShownHalf HalfOf(const SubFolderRecord& record, const CViewSelections& view) {
    ShownHalf half;
    half.type = record.type;
    half.name = record.name;
    if (record.unknown) {
        half.unknown = true;
        half.shown = view.AreCustomSettingsSameAsAllViewType();
        half.reason = record.reason;
        return half;
    }
    half.shown = !record.IsBlank();
    half.size = std::max(record.size, Currency());
    half.modified = record.lastWrite;
    return half;
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
        pair[side] =
            diffs_ ? HalfOf(diffs_->Records(side)[number], *view_) : HalfOf((*hold_)[side][number], *view_);
    return pair;
}

bool ReportPart::IsEmpty() const {
    for (std::size_t number = 0; number < Count(); ++number) {
        const ShownPair pair = Pair(number);
        if (pair[Side::Left].shown || pair[Side::Right].shown) return false;
    }
    return true;
}

std::vector<ReportPart> PartsOf(const ComparisonResults& results, const CViewSelections& view) {
    std::vector<ReportPart> parts{ReportPart(results.hold, view)};
    if (!view.Shows(ResultType::DifferentFolder)) return parts;
    for (const CSubFolderDiffs& diffs : results.SubFolderDiffs)
        if (ReportPart part(diffs, view); !part.IsEmpty()) parts.push_back(part);
    return parts;
}

}  // namespace vantrel::cli
