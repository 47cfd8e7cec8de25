#include "filetools/file_diffs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "filetools/ascii_percent.h"
#include "filetools/moved_blocks.h"
#include "platform/names/names.h"
#include "script_support.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;

class FileDiffsTest : public ::testing::Test {
  protected:
    std::string Write(const std::string& name, const std::string& content) const {
        tools.folder.Write(name, content);
        return tools.folder / name;
    }
    // The whole road to the grids.
    bool Show(const std::string& left, const std::string& right) {
        viewOptions.FileOne = Write("left", left);
        viewOptions.FileTwo = Write("right", right);
        return CompareFilesAndStoreResultsInGlobalDiffObject(tools.Get(), viewOptions, engine) &&
               LoadFilesIntoGrids(tools.Get(), engine, grids) &&
               AlignGridsToDiffOutput(tools.Get(), engine, Paths(), grids);
    }
    PerSide<std::string> Paths() const { return {{viewOptions.FileOne, viewOptions.FileTwo}}; }
    std::string Differences() const {
        std::string all;
        for (std::int32_t index = 0; index < grids.Differences().Count(); ++index)
            all += (index > 0 ? " " : "") + grids.Differences().Entry(index);
        return all;
    }
    std::string OnlyMessage() const {
        return tools.messages.shown.size() == 1 ? tools.messages.Line(0) : "none";
    }

    testing::TestToolbox tools;
    Options options;
    cViewFileDiffsOptions viewOptions{options};
    FileDiffEngine engine{tools.Get()};
    FileGrids grids;
};

TEST_F(FileDiffsTest, LinesStandBesideEachOther) {
    ASSERT_TRUE(Show("a\n\tb.1\nc\nd\ne\n", "a\nB\nX\nY\nZ\nd\ne\nf"));
    EXPECT_EQ("2-4-16768477 8-1-12902911", Differences());
    EXPECT_EQ(10, grids.Rows().Rows());
    EXPECT_EQ(" 2.   b.1", grids.CellText(Side::Left, 2));
    EXPECT_EQ("   b.1", grids.LineText(Side::Left, 2));
    EXPECT_EQ("\tb.1", grids.Line(Side::Left, 2));
    EXPECT_EQ("", grids.CellText(Side::Left, 4));
    EXPECT_EQ(" 5.Z", grids.CellText(Side::Right, 5));
    EXPECT_EQ("", grids.CellText(Side::Left, 8));
    EXPECT_EQ(" 8.f", grids.CellText(Side::Right, 8));
    EXPECT_EQ("", grids.CellText(Side::Right, 9));

    ASSERT_TRUE(Show("", "x\ny\n"));
    EXPECT_EQ("1-2-12902911", Differences());
    EXPECT_EQ("", grids.CellText(Side::Left, 1));
}

TEST_F(FileDiffsTest, CutCellsEndBetweenCharacters) {
    ASSERT_TRUE(Show("ääää\n", "ä\U0001F600\n"));
    for (std::size_t limit = 0; limit <= 14; ++limit)
        for (const Side side : kBothSides) {
            EXPECT_TRUE(IsValidUtf8(grids.CellText(side, 1, limit), {})) << limit;
            EXPECT_TRUE(IsValidUtf8(grids.LineText(side, 1, limit), {})) << limit;
            EXPECT_LE(grids.CellText(side, 1, limit).size(), std::max<std::size_t>(limit, 3));
        }
    EXPECT_EQ(" 1.ääää", grids.CellText(Side::Left, 1, 11));
    EXPECT_EQ(" 1.äää", grids.CellText(Side::Left, 1, 10));
}

