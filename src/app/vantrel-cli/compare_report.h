#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "core/comparison_results.h"
#include "views/cview_selections.h"

namespace vantrel::cli {

// A half of a pair, whatever it was made from. The texts live as long as the results.
struct ShownHalf {
    ResultType type = ResultType::None;  // None: there is no object on this side
    bool shown = false;                  // there is one, and the view shows it
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

// One part of a report: the pairs of the two folders, or what differs below one of their sub-folders.
class ReportPart {
  public:
    // The arguments must outlive the part.
    ReportPart(const HoldLists& hold, const CViewSelections& view) : hold_(&hold), view_(&view) {}
    ReportPart(const CSubFolderDiffs& diffs, const CViewSelections& view) : view_(&view), diffs_(&diffs) {}

    // The row's text of the sub-folder; empty for the two folders themselves.
    std::string_view SubFolder() const;

    // Calls `print(const ShownPair&)` in order for each pair of which the view shows a half at least.
    template <typename Print>
    void ForEach(const Print& print) const {
        for (std::size_t number = 0; number < Count(); ++number) {
            const ShownPair pair = Pair(number);
            if (pair[Side::Left].shown || pair[Side::Right].shown) print(pair);
        }
    }

    bool IsEmpty() const;

  private:
    std::size_t Count() const;
    ShownPair Pair(std::size_t number) const;

    const HoldLists* hold_ = nullptr;
    const CViewSelections* view_ = nullptr;
    const CSubFolderDiffs* diffs_ = nullptr;
};

// All that is shown of the results: the part of the two folders, then one for each sub-folder that differs,
// where the view shows such sub-folders and there is something to show of it. What is unknown is shown where
// the view shows all. The arguments must outlive it.
std::vector<ReportPart> PartsOf(const ComparisonResults& results, const CViewSelections& view);

}  // namespace vantrel::cli
