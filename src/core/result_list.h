#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_row.h"
#include "core/seen_pool.h"
#include "platform/text_pool.h"

namespace vantrel {

// A list of result rows, with the pools that their texts live in. Copies of rows may go to another list of
// the same pools (ShareTexts). Row numbers here are indices from 0; tags are from 1.
class ResultList {
  public:
    std::size_t Count() const { return rows_.size(); }
    bool IsEmpty() const { return rows_.empty(); }
    const ResultRow& operator[](std::size_t index) const { return rows_[index]; }
    ResultRow& operator[](std::size_t index) { return rows_[index]; }
    auto begin() const { return rows_.begin(); }
    auto end() const { return rows_.end(); }
    auto begin() { return rows_.begin(); }
    auto end() { return rows_.end(); }

    // The row's texts must live in a pool of this list, or be constants.
    ResultRow& Add(const ResultRow& row) { return rows_.emplace_back(row); }
    // A row made from texts that live elsewhere: they are copied into a pool of this list.
    ResultRow& AddCopy(const ResultRow& row);
    void AddPlaceholder() { rows_.emplace_back(); }
    void Reserve(std::size_t rows) { rows_.reserve(rows); }
    // Drops the rows and lets go of the pools.
    void Clear();
    // The same, and keeps the room of the rows where `rows` new ones fill at least half of it: fresh memory
    // costs the system more time than the rows.
    void ClearFor(std::size_t rows);
    // Empties the list and adds the one row of the no-result state.
    void SetToSentinel();
    // Exactly one row, and that the sentinel (by its kind: a file of that name is a file).
    bool IsSentinel() const { return rows_.size() == 1 && rows_.front().kind == RowKind::Sentinel; }

    // Keeps the pools of `other` alive here as well.
    void ShareTexts(const ResultList& other);
    void SharePool(std::shared_ptr<const TextPool> pool);
    void SharePool(std::shared_ptr<const SeenPool> pool);
    // Bytes that rows and pools take.
    std::size_t MemoryUsed() const;
    // Bytes that the rows take without their texts.
    std::size_t MemoryOfRows() const { return rows_.capacity() * sizeof(ResultRow); }

    void Swap(ResultList& other) noexcept;

  private:
    std::vector<ResultRow> rows_;
    std::vector<std::shared_ptr<const TextPool>> pools_;
    std::shared_ptr<TextPool> own_;  // for AddCopy; among pools_ too
    std::vector<std::shared_ptr<const SeenPool>> seen_;
    std::shared_ptr<SeenPool> ownSeen_;  // as own_
};

// Every row of the last comparison, whatever the view: lvwHoldAllFilesSource and lvwHoldAllFilesTarget. Row i
// of the one and row i of the other are always one pair.
using HoldLists = PerSide<ResultList>;

// Equal length, tags and kinds as they must be, no pair of two placeholders. `why` names the first fault.
bool IsConsistent(const HoldLists& lists, std::string* why = nullptr);

}  // namespace vantrel
