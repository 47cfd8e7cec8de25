#include "views/result_panes.h"

#include <gmock/gmock.h>

#include "platform/names/paths.h"
#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using ::testing::ElementsAre;
using testing::FillAtRandom;
using testing::PanesStage;
using enum ResultType;

// One bit for each result type, Newer the lowest.
constexpr std::array kTypes{Newer,           Older,           Same,        Orphan, Binary,
                            IdenticalFolder, DifferentFolder, OrphanFolder};

void SetFlags(CViewSelections& selections, unsigned bits) {
    for (const ResultType type : kTypes)
        selections.Flag(type) = bits >> (static_cast<unsigned>(type) - 1) & 1U;
}

unsigned FlagsOf(const CViewSelections& selections) {
    unsigned bits = 0;
    for (const ResultType type : kTypes)
        if (selections.Shows(type)) bits |= 1U << (static_cast<unsigned>(type) - 1);
    return bits;
}

std::vector<std::string> Texts(const PaneList& list) {
    std::vector<std::string> texts;
    for (const ResultRow& row : list.Rows()) texts.emplace_back(row.text);
    return texts;
}

#define EXPECT_CONSISTENT(panes)                        \
    do {                                                \
        std::string why;                                \
        EXPECT_TRUE((panes).IsConsistent(&why)) << why; \
    } while (false)

TEST(ViewSelections, EachNamedViewIsRecognisedByItsFlagsAndNoOtherSetIs) {
    Options options;
    CViewSelections selections(options);
    int named = 0;
    for (unsigned bits = 0; bits < 256; ++bits) {
        SetFlags(selections, bits);
        const bool all = bits == 0b1111'1111, different = bits == 0b1101'1011, similar = bits == 0b0010'0100;
        EXPECT_EQ(selections.AreCustomSettingsSameAsAllViewType(), all);
        EXPECT_EQ(selections.AreCustomSettingsSameAsDifferencesViewType(), different);
        EXPECT_EQ(selections.AreCustomSettingsSameAsSimilaritiesViewType(), similar);
        if (selections.ViewTypeOfFlags() == kViewCustom) continue;
        ++named;
        Options others;
        CViewSelections set(others);
        set.SetViewType(selections.ViewTypeOfFlags());
        EXPECT_EQ(FlagsOf(set), bits);
    }
    EXPECT_EQ(named, 3);

    SetFlags(selections, 5);
    for (std::int32_t view : {kViewCustom, 9, -1}) {
        selections.SetViewType(view);
        EXPECT_EQ(FlagsOf(selections), 5U);
        EXPECT_EQ(selections.ViewType(), view);
    }
    EXPECT_FALSE(selections.Shows(None));
    EXPECT_FALSE(selections.Shows(static_cast<ResultType>(200)));
}

// Each flag is that of its own key: a view that is shown and one that is saved are the same.
TEST(ViewSelections, StandInTheOptions) {
    Options options;
    CViewSelections selections(options);
    const std::pair<ResultType, bool Options::*> keys[] = {
        {Newer, &Options::viewNewerFiles},
        {Older, &Options::viewOlderFiles},
        {Same, &Options::viewIdenticalFiles},
        {Orphan, &Options::viewOrphanFiles},
        {Binary, &Options::viewBinaryFiles},
        {IdenticalFolder, &Options::viewIdenticalSubFolders},
        {DifferentFolder, &Options::viewDifferentSubFolders},
        {OrphanFolder, &Options::viewOrphanSubFolders},
    };
    for (const auto& [type, key] : keys) {
        SetFlags(selections, 0);
        selections.Flag(type) = true;
        for (const auto& [other, otherKey] : keys) EXPECT_EQ(options.*otherKey, other == type);
        options.*key = false;
        EXPECT_FALSE(selections.Shows(type));
    }
    options.viewType = ViewType::Similar;
    selections.TakeCheckedItem();
    EXPECT_EQ(selections.ViewType(), kViewSimilar);
    EXPECT_EQ(FlagsOf(selections), 0U);
}

