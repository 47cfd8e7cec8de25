#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "core/side.h"

namespace vantrel {

enum class NameKind : std::uint8_t { File, Folder, Other };

// One of the names of a folder that fold alike.
struct CollidingName {
    std::string_view name;  // without the folder marker
    NameKind kind = NameKind::File;
    std::uint32_t index = 0;  // the caller's
};
// A half without a counterpart stands beside a nullptr.
using NamePair = PerSide<const CollidingName*>;

// Pairs the names of one folded key, of which no side holds one twice. Equal names pair first. Of what is
// left, one on each side is a pair and more than one on a side pair with nothing. Files pair with files and
// folders with folders; what is neither could be either, so it pairs with all, and while it is among what is
// left all kinds count together. The result points into `names` and stands in the order of the names, the
// left one's where there are two.
std::vector<NamePair> PairNames(const PerSide<std::vector<CollidingName>>& names);

}  // namespace vantrel
