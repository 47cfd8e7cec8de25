#include <gmock/gmock.h>

#include <set>

#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using ::testing::ElementsAre;
using testing::FillAtRandom;
using testing::PanesStage;
using enum ResultType;

// What the selection of one pane must be, kept as plain sets.
struct SelectionOracle {
    std::vector<bool> real;
    std::set<std::size_t> selected;
    std::optional<std::size_t> item, anchor;

    void Select(std::size_t row) {
        if (real[row]) selected.insert(row);
    }
    void Click(std::size_t row, SelectionKeys keys) {
        if (keys.extend) {
            const std::size_t from = anchor ? *anchor : item ? *item : 0;
            if (!keys.toggle) selected.clear();
            for (std::size_t i = std::min(from, row); i <= std::max(from, row); ++i) Select(i);
            anchor = from;
        } else if (keys.toggle && selected.contains(row)) {
            selected.erase(row);
            anchor = row;
        } else {
            if (!keys.toggle) selected.clear();
            Select(row);
            anchor = row;
        }
        item = row;
    }
    void Drop() {
        selected.clear();
        item.reset();
        anchor.reset();
    }
    void Invert() {
        for (std::size_t i = 0; i < real.size(); ++i)
            if (real[i] && selected.erase(i) == 0) selected.insert(i);
    }
};

TEST(PaneSelection, ClicksAndKeysInAnyOrderSelectRealRowsOfOnePaneOnly) {
    std::mt19937 random(11);
    PanesStage stage;
    FillAtRandom(stage.hold, 60, random);
    stage.panes.ApplyViewTypes();
    PerSide<SelectionOracle> oracle;
    for (Side side : kBothSides)
        for (const ResultRow& row : stage.panes.Pane(side).Rows()) oracle[side].real.push_back(row.IsReal());

    for (int step = 0; step < 3'000; ++step) {
        const Side side = kBothSides[random() % 4 == 0 ? 1 : 0];
        SelectionOracle& here = oracle[side];
        const std::size_t row = random() % here.real.size();
        const SelectionKeys keys{.extend = random() % 3 == 0, .toggle = random() % 2 == 0};
        switch (random() % 6) {
            case 0:
                stage.panes.SelectAll(side);
                for (std::size_t i = 0; i < here.real.size(); ++i) here.Select(i);
                break;
            case 1:
                stage.panes.DeselectAll(side);
                here.Drop();
                break;
            case 2:
                stage.panes.MoveTo(side, row, keys);
                if (keys.toggle && !keys.extend)
                    here.item = row;
                else
                    here.Click(row, keys);
                break;
            case 3:
                stage.panes.Click(side, std::nullopt, keys);
                if (!keys.extend && !keys.toggle) here.Drop();
                break;
            default:
                stage.panes.Click(side, row, keys);
                here.Click(row, keys);
        }
        oracle[Other(side)].Drop();
        if (random() % 5 == 0) {
            stage.panes.InvertSelection();
            here.Invert();
        }
        for (Side pane : kBothSides) {
            const std::vector<std::size_t> wanted(oracle[pane].selected.begin(), oracle[pane].selected.end());
            ASSERT_EQ(stage.panes.Pane(pane).SelectedRows(), wanted) << "step " << step;
            ASSERT_EQ(stage.panes.Pane(pane).SelectedItem(), oracle[pane].item) << "step " << step;
        }
        std::string why;
        ASSERT_TRUE(stage.panes.IsConsistent(&why)) << why;
        ASSERT_EQ(stage.panes.CurrentListview(), side);
    }
}

