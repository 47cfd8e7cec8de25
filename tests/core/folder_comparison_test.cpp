#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/comparison_support.h"
#include "platform/names/names.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr FileTime kTime{132'444'736'000'000'000};  // of the files that ComparisonBench writes

std::string Orphan(Side side, std::string_view name, std::string_view real, std::int64_t size) {
    const std::string half = DescribeFile(name, real, size, kTime, ResultType::Orphan);
    return side == Side::Left ? half + std::string(kBetweenSides) : std::string(kBetweenSides) + half;
}

std::string FolderPair(std::string_view text, std::int64_t left, std::int64_t right, ResultType type,
                       bool incomplete = false) {
    return DescribeFolder(text, text.substr(1), left, type, incomplete) + std::string(kBetweenSides) +
           DescribeFolder(text, text.substr(1), right, type, incomplete);
}

std::vector<std::string> Shown(const ComparisonBench& bench) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < bench.tools.messages.shown.size(); ++i)
        lines.push_back(bench.tools.messages.Line(i));
    return lines;
}

TEST(FolderComparison, ARunShowsItsStepsInOrder) {
    ComparisonBench bench;
    bench.Write(Side::Left, "a", "1");
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    const std::string left = bench.folder / "left/", right = bench.folder / "right/";
    EXPECT_THAT(bench.display.calls, ElementsAre("BeginScan", "SetPathText " + left, "SetPathText " + right));
    EXPECT_EQ(bench.results.folders[Side::Left], left);
    EXPECT_THAT(bench.progress.messages,
                ElementsAre("Examining the left folder.  Press ESC to cancel...",
                            "Examining the right folder. Press ESC to cancel...",
                            "Comparing Size and Date/Time.  Press ESC to cancel...",
                            "Comparing files in sub-folders.  Press ESC to cancel..."));
    EXPECT_EQ(bench.display.filterPanel, "No Filters");
    EXPECT_FALSE(bench.compare.CompareCancelled);

    // Without a window it does the same; the progress window is the caller's to unload.
    bench.compare.ExcludeFilters = "*.bak";
    EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_EQ(bench.display.filterPanel, "Filters");
    const PerSide<std::string> paths = bench.display.paths;
    const ComparisonReport report = bench.comparison.Compare(paths, nullptr);
    EXPECT_EQ(report.outcome, CompareOutcome::Completed);
    EXPECT_EQ(report.results.hold[Side::Left].Count(), 1U);
    EXPECT_TRUE(bench.progress.shown);
}

TEST(FolderComparison, EveryFailedCheckSaysWhyAndLeavesNoResult) {
    ComparisonBench bench;
    bench.Write(Side::Left, "file", "1");
    bench.folder.MakeFolder("other/Left");
    ASSERT_EQ(0, symlink((bench.folder / "left").c_str(), (bench.folder / "link").c_str()));
    const std::string left = bench.folder / "left", file = left + "/file", missing = left + "/no";
    const std::string same = "Folders Are Same: Please specify two different folders to compare.";
    const auto processing = [](const std::string& path, const std::string& what) {
        return "Compare Failed: An error occurred while processing \"" + path +
               "\".\r\n\r\nMake sure that the " + what + " exists and that you have permission to access it.";
    };
    struct Case {
        std::string left, right, message;
    };
    const Case cases[] = {
        {"x", left,
         "Invalid Path: \"x\" is not a valid path.\r\n\r\nPaths must contain at least two characters.\r\nex) "
         " C:"},
        {left, "",
         "Invalid Path: \"\" is not a valid path.\r\n\r\nPaths must contain at least two characters.\r\nex)  "
         "C:"},
        {missing, left, processing(missing, "folder")},
        {left, file, processing(file, "folder")},
        {"left", left, processing("left", "drive")},
        {left, left, same},
        {left, left + "/", same},
        {left, bench.folder / "link", same},
        {bench.folder / "other/Left", bench.folder / "other/./Left", same},
    };
    for (const Case& failing : cases) {
        bench.display.paths = {{failing.left, failing.right}};
        bench.display.calls.clear();
        bench.tools.messages.shown.clear();
        EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
        EXPECT_THAT(Shown(bench), ElementsAre(failing.message));
        EXPECT_THAT(bench.display.calls, IsEmpty());
        EXPECT_TRUE(bench.compare.CompareCancelled && !bench.progress.shown);
    }
    // The root is one character long and a folder all the same.
    EXPECT_TRUE(bench.comparison.Dir(Side::Left).IsValidPath("/"));
}

TEST(FolderComparison, ASlowConnectionOffersSmallerChunks) {
    const std::string offer =
        "Performance Monitor: A slow connection has been detected.\r\nYou should reduce your Chunk Size to "
        "10,000 bytes or less.\r\n\r\nWould you like to do this?";
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel}) {
        ComparisonBench bench;
        bench.Write(Side::Left, "file", "1");
        bench.tools.clock.step = 10'001;
        bench.compare.CompareMethod = CompareMethod::Contents;
        bench.tools.messages.answers = {answer};
        EXPECT_EQ(bench.Run(),
                  answer == MessageAnswer::Cancel ? CompareOutcome::NoResult : CompareOutcome::Completed);
        EXPECT_THAT(Shown(bench), ElementsAre(offer));
        EXPECT_EQ(bench.compare.ChunkSize, answer == MessageAnswer::Yes ? 10'000 : 500'000);
    }
}

