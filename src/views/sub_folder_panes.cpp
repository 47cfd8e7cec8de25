#include "views/sub_folder_panes.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "core/seen_pool.h"
#include "platform/line_end.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "views/pane_place.h"

namespace vantrel {
namespace {

ResultRow RowOf(const SubFolderRecord& record, SeenPool& seen) {
    ResultRow row;
    row.elsewhere = record.elsewhere;
    if (record.IsBlank()) return row;
    row.kind = record.unknown ? RowKind::Unknown : RowKind::File;
    row.text = record.name;
    row.realName = record.realName;
    row.size = std::max(record.size, Currency());
    row.lastWrite = record.lastWrite;
    row.type = record.type;
    row.isLink = record.isLink;
    row.reason = record.reason;
    if (record.seen) row.seen = seen.Add(*record.seen);
    return row;
}

}  // namespace

void SubFolderPanes::Fill(const CSubFolderDiffs& diffs) {
    for (const Side side : kBothSides) {
        ResultList rows;
        const auto seen = std::make_shared<SeenPool>();
        rows.SharePool(diffs.Texts());
        rows.SharePool(seen);
        rows.Reserve(diffs.Records(side).size());
        for (const SubFolderRecord& record : diffs.Records(side)) rows.Add(RowOf(record, *seen));
        hidden_[side].Swap(rows);
    }
    CopyItemsFromHiddenLVWToVisibleLVW();
}

bool SubFolderPanes::Passes(std::size_t row) const {
    if (filter_.empty()) return true;
    const ResultRow& left = hidden_[Side::Left][row];
    const std::string path = FoldCase(left.text.empty() ? hidden_[Side::Right][row].text : left.text);
    if (filter_.front() == '/') return path.starts_with(std::string_view(filter_).substr(1));
    return path.find(filter_) != std::string::npos;
}

void SubFolderPanes::CopyItemsFromHiddenLVWToVisibleLVW() {
    reporter_.Guard("frmSubDirDiffs.CopyItemsFromHiddenLVWToVisibleLVW", [this] {
        if (hidden_[Side::Left].IsEmpty()) return;
        std::vector<bool> passes(hidden_[Side::Left].Count());
        for (std::size_t i = 0; i < passes.size(); ++i) passes[i] = Passes(i);
        PerSide<ResultList> rows = CopiesOfHeld({}, [&](Side, std::size_t i) { return passes[i]; });
        const PanePlace place(panes_, PanePlace::Beside::Yes);
        for (const Side side : kBothSides) panes_[side].TakeRows(rows[side]);
        place.GiveBack(panes_, hidden_, PanePlace::Selection::Dropped);
        Tell([](ResultPanesObserver& observer) { observer.RowsReset(); });
        SetStatusTexts(TotalsText(panes_[Side::Left]), TotalsText(panes_[Side::Right]));
    });
}

void SubFolderPanes::SetFilter(std::string_view text) {
    filter_ = FoldCase(text);
    CopyItemsFromHiddenLVWToVisibleLVW();
}

void SubFolderPanes::SelectByType(ResultType type) {
    if (busy_.IsBusy()) return;
    OnCurrent([&](Side side) {
        panes_[side].ClearSelection();
        panes_[side].SetSelectedWhere([type](const ResultRow& row) { return row.type == type; }, true);
        Tell([side](ResultPanesObserver& observer) { observer.SelectionChanged(side); });
    });
}

void SubFolderPanes::BeginOperation() {
    for (const Side side : kBothSides) {
        ResultList rows;
        rows.ShareTexts(hidden_[side]);
        rows.Reserve(hidden_[side].Count());
        for (ResultRow& row : hidden_[side]) {
            row.selected = false;
            rows.Add(row);
        }
        for (const ResultRow& row : panes_[side].Rows())
            if (row.selected) rows[row.tag - 1].selected = true;
        chosen_[side].Swap(rows);
    }
}

void SubFolderPanes::EndOperation() {
    for (const Side side : kBothSides) {
        chosen_[side].Clear();
        for (ResultRow& row : hidden_[side]) row.selected = false;
    }
}

bool SubFolderPanes::IsConsistent(std::string* why) const {
    const auto fail = [why](const char* fault) {
        if (why) *why = fault;
        return false;
    };
    if (hidden_[Side::Left].Count() != hidden_[Side::Right].Count()) return fail("lists of unequal length");
    if (panes_[Side::Left].Count() != panes_[Side::Right].Count()) return fail("panes of unequal length");
    for (const Side side : kBothSides) {
        if (!panes_[side].IsConsistent(why)) return false;
        for (std::size_t i = 0; i < panes_[side].Count(); ++i) {
            const ResultRow &row = panes_[side][i], &opposite = panes_[Other(side)][i];
            if (row.tag == 0 || row.tag > hidden_[side].Count()) return fail("a tag that leads to no row");
            if (row.tag != opposite.tag) return fail("halves of two pairs");
            const ResultRow& held = hidden_[side][row.tag - 1];
            if (held.text != row.text || held.type != row.type || held.kind != row.kind)
                return fail("a tag that leads to another row");
        }
    }
    return true;
}

namespace {

// "3 things" or "1 thing"
std::string Counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + (count == 1 ? one : many);
}

}  // namespace

std::string DescribeLeftAlone(const CSubFolderDiffs& diffs, const PerSide<std::string>& folders) {
    constexpr std::size_t kMostNamed = 5;
    std::string text;
    if (const auto& places = diffs.UnknownPlaces(); !places.empty()) {
        text = Counted(places.size(), " place", " places") +
               " could not be looked into. What is there is not known, is missing here, and is left alone:";
        for (std::size_t i = 0; i < places.size() && i < kMostNamed; ++i)
            text.append(kLineEnd).append(
                WithoutTrailingSlash(JoinPath(folders[places[i].side], places[i].path)));
        if (places.size() > kMostNamed) text.append(kLineEnd).append("...");
    }
    std::size_t elsewhere = 0;
    for (std::size_t i = 0; i < diffs.Records(Side::Left).size(); ++i) {
        bool either = false;
        for (const Side side : kBothSides)
            either = either || diffs.Records(side)[i].elsewhere != Elsewhere::No;
        elsewhere += either;
    }
    if (elsewhere > 0) {
        if (!text.empty()) text += kLineEnd;
        text +=
            Counted(elsewhere, " row tells", " rows tell") +
            " of what lies behind a link to a folder, or belongs to both compared folders. There nothing is "
            "changed.";
    }
    return text;
}

}  // namespace vantrel
