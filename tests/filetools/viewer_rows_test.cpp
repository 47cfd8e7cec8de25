// What the difference viewer paints from, without a window.
#include <gmock/gmock.h>

#include <random>

#include "filetools/diffs_bar.h"
#include "filetools/grid_contents.h"
#include "filetools/inline_differences.h"
#include "filetools/row_layout.h"
#include "filetools/text_columns.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::TestToolbox;

// Pieces of lines: plain, tab, two bytes, three bytes and two columns, one that combines, no UTF-8, a lead
// byte alone.
const std::vector<std::string> kLetters{"a",        " ",    "\t",  "\xC3\xA4", "\xE6\xBC\xA2",
                                        "\xCC\x88", "\xFF", "\xE6"};

std::string RandomLine(std::mt19937& random, std::size_t letters) {
    std::string line;
    for (std::size_t i = 0; i < letters; ++i) line += kLetters[random() % kLetters.size()];
    return line;
}

// Each column of lines with and without a table is found as by walking from the beginning.
TEST(TextColumns, FindEveryColumnOfLongLines) {
    std::mt19937 random(7);
    for (const std::size_t letters :
         {std::size_t{0}, std::size_t{1}, std::size_t{50}, 5 * TextColumns::kStep}) {
        const std::string line = RandomLine(random, letters);
        const TextColumns columns(line);
        std::int64_t column = 0;
        for (std::size_t at = 0; at < line.size();) {
            const std::size_t begin = at;
            const int wide = ColumnsOfCharacter(NextCharacter(line, at));
            for (int inside = 0; inside < wide; ++inside) {
                const TextColumns::Place place = columns.At(column + inside);
                // What combines with the character before may stand in front of it.
                ASSERT_LE(place.offset, begin);
                ASSERT_EQ(place.column, column);
            }
            column += wide;
        }
        EXPECT_EQ(columns.Count(), column);
        EXPECT_EQ(columns.At(column + 5).column, column);
    }
}

FileGrids Grids(TestToolbox& tools, FileDiffEngine& engine, const std::string& left,
                const std::string& right) {
    tools.folder.Write("left", left);
    tools.folder.Write("right", right);
    engine.Form = TextForm::ForReading;
    engine.CompareFiles(tools.folder / "left", tools.folder / "right");
    FileGrids grids(engine.Result(), {});
    PerSide<LineNumber> counts{{grids.LineCount(Side::Left), grids.LineCount(Side::Right)}};
    AlignedRows rows(counts);
    for (const Hunk& hunk : engine.Result()->hunks) EXPECT_TRUE(rows.Add(hunk));
    grids.SetRows(std::move(rows));
    return grids;
}

// Folded or not, wrapped or not: every visual line belongs to the row that a walk over the rows finds there.
TEST(RowLayout, PlacesRowsAsAWalkOverThemDoes) {
    TestToolbox tools;
    FileDiffEngine engine(tools.Get());
    std::mt19937 random(11);
    PerSide<std::string> texts;
    for (int line = 0; line < 120; ++line) {
        const std::string text = std::string(random() % 70, 'x') + "\n";
        for (const Side side : kBothSides)
            if (random() % 12 != 0) texts[side] += text;
    }
    const FileGrids grids = Grids(tools, engine, texts[Side::Left], texts[Side::Right]);
    const std::vector<std::uint32_t> columns = ColumnsOfRows(grids, {});
    for (const bool folded : {false, true})
        for (const int width : {0, 1, 9, 500}) {
            SCOPED_TRACE(width);
            const FoldedRows folds =
                folded ? FoldedRows(grids.Rows(), 2) : FoldedRows::Unfolded(grids.Rows());
            const RowLayout layout = width == 0 ? RowLayout(folds) : RowLayout(folds, columns, width);
            std::int32_t line = 0;
            for (std::int32_t position = 1; position < folds.Positions() - 1; ++position) {
                const std::int32_t row = folds.RowAt(position);
                std::size_t longest = 1;
                for (const Side side : kBothSides) longest = std::max(longest, grids.Line(side, row).size());
                const bool isFold = folds.FoldAt(position) != nullptr;
                const int height = width == 0 || isFold ? 1 : (static_cast<int>(longest) + width - 1) / width;
                ASSERT_EQ(layout.LineOfRow(row), line);
                ASSERT_EQ(layout.HeightOfRow(row), height);
                for (int part = 0; part < height; ++part, ++line) {
                    ASSERT_EQ(layout.At(line).position, position);
                    ASSERT_EQ(layout.At(line).part, part);
                }
            }
            EXPECT_EQ(layout.Lines(), line + 1);  // the blank row
        }
}

