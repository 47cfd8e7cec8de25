#include "views/sub_folder_panes.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "panes_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using enum ResultType;

struct Half {
    ResultType type = None;
    std::string realName{};  // where it is not the pair's
    Elsewhere elsewhere = Elsewhere::No;
    bool unknown = false;
};

class SubFolderPanesTest : public ::testing::Test {
  protected:
    void Add(const std::string& name, const Half& left, const Half& right) {
        PerSide<SubFolderRecord> pair;
        PerSide<std::string> realNames;
        for (const Side side : kBothSides) {
            const Half& half = side == Side::Left ? left : right;
            SubFolderRecord& record = pair[side];
            record.type = half.type;
            record.elsewhere = half.elsewhere;
            record.unknown = half.unknown;
            if (record.IsBlank()) continue;
            realNames[side] = half.realName.empty() ? name : half.realName;
            record.name = name;
            record.realName = realNames[side];
            record.size = Currency::FromWhole(10);
            record.seen = Seen{};
        }
        diffs.AddPair(pair);
    }
    // Texts of what a pane shows, "-" for a row without one.
    std::vector<std::string> Shown(Side side) {
        std::string why;
        EXPECT_TRUE(lists.IsConsistent(&why)) << why;
        std::vector<std::string> texts;
        for (const ResultRow& row : lists.Pane(side).Rows())
            texts.push_back(row.text.empty() ? "-" : std::string(row.text));
        return texts;
    }
    std::vector<std::size_t> Selected(Side side) { return lists.Pane(side).SelectedRows(); }

    testing::PanesStage stage;
    CSubFolderDiffs diffs{"\\Sub", "/left/Sub"};
    SubFolderPanes lists{stage.reporter, stage.busy};
};

TEST_F(SubFolderPanesTest, RowsAreWhatTheRecordsTell) {
    Add("a.txt", {Newer}, {Older, "A.TXT"});
    Add("dir/b", {}, {Orphan});
    Add("link/c", {Orphan, "", Elsewhere::BehindLink}, {None, "", Elsewhere::InOtherFolder});
    Add("odd", {None, "", Elsewhere::No, true}, {None, "", Elsewhere::No, true});
    lists.Fill(diffs);
    diffs = CSubFolderDiffs();  // the rows live on
    EXPECT_THAT(Shown(Side::Left), ElementsAre("a.txt", "-", "link/c", "odd"));
    EXPECT_THAT(Shown(Side::Right), ElementsAre("a.txt", "dir/b", "-", "odd"));
    EXPECT_EQ(lists.Pane(Side::Right)[0].realName, "A.TXT");
    EXPECT_NE(lists.Pane(Side::Left)[0].seen, nullptr);
    EXPECT_EQ(lists.Pane(Side::Left)[2].elsewhere, Elsewhere::BehindLink);
    EXPECT_EQ(lists.Pane(Side::Right)[2].elsewhere, Elsewhere::InOtherFolder);
    EXPECT_TRUE(lists.Pane(Side::Left)[3].IsUnknown());
    EXPECT_EQ(lists.StatusText(Side::Left), "Total 2 object(s)  (20 Bytes)");
}

TEST_F(SubFolderPanesTest, TheFilterLooksAtWholePathsAndAtTheirBeginnings) {
    Add("one.txt", {Newer}, {Older});
    Add("Sub/one.txt", {}, {Orphan});
    Add("other/Subject", {Binary}, {Binary});
    lists.Fill(diffs);
    const auto shown = [&](const char* filter) {
        lists.SetFilter(filter);
        EXPECT_EQ(lists.CountShown(), Shown(Side::Right).size());
        return Shown(Side::Right);
    };
    lists.Click(Side::Right, 2, {});
    EXPECT_THAT(shown("sub"), ElementsAre("Sub/one.txt", "other/Subject"));
    // The row that was gone to is the same one, and what nobody sees is not selected.
    EXPECT_EQ(lists.Pane(Side::Right).SelectedItem(), 1U);
    EXPECT_THAT(Selected(Side::Right), IsEmpty());
    EXPECT_THAT(shown("/sub"), ElementsAre("Sub/one.txt"));
    // It is not shown any more: the one beside it takes its place.
    EXPECT_EQ(lists.Pane(Side::Right).SelectedItem(), 0U);
    EXPECT_THAT(shown("ONE"), ElementsAre("one.txt", "Sub/one.txt"));
    EXPECT_THAT(shown("nowhere"), IsEmpty());
    EXPECT_THAT(shown(""), ElementsAre("one.txt", "Sub/one.txt", "other/Subject"));
}