TEST_F(FileDiffsTest, SaysWhatThereIsNothingToShowOf) {
    EXPECT_FALSE(Show("same\n", "same\n"));
    EXPECT_EQ("Compare Files: The files are identical", OnlyMessage());
    tools.messages.shown.clear();
    EXPECT_FALSE(Show("a\0b"s, "abcdefghi\0"s));
    EXPECT_EQ(
        "Compare Files: The files differ but the differences are not viewable.\r\n"
        "Only differences between ASCII text files can be viewed. \r\n\r\n"
        "File 1 is 66% ASCII text\r\nFile 2 is 90% ASCII text\r\n\r\n"
        "See the View File Differences topic in the Help file for details.",
        OnlyMessage());
    EXPECT_EQ(MessageIcon::Information, tools.messages.shown[0].icon);
    tools.messages.shown.clear();
    Write("right", "x");
    viewOptions.FileOne = tools.folder / "none";
    EXPECT_FALSE(CompareFilesAndStoreResultsInGlobalDiffObject(tools.Get(), viewOptions, engine));
    EXPECT_THAT(OnlyMessage(),
                ::testing::StartsWith("Compare Files: Errors encountered comparing the files\r\n\r\n"));
    EXPECT_THAT(OnlyMessage(), HasSubstr("none"));
    EXPECT_EQ(MessageIcon::Warning, tools.messages.shown[0].icon);
    // A text that speaks of binary files is a text.
    tools.messages.shown.clear();
    EXPECT_TRUE(
        Show("Binary files " + tools.folder.Path() + "left " + tools.folder.Path() + "right differ\n", ""));
    EXPECT_EQ("none", OnlyMessage());
}

TEST_F(FileDiffsTest, TheWayOfStoringIsToldInWords) {
    const std::string head = "Compare Files: The lines of the files are the same. The files differ in ";
    const struct {
        std::string left, right, words;
    } cases[] = {
        {"a\nb\n", "a\r\nb\r\n", "line ends (LF and CR LF)"},
        {"a\rb", "a\nb", "line ends (CR and LF)"},
        {"\xEF\xBB\xBF"
         "a\n",
         "a\n", "byte order mark (only file one has one)"},
        {"\xE4\n", "ä\r\n", "encoding (windows-1252 and UTF-8) and line ends (LF and CR LF)"},
        {"\xFF\xFE"
         "a\0\n\0"s,
         "a\n", "encoding (UTF-16LE and UTF-8) and byte order mark (only file one has one)"},
        {"a\nb", "a\nb\n", "the line end behind the last line (missing in file one)"},
    };
    for (const auto& each : cases) {
        tools.messages.shown.clear();
        EXPECT_FALSE(Show(each.left, each.right));
        EXPECT_EQ(head + each.words, OnlyMessage());
    }
    // Different bytes that decode to the same characters are not identical.
    tools.messages.shown.clear();
    viewOptions.Encodings = {{"EUC-JP", "EUC-JP"}};
    EXPECT_FALSE(Show("a\xFF\n", "a\xFE\n"));
    EXPECT_EQ(head + "bytes that are no text in EUC-JP", OnlyMessage());
}

// One kind of line end against another: only the line that says something else is shown. Mixed ends are told
// line by line.
TEST_F(FileDiffsTest, LineEndsDoNotHideTheDifferences) {
    ASSERT_TRUE(Show("a\nb\nc\n", "a\r\nB\r\nc\r\n"));
    EXPECT_EQ("2-1-16768477", Differences());
    EXPECT_TRUE(grids.Diff()->lineEndsIgnored);
    EXPECT_EQ("UTF-8, CR LF", FormText(grids.Diff()->texts[Side::Right]));
    ASSERT_TRUE(Show("a\rb\rc", "a\nB\nc"));
    EXPECT_EQ("2-1-16768477", Differences());
    EXPECT_EQ(" 3.c", grids.CellText(Side::Left, 3));
    ASSERT_TRUE(Show("a\nb\n", "a\r\nb\n"));
    EXPECT_EQ("1-1-16768477", Differences());
    EXPECT_EQ(" 1.a", grids.CellText(Side::Right, 1));
}

// For a script the bytes count as they are.
TEST_F(FileDiffsTest, AsStoredNothingIsPassedOver) {
    const std::string left = Write("left",
                                   "\xEF\xBB\xBF"
                                   "a\nb\n");
    const std::string right = Write("right", "a\r\nb");
    ASSERT_EQ(FileDiffEngine::kDiffer, engine.CompareFiles(left, right));
    EXPECT_EQ("1,2c1,2", engine.OutputLine(0));
    EXPECT_EQ(
        "< \xEF\xBB\xBF"
        "a",
        engine.OutputLine(1));
    EXPECT_EQ("> a\r", engine.OutputLine(4));
    EXPECT_EQ("\\ No newline at end of file", engine.OutputLine(6));
    EXPECT_EQ(7, engine.OutputLineCount());
    engine.IgnoreWhitespace = true;
    ASSERT_EQ(FileDiffEngine::kDiffer, engine.CompareFiles(left, right));
    EXPECT_EQ("1c1", engine.OutputLine(0));
    EXPECT_EQ(FileDiffEngine::kIdentical, engine.CompareFiles(Write("left", "a \n"), Write("right", " a")));
    EXPECT_EQ(FileDiffEngine::kIdentical, engine.CompareFiles(Write("left", "\0x"s), left));
    EXPECT_EQ(FileDiffEngine::kFailed, engine.CompareFiles(left, tools.folder.Path()));
}

