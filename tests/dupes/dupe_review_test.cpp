#include <algorithm>

#include "dupes/dupe_details.h"
#include "dupes/dupe_export.h"
#include "dupes/dupe_marks.h"
#include "removal_support.h"

namespace vantrel {
namespace {

class DupeReviewTest : public testing::DupeRemovalTest {};

TEST_F(DupeReviewTest, RulesLeaveOneFileAndTellOfTies) {
    Write("a", "1", 3'000);
    Write("x/a", "1", 1'000);
    Write("longer path/a", "1", 3'000);
    drop.Write("second/a", "1", 2'000);
    order.folders = {drop / "second", drop / "in"};
    FindAll();
    const auto left = [&](const MarkOrder& rule) {
        Results().UnmarkAll();
        const MarkReport report = MarkByRule(Results(), Results().Shown(), rule);
        std::set<std::string> paths;
        for (const std::uint32_t file : Results().Group(0).members)
            if (!Results().IsMarked(file)) paths.insert(Results().Files().PathOf(file));
        EXPECT_EQ(4U - paths.size(), report.marked);
        return std::pair(paths, report.tiedGroups);
    };
    using Left = std::pair<std::set<std::string>, std::uint64_t>;
    EXPECT_EQ((Left{{In("a")}, 1U}), left({MarkRule::AllButNewest, {}, {}}));
    EXPECT_EQ((Left{{In("x/a")}, 0U}), left({MarkRule::AllButOldest, {}, {}}));
    EXPECT_EQ((Left{{drop / "second/a"}, 0U}), left({MarkRule::AllButFirstInFolders, {}, {}}));
    EXPECT_EQ((Left{{In("a")}, 0U}), left({MarkRule::AllButShortestPath, {}, {}}));
    EXPECT_EQ((Left{{In("a"), In("x/a")}, 1U}), left({MarkRule::AllButNewest, {}, {In("x/")}}));
    EXPECT_EQ((Left{{drop / "second/a"}, 0U}), left({MarkRule::ByPattern, "*", {}}));  // never all
    EXPECT_EQ((Left{{In("a"), In("x/a"), drop / "second/a"}, 0U}),
              left({MarkRule::ByPattern, "*/LONGER*", {}}));
}

TEST_F(DupeReviewTest, GroupsAreSortedFilteredAndExported) {
    for (const auto* name : {"big", "x/big"}) Write(name, "0123456789", 1'600'000'000);
    for (const auto* name : {"a\"b", "x/A\"B", "y/a\"b"}) Write(name, "1", 1'600'000'000);
    FindAll();
    DupeResults& results = Results();
    EXPECT_EQ((std::vector<std::uint32_t>{0, 1}), results.Shown());
    results.Sort(GroupOrder::MostBytesFirst);
    EXPECT_EQ((std::vector<std::uint32_t>{1, 0}), results.Shown());
    results.Filter("X/bI");
    EXPECT_EQ((std::vector<std::uint32_t>{1}), results.Shown());
    std::string text;
    const auto sink = [&](std::string_view part) { text.append(part); };
    WriteGroups(results, DupeExportFormat::Json, sink);
    EXPECT_EQ(R"({"label":"big","size":10,"files":[{"path":")" + In("big") +
                  R"(","size":10,"modified":"2020-09-13T12:26:40.0000000Z","otherNames":[]},{"path":")" +
                  In("x/big") +
                  R"(","size":10,"modified":"2020-09-13T12:26:40.0000000Z","otherNames":[]}]})" + "\n",
              text);
    results.Filter("");
    results.Sort(GroupOrder::FewestBytesFirst);
    text.clear();
    WriteGroups(results, DupeExportFormat::Csv, sink);
    EXPECT_TRUE(text.starts_with("Group,Label,Path,Size,Modified,Marked,Other Names\r\n1,\"a\"\"b\",\"" +
                                 drop / "in/a\"\"b" + "\",1,2020-09-13T12:26:40.0000000Z,no,\"\"\r\n"))
        << text;
    EXPECT_EQ(6, std::count(text.begin(), text.end(), '\n'));
}

TEST_F(DupeReviewTest, RowsNamesAndExclusions) {
    for (const auto* name : {"a.txt", "x/a.txt"}) Write(name, "123456789", 1'600'000'000);
    FindAll();
    const FoundFiles& files = Results().Files();
    const std::uint32_t first = Results().Group(0).members[0];
    const DupeRow row = DetailsOf(tools.Get(), files, files[first]);
    EXPECT_EQ("a.txt", row[0]);
    EXPECT_EQ(In("a.txt"), row[1]);
    EXPECT_EQ("9", row[2]);
    EXPECT_NE("", row[3]);
    EXPECT_EQ("2020-09-13 12:26:40", row[4]);
    EXPECT_EQ("No version stamp", row[6]);
    EXPECT_EQ("Not calculated", row[7]);
    EXPECT_EQ("CBF43926", CalculateCrc32(tools.Get(), files, files[first], progress));
    EXPECT_EQ("Calculating the CRC32 value for a.txt ...", progress.statuses.back());

    AddFileToExcludeList(tools.Get(), settings, "a[1]?.txt");
    AddFileToExcludeList(tools.Get(), settings, "a[1]?.txt");
    EXPECT_EQ("Add File to Exclude List: 'a[1]?.txt' has been added to the Exclude Files list.",
              tools.messages.Line(0));
    EXPECT_EQ("Add File to Exclude List: 'a[1]?.txt' is already in the Exclude Files list.",
              tools.messages.Line(1));
    EXPECT_EQ("a[1]?.txt", settings.ExcludeFiles().back());

    SystemShellOperations shell = Shell();
    ShellWrappers wrappers(shell, tools.messages);
    tools.messages.texts = {std::nullopt, "../b", "b.txt"};
    EXPECT_EQ(DupeRename::NotDone, RenameDupeFile(tools.Get(), wrappers, Results(), 0, first));
    EXPECT_EQ(DupeRename::NotDone, RenameDupeFile(tools.Get(), wrappers, Results(), 0, first));
    EXPECT_EQ(DupeRename::LeftGroup, RenameDupeFile(tools.Get(), wrappers, Results(), 0, first));
    EXPECT_TRUE(drop.Exists("in/b.txt"));
    EXPECT_EQ(0U, Results().GroupCount());
}

}  // namespace
}  // namespace vantrel