TEST_F(SubFolderPanesTest, SelectionByTypeStaysInThePanePressedAndTakesNothingElse) {
    Add("a", {Newer}, {Older});
    Add("b", {Older}, {Newer});
    Add("c", {Newer}, {Older});
    Add("d", {}, {Orphan});
    lists.Fill(diffs);
    lists.SelectByType(Newer);
    EXPECT_THAT(Selected(Side::Left), IsEmpty());  // no pane was pressed yet
    lists.SelectAll(Side::Left);
    const std::string status = lists.StatusText(Side::Left);
    lists.SelectByType(Newer);
    EXPECT_THAT(Selected(Side::Left), ElementsAre(0, 2));
    EXPECT_THAT(Selected(Side::Right), IsEmpty());
    EXPECT_EQ(lists.StatusText(Side::Left), status);
    lists.SelectByType(Orphan);
    EXPECT_THAT(Selected(Side::Left), IsEmpty());
    const BusyState::Job job(stage.busy);
    lists.SelectByType(Older);
    EXPECT_THAT(Selected(Side::Left), IsEmpty());
}

// Whatever is filtered and selected, an operation finds all rows, and of them exactly the selected ones
// chosen.
TEST_F(SubFolderPanesTest, AnOperationSeesAllRowsAndTheSelectionOfThePanes) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 60; ++i) {
        const std::string name =
            std::string(1, static_cast<char>('a' + random() % 4)) + "/f" + std::to_string(i);
        switch (random() % 3) {
            case 0:
                Add(name, {Newer}, {Older});
                break;
            case 1:
                Add(name, {Orphan}, {});
                break;
            default:
                Add(name, {}, {Orphan});
        }
    }
    lists.Fill(diffs);
    for (int round = 0; round < 40; ++round) {
        const Side side = kBothSides[random() % 2];
        lists.SetFilter(std::string(random() % 4 == 0 ? "" : "/") + static_cast<char>('a' + random() % 5));
        for (std::size_t row = 0; row < lists.Pane(side).Count(); ++row)
            if (random() % 2 == 0) lists.ToggleRow(side, row);
        std::vector<std::string> wanted, chosen;
        for (const std::size_t row : Selected(side)) wanted.emplace_back(lists.Pane(side)[row].text);
        lists.BeginOperation();
        for (const Side each : kBothSides) {
            ASSERT_EQ(lists.Chosen()[each].Count(), lists.Hidden()[each].Count());
            for (std::size_t i = 0; i < lists.Chosen()[each].Count(); ++i) {
                EXPECT_EQ(lists.Chosen()[each][i].text, lists.Hidden()[each][i].text);
                if (lists.Chosen()[each][i].selected) {
                    EXPECT_EQ(each, side);
                    chosen.emplace_back(lists.Chosen()[each][i].text);
                }
            }
        }
        EXPECT_EQ(chosen, wanted);
        lists.EndOperation();
        lists.CopyItemsFromHiddenLVWToVisibleLVW();
        std::string why;
        EXPECT_TRUE(lists.IsConsistent(&why)) << why;
    }
}

TEST_F(SubFolderPanesTest, WhatIsLeftAloneIsTold) {
    const PerSide<std::string> folders{{"/l/Sub", "/r/sub"}};
    Add("a", {Newer}, {Older});
    EXPECT_EQ(DescribeLeftAlone(diffs, folders), "");
    Add("link/b", {Orphan, "", Elsewhere::BehindLink}, {});
    diffs.AddUnknownPlace({Side::Right, "deep/closed"});
    diffs.AddUnknownPlace({Side::Left, ""});
    EXPECT_EQ(
        DescribeLeftAlone(diffs, folders),
        "2 places could not be looked into. What is there is not known, is missing here, and is left "
        "alone:\r\n/r/sub/deep/closed\r\n/l/Sub\r\n1 row tells of what lies behind a link to a folder, or "
        "belongs to both compared folders. There nothing is changed.");
}

}  // namespace
}  // namespace vantrel
