#include "views/compare_report.h"

#include <algorithm>
#include <memory>

#include "views/result_panes.h"

namespace vantrel {

namespace {

ShownHalf HalfOf(const ResultRow& row, bool shown) {
    ShownHalf half;
    half.type = row.type;
    half.name = row.text;
    half.incomplete = row.incomplete;
    if (row.IsUnknown()) {
        half.unknown = true;
        half.shown = shown;
        half.reason = row.reason;
        return half;
    }
    half.shown = row.IsReal() && shown;
    half.size = std::max(row.size, Currency());
    if (row.kind == RowKind::File) half.modified = row.lastWrite;
    return half;
}

ShownHalf HalfOf(const SubFolderRecord& record, bool showsUnknown) {
    ShownHalf half;
    half.type = record.type;
    half.name = record.name;
    if (record.unknown) {
        half.unknown = true;
        half.shown = showsUnknown;
        half.reason = record.reason;
        return half;
    }
    half.shown = !record.IsBlank();
    half.size = std::max(record.size, Currency());
    half.modified = record.lastWrite;
    return half;
}

// `showsFolder(const CSubFolderDiffs&)`
template <typename ShowsFolder>
std::vector<ReportPart> MakeParts(const ComparisonResults& results, RowsShown isShown, bool showsUnknown,
                                  const ShowsFolder& showsFolder) {
    std::vector<ReportPart> parts;
    parts.emplace_back(results.hold, std::move(isShown));
    for (const CSubFolderDiffs& diffs : results.SubFolderDiffs) {
        if (!showsFolder(diffs)) continue;
        if (ReportPart part(diffs, showsUnknown); !part.IsEmpty()) parts.push_back(std::move(part));
    }
    return parts;
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
        pair[side] = diffs_ ? HalfOf(diffs_->Records(side)[number], showsUnknown_)
                            : HalfOf((*hold_)[side][number], isShown_(side, number));
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
    const bool showsAll = view.AreCustomSettingsSameAsAllViewType();
    return MakeParts(
        results,
        [&hold = results.hold, &view, showsAll](Side side, std::size_t row) {
            const ResultRow& half = hold[side][row];
            return half.IsUnknown() ? showsAll : view.Shows(half.type);
        },
        showsAll, [&](const CSubFolderDiffs&) { return view.Shows(ResultType::DifferentFolder); });
}

std::vector<ReportPart> PartsShown(const ComparisonResults& results, const ResultPanes& panes) {
    const auto shown = std::make_shared<PerSide<std::vector<bool>>>();
    std::vector<std::string_view> folders;
    for (const Side side : kBothSides) {
        std::vector<bool>& rows = (*shown)[side];
        rows.resize(results.hold[side].Count());
        for (const ResultRow& row : panes.Pane(side).Rows()) {
            if (row.tag == 0 || row.tag > rows.size()) continue;
            rows[row.tag - 1] = true;
            if (row.kind == RowKind::Folder || row.IsUnknown()) folders.push_back(row.text);
        }
    }
    std::sort(folders.begin(), folders.end());
    return MakeParts(
        results, [shown](Side side, std::size_t row) { return (*shown)[side][row]; },
        panes.ViewSelections().AreCustomSettingsSameAsAllViewType(),
        [&](const CSubFolderDiffs& diffs) {
            return std::binary_search(folders.begin(), folders.end(), std::string_view(diffs.Name()));
        });
}

std::vector<ReportPart> AllParts(const ComparisonResults& results) {
    return MakeParts(
        results, [](Side, std::size_t) { return true; }, true, [](const CSubFolderDiffs&) { return true; });
}

}  // namespace vantrel