AlignedRows::Block Block(std::int32_t row, std::int32_t height, bool orphan = false) {
    AlignedRows::Block block{.row = row, .height = height, .first = {}, .count = {}};
    block.count[Side::Left] = height;
    block.count[Side::Right] = orphan ? 0 : height;
    return block;
}

TEST(DiffsBar, DrawsHunksToScaleAndNoneThatIsLessThanHalfAPixel) {
    using enum GridRowKind;
    EXPECT_THAT(MarksOfBar({Block(1, 10), Block(51, 1, true), Block(91, 10, true)}, 100, 100),
                ElementsAre(BarMark{0, 10, Changed}, BarMark{50, 1, Orphan}, BarMark{90, 10, Orphan}));
    EXPECT_THAT(MarksOfBar({Block(1, 1), Block(500, 4), Block(900, 6)}, 1000, 100),
                ElementsAre(BarMark{90, 1, Changed}));
    EXPECT_THAT(MarksOfBar({Block(1, 10)}, 100, 0), IsEmpty());
    for (const int height : {40, 100, 700})
        for (std::int32_t row = 1; row < 300; ++row) {
            const int y = BarLineOfRow(row, 300, height);
            EXPECT_LE(std::abs(RowAtBarPoint(y, 300, height) - (row - 1)), 300 / height + 1);
        }
    EXPECT_EQ(RowAtBarPoint(0, 300, 100), 1);
    EXPECT_EQ(RowAtBarPoint(5000, 300, 100), 299);
}

TEST(InlineDifferences, AreWholeCharactersAlsoBeyondTheBound) {
    TestToolbox tools;
    const auto differ = [&](const std::string& left, const std::string& right, bool ignoreCase = false) {
        return DifferencesOfLines(tools.reporter, {{left, right}}, ignoreCase);
    };
    EXPECT_THAT(differ("abc", "acb")[Side::Left], ElementsAre(TextRange{2, 3}));
    EXPECT_THAT(differ("abc", "acb")[Side::Right], ElementsAre(TextRange{1, 2}));
    EXPECT_THAT(differ("ABC", "abd", true)[Side::Left], ElementsAre(TextRange{2, 3}));
    // Both characters begin with the same byte.
    EXPECT_THAT(differ("x\xC3\xA4y", "x\xC3\xB6y")[Side::Left], ElementsAre(TextRange{1, 3}));
    const std::string head(kMostComparedBytes, 'h');
    const LineDifferences far = differ(head + "\xC3\xA4" + "tail", head + "\xC3\xB6" + "tail");
    for (const Side side : kBothSides)
        EXPECT_THAT(far[side], ElementsAre(TextRange{head.size(), head.size() + 2}));
    EXPECT_THAT(differ(head + "x", head)[Side::Right], IsEmpty());
    EXPECT_THAT(differ(head + "x", head)[Side::Left], ElementsAre(TextRange{head.size(), head.size() + 1}));
}

TEST(GridContents, KnowTheOtherPlaceOfMovedLinesAndTheMarkersOfRows) {
    TestToolbox tools;
    FileDiffEngine engine(tools.Get());
    const std::string moved = "a line that went elsewhere in the file\nand the one behind it, likewise\n";
    std::string middle;
    for (int line = 0; line < 10; ++line) middle += "equal " + std::to_string(line) + "\n";
    GridContents contents;
    contents.grids = Grids(tools, engine, moved + middle, middle + moved);
    contents.moved = FindMovedBlocks(*engine.Result(), {});
    ASSERT_EQ(contents.moved.All().size(), 1U);
    EXPECT_EQ(contents.OtherPlaceOf(1), 13);
    EXPECT_EQ(contents.OtherPlaceOf(14), 2);
    EXPECT_EQ(contents.OtherPlaceOf(5), 0);
    contents.currentRow = 2;
    contents.bookmarks.Toggle(5);
    EXPECT_EQ(contents.MarkerOf(2), RowMarker::OrphanArrow);
    EXPECT_EQ(contents.MarkerOf(5), RowMarker::Bookmark);
    contents.currentRow = 5;
    EXPECT_EQ(contents.MarkerOf(5), RowMarker::BookmarkArrow);
    contents.bookmarks.Toggle(5);
    EXPECT_EQ(contents.MarkerOf(5), RowMarker::Arrow);
}

}  // namespace
}  // namespace vantrel