// A cancel ends a run at whatever yield it comes, and what is shown then is nothing or all.
TEST(FolderComparison, ACancelAtAnyYieldLeavesNothingHalfDone) {
    for (const CompareMethod method :
         {CompareMethod::SizeAndDate, CompareMethod::Contents, CompareMethod::Sha1}) {
        ComparisonBench bench;
        for (const Side side : kBothSides) {
            bench.Write(side, "same", "123");
            bench.Write(side, "sub/deep/differs", side == Side::Left ? "1" : "2");
        }
        bench.Write(Side::Left, "alone", "1");
        bench.Write(Side::Right, "only/x", "1");
        bench.compare.CompareMethod = method;
        bench.compare.ChunkSize = 2;
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        const std::vector<std::string> rows = bench.Rows();
        ASSERT_EQ(rows.size(), 4U);
        const std::size_t yields = bench.tools.loop.yields;

        std::size_t cancelled = 0;
        for (std::size_t at = 1; at <= yields; ++at) {
            bench.tools.loop.yields = 0;
            bench.tools.loop.cancelAt = at;
            const CompareOutcome outcome = bench.Run();
            if (outcome == CompareOutcome::Completed) {
                EXPECT_EQ(bench.Rows(), rows);
                continue;
            }
            ++cancelled;
            EXPECT_EQ(outcome, CompareOutcome::NoResult);
            EXPECT_THAT(bench.Rows(), ElementsAre("sentinel <> sentinel"));
            EXPECT_TRUE(bench.results.SubFolderDiffs.IsEmpty());
        }
        EXPECT_EQ(cancelled, yields);
    }
}

TEST(FolderComparison, OddEntriesAndNames) {
    ComparisonBench bench;
    const std::string odd = std::string("\\first") + "\n\xFF";
    bench.Write(Side::Left, odd, "1");
    bench.Write(Side::Left, "No Comparison Results", "1");
    bench.Write(Side::Right, "Twin", "11");
    bench.Write(Side::Right, "twin", "2");
    bench.Write(Side::Left, "tWIN", "11");
    bench.Write(Side::Left, "sub/target", "1");
    bench.folder.MakeFolder("right/sub");
    ASSERT_EQ(0, mkfifo((bench.folder / "left/fifo").c_str(), 0600));
    ASSERT_EQ(0, mkfifo((bench.folder / "left/sub/fifo").c_str(), 0600));
    ASSERT_EQ(0, symlink("nowhere", (bench.folder / "left/dangling").c_str()));
    ASSERT_EQ(0, symlink("sub/target", (bench.folder / "right/link").c_str()));  // dangling on this side
    ASSERT_EQ(0, symlink("..", (bench.folder / "left/sub/loop").c_str()));
    ASSERT_EQ(0, symlink("../sub", (bench.folder / "left/sub/self").c_str()));
    ASSERT_EQ(0, symlink("sub/target", (bench.folder / "left/link").c_str()));
    ASSERT_EQ(0, symlink("../right/sub", (bench.folder / "left/across").c_str()));

    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    const std::string name = NameFromSystem(odd);
    const auto rows = bench.Rows();
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_THAT(rows[0], ::testing::StartsWith("link|link|1|"));
    EXPECT_EQ(rows[1], Orphan(Side::Left, "No Comparison Results", "No Comparison Results", 1));
    EXPECT_EQ(rows[2], DescribeFile("tWIN", "tWIN", 2, kTime, ResultType::Same) + std::string(kBetweenSides) +
                           DescribeFile("tWIN", "Twin", 2, kTime, ResultType::Same));
    EXPECT_EQ(rows[3], Orphan(Side::Left, name, name, 1));
    EXPECT_EQ(rows[4],
              DescribeFolder("\\across", "across", 0, ResultType::OrphanFolder) + std::string(kBetweenSides));
    EXPECT_EQ(rows[5], FolderPair("\\sub", 1, 0, ResultType::DifferentFolder));
    EXPECT_THAT(bench.Records(), ElementsAre("\\sub: " + Orphan(Side::Left, "target", "target", 1)));
    EXPECT_THAT(bench.Log(), HasSubstr("letter case only: " + bench.folder.Path() + "right/twin"));
    EXPECT_FALSE(bench.compare.ErrorsDuringCompare);
    EXPECT_EQ(bench.results.hold[Side::Left][1].kind, RowKind::File);
}

// Deeper than the walk holds folders open, and than one call of the system takes as a path.
TEST(FolderComparison, TreesMayBeDeepAndPathsLong) {
    ComparisonBench bench;
    const std::string part(180, 'd');
    for (const Side side : kBothSides) {
        int folder = open((bench.folder / (ComparisonBench::NameOf(side))).c_str(), O_DIRECTORY | O_CLOEXEC);
        for (int level = 0; level < 100; ++level) {
            // A second folder on each level, so that every one is needed again after the way down.
            for (const std::string& name : {part, std::string("z")})
                ASSERT_EQ(0, mkdirat(folder, name.c_str(), 0700));
            const int below = openat(folder, part.c_str(), O_DIRECTORY | O_CLOEXEC);
            if (side == Side::Left && level % 10 == 5) {
                const int file = openat(folder, "z/file", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
                ASSERT_EQ(1, write(file, "1", 1));
                close(file);
            }
            close(folder);
            folder = below;
        }
        close(folder);
    }
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_THAT(bench.Rows(), ElementsAre(FolderPair("\\" + part, 10, 0, ResultType::DifferentFolder),
                                          FolderPair("\\z", 0, 0, ResultType::IdenticalFolder)));
    EXPECT_EQ(bench.Records().size(), 10U);
    EXPECT_FALSE(bench.compare.ErrorsDuringCompare);
}

}  // namespace
}  // namespace vantrel::testing