TEST_F(FileDiffsTest, WhatMemoryCannotHoldIsNotTried) {
    const std::string huge = Write("huge", "");
    constexpr std::uintmax_t kTebibytes = std::uintmax_t{4} << 40;
    std::error_code refused;
    std::filesystem::resize_file(huge, kTebibytes, refused);  // nothing but a hole
    if (refused) GTEST_SKIP() << "no such files here";
    EXPECT_EQ(FileDiffEngine::kFailed, engine.CompareFiles(huge, Write("right", "x")));
    EXPECT_EQ("The files are too large to be compared in the memory that is free now", engine.OutputLine(0));
}

TEST_F(FileDiffsTest, ACancelLeavesNothingBehind) {
    const std::string left = Write("left", std::string(3'000'000, 'x') + "\na\n");
    const std::string right = Write("right", std::string(3'000'000, 'x') + "\nb\n");
    ASSERT_EQ(FileDiffEngine::kDiffer, engine.CompareFiles(left, right));
    const std::size_t yields = tools.loop.yields;
    ASSERT_GT(yields, 0U);
    tools.loop.cancelAt = yields + 1;
    EXPECT_THROW(engine.CompareFiles(left, right), Cancelled);
    EXPECT_EQ(0, engine.OutputLineCount());
    EXPECT_EQ(nullptr, engine.Result());
    tools.loop.ResetCancel();
    EXPECT_EQ(FileDiffEngine::kDiffer, engine.CompareFiles(left, right));
}

class OtherOutput : public DiffOutput {
  public:
    explicit OtherOutput(std::vector<std::string> lines) : lines_(std::move(lines)) {}
    std::int32_t OutputLineCount() const override { return static_cast<std::int32_t>(lines_.size()); }
    std::string OutputLine(std::int32_t index) const override {
        return lines_[static_cast<std::size_t>(index)];
    }

  private:
    std::vector<std::string> lines_;
};

TEST_F(FileDiffsTest, AnOutputThatDoesNotFitIsSaid) {
    ASSERT_TRUE(Show("a\nb\n", "a\nc\nü\n"));
    const std::string before = Differences();
    const OtherOutput fits({"2c2,3", "< 1c1", "", "---", "> x"});
    EXPECT_TRUE(AlignGridsToDiffOutput(tools.Get(), fits, Paths(), grids));
    EXPECT_EQ(before, Differences());
    for (const std::vector<std::string>& lines :
         {std::vector<std::string>{"2c2,4"}, {"2c2"}, {"2"}, {"2c2,3", "1c1"}, {}}) {
        tools.messages.shown.clear();
        EXPECT_FALSE(AlignGridsToDiffOutput(tools.Get(), OtherOutput(lines), Paths(), grids));
        EXPECT_EQ(
            "Show File Differences: Not able to compute the file differences.\r\n\r\n"
            "This can happen if the files are not fully ASCII-based.\r\n\r\n"
            "File 1 is 100% ASCII text\r\nFile 2 is 71% ASCII text",
            OnlyMessage());
        EXPECT_EQ(MessageIcon::Stop, tools.messages.shown[0].icon);
        EXPECT_EQ(before, Differences());
    }
    Write("right", "a\nc\nu\n");
    tools.messages.shown.clear();
    EXPECT_FALSE(AlignGridsToDiffOutput(tools.Get(), OtherOutput({"9c9"}), Paths(), grids));
    EXPECT_EQ("Show File Differences: Not able to compute the file differences.", OnlyMessage());
}

