#include "filetools/aligned_rows.h"

#include <gtest/gtest.h>

#include "filetools/folded_rows.h"
#include "filetools/line_diff.h"
#include "script_support.h"

namespace vantrel {
namespace {

using testing::RandomTexts;
using testing::Views;

// A grid as rows that are inserted one by one: the number of the line, 0 for padding, and the colour.
struct Row {
    LineNumber line = 0;
    std::int32_t colour = 0;
};
using Grid = std::vector<Row>;

Grid GridOf(LineNumber lines) {
    Grid grid(1);  // the fixed row
    for (LineNumber line = 1; line <= lines; ++line) grid.push_back({line});
    grid.emplace_back();  // the blank row
    return grid;
}

void Insert(Grid& grid, LineNumber row, LineNumber count) {
    grid.insert(grid.begin() + row, static_cast<std::size_t>(count), Row());
}

void Colour(Grid& grid, LineNumber from, LineNumber to, std::int32_t colour) {
    for (LineNumber row = from; row <= to; ++row) grid.at(static_cast<std::size_t>(row)).colour = colour;
}

// Walks the hunks with a count of the rows that were inserted on each side.
std::vector<std::string> Align(const std::vector<Hunk>& hunks, PerSide<Grid>& grids) {
    std::vector<std::string> list;
    PerSide<LineNumber> offset{};
    for (const Hunk& hunk : hunks) {
        const LineRange& left = hunk.lines[Side::Left];
        const LineRange& right = hunk.lines[Side::Right];
        const LineNumber height = std::max(left.count, right.count);
        const std::int32_t colour = hunk.Form() == 'c' ? kChangedRowColour : kOrphanRowColour;
        const Side row = hunk.Form() == 'a' ? Side::Right : Side::Left;
        const LineNumber first = hunk.lines[row].first + 1 + offset[row];
        for (const Side side : kBothSides) {
            const LineRange& range = hunk.lines[side];
            const LineNumber start = range.first + 1 + offset[side];
            Insert(grids[side], range.End() + offset[side] + 1, height - range.count);
            offset[side] += height - range.count;
            const LineNumber coloured = hunk.Form() == 'c' ? height : range.count;
            Colour(grids[side], start, start + coloured - 1, colour);
        }
        list.push_back(std::to_string(first) + "-" + std::to_string(height) + "-" + std::to_string(colour));
    }
    return list;
}

AlignedRows RowsOf(const std::vector<Hunk>& hunks, const PerSide<std::string>& texts) {
    PerSide<LineNumber> counts;
    for (const Side side : kBothSides)
        counts[side] = static_cast<LineNumber>(testing::LinesOf(texts[side]).size());
    AlignedRows rows(counts);
    for (const Hunk& hunk : hunks) EXPECT_TRUE(rows.Add(hunk));
    EXPECT_TRUE(rows.IsConsistent());
    return rows;
}

TEST(AlignedRows, AreThoseOfGridsWithInsertedRows) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const PerSide<std::string> texts = RandomTexts(seed).Next();
        const std::vector<Hunk> hunks = DiffLines(Views(texts), {}, {});
        const AlignedRows rows = RowsOf(hunks, texts);
        PerSide<Grid> grids;
        for (const Side side : kBothSides)
            grids[side] = GridOf(static_cast<LineNumber>(testing::LinesOf(texts[side]).size()));
        const std::vector<std::string> list = Align(hunks, grids);

