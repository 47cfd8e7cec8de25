#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "core/comparison_support.h"
#include "core/unlisted_folders.h"
#include "support/faulty_system_calls.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::int64_t kTicks = 132'444'736'000'000'000;

// Lets the first folder "locked" of the next run, that of the left side, fail to be opened or to be listed.
void FailInLocked(FaultySystemCalls& calls, ComparisonBench& bench, Call failing) {
    bool armed = false;
    std::size_t listings = 0;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (armed || record.call != Call::Open || record.path != "locked") return;
        armed = true;
        listings = calls.Count(Call::GetDents);
    };
    calls.ResetCount();
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    // The first "locked" is that of the left side.
    const auto& sequence = calls.Sequence();
    const auto opened = std::find_if(sequence.begin(), sequence.end(), [](const auto& record) {
        return record.call == Call::Open && record.path == "locked";
    });
    ASSERT_NE(opened, sequence.end());
    calls.before = nullptr;
    if (failing == Call::Open)
        calls.FailAt(static_cast<std::size_t>(opened - sequence.begin()) + 1, EACCES);
    else
        calls.FailAt(Call::GetDents, listings + 1, EIO);
    calls.ResetCount();
}

// Nothing interrupts the run; whoever started it tells of all such folders at once.
void ExpectToldOnce(ComparisonBench& bench, const std::string& folder) {
    EXPECT_TRUE(bench.tools.messages.shown.empty());
    ReportUnlistedFolders(bench.tools.Get().reporter, bench.results.unlisted);
    ASSERT_EQ(bench.tools.messages.shown.size(), 1U);
    EXPECT_THAT(bench.tools.messages.shown[0].text, HasSubstr("Source: modVantrel.GetFolderInfo"));
    EXPECT_TRUE(bench.compare.ErrorsDuringCompare);
    EXPECT_THAT(
        bench.tools.folder.Read("ERR_DETAIL.TXT"),
        HasSubstr(
            "Analysis of folder failed.  Comparison results will be invalid!\r\nCorrect the problem with "
            "this folder before attempting to sync it.\r\n\r\nFolder: " +
            folder + "\r\nFile: "));
    EXPECT_THAT(bench.Log(), HasSubstr("File Name: " + folder));
}

class UnlistedFolder : public ::testing::TestWithParam<Call> {};

// A folder inside a sub-folder cannot be opened, or its listing breaks off.
TEST_P(UnlistedFolder, IsUnknownAndNotEmpty) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    for (const Side side : kBothSides) bench.Write(side, "sub/top", side == Side::Left ? "1" : "22");
    for (const char* name : {"sub/locked/a", "sub/locked/below/b", "sub/other"})
        bench.Write(Side::Right, name, "1");
    bench.Write(Side::Left, "sub/locked/a", "1");

    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    const std::size_t recordsBefore = bench.Records().size();
    EXPECT_EQ(recordsBefore, 3U);
    ASSERT_NO_FATAL_FAILURE(FailInLocked(calls, bench, GetParam()));
    bench.tools.messages.shown.clear();
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);

    EXPECT_THAT(bench.Records(),
                ElementsAre("\\sub: " + std::string(kBetweenSides) +
                                DescribeFile("other", "other", 1, {kTicks}, ResultType::Orphan),
                            "\\sub: " + DescribeFile("top", "top", 1, {kTicks}, ResultType::Binary) +
                                std::string(kBetweenSides) +
                                DescribeFile("top", "top", 2, {kTicks}, ResultType::Binary)));
    EXPECT_THAT(bench.Rows(),
                ElementsAre(DescribeFolder("\\sub", "sub", 1, ResultType::DifferentFolder, true) +
                            std::string(kBetweenSides) +
                            DescribeFolder("\\sub", "sub", 5, ResultType::DifferentFolder, true)));
    const CSubFolderDiffs* diffs = bench.results.SubFolderDiffs.Find("SUB");
    ASSERT_NE(diffs, nullptr);
    ASSERT_EQ(diffs->UnknownPlaces().size(), 1U);
    EXPECT_EQ(diffs->UnknownPlaces()[0].side, Side::Left);
    EXPECT_EQ(diffs->UnknownPlaces()[0].path, "locked");
    ExpectToldOnce(bench, bench.folder / "left/sub/locked");
}

INSTANTIATE_TEST_SUITE_P(Calls, UnlistedFolder, ::testing::Values(Call::Open, Call::GetDents),
                         [](const auto& tested) { return tested.param == Call::Open ? "Open" : "GetDents"; });

// Folders whose names differ in letter case only are several folders: the one that broke off is unknown.
TEST(UnlistedFolders, OfCollidingFoldersTheUnlistedOneIsNamed) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    for (const char* name : {"sub/Same/a", "sub/same/b"}) bench.Write(Side::Left, name, "1");
    bench.Write(Side::Right, "sub/Same/a", "1");
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call == Call::Open && record.path == "same")
            calls.FailAt(Call::GetDents, calls.Count(Call::GetDents) + 1, EIO);
    };
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_THAT(bench.Log(), HasSubstr("File Name: " + bench.folder / "left/sub/same"));
    EXPECT_TRUE(bench.Records().empty());
    const CSubFolderDiffs* diffs = bench.results.SubFolderDiffs.Find("sub");
    ASSERT_NE(diffs, nullptr);
    ASSERT_EQ(diffs->UnknownPlaces().size(), 1U);
    EXPECT_EQ(diffs->UnknownPlaces()[0].path, "same");
}

}  // namespace
}  // namespace vantrel::testing
