#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <set>

#include "core/comparison_support.h"
#include "core/unlisted_folders.h"
#include "support/faulty_system_calls.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::int64_t kTicks = 132'444'736'000'000'000;

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

// Whatever call of the system fails: the result is the right one, or there is none, or what is not known was
// told and concludes nothing.
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
        const std::vector<std::string> rows = bench.Rows(), records = bench.Records();
        std::set<std::string> orphans;
        for (const auto* lines : {&rows, &records})
            std::copy_if(lines->begin(), lines->end(), std::inserter(orphans, orphans.end()), SaysOrphan);
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
                if (outcome != CompareOutcome::Completed) {
                    EXPECT_THAT(bench.Rows(), ElementsAre("sentinel <> sentinel"));
                    EXPECT_FALSE(bench.tools.messages.shown.empty());
                    continue;
                }
                std::string why;
                EXPECT_TRUE(IsConsistent(bench.results.hold, &why)) << why;
                if (bench.Rows() == rows && bench.Records() == records) continue;
                ++told;
                EXPECT_TRUE(bench.compare.ErrorsDuringCompare);
                const std::vector<std::string> seenRows = bench.Rows(), seenRecords = bench.Records();
                for (const auto* lines : {&seenRows, &seenRecords}) {
                    for (const std::string& line : *lines) {
                        if (!SaysOrphan(line)) continue;
                        const bool incomplete = line.find("incomplete") != std::string::npos;
                        EXPECT_TRUE(incomplete || orphans.contains(line)) << line;
                    }
                }
            }
        }
        EXPECT_GT(told, 0U);
    }
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
    if (GetParam() == Call::Open)
        calls.FailAt(static_cast<std::size_t>(opened - sequence.begin()) + 1, EACCES);
    else
        calls.FailAt(Call::GetDents, listings + 1, EIO);
    calls.ResetCount();
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

    const std::string folder = bench.folder / "left/sub/locked";
    // Nothing interrupts the run; whoever started it tells of all such folders at once.
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

INSTANTIATE_TEST_SUITE_P(Calls, UnlistedFolder, ::testing::Values(Call::Open, Call::GetDents),
                         [](const auto& tested) { return tested.param == Call::Open ? "Open" : "GetDents"; });

// Folders whose names differ in letter case only are several folders: the one that broke off is unknown.
TEST(ComparisonFaults, OfCollidingFoldersTheUnlistedOneIsNamed) {
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

// By contents a file is looked at when it is opened: what became of it since the folder was listed counts.
TEST(ComparisonFaults, FilesThatChangeBetweenListingAndOpening) {
    struct Case {
        const char* what;
        std::function<void(const std::string& path)> change;
        std::vector<std::string> types;  // of "y" on the left and on the right, where there is a record
        bool incomplete;
    };
    const Case cases[] = {
        {"nothing", [](const std::string&) {}, {}, false},
        {"gone", [](const std::string& path) { std::filesystem::remove(path); }, {"Orphan"}, false},
        {"a FIFO",
         [](const std::string& path) {
             std::filesystem::remove(path);
             ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
         },
         {"Unknown"},
         false},
        {"a folder",
         [](const std::string& path) {
             std::filesystem::remove(path);
             std::filesystem::create_directory(path);
         },
         {"Unknown"},
         true},
        {"longer",
         [](const std::string& path) { std::filesystem::resize_file(path, 7); },
         {"Newer", "Older"},
         false},
        {"a link to the same bytes",
         [](const std::string& path) {
             std::filesystem::remove(path);
             std::filesystem::create_symlink("x", path);
         },
         {},
         false},
    };
    for (const Case& each : cases) {
        for (const int run : {0, 1, 2, 3}) {
            const Side changed = run % 2 == 0 ? Side::Left : Side::Right;
            SCOPED_TRACE(each.what);
            FaultySystemCalls calls;
            ComparisonBench bench(calls);
            bench.SetReadingWaits(run / 2 == 1);
            for (const Side side : kBothSides)
                for (const char* name : {"sub/v", "sub/w", "sub/x", "sub/y", "sub/z"})
                    bench.Write(side, name, "12");
            bench.compare.CompareMethod = CompareMethod::Contents;
            std::size_t opened = 0;
            calls.before = [&](const FaultySystemCalls::Record& record) {
                if (record.call != Call::Open || record.path != "y") return;
                if (opened++ == Index(changed))
                    each.change(bench.folder / (ComparisonBench::NameOf(changed) + "/sub/y"));
            };
            ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
            calls.before = nullptr;
            const std::vector<std::string> records = bench.Records();
            EXPECT_EQ(records.size(), each.types.empty() ? 0U : 1U);
            for (const std::string& type : each.types) EXPECT_THAT(records.at(0), HasSubstr("|" + type));
            EXPECT_EQ(bench.compare.ErrorsDuringCompare, each.incomplete);
            EXPECT_EQ(bench.Rows().at(0).find("incomplete") != std::string::npos, each.incomplete);
        }
    }
}

// Pairs whose sizes differ are opened ahead and need no reading: a slow disk holds up no cancel there.
TEST(ComparisonFaults, ACancelIsHeardWhileFilesAreOpenedAhead) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    bench.SetReadingWaits(true);
    bench.compare.CompareMethod = CompareMethod::Contents;
    for (int i = 0; i < 100; ++i)
        for (const Side side : kBothSides)
            bench.Write(side, "sub/x" + std::to_string(i), side == Side::Left ? "1" : "12");
    std::size_t opened = 0;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call == Call::Open && record.path.starts_with('x') && ++opened == 20)
            bench.tools.loop.cancelled = true;
    };
    EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
    EXPECT_LE(opened, 22U);
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

// What makes trees of small files fast: where reading does not wait, a file that is like its counterpart
// costs two or three calls, and the closing of many at once.
TEST(ComparisonFaults, SmallFilesThatAreAlikeCostFewCalls) {
    constexpr std::size_t kFiles = 300;
    for (const bool readingWaits : {false, true}) {
        FaultySystemCalls calls;
        ComparisonBench bench(calls);
        bench.SetReadingWaits(readingWaits);
        bench.compare.CompareMethod = CompareMethod::Contents;
        const auto count = [&](std::size_t files) {
            for (std::size_t i = 0; i < files; ++i)
                for (const Side side : kBothSides) bench.Write(side, "sub/" + std::to_string(i), "12");
            calls.ResetCount();
            EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
            EXPECT_TRUE(bench.Records().empty());
            EXPECT_THAT(bench.Rows(), ElementsAre(HasSubstr("|" + std::to_string(2 * files) + "|")));
            return calls.Count();
        };
        const std::size_t few = count(kFiles), many = count(2 * kFiles);
        const double perFile = static_cast<double>(many - few) / (2.0 * kFiles);
        EXPECT_LT(perFile, readingWaits ? 4.5 : 3.3);
    }
}

}  // namespace
}  // namespace vantrel::testing
