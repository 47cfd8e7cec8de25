#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/names/like_pattern.h"
#include "views/pane_list.h"

namespace vantrel {

// Finds rows of two panes by a part of a name, letter case ignored. A text with a place holder of the "like"
// rule (names.h) also finds the names that fit it as a whole.
class RowSearch {
  public:
    RowSearch() = default;
    explicit RowSearch(std::string_view text);

    // It finds nothing.
    bool IsEmpty() const { return folded_.empty(); }
    // Whether a name in this row fits, on either side.
    bool Matches(const PerSide<const PaneList*>& panes, std::size_t row) const;

    enum class Direction : std::uint8_t { Forwards, Backwards };
    // The first row that fits, beginning with `start` itself and going once round.
    std::optional<std::size_t> Find(const PerSide<const PaneList*>& panes, std::size_t start,
                                    Direction direction) const;

  private:
    bool Fits(const ResultRow& row) const;
    bool IsHeldBy(std::string_view name) const;

    std::string folded_;
    bool isAscii_ = false;
    std::optional<LikePattern> pattern_;
};

}  // namespace vantrel