TEST(ResultPanes, EveryFlagSetShowsExactlyTheRowsItNamesAndKeepsPairsOnOneLine) {
    std::mt19937 random(7);
    PanesStage stage;
    FillAtRandom(stage.hold, 120, random);
    for (unsigned bits = 0; bits < 256; ++bits) {
        SetFlags(stage.selections, bits);
        stage.selections.SetViewType(stage.selections.ViewTypeOfFlags());
        stage.panes.ApplyViewTypes();
        EXPECT_CONSISTENT(stage.panes);
        for (Side side : kBothSides) {
            std::vector<std::size_t> wanted, found;
            for (std::size_t i = 0; i < stage.hold[side].Count(); ++i) {
                const auto type = static_cast<unsigned>(stage.hold[side][i].type);
                if (type != 0 && bits >> (type - 1) & 1U) wanted.push_back(i + 1);
            }
            std::int64_t bytes = 0;
            for (const ResultRow& row : stage.panes.Pane(side).Rows()) {
                // A blank line has a tag where it is a row of the hold list: in the view of all rows.
                EXPECT_TRUE(row.IsReal() || (row.tag != 0) == (bits == 255));
                if (!row.IsReal()) continue;
                found.push_back(row.tag);
                bytes += row.size.Whole();
            }
            ASSERT_EQ(found, wanted) << "flags " << bits;
            EXPECT_EQ(stage.panes.StatusText(side),
                      "Total " + std::to_string(wanted.size()) + " object(s)  (" +
                          ConvertBytesToCorrectByteTypeString(Currency::FromWhole(bytes)) + ")");
        }
    }
    EXPECT_TRUE(stage.messages.shown.empty());
}

TEST(ResultPanes, ViewsNameThemselvesAndAHiddenHalfLeavesABlankRow) {
    PanesStage stage;
    AddPair(stage.hold, "a", {Newer, 10}, {Older, 5});
    AddPair(stage.hold, "b", {Same, 0}, {Same, 0});
    AddPair(stage.hold, "sub", {None}, {OrphanFolder, 2048});
    stage.panes.ChooseView(kViewAll);
    EXPECT_THAT(Texts(stage.Left()), ElementsAre("a", "b", ""));
    EXPECT_EQ(stage.panes.ViewText(), "All");
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Total 2 object(s)  (10 Bytes)");
    EXPECT_EQ(stage.panes.StatusText(Side::Right), "Total 3 object(s)  (2 KB)");

    stage.panes.ToggleView(Older);
    EXPECT_THAT(Texts(stage.Left()), ElementsAre("a", "b", ""));
    EXPECT_THAT(Texts(stage.Right()), ElementsAre("", "b", "\\sub"));
    EXPECT_EQ(stage.panes.ViewText(), "Custom");

    stage.panes.ChooseView(kViewSimilar);
    EXPECT_THAT(Texts(stage.Right()), ElementsAre("b"));
    EXPECT_EQ(stage.panes.ViewText(), "Similar");
    stage.panes.ToggleView(Same);
    EXPECT_EQ(stage.Left().Count(), 0U);
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Total 0 object(s)  (0 Bytes)");

    stage.selections.SetViewType(17);
    stage.panes.ApplyViewTypes();
    EXPECT_EQ(stage.panes.ViewText(), "Error");
}

TEST(ResultPanes, TogglesLeadBackToTheNamedViewThatHasTheirFlags) {
    std::mt19937 random(3);
    PanesStage stage;
    FillAtRandom(stage.hold, 40, random);
    stage.panes.ChooseView(kViewAll);
    // From All to Different to All to Similar, one toggle at a time.
    const std::vector<std::pair<ResultType, std::int32_t>> steps{{Same, kViewCustom},
                                                                 {IdenticalFolder, kViewDifferent},
                                                                 {Same, kViewCustom},
                                                                 {IdenticalFolder, kViewAll},
                                                                 {Newer, kViewCustom},
                                                                 {Older, kViewCustom},
                                                                 {Orphan, kViewCustom},
                                                                 {Binary, kViewCustom},
                                                                 {DifferentFolder, kViewCustom},
                                                                 {OrphanFolder, kViewSimilar}};
    for (const auto& [type, view] : steps) {
        stage.panes.ToggleView(type);
        EXPECT_EQ(stage.selections.ViewType(), view);
        EXPECT_EQ(stage.panes.CheckedViewItem(), view);
        EXPECT_CONSISTENT(stage.panes);
    }
    const unsigned flags = FlagsOf(stage.selections);
    stage.panes.ChooseOtherView();
    EXPECT_EQ(stage.panes.CheckedViewItem(), kViewCustom);
    EXPECT_EQ(stage.selections.ViewType(), kViewSimilar);
    EXPECT_EQ(stage.messages.Line(0),
              "Custom View: Use the icons in the center of the program to specify custom View options");
    const BusyState::Job job(stage.busy);
    stage.panes.ToggleView(Newer);
    stage.panes.ChooseView(kViewAll);
    EXPECT_EQ(FlagsOf(stage.selections), flags);
}

