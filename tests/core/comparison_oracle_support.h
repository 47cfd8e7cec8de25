#pragma once

#include <random>
#include <string>
#include <vector>

#include "core/comparison_support.h"

namespace vantrel::testing {

// The real system, which denies every look at entries of one name, and of another says that they are not
// there although their folder names them.
class CornerCalls : public SystemCalls {
  public:
    static constexpr const char* kDenied = "denied";
    static constexpr const char* kFlickers = "flickers";

    int OpenAt(int folder, const char* path, int flags, mode_t mode) override;
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override;
};

// Fills both folders of the bench with trees of the same few names, so that pairs, orphans, names that differ
// in letter case only and nested folders all come up; with `corners` also links of all kinds, special objects
// and entries that cannot be looked at.
void MakeRandomTrees(const ComparisonBench& bench, bool corners, std::mt19937& random);

// What a comparison of the bench's folders must give, found in another way: each entry is read as it is met,
// and whether two are a pair is asked of each two of a folder.
struct ExpectedResult {
    std::vector<std::string> rows, records;
    bool trouble = false;  // something could not be looked at
};
ExpectedResult Expect(const ComparisonBench& bench);

}  // namespace vantrel::testing
