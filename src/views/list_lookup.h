#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"

namespace vantrel {

// Number (from 0) of a row with this text in a list whose rows stand in the order of their texts, case
// ignored; nothing where there is none.
std::optional<std::size_t> FindListItemInSortedListview(std::string_view text, const ResultList& list);

// Between the fields of an entry of a collection.
inline constexpr std::string_view kFieldSeparator = "~!@#";

// The number behind the separator of the entry whose text stands before it, case ignored. The entries stand
// in the order of their texts. Nothing where no entry, or one without a number, is found.
std::optional<long> FindListItem(std::string_view text, const std::vector<std::string>& collection);

// Sorts whole numbers held as strings by their values, ascending. A text that is no number counts as 0.
void SortLongCollection(std::vector<std::string>& collection);

// The first real row at or after `start`, wrapping round, whose name begins with `prefix`, case ignored. A
// folder is found with and without its marker.
std::optional<std::size_t> FindRowByPrefix(const ResultList& list, std::size_t start,
                                           std::string_view prefix);

}  // namespace vantrel
