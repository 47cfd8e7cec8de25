#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/comparison_oracle_support.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAreArray;

struct Filters {
    const char* include;
    const char* exclude;
};
constexpr Filters kFilters[] = {
    {"", ""}, {"*", "b*"}, {"*.txt,a", ""}, {"*.txt,\\b*", ".*"}, {"*", "\\c*,\\a,*.doc"}};

// Every tree is compared by every method under every combination of allowances, with one of the filters.
TEST(FolderComparison, AgreesWithTheOracleOnRandomTrees) {
    std::mt19937 random(20'201'231);
    CornerCalls corners;
    for (int tree = 0; tree < 120; ++tree) {
        // Every second one is of files and folders alone.
        ComparisonBench bench(corners);
        MakeRandomTrees(bench, tree / 2 % 2 == 1, random);
        bench.SetReadingWaits(tree % 2 == 1);
        for (int options = tree % 2; options < 16; options += 2) {
            const Filters& filters = kFilters[(tree + options) % std::size(kFilters)];
            bench.compare.CompareMethod = static_cast<CompareMethod>(options / 4);
            bench.compare.IgnoreFAT_NTFS_TwoSecDiff = options % 2 == 1;
            bench.compare.IgnoreFAT_NTFS_DaylightSavings = options / 2 % 2 == 1;
            bench.compare.IncludeFilters = filters.include;
            bench.compare.ExcludeFilters = filters.exclude;
            bench.compare.ExcludeHiddenFiles = tree % 3 == 0;
            bench.compare.ExcludeHiddenFolders = tree % 4 == 0;
            bench.compare.SetCompareSubFolders(options % 5 != 4);
            const ExpectedResult expected = Expect(bench);

            std::string log;
            for (const int jobs : {1, 4}) {
                SCOPED_TRACE("tree " + std::to_string(tree) + ", options " + std::to_string(options) + ", " +
                             std::to_string(jobs) + " jobs");
                bench.compare.Jobs = jobs;
                ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
                std::string why;
                EXPECT_TRUE(IsConsistent(bench.results.hold, &why)) << why;
                ASSERT_THAT(bench.Rows(), ElementsAreArray(expected.rows));
                ASSERT_THAT(bench.Records(), ElementsAreArray(expected.records));
                EXPECT_EQ(bench.compare.ErrorsDuringCompare, expected.trouble);
                // With workers the log is the same, too.
                if (jobs == 1)
                    log = bench.Log();
                else
                    EXPECT_EQ(log, bench.Log());
                bench.tools.messages.shown.clear();
            }
        }
    }
}

}  // namespace
}  // namespace vantrel::testing