TEST_F(FileDiffsTest, FindGoesThroughTheLeftGridFirst) {
    ASSERT_TRUE(Show("one\nTwo\nthree\nfour\n", "one\ntwo\nthree\ntwo\tX\n"));
    const auto find = [&](std::string_view text, FindDirection direction, std::int32_t current) {
        return grids.Find(text, direction, current, {}).value_or(-1);
    };
    EXPECT_EQ(2, find("TWO", FindDirection::Next, 1));
    EXPECT_EQ(4, find("two", FindDirection::Next, 2));  // only on the right
    EXPECT_EQ(-1, find("two", FindDirection::Next, 4));
    EXPECT_EQ(2, find("two", FindDirection::Both, 4));
    EXPECT_EQ(2, find("two", FindDirection::Previous, 3));
    EXPECT_EQ(3, find("3.th", FindDirection::Next, 1));  // number and text
    EXPECT_EQ(4, find(" 4", FindDirection::Next, 1));
    EXPECT_EQ(4, find("two   x", FindDirection::Next, 1));
    EXPECT_EQ(-1, find("", FindDirection::Both, 1));
    EXPECT_EQ(-1, find("none", FindDirection::Both, 2));
}

// The quick search over the text finds what a look at every cell finds.
TEST_F(FileDiffsTest, FindIsThatOfEveryCell) {
    testing::RandomTexts texts(7);
    for (int round = 0; round < 60; ++round) {
        PerSide<std::string> both = texts.Next();
        if (round % 5 == 0) both[Side::Right] += "\u212Aelvin \u017F\n";
        if (!Show(both[Side::Left], both[Side::Right])) continue;
        const std::int32_t last = grids.Rows().LastRow();
        for (const std::string wanted :
             {"a", "A", "b", "}", "nt n;", "  ", "int", "2.", "k", "S", "ü", "b.", "\rb"}) {
            const auto holds = [&](Side side, std::int32_t row) {
                return FoldCase(grids.CellText(side, row)).find(FoldCase(wanted)) != std::string::npos;
            };
            for (std::int32_t current = 0; current <= last; current += 1 + last / 7) {
                std::int32_t next = -1, previous = -1;
                for (const Side side : {Side::Right, Side::Left}) {
                    std::int32_t row = current + 1;
                    while (row <= last && !holds(side, row)) ++row;
                    if (row <= last) next = row;
                    row = current - 1;
                    while (row > 0 && !holds(side, row)) --row;
                    if (row > 0) previous = row;
                }
                ASSERT_EQ(next, grids.Find(wanted, FindDirection::Next, current, {}).value_or(-1)) << wanted;
                ASSERT_EQ(previous, grids.Find(wanted, FindDirection::Previous, current, {}).value_or(-1))
                    << wanted;
            }
        }
    }
}

TEST_F(FileDiffsTest, BlocksThatMovedAreFound) {
    const std::string block = "void SomeFunction() {\n    return Other();\n}\n";
    const std::string rest = "1\n2\n3\n4\n5\n6\n7\n";
    ASSERT_TRUE(Show(block + rest + "x\n", rest + "y\n" + block + "x\nnew line that nobody took away\n"));
    const MovedBlocks blocks = FindMovedBlocks(*grids.Diff(), {});
    ASSERT_EQ(1U, blocks.All().size());
    const MovedBlock& moved = blocks.All()[0];
    EXPECT_EQ(0, moved.first[Side::Left]);
    EXPECT_EQ(8, moved.first[Side::Right]);
    EXPECT_EQ(3, moved.count);
    EXPECT_EQ(&moved, blocks.At(Side::Right, 10));
    EXPECT_EQ(nullptr, blocks.At(Side::Right, 7));
    EXPECT_EQ(nullptr, blocks.At(Side::Left, 3));
    // What says too little is no block.
    ASSERT_TRUE(Show("}\n" + rest, rest + "}\n"));
    EXPECT_TRUE(FindMovedBlocks(*grids.Diff(), {}).All().empty());
}

TEST_F(FileDiffsTest, PercentOfAsciiIsOneHundredForAllOnly) {
    const auto percent = [&](const std::string& content) {
        return GetAsciiPercent(tools.files, Write("file", content), {});
    };
    EXPECT_EQ(100, percent(""));
    EXPECT_EQ(100, percent("text\twith\r\nends\f"));
    EXPECT_EQ(0, percent("\x80\xFF"));
    EXPECT_EQ(0, percent("\x1B"));
    EXPECT_EQ(99, percent(std::string(600'000, 'x') + "\x80"));
    EXPECT_EQ(50, percent("a\x7F"));
}

}  // namespace
}  // namespace vantrel
