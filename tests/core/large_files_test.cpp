// Files of 2 GiB and more, by either rule of sizes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "core/comparison_support.h"
#include "settings/options.h"
#include "support/faulty_system_calls.h"
#include "support/sparse_file.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::int64_t kGiB = std::int64_t{1} << 30;
constexpr time_t kTimeOfLarge = 1'600'000'000;
constexpr std::int64_t kTicksOfLarge = 132'444'736'000'000'000;

void UseTrueSizes(CCompare& compare) {
    Options options;
    options.trueSizes = true;
    options.jobs = 1;
    compare.TakeOptions(options);
}

TEST(LargeFiles, TheRulesOfSizes) {
    struct Case {
        std::uint64_t bytes;
        std::int64_t byWords;
    };
    for (const Case& each : {Case{0, 0}, Case{0x7FFFFFFF, 0x7FFFFFFF}, Case{0x80000000, -0x80000000LL},
                             Case{0xFFFFFFFF, -1}, Case{0x3'00000005, 2}}) {
        EXPECT_EQ(SizeByRule(each.bytes, SizeRule::Words).Whole(), each.byWords);
        EXPECT_EQ(SizeByRule(each.bytes, SizeRule::True).Whole(), static_cast<std::int64_t>(each.bytes));
        EXPECT_EQ(each.bytes >= kLeastLargeFile, each.byWords != static_cast<std::int64_t>(each.bytes));
    }
    EXPECT_GT(SizeByRule(~std::uint64_t{0}, SizeRule::True), Currency());
}

// Two files that are one by their words, in the folders and below a sub-folder.
TEST(LargeFiles, RowsAndRecordsHaveTheSizesOfTheRule) {
    ComparisonBench bench;
    WriteSparse(bench.folder, "left/big", 4 * kGiB + 5, kTimeOfLarge);
    WriteSparse(bench.folder, "right/big", 4, kTimeOfLarge);
    WriteSparse(bench.folder, "left/sub/big", 3 * kGiB, kTimeOfLarge);
    WriteSparse(bench.folder, "right/sub/big", 7 * kGiB - 1, kTimeOfLarge);
    const auto file = [](std::int64_t size, ResultType type) {
        return DescribeFile("big", "big", size, {kTicksOfLarge}, type);
    };
    const auto pair = [](const std::string& left, const std::string& right) {
        return left + std::string(kBetweenSides) + right;
    };
    const auto folder = [](std::int64_t size, ResultType type) {
        return DescribeFolder("\\sub", "sub", size, type);
    };
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_TRUE(bench.compare.MetLargeFiles && bench.compare.OfferTrueSizes);
    EXPECT_EQ(bench.Rows().at(0), pair(file(4, ResultType::Same), file(4, ResultType::Same)));

    UseTrueSizes(bench.compare);
    EXPECT_FALSE(bench.compare.OfferTrueSizes);
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_THAT(bench.Rows(),
                ElementsAre(pair(file(4 * kGiB + 5, ResultType::Binary), file(4, ResultType::Binary)),
                            pair(folder(3 * kGiB, ResultType::DifferentFolder),
                                 folder(7 * kGiB - 1, ResultType::DifferentFolder))));
    EXPECT_THAT(bench.Records(), ElementsAre("\\sub: " + pair(file(3 * kGiB, ResultType::Binary),
                                                              file(7 * kGiB - 1, ResultType::Binary))));
}

// What is met anew in each run, in a sub-folder as well; what the filters leave out is not.
TEST(LargeFiles, TheRunTellsThatItMetOne) {
    ComparisonBench bench;
    const auto met = [&] {
        EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
        return bench.compare.MetLargeFiles;
    };
    WriteSparse(bench.folder, "left/sub/x", 2 * kGiB - 1, kTimeOfLarge);
    WriteSparse(bench.folder, "right/sub/x", 1, kTimeOfLarge);
    EXPECT_FALSE(met());
    WriteSparse(bench.folder, "right/sub/alone.big", 2 * kGiB, kTimeOfLarge);
    EXPECT_TRUE(met());
    bench.compare.ExcludeFilters = "*.big";
    EXPECT_FALSE(met());
    WriteSparse(bench.folder, "left/y", 2 * kGiB, kTimeOfLarge);
    EXPECT_TRUE(met());
}

// To their ends, and told by chunk as any others. With the other rule such a pair is judged by its date.
TEST(LargeFiles, ContentsAreComparedWhole) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    for (const char* name : {"left/big", "right/big"})
        WriteSparse(bench.folder, name, 2 * kGiB + 10, kTimeOfLarge);
    bench.compare.CompareMethod = CompareMethod::Contents;
    const auto types = [&] {
        EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
        return bench.results.hold[Side::Left][0].type;
    };
    EXPECT_EQ(types(), ResultType::Same);
    EXPECT_THAT(bench.Log(), HasSubstr("Error: Overflow"));

    UseTrueSizes(bench.compare);
    bench.compare.CompareMethod = CompareMethod::Contents;
    // Those of contents, of which there are many, end where the table of mounts is read again.
    std::size_t reads = 0;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (reads < 1'000 && record.path.ends_with("mountinfo")) reads = calls.Count(Call::PRead);
    };
    calls.ResetCount();
    EXPECT_EQ(types(), ResultType::Same);
    EXPECT_THAT(bench.Log(), IsEmpty());

    calls.FailAt(Call::PRead, reads, EIO);
    calls.ResetCount();
    EXPECT_EQ(types(), ResultType::Same);
    EXPECT_THAT(bench.Log(), HasSubstr("Process: Reading bytes 2147000001 to 2147483658"));
}

}  // namespace
}  // namespace vantrel::testing
