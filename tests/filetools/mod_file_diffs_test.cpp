#include "filetools/mod_file_diffs.h"

#include <gmock/gmock.h>

#include "filetools/file_diff_engine.h"
#include "support/fixed_measure.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using vantrel::testing::KeptPaper;
using vantrel::testing::TestToolbox;

class PrintFileDiffsTest : public ::testing::Test {
  protected:
    void Load(const std::string& left, const std::string& right) {
        tools.folder.Write("one", left);
        tools.folder.Write("two", right);
        EXPECT_EQ(FileDiffEngine::kDiffer, engine.CompareFiles(tools.folder / "one", tools.folder / "two"));
        grids = FileGrids(engine.Result(), [] {});
        AlignedRows rows(PerSide<LineNumber>{{grids.LineCount(Side::Left), grids.LineCount(Side::Right)}});
        for (const Hunk& hunk : engine.Result()->hunks) EXPECT_TRUE(rows.Add(hunk));
        grids.SetRows(std::move(rows));
    }
    PerSide<PrintedGrid> Grids() const {
        return {{PrintedGrid{&grids, Side::Left, "/one"}, PrintedGrid{&grids, Side::Right, "/two"}}};
    }
    static std::vector<std::string> Texts(const PrintedPage& page) {
        std::vector<std::string> texts;
        for (const PrintedText& text : page) {
            EXPECT_EQ(0, text.x);
            texts.push_back((text.isBold ? "*" : "") + text.text);
        }
        return texts;
    }

    TestToolbox tools;
    FileDiffEngine engine{tools.Get()};
    FileGrids grids;
};

TEST_F(PrintFileDiffsTest, PrintsWhatDiffersInBoldAndKeepsRowsAligned) {
    Load("same\nx\ty\nmore\nend\x1b\n", "same\nchanged\nend\x1b\n");
    KeptPaper paper({3'000, 2'001});
    EXPECT_TRUE(PrintFileDiffs(tools.Get(), Grids(), {{true, true}}, {true, false, ""}, paper));
    // Rows from 500.05 to 1,800.9: seven a page.
    ASSERT_EQ(2U, paper.pages.size());
    EXPECT_THAT(Texts(paper.pages[0]),
                ElementsAre("*Vantrel - Page 1", "/one", " 1.same", "* 2.x   y", "* 3.more", " 4.end\u241B"));
    EXPECT_THAT(Texts(paper.pages[1]),
                ElementsAre("*Vantrel - Page 1", "/two", " 1.same", "* 2.changed", " 3.end\u241B"));
    EXPECT_EQ(paper.pages[0].back().y, paper.pages[1].back().y);
}

TEST_F(PrintFileDiffsTest, BreaksPagesAndCutsLines) {
    std::string lines;
    for (int i = 0; i < 20; ++i) lines += std::string(10'000, 'w') + "\n";
    Load(lines, lines + "x\n");
    KeptPaper paper({3'000, 2'001});
    EXPECT_TRUE(PrintGrid(tools.Get(), Grids()[Side::Right], {}, paper));
    ASSERT_EQ(3U, paper.pages.size());
    EXPECT_EQ(" 1." + std::string(27, 'w'), paper.pages[0][2].text);
    EXPECT_EQ(" 21.x", paper.pages[2].back().text);
    EXPECT_TRUE(paper.pages[2].back().isBold);
}

TEST_F(PrintFileDiffsTest, LeavesTheRightGridOutWhereTheLeftOneFailed) {
    class TornPaper : public KeptPaper {
      public:
        using KeptPaper::KeptPaper;
        void Print(const PrintedPages& printed) override {
            if (tries++ == 0) throw ErrorException(Error(ErrorNumber::DeviceUnavailable, "Paper torn"));
            KeptPaper::Print(printed);
        }
        int tries = 0;
    };
    Load("a\n", "b\n");
    TornPaper paper({3'000, 2'001});
    EXPECT_FALSE(PrintFileDiffs(tools.Get(), Grids(), {{true, true}}, {}, paper));
    EXPECT_EQ(1, paper.tries);
    ASSERT_EQ(1U, tools.messages.shown.size());
    EXPECT_THAT(tools.messages.Line(0), HasSubstr("modFileDiffs.PrintGrid"));
    // Not wanted is not failed.
    EXPECT_TRUE(PrintFileDiffs(tools.Get(), Grids(), {{false, true}}, {}, paper));
    EXPECT_EQ(1U, paper.pages.size());
}

}  // namespace
}  // namespace vantrel
