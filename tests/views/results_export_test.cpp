#include "views/results_export.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "panes_support.h"
#include "platform/names/csv_text.h"
#include "platform/names/names.h"
#include "support/faulty_system_calls.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using enum ResultType;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using vantrel::testing::AddPair;
using vantrel::testing::Call;
using vantrel::testing::FaultySystemCalls;
using vantrel::testing::PanesStage;
using vantrel::testing::TestToolbox;

class ResultsExportTest : public ::testing::Test {
  protected:
    std::string Text(std::vector<ReportPart> parts, ResultsFormat format) {
        std::string text;
        TextPieces out([&](std::string_view piece) { text += piece; });
        WriteResults({{{"/l&r/", "/right/"}}, std::move(parts), "NOW"}, format, LocaleFormats("C"), out);
        return text;
    }
    // A sub-folder that differs, with one orphan in it.
    void AddSubFolder(const std::string& name, const std::string& file) {
        AddPair(results.hold, name, {DifferentFolder, 5}, {DifferentFolder, 6});
        CSubFolderDiffs diffs("\\" + name, "/left/" + name);
        SubFolderRecord record;
        record.name = record.realName = file;
        record.size = Currency::FromWhole(7);
        record.type = Orphan;
        diffs.AddPair({{record, {}}});
        results.SubFolderDiffs.Add(std::move(diffs));
    }

    ComparisonResults results;
};

