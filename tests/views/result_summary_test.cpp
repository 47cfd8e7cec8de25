#include "views/result_summary.h"

#include <gmock/gmock.h>

#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using enum ResultType;

TEST(ResultSummary, CountsTheRowsOfEachSideByType) {
    testing::PanesStage stage;
    AddPair(stage.hold, "a", {Newer, 1}, {Older, 1});
    AddPair(stage.hold, "b", {Newer, 1}, {Older, 1});
    AddPair(stage.hold, "c", {Orphan, 1}, {});
    AddPair(stage.hold, "d", {}, {OrphanFolder, 1});
    AddPair(stage.hold, "e", {DifferentFolder, 1}, {DifferentFolder, 1});
    const PerSide<FileTypeCounts> counts = GetFileTypeCounts(stage.hold);
    EXPECT_EQ(counts[Side::Left].of, (std::array<std::uint32_t, 9>{0, 2, 0, 0, 1, 0, 0, 1, 0}));
    EXPECT_EQ(counts[Side::Right].of, (std::array<std::uint32_t, 9>{0, 0, 2, 0, 0, 0, 0, 1, 1}));
    EXPECT_EQ(counts[Side::Left].Total(), 4U);
    EXPECT_EQ(SliceText(counts[Side::Left], Newer), "Newer Files: 2 (50%)");
    EXPECT_EQ(SpokenSummary(counts[Side::Right]),
              "Older Files: 2 (50%), Different Folders: 1 (25%), Orphan Folders: 1 (25%)");
    EXPECT_EQ(SpokenSummary({}), "No objects");
}

TEST(ResultSummary, ThePieIsFullWhateverTheCounts) {
    std::mt19937 random(9);
    for (int round = 0; round < 2'000; ++round) {
        FileTypeCounts counts;
        for (const ResultType type : kTypesInList)
            if (random() % 2 == 0)
                counts.of.at(static_cast<std::size_t>(type)) = random() % (1U << random() % 20);
        const std::vector<PieSlice> slices = SlicesOf(counts);
        std::vector<ResultType> order;
        double start = kFirstOfPie;
        for (const PieSlice& slice : slices) {
            order.push_back(slice.type);
            ASSERT_EQ(slice.start, start);
            ASSERT_GE(slice.end, slice.start);
            ASSERT_LE(slice.end, kLastOfPie);
            ASSERT_NEAR(slice.end - slice.start, counts.Percentage(slice.type), 0.0021);
            ASSERT_EQ(slice.whole, slices.size() == 1 && slice.end == kLastOfPie);
            start = slice.end;
        }
        ASSERT_EQ(slices.empty(), counts.Total() == 0);
        ASSERT_EQ(start, slices.empty() ? kFirstOfPie : kLastOfPie);
        std::vector<ResultType> wanted;
        for (const ResultType type : kTypesInList)
            if (counts.Of(type) > 0) wanted.push_back(type);
        ASSERT_TRUE(order == wanted || slices.front().whole);
    }
}

// The rest of a type that is nearly all is too small to be drawn.
TEST(ResultSummary, NearlyAllIsAWholePie) {
    FileTypeCounts counts;
    counts.of.at(static_cast<std::size_t>(Same)) = 10'000'000;
    counts.of.at(static_cast<std::size_t>(Orphan)) = 1;
    const std::vector<PieSlice> slices = SlicesOf(counts);
    ASSERT_EQ(slices.size(), 1U);
    EXPECT_TRUE(slices[0].whole);
    EXPECT_EQ(SpokenSummary(counts),
              "Identical Files: 10000000 (more than 99.9%), Orphan Files: 1 (less than 0.1%)");
    // Behind another type the last ones are there, without room.
    counts.of.at(static_cast<std::size_t>(Newer)) = 10'000'000;
    EXPECT_EQ(SlicesOf(counts).back().start, kLastOfPie);
    EXPECT_EQ(SlicesOf(counts).back().end, kLastOfPie);
}

}  // namespace
}  // namespace vantrel
