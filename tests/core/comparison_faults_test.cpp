#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <set>

#include "core/comparison_support.h"
#include "support/faulty_system_calls.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

void MakeTrees(const ComparisonBench& bench) {
    for (const Side side : kBothSides) {
        const bool left = side == Side::Left;
        bench.Write(side, "same", "12");
        bench.Write(side, "changed", left ? "1" : "2", left ? 1'600'000'000 : 1'600'000'100);
        bench.Write(side, "sub/in/both", "1");
        bench.Write(side, "sub/in/changed", left ? "1" : "22");
        bench.Write(side, left ? "sub/left/a" : "sub/right/a", "1");
        bench.Write(side, "equal/x", "1");
    }
    bench.Write(Side::Left, "alone", "1");
    bench.Write(Side::Right, "only/x", "1");
}

bool SaysOrphan(const std::string& line) {
    return line.find("|Orphan") != std::string::npos;
}

// What a sound run found, to hold the others against.
struct Sound {
    explicit Sound(const ComparisonBench& bench) : rows(bench.Rows()), records(bench.Records()) {
        for (const auto* lines : {&rows, &records})
            std::copy_if(lines->begin(), lines->end(), std::inserter(orphans, orphans.end()), SaysOrphan);
    }
    std::vector<std::string> rows, records;
    std::set<std::string> orphans;
};

// The result of a run in which a call failed is the right one, or there is none, or what is not known was
// told and concludes nothing. True in the last case.
bool IsToldAsUnknown(ComparisonBench& bench, CompareOutcome outcome, const Sound& sound) {
    if (outcome != CompareOutcome::Completed) {
        EXPECT_THAT(bench.Rows(), ElementsAre("sentinel <> sentinel"));
        EXPECT_FALSE(bench.tools.messages.shown.empty());
        return false;
    }
    std::string why;
    EXPECT_TRUE(IsConsistent(bench.results.hold, &why)) << why;
    const std::vector<std::string> rows = bench.Rows(), records = bench.Records();
    if (rows == sound.rows && records == sound.records) return false;
    EXPECT_TRUE(bench.compare.ErrorsDuringCompare);
    for (const auto* lines : {&rows, &records})
        for (const std::string& line : *lines)
            EXPECT_TRUE(!SaysOrphan(line) || line.find("incomplete") != std::string::npos ||
                        sound.orphans.contains(line))
                << line;
    return true;
}

// Whatever call of the system fails.
TEST(ComparisonFaults, NoFailingCallGivesAWrongResult) {
    struct Case {
        CompareMethod method;
        bool readingWaits;
    };
    for (const Case& each : {Case{CompareMethod::SizeAndDate, false}, Case{CompareMethod::Contents, false},
                             Case{CompareMethod::Contents, true}}) {
        FaultySystemCalls calls;
        ComparisonBench bench(calls);
        MakeTrees(bench);
        bench.compare.CompareMethod = each.method;
        bench.SetReadingWaits(each.readingWaits);
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        const Sound sound(bench);
        calls.ResetCount();
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        const std::size_t count = calls.Count();

        std::size_t told = 0;
        for (const int code : {EIO, EACCES, ENOENT}) {
            for (std::size_t at = 1; at <= count; ++at) {
                SCOPED_TRACE("call " + std::to_string(at) + " of " + std::to_string(count) + ", error " +
                             std::to_string(code));
                for (const Side side : kBothSides) bench.results.hold[side].SetToSentinel();
                bench.tools.messages.shown.clear();
                calls.ClearFaults();
                calls.ResetCount();
                calls.FailAt(at, code);
                const CompareOutcome outcome = bench.Run();
                calls.ClearFaults();
                told += IsToldAsUnknown(bench, outcome, sound) ? 1 : 0;
            }
        }
        EXPECT_GT(told, 0U);
    }
}

// One of the two folders breaks off, vanishes after the check, or may not be read.
TEST(ComparisonFaults, AnIncompleteScanIsNeverShown) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    MakeTrees(bench);
    // The check looks at one entry of each folder, then the scans list them.
    for (const std::size_t listing : {3, 4, 5, 6}) {
        calls.ResetCount();
        calls.FailAt(Call::GetDents, listing, EIO);
        bench.tools.messages.shown.clear();
        EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
        calls.ClearFaults();
        ASSERT_EQ(bench.tools.messages.shown.size(), 1U);
        EXPECT_THAT(bench.tools.messages.shown[0].text, HasSubstr("Source: CDir.PopulateSelfWithFiles"));
        EXPECT_THAT(bench.Rows(), ElementsAre("sentinel <> sentinel"));
    }

    calls.ResetCount();
    calls.FailAt(Call::GetDents, 2, EACCES);
    bench.tools.messages.shown.clear();
    EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
    calls.ClearFaults();
    EXPECT_EQ(bench.tools.messages.Line(0), "Compare Failed: An error occurred while processing \"" +
                                                (bench.folder / "right/") +
                                                "\".\r\n\r\nYou do not have permission to access this "
                                                "folder.  Please see your Network Administrator.");

    calls.before = [&](const FaultySystemCalls::Record&) {
        if (bench.progress.shown) std::filesystem::rename(bench.folder / "left", bench.folder / "gone");
        if (bench.progress.shown) calls.before = nullptr;
    };
    bench.tools.messages.shown.clear();
    EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
    EXPECT_THAT(bench.tools.messages.shown.at(0).text, HasSubstr("Source: CDir.PopulateSelfWithFiles"));
}

