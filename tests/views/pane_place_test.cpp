// Where the user is in the panes stays with the rows, whatever takes the place of these.
#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using ::testing::ElementsAre;
using testing::FillAtRandom;
using testing::PanesStage;
using enum ResultType;

// The names of the pair in a row, "left|right".
std::string PairAt(const PanesStage& stage, std::size_t row) {
    return std::string(stage.Left()[row].text) + "|" + std::string(stage.Right()[row].text);
}

std::vector<std::string> SelectedTexts(const PaneList& list) {
    std::vector<std::string> texts;
    for (const std::size_t row : list.SelectedRows()) texts.emplace_back(list[row].text);
    return texts;
}

void Refill(PanesStage& stage, const std::vector<std::pair<std::string, ResultType>>& rows) {
    for (const Side side : kBothSides) stage.hold[side].Clear();
    for (const auto& [name, left] : rows)
        AddPair(stage.hold, name, {left}, {left == Orphan || left == OrphanFolder ? None : left});
    stage.panes.ApplyViewTypes();
}

// What is shown before and after a change of the view is selected as it was, and the top row and the selected
// item are those of their pair, or of the first one behind it that is shown.
TEST(PanePlace, StaysThroughRandomViews) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    PanesStage stage;
    FillAtRandom(stage.hold, 300, random);
    stage.panes.ApplyViewTypes();
    for (int round = 0; round < 60; ++round) {
        const Side side = kBothSides[random() % 2];
        const PaneList& list = stage.panes.Pane(side);
        if (list.Count() > 0) {
            for (int i = 0; i < 20; ++i) stage.panes.ToggleRow(side, random() % list.Count());
            stage.panes.SetTopRow(side, random() % list.Count());
        }
        const auto tagAt = [&](std::size_t row) {
            return std::max(stage.Left()[row].tag, stage.Right()[row].tag);
        };
        std::vector<std::uint32_t> selected;
        for (const std::size_t row : list.SelectedRows()) selected.push_back(list[row].tag);
        const auto top = list.Count() > 0 ? tagAt(list.TopRow()) : 0;
        const auto item = list.SelectedItem() ? tagAt(*list.SelectedItem()) : 0;
        const bool itemIsReal = list.SelectedObject() != nullptr;

        stage.panes.ToggleView(static_cast<ResultType>(1 + random() % kResultTypeCount));
        std::string why;
        ASSERT_TRUE(stage.panes.IsConsistent(&why)) << why;
        std::vector<std::uint32_t> wanted, found;
        for (const ResultRow& row : list.Rows())
            if (row.IsReal() && std::ranges::find(selected, row.tag) != selected.end())
                wanted.push_back(row.tag);
        for (const std::size_t row : list.SelectedRows()) found.push_back(list[row].tag);
        EXPECT_EQ(found, wanted);
        if (list.Count() == 0 || top == 0) continue;
        if (tagAt(list.Count() - 1) >= top) {
            EXPECT_GE(tagAt(list.TopRow()), top);
            EXPECT_TRUE(list.TopRow() == 0 || tagAt(list.TopRow() - 1) < top);
        }
        if (item == 0 || !itemIsReal || !list.SelectedItem()) continue;
        ASSERT_TRUE(list.SelectedObject());
        for (std::size_t row = 0; row < *list.SelectedItem(); ++row)
            EXPECT_FALSE(list[row].IsReal() && tagAt(row) >= item && tagAt(*list.SelectedItem()) >= item);
    }
}

TEST(PanePlace, StaysWithNamesThroughANewComparison) {
    PanesStage stage;
    Refill(stage, {{"a", Same}, {"b", Orphan}, {"c", Orphan}, {"d", Same}, {"e", Same}, {"x", OrphanFolder}});
    stage.panes.Click(Side::Left, 1, {});
    stage.panes.Click(Side::Left, 2, {.toggle = true});
    stage.panes.Click(Side::Left, 4, {.toggle = true});
    for (const Side side : kBothSides) stage.panes.SetTopRow(side, 1);
    // "b" went, a name came before it, and "e" is of another type now.
    Refill(stage,
           {{"a", Same}, {"aa", Orphan}, {"c", Same}, {"d", Same}, {"e", Binary}, {"x", OrphanFolder}});
    EXPECT_THAT(SelectedTexts(stage.Left()), ElementsAre("c", "e"));
    EXPECT_EQ(PairAt(stage, stage.Left().TopRow()), "c|c");
    EXPECT_EQ(stage.Right().TopRow(), stage.Left().TopRow());
    EXPECT_EQ(stage.Left().SelectedObject()->text, "e");
    EXPECT_EQ(stage.panes.CurrentListview(), Side::Left);
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Total 6 object(s)  (0 Bytes)");

    // Of what is gone nothing is selected, and nothing else in its place.
    stage.panes.Click(Side::Left, 2, {});
    Refill(stage, {{"a", Same}, {"aa", Orphan}, {"x", OrphanFolder}});
    EXPECT_EQ(stage.Left().SelectedCount(), 0U);
    EXPECT_EQ(stage.Left().SelectedObject()->text, "\\x");
    // A file and a folder of one name are two things, and letter case makes no other name.
    Refill(stage, {{"X", Same}, {"x", OrphanFolder}});
    EXPECT_EQ(stage.Left().SelectedItem(), 1U);
    Refill(stage, {{"X", Same}});
    EXPECT_EQ(stage.Left().SelectedItem(), 0U);
    Refill(stage, {{"y", Same}, {"X", OrphanFolder}});
    EXPECT_EQ(stage.Left().SelectedItem(), 0U);
    Refill(stage, {});
    EXPECT_EQ(stage.Left().SelectedItem(), std::nullopt);
}