TEST(PaneSelection, TheStatusFollowsClicksButNotAnInversion) {
    PanesStage stage;
    AddPair(stage.hold, "a", {Same, 100}, {Same, 100});
    AddPair(stage.hold, "b", {Orphan, 1500}, {None});
    stage.panes.ApplyViewTypes();
    stage.panes.Click(Side::Left, 1, {});
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Selected 1 object(s)  (1.46 KB)");
    EXPECT_EQ(stage.panes.StatusText(Side::Right), "Total 1 object(s)  (100 Bytes)");
    stage.panes.InvertSelection();
    EXPECT_TRUE(stage.Left()[0].selected);
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Selected 1 object(s)  (1.46 KB)");

    stage.panes.Click(Side::Right, 1, {});  // a placeholder: nothing stays selected
    EXPECT_EQ(stage.Left().SelectedCount(), 0U);
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Total 2 object(s)  (1.56 KB)");
    EXPECT_EQ(stage.panes.StatusText(Side::Right), "Total 1 object(s)  (100 Bytes)");
    EXPECT_EQ(stage.Right().SelectedItem(), 1U);
    EXPECT_EQ(stage.Right().SelectedObject(), nullptr);

    const BusyState::Job job(stage.busy);
    stage.panes.Click(Side::Left, 0, {});
    stage.panes.SelectAll();
    stage.panes.InvertSelection();
    EXPECT_EQ(stage.Left().SelectedCount() + stage.Right().SelectedCount(), 0U);
}

TEST(PaneSelection, ShowNextGoesRoundTheSelectedRows) {
    struct : ResultPanesObserver {
        void EnsureVisible(Side, std::size_t row) override { shown.push_back(row); }
        std::vector<std::size_t> shown;
    } window;
    std::mt19937 random(2);
    PanesStage stage;
    FillAtRandom(stage.hold, 12, random);
    stage.panes.ApplyViewTypes();
    stage.panes.AddObserver(&window);
    stage.panes.ShowNextSelected();
    EXPECT_EQ(stage.messages.Line(0), "Show Next Selection: No items selected");
    EXPECT_EQ(stage.messages.shown[0].icon, MessageIcon::Information);

    std::vector<std::size_t> real;
    for (std::size_t i = 0; i < stage.Left().Count() && real.size() < 3; ++i)
        if (stage.Left()[i].IsReal()) real.push_back(i);
    for (std::size_t row : real) stage.panes.Click(Side::Left, row, {.toggle = true});
    for (int i = 0; i < 4; ++i) stage.panes.ShowNextSelected();
    EXPECT_THAT(window.shown, ElementsAre(real[0], real[1], real[2], real[0]));
    // The only selected row is the selected item: there is no other.
    stage.panes.Click(Side::Left, real[1], {});
    stage.panes.ShowNextSelected();
    EXPECT_EQ(window.shown.size(), 4U);
    stage.panes.RemoveObserver(&window);
}

TEST(PaneSelection, OnlyTheSelectedObjectsRemainUntilTheNextViewCommand) {
    std::mt19937 random(4);
    PanesStage stage;
    FillAtRandom(stage.hold, 80, random);
    int notices = 0;
    stage.panes.ShowSelectedNotice = [&notices] { ++notices; };
    stage.panes.ChooseView(kViewDifferent);
    stage.panes.ShowOnlySelectedObjects();  // no pane was pressed yet
    EXPECT_EQ(notices, 0);
    std::vector<std::uint32_t> tags;
    for (std::size_t i = 0; i < stage.Right().Count(); i += 2) {
        stage.panes.Click(Side::Right, i, {.toggle = true});
        if (stage.Right()[i].IsReal()) tags.push_back(stage.Right()[i].tag);
    }
    stage.panes.ShowOnlySelectedObjects();
    EXPECT_EQ(notices, 1);
    std::vector<std::uint32_t> shown;
    for (const ResultRow& row : stage.Right().Rows()) shown.push_back(row.tag);
    EXPECT_EQ(shown, tags);
    EXPECT_EQ(stage.Left().Count(), 0U);
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Total 0 object(s)  (0 Bytes)");
    EXPECT_EQ(stage.panes.StatusText(Side::Right).find("Total " + std::to_string(tags.size())), 0U);
    for (const ResultRow& row : stage.hold[Side::Right]) EXPECT_FALSE(row.selected);
    std::string why;
    EXPECT_TRUE(stage.panes.IsConsistent(&why)) << why;

    stage.panes.SelectAll();
    stage.panes.ShowOnlySelectedObjects();
    EXPECT_EQ(stage.Right().Count(), tags.size());
    stage.panes.ChooseView(kViewAll);
    EXPECT_EQ(stage.Left().Count(), 80U);
    EXPECT_TRUE(stage.panes.IsConsistent(&why)) << why;
}

}  // namespace
}  // namespace vantrel