// An entry that cannot be looked at could be anything: its counterpart is no orphan.
TEST(ComparisonFaults, AnUnknownEntryIsShownAndNothingConcludedFromIt) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    for (const Side side : kBothSides) {
        bench.Write(side, "x", "1");
        bench.Write(side, "sub/y", "1");
    }
    bench.Write(Side::Right, "sub/Y/z", "1");
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);  // from now on every run makes the same calls
    for (const std::string name : {"x", "y", "sub"}) {
        calls.ResetCount();
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        const auto& sequence = calls.Sequence();
        // The first look may be that of the check; the last two are those of the listings, left and right,
        // but that the walk looks once more whether its sub-folder is a link.
        std::vector<std::size_t> looks;
        for (std::size_t i = 0; i < sequence.size(); ++i)
            if (sequence[i].call == Call::Statx && sequence[i].path == name) looks.push_back(i + 1);
        if (name == "sub") looks.resize(looks.size() - std::min<std::size_t>(looks.size(), 2));
        ASSERT_GE(looks.size(), 2U);
        calls.FailAt(looks[looks.size() - 2], EIO);
        calls.ResetCount();
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        calls.ClearFaults();
        EXPECT_TRUE(bench.compare.ErrorsDuringCompare);
        EXPECT_THAT(bench.Log(), HasSubstr("Error: What this is could not be found out."));
        // Equal names pair first, so that "Y/z" stands alone beside the pair of "y".
        const std::vector<std::string> rows = bench.Rows(), records = bench.Records();
        EXPECT_EQ(records.size(), name == "x" ? 1U : name == "y" ? 2U : 0U) << name;
        ASSERT_EQ(rows.size(), 2U) << name;
        const std::string& line = name == "x" ? rows[0] : name == "sub" ? rows[1] : records.at(0);
        const std::string text = name == "sub" ? "\\sub" : name;
        EXPECT_THAT(
            line, HasSubstr(DescribeUnknown(text, name, UnknownReason::NotTold) + std::string(kBetweenSides) +
                            DescribeUnknown(text, name, UnknownReason::None)));
    }
}

// What the options leave out, be it a file or a folder, need not be known.
TEST(ComparisonFaults, AnUnknownEntryThatIsLeftOutAnywayIsNoTrouble) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    for (const Side side : kBothSides)
        for (const char* name : {"sub/.x/a", "sub/y"}) bench.Write(side, name, "1");
    for (const bool foldersToo : {false, true}) {
        bench.compare.ExcludeHiddenFiles = true;
        bench.compare.ExcludeHiddenFolders = foldersToo;
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        calls.ResetCount();
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        const auto& sequence = calls.Sequence();
        const auto look = std::find_if(sequence.begin(), sequence.end(), [](const auto& record) {
            return record.call == Call::Statx && record.path == ".x";
        });
        ASSERT_NE(look, sequence.end());
        calls.FailAt(static_cast<std::size_t>(look - sequence.begin()) + 1, EACCES);
        calls.ResetCount();
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        calls.ClearFaults();
        EXPECT_EQ(bench.compare.ErrorsDuringCompare, !foldersToo);
        EXPECT_EQ(bench.Rows().at(0).find("incomplete") == std::string::npos, foldersToo);
    }
}

// Why trouble could not be logged is given back at the end, once, whatever part of the comparison met it.
TEST(ComparisonFaults, ALogThatCannotBeWrittenIsGivenBack) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    for (const Side side : kBothSides) bench.Write(side, "sub/x", "12");
    const std::string log = bench.tools.folder / "ERRORLOG.TXT";
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call != Call::Open || record.path != "sub" || std::filesystem::is_directory(log)) return;
        std::filesystem::remove(log);
        std::filesystem::create_directory(log);
        calls.FailAt(Call::GetDents, calls.Count(Call::GetDents) + 1, EIO);
    };
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_EQ(bench.results.unlisted.size(), 1U);
    EXPECT_TRUE(bench.tools.messages.shown.empty());
    EXPECT_THAT(bench.unlogged.Description(), HasSubstr("ERRORLOG.TXT"));
    EXPECT_TRUE(bench.compare.ErrorsDuringCompare);
    EXPECT_TRUE(bench.tools.log.TakeFailure().IsOk());
}

// One that cannot be emptied at the start stops nothing either.
TEST(ComparisonFaults, ALogThatCannotBeEmptiedIsGivenBackAfterTheComparison) {
    ComparisonBench bench;
    for (const Side side : kBothSides) bench.Write(side, "same", "12");
    std::filesystem::create_directory(bench.tools.folder / "ERRORLOG.TXT");
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_EQ(bench.results.hold[Side::Left].Count(), 1U);
    EXPECT_TRUE(bench.tools.messages.shown.empty());
    EXPECT_THAT(bench.unlogged.Description(), HasSubstr("ERRORLOG.TXT"));
}

}  // namespace
}  // namespace vantrel::testing