        const DiffList differences(rows);
        ASSERT_EQ(list.size(), static_cast<std::size_t>(differences.Count()));
        for (std::int32_t index = 0; index < differences.Count(); ++index)
            EXPECT_EQ(list[static_cast<std::size_t>(index)], differences.Entry(index));
        std::int32_t previous = -1;
        for (std::int32_t row = 0; row < rows.Rows(); ++row) {
            std::int32_t colour = 0;
            for (const Side side : kBothSides) {
                ASSERT_EQ(static_cast<std::size_t>(rows.Rows()), grids[side].size());
                const Row& expected = grids[side][static_cast<std::size_t>(row)];
                ASSERT_EQ(expected.line, rows.LineAt(side, row)) << row;
                if (expected.line > 0) {
                    ASSERT_EQ(row, rows.RowOfLine(side, expected.line));
                }
                colour = std::max(colour, expected.colour);
            }
            constexpr std::int32_t kColours[] = {0, kOrphanRowColour, kChangedRowColour};
            ASSERT_EQ(colour, kColours[static_cast<int>(rows.KindAt(row))]);
            ASSERT_EQ(previous, rows.PreviousDiff(row));
            if (const std::int32_t block = rows.BlockAt(row);
                block >= 0 && rows.Blocks()[static_cast<std::size_t>(block)].row == row)
                previous = row;
            const std::int32_t next = rows.NextDiff(row);
            ASSERT_TRUE(next == -1 || (next > row && rows.PreviousDiff(next + 1) == next));
        }
    }
}

TEST(AlignedRows, HunksThatDoNotFitAreRefused) {
    const auto hunk = [](LineNumber left, LineNumber leftCount, LineNumber right, LineNumber rightCount) {
        Hunk made;
        made.lines[Side::Left] = {.first = left, .count = leftCount};
        made.lines[Side::Right] = {.first = right, .count = rightCount};
        return made;
    };
    AlignedRows rows(PerSide<LineNumber>{{10, 12}});
    EXPECT_FALSE(rows.IsConsistent());
    EXPECT_FALSE(rows.Add(hunk(3, 1, 4, 1)));  // after three lines here and four there
    EXPECT_FALSE(rows.Add(hunk(8, 3, 8, 3)));  // beyond the end
    EXPECT_FALSE(rows.Add(hunk(2, 0, 2, 0)));  // nothing
    EXPECT_FALSE(rows.Add(hunk(-1, 1, -1, 1)));
    EXPECT_TRUE(rows.Add(hunk(5, 1, 5, 2)));
    EXPECT_FALSE(rows.Add(hunk(4, 1, 5, 1)));  // backwards
    EXPECT_FALSE(rows.IsConsistent());
    EXPECT_TRUE(rows.Add(hunk(10, 0, 11, 1)));
    EXPECT_TRUE(rows.IsConsistent());
    EXPECT_EQ(2, AlignedRows().Rows());
}

TEST(FoldedRows, HideOnlyWhatIsFarFromADifference) {
    constexpr std::int32_t kContext = 2;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const PerSide<std::string> texts = RandomTexts(seed).Next();
        const AlignedRows rows = RowsOf(DiffLines(Views(texts), {}, {}), texts);
        FoldedRows folded(rows, kContext);
        std::vector<std::int32_t> hidden;
        for (bool more = true; more;) {
            // Going through the positions goes through all rows, each once.
            std::int32_t row = 0;
            for (std::int32_t position = 0; position < folded.Positions(); ++position) {
                ASSERT_EQ(row, folded.RowAt(position));
                const FoldedRows::Fold* const fold = folded.FoldAt(position);
                const std::int32_t end = row + (fold == nullptr ? 1 : fold->count);
                if (fold != nullptr) {
                    ASSERT_GE(fold->count, FoldedRows::kLeastHidden);
                }
                for (; row < end; ++row) {
                    ASSERT_EQ(position, folded.PositionOf(row));
                    if (fold == nullptr) continue;
                    hidden.push_back(row);
                    for (std::int32_t near = row - kContext; near <= row + kContext; ++near)
                        ASSERT_EQ(GridRowKind::Same, rows.KindAt(near));
                }
            }
            ASSERT_EQ(rows.Rows(), row);
            more = !hidden.empty() && folded.Open(hidden[hidden.size() / 2]);
            hidden.clear();
        }
        EXPECT_EQ(rows.Rows(), folded.Positions());
    }
}

}  // namespace
}  // namespace vantrel