TEST(ResultPanes, WithoutAResultThereIsOneSentinelThatNothingTouches) {
    PanesStage stage;
    stage.panes.RemoveListItemsAndShowNoCompareMsg();
    for (Side side : kBothSides) {
        EXPECT_THAT(Texts(stage.panes.Pane(side)), ElementsAre("No Comparison Results"));
        EXPECT_TRUE(stage.hold[side].IsSentinel());
        EXPECT_EQ(stage.panes.StatusText(side), "");
    }
    for (Side side : kBothSides) {
        stage.panes.SelectAll(side);
        stage.panes.Click(side, 0, {});
        EXPECT_EQ(stage.panes.Pane(side).SelectedCount(), 0U);
    }
    const unsigned flags = FlagsOf(stage.selections);
    stage.panes.ToggleView(Newer);
    EXPECT_EQ(stage.messages.Line(0), "View Types: These buttons require that a comparison be run first");
    EXPECT_EQ(FlagsOf(stage.selections), flags);
    stage.panes.ApplyViewTypes();
    EXPECT_EQ(stage.panes.ViewText(), "");
    EXPECT_CONSISTENT(stage.panes);

    // A file of that name is a file: it is the kind that counts.
    for (Side side : kBothSides) stage.hold[side].Clear();
    AddPair(stage.hold, "No Comparison Results", {Same, 3}, {Same, 3});
    stage.panes.ApplyViewTypes();
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Total 1 object(s)  (3 Bytes)");
    stage.panes.SelectAll(Side::Left);
    EXPECT_EQ(stage.Left().SelectedCount(), 1U);
}

TEST(ResultPanes, ARebuildThatFailsIsReportedUnderItsName) {
    PanesStage stage;
    AddPair(stage.hold, "a", {Same}, {Same});
    stage.hold[Side::Left].AddPlaceholder();
    stage.panes.ApplyViewTypes();
    ASSERT_EQ(stage.messages.shown.size(), 1U);
    EXPECT_EQ(stage.messages.shown[0].title, "Unexpected Error in frmMain.ApplyViewTypes");
    EXPECT_EQ(stage.Left().Count(), 0U);
}

TEST(ResultPanes, RowsOutliveTheResultTheyCameFrom) {
    PanesStage stage;
    AddPair(stage.hold, "a name that is longer than any small buffer", {Same}, {Same});
    stage.panes.ApplyViewTypes();
    for (Side side : kBothSides) stage.hold[side].Clear();
    EXPECT_THAT(Texts(stage.Left()), ElementsAre("a name that is longer than any small buffer"));
}

TEST(ResultPanes, AnExchangeSwapsThePanesAndDropsTheTags) {
    std::mt19937 random(5);
    PanesStage stage;
    FillAtRandom(stage.hold, 50, random);
    stage.panes.ApplyViewTypes();
    const auto left = Texts(stage.Left()), right = Texts(stage.Right());
    stage.panes.Click(Side::Left, 0, {});
    stage.panes.ExchangePanes();
    EXPECT_EQ(Texts(stage.Left()), right);
    EXPECT_EQ(Texts(stage.Right()), left);
    for (const ResultRow& row : stage.Left().Rows()) EXPECT_TRUE(row.tag == 0 && !row.selected);
    EXPECT_CONSISTENT(stage.panes);
    EXPECT_EQ(stage.panes.GetCorrespondingHoldListView(&stage.Left()), &stage.hold[Side::Left]);
    EXPECT_EQ(stage.panes.GetCorrespondingHoldListView(&stage.Right()), &stage.hold[Side::Right]);
    const PaneList another;
    EXPECT_EQ(stage.panes.GetCorrespondingHoldListView(&another), nullptr);
}

TEST(ResultPanes, APairTakesNoMoreThan500Bytes) {
    std::mt19937 random(1);
    PanesStage stage;
    FillAtRandom(stage.hold, 100'000, random);
    stage.panes.ApplyViewTypes();
    EXPECT_LE(stage.panes.MemoryUsed() / 100'000, 500U);
}

}  // namespace
}  // namespace vantrel
