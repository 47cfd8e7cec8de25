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
    // They are as small already.
    ComparisonBench bench;
    bench.Write(Side::Left, "file", "1");
    bench.tools.clock.step = 10'001;
    bench.compare.CompareMethod = CompareMethod::Contents;
    bench.compare.ChunkSize = 10'000;
    EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_TRUE(Shown(bench).empty());
}

// What such a link leads to is compared further up; of what its counterpart holds nothing is an orphan.
TEST(FolderComparison, ALinkBackToTheComparedFolderHidesNothingOfItsCounterpart) {
    for (const bool deep : {false, true}) {
        ComparisonBench bench;
        const std::string place = deep ? "sub/ring" : "ring";
        bench.Write(Side::Left, deep ? "sub/x" : "x", "1");
        bench.Write(Side::Right, place + "/file", "12");
        ASSERT_EQ(0, symlink(".", (bench.folder / ("left/" + place)).c_str()));
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        for (const std::string& record : bench.Records())
            EXPECT_THAT(record, ::testing::Not(HasSubstr("file"))) << place;
        EXPECT_THAT(bench.Log(), HasSubstr("leads nowhere or in circles"));
        EXPECT_FALSE(bench.compare.ErrorsDuringCompare);
        // Where both lead back they are alike.
        std::filesystem::remove_all(bench.folder / ("right/" + place));
        ASSERT_EQ(0, symlink(".", (bench.folder / ("right/" + place)).c_str()));
        ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
        for (const std::string& row : bench.Rows()) EXPECT_THAT(row, ::testing::Not(HasSubstr("incomplete")));
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
    ASSERT_EQ(rows.size(), 9U);
    EXPECT_THAT(rows[0], ::testing::MatchesRegex("dangling\\|dangling\\|0\\|[0-9]+\\|Orphan\\|link <> "));
    EXPECT_EQ(rows[1], DescribeUnknown("link", "link", UnknownReason::None) + std::string(kBetweenSides) +
                           DescribeUnknown("link", "link", UnknownReason::LeadsNowhere));
    EXPECT_EQ(rows[2], Orphan(Side::Left, "No Comparison Results", "No Comparison Results", 1));
    // Two on one side pair with nothing, and nothing is left out.
    EXPECT_EQ(rows[3], Orphan(Side::Right, "Twin", "Twin", 2));
    EXPECT_EQ(rows[4], Orphan(Side::Left, "tWIN", "tWIN", 2));
    EXPECT_EQ(rows[5], Orphan(Side::Right, "twin", "twin", 1));
    EXPECT_EQ(rows[6], Orphan(Side::Left, name, name, 1));
    EXPECT_EQ(rows[7], DescribeFolder("\\across", "across", 0, ResultType::OrphanFolder, false, true) +
                           std::string(kBetweenSides));
    EXPECT_EQ(rows[8], FolderPair("\\sub", 1, 0, ResultType::DifferentFolder));
    const auto records = bench.Records();
    ASSERT_EQ(records.size(), 3U);
    EXPECT_THAT(records[0], ::testing::MatchesRegex(".*loop\\|loop\\|0\\|[0-9]+\\|Orphan\\|link <> "));
    EXPECT_THAT(records[1], ::testing::MatchesRegex(".*self\\|self\\|0\\|[0-9]+\\|Orphan\\|link <> "));
    EXPECT_EQ(records[2], "\\sub: " + Orphan(Side::Left, "target", "target", 1));
    EXPECT_EQ(bench.results.specialObjects, 2U);
    EXPECT_THAT(bench.Log(), HasSubstr("2 special objects passed over"));
    EXPECT_FALSE(bench.compare.ErrorsDuringCompare);
    EXPECT_EQ(bench.results.hold[Side::Left][2].kind, RowKind::File);
    // What was seen is the link itself, as a later look at the link will see it.
    struct stat own {};
    ASSERT_EQ(0, lstat((bench.folder / "left/dangling").c_str(), &own));
    const Seen* const seen = bench.results.hold[Side::Left][0].seen;
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->id.inode, own.st_ino);
    EXPECT_EQ(seen->changed, FileTime::FromUnix(own.st_ctim.tv_sec, own.st_ctim.tv_nsec));
    const auto& self = bench.results.SubFolderDiffs.Find("sub")->Records(Side::Left).at(1);
    ASSERT_EQ(0, lstat((bench.folder / "left/sub/self").c_str(), &own));
    ASSERT_TRUE(self.seen);
    EXPECT_EQ(self.seen->id.inode, own.st_ino);
}

// Whether two paths are one folder is the file system's to say.
TEST(FolderComparison, PathsThatDifferInLetterCaseOnlyAreTwoFolders) {
    ComparisonBench bench;
    for (const char* name : {"a/x", "A/x"}) bench.folder.Write(name, name, 1'600'000'000);
    bench.display.paths = {{bench.folder / "a", bench.folder / "A"}};
    EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_EQ(bench.Rows().size(), 1U);
}

// What lies behind a link is told so for both sides, also where one of them has nothing there.
TEST(FolderComparison, BehindALinkToAFolderBothSidesAreCompared) {
    ComparisonBench bench;
    bench.Write(Side::Left, "sub/to/new", "1");
    bench.folder.Write("outside/old", "1", 1'600'000'000);
    bench.folder.MakeFolder("right/sub");
    ASSERT_EQ(0, symlink("../../outside", (bench.folder / "right/sub/to").c_str()));
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    const CSubFolderDiffs* const diffs = bench.results.SubFolderDiffs.Find("sub");
    ASSERT_NE(diffs, nullptr);
    ASSERT_EQ(diffs->GetArrayDiffOneDimensions(), 2U);
    for (std::size_t i = 1; i <= 2; ++i) {
        EXPECT_EQ(diffs->GetUDTFromArrayDiffOne(i).elsewhere, Elsewhere::No);
        EXPECT_EQ(diffs->GetUDTFromArrayDiffTwo(i).elsewhere, Elsewhere::BehindLink);
    }
}

// What takes part counts once, and what a link leads to never; below a folder that is on one side only all
// that is there counts, as all of it would go with the folder.
TEST(FolderComparison, CountsTheObjectsOfEachSide) {
    ComparisonBench bench;
    for (const char* file :
         {"top.c", "top.tmp", "sub/a.c", "sub/a.tmp", "sub/out/b.c", "alone/c.c", "alone/c.tmp"})
        bench.Write(Side::Left, file, "1");
    bench.Write(Side::Right, "sub/a.c", "1");
    bench.Write(Side::Right, "sub/more/in/d.c", "1");
    bench.folder.Write("outside/e.c", "1");
    ASSERT_EQ(0, symlink("../../outside", (bench.folder / "left/sub/link.c").c_str()));
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_EQ(bench.results.objects[Side::Left], 11U);
    EXPECT_EQ(bench.results.objects[Side::Right], 5U);
    EXPECT_TRUE(bench.results.subFolders);
    bench.compare.ExcludeFilters = "*.tmp";
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    EXPECT_EQ(bench.results.objects[Side::Left], 9U);
    EXPECT_EQ(bench.results.taken.excludeFilters, "*.tmp");
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