// Names go, come and change places, in runs long and short: what was selected is, wherever it stands now.
TEST(PanePlace, FindsSelectedNamesWhateverBecameOfTheOrder) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    PanesStage stage;
    std::vector<std::pair<std::string, ResultType>> rows;
    for (int i = 0; i < 200; ++i) rows.emplace_back("name" + std::to_string(i), Same);
    for (int round = 0; round < 100; ++round) {
        Refill(stage, rows);
        stage.panes.DeselectAll(Side::Left);
        const bool nearlyAll = random() % 2 == 0;
        for (std::size_t row = 0; row < stage.Left().Count(); ++row)
            if ((random() % 20 == 0) != nearlyAll) stage.panes.ToggleRow(Side::Left, row);
        const std::vector<std::string> selected = SelectedTexts(stage.Left());
        switch (random() % 4) {
            case 0:
                std::ranges::shuffle(rows, random);
                break;
            case 1:
                std::rotate(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(random() % rows.size()),
                            rows.end());
                break;
            default:
                break;
        }
        const std::size_t first = random() % rows.size(),
                          count = random() % std::min<std::size_t>(30, rows.size() - first);
        const auto at = rows.begin() + static_cast<std::ptrdiff_t>(first);
        rows.erase(at, at + static_cast<std::ptrdiff_t>(count));
        for (std::size_t i = 0; i < count; ++i)
            rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(random() % (rows.size() + 1)),
                        {"new" + std::to_string(round) + "," + std::to_string(i), Same});
        Refill(stage, rows);
        std::vector<std::string> wanted;
        for (const auto& [name, type] : rows)
            if (std::ranges::find(selected, name) != selected.end()) wanted.push_back(name);
        ASSERT_EQ(SelectedTexts(stage.Left()), wanted) << round;
    }
}

TEST(PanePlace, TheItemOfAPaneGoesToARowThatIsAnObjectThere) {
    PanesStage stage;
    for (const auto& [name, left, right] :
         {std::tuple("a", Newer, Older), std::tuple("b", Same, Same), std::tuple("c", None, Orphan)})
        AddPair(stage.hold, name, {left, 1}, {right, 1});
    stage.panes.ApplyViewTypes();
    stage.panes.Click(Side::Left, 0, {});
    stage.panes.ToggleView(Newer);
    EXPECT_EQ(stage.Left().SelectedObject()->text, "b");
    stage.panes.ToggleView(Same);  // nothing real is left of this pane
    EXPECT_EQ(stage.Left().SelectedItem(), std::nullopt);
    // An empty row that was gone to stays.
    stage.panes.ChooseView(kViewAll);
    stage.panes.Click(Side::Left, 2, {});
    stage.panes.ChooseView(kViewDifferent);
    EXPECT_EQ(stage.Left().SelectedItem(), 1U);
}

TEST(PanePlace, BeginsAtTheTopOfAResultOfOtherFolders) {
    PanesStage stage;
    Refill(stage, {{"a", Same}, {"b", Same}, {"c", Same}});
    stage.panes.Click(Side::Right, 2, {});
    stage.panes.SetTopRow(Side::Right, 2);
    stage.panes.RemoveListItemsAndShowNoCompareMsg();  // as a change of a path does
    Refill(stage, {{"a", Same}, {"b", Same}, {"c", Same}});
    EXPECT_EQ(stage.Right().TopRow(), 0U);
    EXPECT_EQ(stage.Right().SelectedItem(), std::nullopt);
    EXPECT_EQ(stage.Right().SelectedCount(), 0U);
}

TEST(HiddenTypes, AreNamedInACustomView) {
    PanesStage stage;
    AddPair(stage.hold, "a", {Newer}, {Older});
    stage.panes.ApplyViewTypes();
    const auto hidden = [&stage] { return stage.selections.HiddenTypesText(); };
    for (const auto view : {kViewAll, kViewDifferent, kViewSimilar}) {
        stage.panes.ChooseView(view);
        EXPECT_EQ(hidden(), "");
    }
    stage.panes.ChooseView(kViewAll);
    stage.panes.ToggleView(Older);
    EXPECT_EQ(hidden(), "older hidden");
    stage.panes.ToggleView(OrphanFolder);
    EXPECT_EQ(hidden(), "older, orphan sub-folders hidden");
    for (const ResultType type : {Newer, Same, Orphan, Binary, IdenticalFolder, DifferentFolder})
        stage.panes.ToggleView(type);
    EXPECT_EQ(hidden(), "all hidden");
}

}  // namespace
}  // namespace vantrel
