#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vantrel {

// The bookmarked rows of the difference viewer (BookmarkList), in ascending order.
class RowBookmarks {
  public:
    bool IsEmpty() const { return rows_.empty(); }
    bool Contains(std::int32_t row) const { return std::binary_search(rows_.begin(), rows_.end(), row); }
    const std::vector<std::int32_t>& Rows() const { return rows_; }

    // Sets the bookmark, or takes it away where there is one.
    void Toggle(std::int32_t row) {
        const auto at = std::lower_bound(rows_.begin(), rows_.end(), row);
        if (at != rows_.end() && *at == row)
            rows_.erase(at);
        else
            rows_.insert(at, row);
    }
    void Clear() { rows_.clear(); }

    // The first one behind `row`, and the last one before it; -1 for none.
    std::int32_t Next(std::int32_t row) const {
        const auto at = std::upper_bound(rows_.begin(), rows_.end(), row);
        return at == rows_.end() ? -1 : *at;
    }
    std::int32_t Previous(std::int32_t row) const {
        const auto at = std::lower_bound(rows_.begin(), rows_.end(), row);
        return at == rows_.begin() ? -1 : *(at - 1);
    }

  private:
    std::vector<std::int32_t> rows_;
};

}  // namespace vantrel
