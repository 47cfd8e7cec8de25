#pragma once

#include <random>
#include <string>
#include <vector>

#include "core/comparison_support.h"

namespace vantrel::testing {

// Fills both folders of the bench with trees of the same few names, so that pairs, orphans, twins in letter
// case and nested folders all come up.
void MakeRandomTrees(const ComparisonBench& bench, std::mt19937& random);

// What a comparison of the bench's folders must give, found in another way: everything is read into maps by
// folded path first, one side after the other.
struct ExpectedResult {
    std::vector<std::string> rows, records;
};
ExpectedResult Expect(const ComparisonBench& bench);

}  // namespace vantrel::testing