TEST_F(ResultsExportTest, CsvIsAsMadeByHand) {
    AddPair(results.hold, "a,\"b\"", {Newer, 1'234}, {Older, 0});
    AddPair(results.hold, "=cmd|' /C calc'!A0", {}, {Orphan, 4});
    AddSubFolder("Sub", "-in");
    ResultRow unknown;
    unknown.text = "fifo";
    unknown.kind = RowKind::Unknown;
    unknown.reason = UnknownReason::SpecialObject;
    results.hold[Side::Left].AddCopy(unknown);
    unknown.reason = UnknownReason::None;
    results.hold[Side::Right].AddCopy(unknown);
    EXPECT_EQ(
        "Sub-Folder,Left Name,Left Size,Left Modified,Left Type,Left Note,"
        "Right Name,Right Size,Right Modified,Right Type,Right Note\r\n"
        ",\"a,\"\"b\"\"\",1234,2020-09-13T12:47:14.0000000Z,Newer,,"
        "\"a,\"\"b\"\"\",0,2020-09-13T12:26:40.0000000Z,Older,\r\n"
        ",,,,,,\"'=cmd|' /C calc'!A0\",4,2020-09-13T12:26:44.0000000Z,Orphan,\r\n"
        ",\"\\Sub\",5,,DifferentFolder,,\"\\Sub\",6,,DifferentFolder,\r\n"
        ",\"fifo\",,,Unknown,SpecialObject,\"fifo\",,,Unknown,OtherSide\r\n"
        "\"\\Sub\",\"'-in\",7,1601-01-01T00:00:00.0000000Z,Orphan,,,,,,\r\n",
        Text(AllParts(results), ResultsFormat::Csv));
}

TEST(CsvField, DefusesFormulas) {
    for (const char* sign : {"=", "+", "-", "@", "\t", "\r", "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"})
        EXPECT_EQ(std::string("\"'") + sign + "1\"", CsvField(std::string(sign) + "1"));
    for (const char* plain : {"", "a=1", " =1", "'", "1-2"})
        EXPECT_EQ("\"" + std::string(plain) + "\"", CsvField(plain));
}

TEST_F(ResultsExportTest, PageKeepsNamesTextAndSafe) {
    AddPair(results.hold, "<script>alert('1')</script>&.txt", {Same, 1'234'567}, {Same, 1'234'567});
    AddPair(results.hold, NameFromSystem("line\nfeed\xFF"), {Orphan, 1}, {});
    AddPair(results.hold, "evil\u202Etxt.exe", {}, {Orphan, 1});
    const std::string page = Text(AllParts(results), ResultsFormat::Html);
    EXPECT_THAT(
        page,
        AllOf(HasSubstr("<dd><span dir=\"auto\">/l&amp;r/</span></dd>"),
              HasSubstr("<span dir=\"auto\">&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt;&amp;.txt</span>"),
              Not(HasSubstr("<script>alert")), HasSubstr("data-v=\"1234567\">1,234,567</td>"),
              HasSubstr("<span dir=\"auto\">line\u240Afeed\uFFFD</span>"),
              HasSubstr("<span dir=\"auto\">evil\uFFFDtxt.exe</span>"), Not(HasSubstr("\u202E"))));
    // Nothing leads out of the page.
    EXPECT_THAT(page, AllOf(Not(HasSubstr("http://")), Not(HasSubstr("https://")), Not(HasSubstr("src=\"")),
                            Not(HasSubstr("href="))));
}

TEST_F(ResultsExportTest, JsonNamesLoseNothing) {
    const std::string odd = NameFromSystem("line\nfeed\xFF");
    AddPair(results.hold, odd, {Orphan, 1}, {});
    EXPECT_EQ("{\"left\":{\"name\":\"" + odd +
                  "\",\"size\":1,\"modified\":\"2020-09-13T12:26:41.0000000Z\",\"type\":\"Orphan\"},"
                  "\"right\":null}\n",
              Text(AllParts(results), ResultsFormat::JsonLines));
}

// What the panes show is what is written of the shown, in every view and also where pairs are no longer
// beside each other.
TEST(ShownParts, AreThoseOfThePanes) {
    PanesStage stage;
    std::mt19937 random(7);
    vantrel::testing::FillAtRandom(stage.hold, 60, random);
    ComparisonResults results;
    const auto shownNames = [&] {
        for (const Side side : kBothSides) results.hold[side] = stage.hold[side];
        PerSide<std::vector<std::string>> names;
        for (const ReportPart& part : PartsShown(results, stage.panes))
            part.ForEach([&](const ShownPair& pair) {
                for (const Side side : kBothSides)
                    if (pair[side].shown) names[side].emplace_back(pair[side].name);
            });
        return names;
    };
    const auto expectSame = [&] {
        const PerSide<std::vector<std::string>> names = shownNames();
        for (const Side side : kBothSides) {
            std::vector<std::string> expected;
            for (const ResultRow& row : stage.panes.Pane(side).Rows())
                if (row.IsReal()) expected.emplace_back(row.text);
            EXPECT_EQ(expected, names[side]);
        }
    };
    stage.panes.ApplyViewTypes();
    expectSame();
    for (const std::int32_t view : {kViewDifferent, kViewSimilar, kViewAll}) {
        stage.panes.ChooseView(view);
        expectSame();
    }
    stage.panes.ToggleView(Older);
    expectSame();
    for (const std::size_t row : {0U, 3U, 5U, 8U}) stage.panes.Click(Side::Left, row, {.toggle = true});
    stage.panes.ShowOnlySelectedObjects();
    expectSame();
}

// The records of a sub-folder go with its row.
TEST(ShownParts, HaveTheRecordsOfShownSubFolders) {
    PanesStage stage;
    AddPair(stage.hold, "One", {DifferentFolder, 1}, {DifferentFolder, 1});
    AddPair(stage.hold, "Two", {DifferentFolder, 1}, {DifferentFolder, 1});
    ComparisonResults results;
    for (const Side side : kBothSides) results.hold[side] = stage.hold[side];
    for (const char* name : {"\\One", "\\Two"}) {
        CSubFolderDiffs diffs(name, "/left");
        SubFolderRecord record;
        record.name = record.realName = "in";
        record.type = Orphan;
        diffs.AddPair({{record, {}}});
        results.SubFolderDiffs.Add(std::move(diffs));
    }
    stage.panes.ApplyViewTypes();
    EXPECT_EQ(3U, PartsShown(results, stage.panes).size());
    stage.panes.Click(Side::Left, 1, {});
    stage.panes.ShowOnlySelectedObjects();
    const std::vector<ReportPart> parts = PartsShown(results, stage.panes);
    ASSERT_GE(parts.size(), 2U);
    EXPECT_EQ("\\Two", parts.back().SubFolder());
    stage.panes.ChooseView(kViewSimilar);
    EXPECT_EQ(1U, PartsShown(results, stage.panes).size());
    EXPECT_EQ(3U, AllParts(results).size());
}

TEST(SaveResults, LeavesTheOldFileWhereTheDiskIsFull) {
    FaultySystemCalls calls;
    TestToolbox tools(calls);
    HoldLists hold;
    AddPair(hold, "a", {Orphan, 1}, {});
    ComparisonResults results;
    results.hold = hold;
    const ResultsReport report{results.folders, AllParts(results), "NOW"};
    const std::string path = tools.folder / "page.html";
    tools.folder.Write("page.html", "old");
    calls.FailAll(Call::Write, ENOSPC);
    EXPECT_EQ(ErrorNumber::DiskFull, SaveResults(tools.Get(), report, ResultsFormat::Html, path).Number());
    EXPECT_EQ("old", tools.folder.Read("page.html"));
    calls.ClearFaults();
    EXPECT_TRUE(SaveResults(tools.Get(), report, ResultsFormat::Html, path).IsOk());
    EXPECT_THAT(tools.folder.Read("page.html"), ::testing::EndsWith("</html>\n"));
}

}  // namespace
}  // namespace vantrel
