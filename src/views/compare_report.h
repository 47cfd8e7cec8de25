#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "core/comparison_results.h"
#include "platform/fetch_ahead.h"
#include "views/cview_selections.h"

namespace vantrel {

class ResultPanes;

// A half of a pair, whatever it was made from. The texts live as long as the results.
struct ShownHalf {
    ResultType type = ResultType::None;  // None: there is no object on this side
    bool shown = false;                  // there is one, and it is shown
    std::string_view name;
    Currency size;                     // not negative
    std::optional<FileTime> modified;  // UTC; nothing for a folder
    // Nothing may be concluded from the name, for neither side. Size and time are then of no meaning.
    bool unknown = false;
    UnknownReason reason = UnknownReason::None;  // what is in the way on this side
    bool incomplete =
        false;  // a folder of which a part, here or in its counterpart, could not be looked into
};

using ShownPair = PerSide<ShownHalf>;

// Which rows of the hold lists are shown, by side and index.
using RowsShown = std::function<bool(Side side, std::size_t row)>;

// One part of a report: the pairs of the two folders, or what differs below one of their sub-folders.
class ReportPart {
  public:
    // The lists and records must outlive the part.
    ReportPart(const HoldLists& hold, RowsShown isShown) : hold_(&hold), isShown_(std::move(isShown)) {}
    // All records; those that are unknown only where `showsUnknown`.
    ReportPart(const CSubFolderDiffs& diffs, bool showsUnknown)
        : diffs_(&diffs), showsUnknown_(showsUnknown) {}

    // The row's text of the sub-folder; empty for the two folders themselves.
    std::string_view SubFolder() const;

    // Calls `print(const ShownPair&)` in order for each pair of which a half at least is shown.
    template <typename Print>
    void ForEach(const Print& print) const {
        for (std::size_t number = 0; number < Count(); ++number) {
            FetchNames(number + kStepsAhead);
            const ShownPair pair = Pair(number);
            if (pair[Side::Left].shown || pair[Side::Right].shown) print(pair);
        }
    }

    bool IsEmpty() const;

  private:
    std::size_t Count() const;
    ShownPair Pair(std::size_t number) const;
    // Of a pair that comes later, if there is one.
    void FetchNames(std::size_t number) const {
        for (const Side side : kBothSides)
            if (hold_ && number < (*hold_)[side].Count()) FetchAhead((*hold_)[side][number].text.data());
    }

    const HoldLists* hold_ = nullptr;
    RowsShown isShown_;
    const CSubFolderDiffs* diffs_ = nullptr;
    bool showsUnknown_ = false;
};

// All that is shown of the results: the part of the two folders, then one for each sub-folder that differs,
// where the view shows such sub-folders and there is something to show of it. What is unknown is shown where
// the view shows all. The arguments must outlive it.
std::vector<ReportPart> PartsOf(const ComparisonResults& results, const CViewSelections& view);

// The same of what the panes show at this moment: of the sub-folders those whose rows are there.
std::vector<ReportPart> PartsShown(const ComparisonResults& results, const ResultPanes& panes);

// All there is.
std::vector<ReportPart> AllParts(const ComparisonResults& results);

}  // namespace vantrel
