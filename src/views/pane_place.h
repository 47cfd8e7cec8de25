#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "views/pane_list.h"

namespace vantrel {

// Where the user is in two panes: their top rows, their selected items and what is selected. It is taken
// before the rows of the panes are replaced, and given back to the new rows: each to the row of the same
// pair. Where that pair is gone, top row and selected item go to the next one, the selected item to one that
// is an object there; what was selected and is gone is not selected any more.
class PanePlace {
  public:
    // Whether the rows of the same number in both panes are one pair.
    enum class Beside : bool { No, Yes };
    explicit PanePlace(const PerSide<PaneList>& panes, Beside beside);

    enum class Selection : bool { Dropped, Kept };
    // The panes stand beside each other now, and their rows are copies of rows of `hold`.
    void GiveBack(PerSide<PaneList>& panes, const HoldLists& hold, Selection selection) const;

  private:
    // A pair, by the half that has a name.
    struct Mark {
        std::string_view text;
        std::uint32_t tag = 0;
        Side side = Side::Left;
    };
    struct OfPane {
        std::optional<Mark> top, item;
        bool itemIsReal = false;
        std::vector<Mark> selected;
    };
    struct Goal {
        std::size_t row = 0;
        bool found = false;  // otherwise it is the place where the pair would stand
    };
    static Mark MarkOf(const PerSide<PaneList>& panes, Side side, std::size_t row, Beside beside);
    // The rows are copies of the same hold rows as before, so that their tags lead back to them.
    bool AreRowsOf(const HoldLists& hold) const;
    static Goal FindByTag(const PerSide<PaneList>& panes, const Mark& mark);
    static Goal FindByName(const PerSide<PaneList>& panes, const Mark& mark);
    static void SelectByTag(PaneList& pane, const std::vector<Mark>& selected);
    static void SelectByName(PaneList& pane, const std::vector<Mark>& selected);

    PerSide<OfPane> kept_;
    PerSide<ResultList> names_;  // without rows: keeps the names alive
};

}  // namespace vantrel
