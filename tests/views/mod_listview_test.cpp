#include "views/mod_listview.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "panes_support.h"
#include "platform/names/names.h"
#include "support/faulty_system_calls.h"
#include "support/fixed_measure.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using enum ResultType;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using vantrel::testing::AddPair;
using vantrel::testing::FaultySystemCalls;
using vantrel::testing::FixedMeasure;
using vantrel::testing::KeptPaper;
using vantrel::testing::TestToolbox;

// A pair of every type. Sizes of files are seconds of their times too.
HoldLists Samples() {
    HoldLists hold;
    AddPair(hold, "newer.txt", {Newer, 1'234'567}, {Older, 0});
    AddPair(hold, "same", {Same, 12}, {Same, 12});
    AddPair(hold, "only here", {Orphan, 1}, {});
    AddPair(hold, "bin", {Binary, 2}, {Binary, 3});
    AddPair(hold, std::string(36, 'a'), {}, {Orphan, 4});
    AddPair(hold, std::string(50, 'b'), {Orphan, 5}, {});
    AddPair(hold, "Alike", {IdenticalFolder, 7}, {IdenticalFolder, 7});
    AddPair(hold, "Sub", {DifferentFolder, 8}, {DifferentFolder, 9});
    AddPair(hold, "Lone", {}, {OrphanFolder, 1000});
    return hold;
}

std::vector<PrintedList> Both(const HoldLists& hold) {
    return {{&hold[Side::Left], "/home/l\u00E9ft/"}, {&hold[Side::Right], "/right/"}};
}

constexpr const char* kReport =
    "Vantrel - [2020-09-13 12:26:40]\r\n"
    "\r\n"
    "/home/l\u00E9ft/\r\n"
    "________________________________________________________________________________\r\n"
    "\r\n"
    "+  newer.txt                           1,234,567           2020-09-27 19:22:47\r\n"
    "=  same                                12                  2020-09-13 12:26:52\r\n"
    "O  only here                           1                   2020-09-13 12:26:41\r\n"
    "?  bin                                 2                   2020-09-13 12:26:42\r\n"
    "                                                           \r\n"
    "O  bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb\r\n"
    "                                       5                   2020-09-13 12:26:45\r\n"
    "=  \\Alike                              7                   \r\n"
    "X  \\Sub                                8                   \r\n"
    "                                                           \r\n"
    "\r\n"
    "\r\n"
    "\r\n"
    "/right/\r\n"
    "________________________________________________________________________________\r\n"
    "\r\n"
    "-  newer.txt                           0                   2020-09-13 12:26:40\r\n"
    "=  same                                12                  2020-09-13 12:26:52\r\n"
    "                                                           \r\n"
    "?  bin                                 3                   2020-09-13 12:26:43\r\n"
    "O  aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa4                   2020-09-13 12:26:44\r\n"
    "                                                           \r\n"
    "=  \\Alike                              7                   \r\n"
    "X  \\Sub                                9                   \r\n"
    "O  \\Lone                               1,000               \r\n";

TEST(TextReport, IsAsMadeByHand) {
    TestToolbox tools;
    const HoldLists hold = Samples();
    const std::string path = tools.folder / "report.txt";
    PrintListviewToFile(tools.Get(), Both(hold), path, "2020-09-13 12:26:40");
    EXPECT_EQ(kReport, tools.folder.Read("report.txt"));
    // Without a date nothing stands before the empty line; what was there before is gone.
    const std::vector<PrintedList> left{Both(hold)[0]};
    PrintListviewToFile(tools.Get(), left, path, "");
    EXPECT_THAT(tools.folder.Read("report.txt"), ::testing::StartsWith("\r\n/home/l\u00E9ft/\r\n____"));
    EXPECT_THAT(tools.folder.Read("report.txt"), ::testing::Not(HasSubstr("/right/")));
}

TEST(TextReport, ShowsNamesSafely) {
    HoldLists hold;
    AddPair(hold, NameFromSystem("a\nb\xFF"), {Orphan, 1}, {});
    AddPair(hold, "evil\u202Etxt.exe", {Orphan, 1}, {});
    std::string report;
    WriteListview({&hold[Side::Left], "/"}, false, "", LocaleFormats("C"),
                  [&](std::string_view piece) { report += piece; });
    EXPECT_THAT(report, HasSubstr("O  a\u240Ab\uFFFD                                1 "));
    EXPECT_THAT(report, HasSubstr("O  evil\uFFFDtxt.exe                        1 "));
}

// Whatever call fails: the old report stays as it was, or the new one is there as a whole.
TEST(TextReport, IsNeverHalf) {
    const HoldLists hold = Samples();
    std::size_t made = 1;
    for (std::size_t number = 1; number <= made; ++number) {
        FaultySystemCalls faulty;
        TestToolbox tools(faulty);
        tools.folder.Write("report.txt", "old");
        faulty.ResetCount();
        if (number == 1) {
            PrintListviewToFile(tools.Get(), Both(hold), tools.folder / "other.txt", "");
            made = faulty.Count();
            EXPECT_GT(made, 5U);
            faulty.ResetCount();
        }
        faulty.FailAt(number, ENOSPC);
        bool failed = false;
        try {
            PrintListviewToFile(tools.Get(), Both(hold), tools.folder / "report.txt", "2020-09-13 12:26:40");
        } catch (const ErrorException& error) {
            failed = true;
            EXPECT_THAT(error.Get().Description(), HasSubstr("report.txt"));
        }
        const std::string now = tools.folder.Read("report.txt");
        EXPECT_TRUE(failed ? now == "old" || now == kReport : now == kReport) << number;
    }
}

PrintedText Bold(double x, double y, std::string text) {
    return {x, y, std::move(text), true};
}
PrintedText Plain(double x, double y, std::string text) {
    return {x, y, std::move(text), false};
}

TEST(PrintListview, SetsMarksColumnsAndHeader) {
    TestToolbox tools;
    HoldLists hold;
    AddPair(hold, "same", {Same, 12}, {Same, 12});
    AddPair(hold, std::string(42, 'n') + "\u00E9", {Newer, 1'000}, {});
    AddPair(hold, "right", {}, {Orphan, 1});
    AddPair(hold, "Sub", {DifferentFolder, 8}, {DifferentFolder, 9});
    KeptPaper paper({10'000, 4'000});
    const PrintedList list{&hold[Side::Left], "/left/"};
    EXPECT_TRUE(PrintListview(tools.Get(), list, {true, true, "NOW"}, paper));
    // The date takes 24 characters; of the 7,600 twips left the size has 0.3 and the name 0.55.
    const std::string size12 = std::string(20, ' ') + "12", size1000 = std::string(17, ' ') + "1,000";
    ASSERT_EQ(1U, paper.pages.size());
    EXPECT_THAT(
        paper.pages[0],
        ElementsAre(Bold(0, 0, "Vantrel - Page 1  [NOW]"), Plain(0, 200, "/left/"), Bold(0, 600, " \u2713"),
                    Plain(200, 600, "same"), Plain(4'181, 600, size12),
                    Plain(6'462, 600, "2020-09-13 12:26:52"), Bold(0, 800, "+ "),
                    Plain(200, 800, std::string(39, 'n')), Plain(4'181, 800, size1000),
                    Plain(6'462, 800, "2020-09-13 12:43:20"), Bold(0, 1'000, "  "), Bold(0, 1'200, "X "),
                    Plain(200, 1'200, "\\Sub"), Plain(4'181, 1'200, std::string(21, ' ') + "8")));
}

// A first row without a date gives the width of the sample; the shorter list ends.
TEST(PrintListview, SideBySideKeepsPairsInOneLine) {
    TestToolbox tools;
    HoldLists hold;
    AddPair(hold, "Sub", {DifferentFolder, 8}, {DifferentFolder, 9});
    AddPair(hold, "b", {Orphan, 1}, {});
    AddPair(hold, "c", {}, {Orphan, 2});
    ResultRow more = hold[Side::Left][1];
    hold[Side::Left].Add(more);
    KeptPaper paper({20'000, 4'000});
    const PerSide<PrintedList> lists{
        {PrintedList{&hold[Side::Left], std::string(200, 'l')}, PrintedList{&hold[Side::Right], "/right/"}}};
    EXPECT_TRUE(PrintListviewsSideBySide(tools.Get(), lists, {}, paper));
    ASSERT_EQ(1U, paper.pages.size());
    // 10,000 less 22 characters: 7,800, of which 4,290 and 2,340.
    const double size = 4'291, date = 4'291 + 2'340 + 1;
    const auto blanks = [](std::size_t count) { return std::string(count, ' '); };
    EXPECT_THAT(
        paper.pages[0],
        ElementsAre(Bold(0, 0, "Vantrel - "), Plain(0, 200, std::string(99, 'l')),
                    Plain(10'000, 200, "/right/"), Bold(0, 600, "X "), Plain(200, 600, "\\Sub"),
                    Plain(size, 600, blanks(22) + "8"), Bold(10'000, 600, "X "), Plain(10'200, 600, "\\Sub"),
                    Plain(10'000 + size, 600, blanks(22) + "9"), Bold(0, 800, "O "), Plain(200, 800, "b"),
                    Plain(size, 800, blanks(22) + "1"), Plain(date, 800, "2020-09-13 12:26:41"),
                    Bold(10'000, 800, "  "), Bold(0, 1'000, "  "), Bold(10'000, 1'000, "O "),
                    Plain(10'200, 1'000, "c"), Plain(10'000 + size, 1'000, blanks(22) + "2"),
                    Plain(10'000 + date, 1'000, "2020-09-13 12:26:42"), Bold(0, 1'200, "O "),
                    Plain(200, 1'200, "b"), Plain(size, 1'200, blanks(22) + "1"),
                    Plain(date, 1'200, "2020-09-13 12:26:41")));
}

// Whatever the height: every row is there once and in order, none begins at 90 % of the page or below, and
// none goes to the next page that had room.
TEST(PrintListview, BreaksPagesAtNineTenths) {
    HoldLists hold;
    for (int i = 0; i < 100; ++i) AddPair(hold, std::to_string(i), {Same, 1}, {Same, 1});
    const PrintedList list{&hold[Side::Left], "/left/"};
    const LocaleFormats locale("C");
    const FixedMeasure measure;
    const PrintHeader header{true, false, ""};
    for (int rest = 1'000; rest < 30'000; rest += 333) {
        const double height = rest;
        const auto pages = PagesOfListview(list, header, locale, {10'000, height}, measure);
        int next = 0;
        for (std::size_t number = 1; number <= pages->Count(); ++number) {
            const PrintedPage page = pages->Page(number);
            EXPECT_EQ("Vantrel - Page " + std::to_string(number), page[0].text);
            EXPECT_EQ(height * 0.05, page[1].y);
            double last = 0;
            for (const PrintedText& text : page)
                if (text.x == 200) {
                    EXPECT_EQ(std::to_string(next++), text.text);
                    EXPECT_LT(text.y, height * 0.9);
                    last = text.y;
                }
            EXPECT_GT(last, height * 0.05 + 400 - 1);
            if (number < pages->Count()) {
                EXPECT_GE(last + 200, height * 0.9);
            }
        }
        EXPECT_EQ(100, next) << height;
    }
}

// A failure is reported under the routine's name; a cancel is none.
TEST(PrintListview, ReportsWhatThePaperThrows) {
    class TornPaper : public KeptPaper {
      public:
        using KeptPaper::KeptPaper;
        void Print(const PrintedPages&) override {
            throw ErrorException(Error(ErrorNumber::DeviceUnavailable, "Paper torn"));
        }
    };
    TestToolbox tools;
    const HoldLists hold = Samples();
    TornPaper paper({10'000, 4'000});
    const std::vector<PrintedList> lists = Both(hold);
    EXPECT_FALSE(PrintListview(tools.Get(), lists[0], {}, paper));
    EXPECT_FALSE(PrintListviewsSideBySide(tools.Get(), {{lists[0], lists[1]}}, {}, paper));
    ASSERT_EQ(2U, tools.messages.shown.size());
    EXPECT_THAT(tools.messages.Line(0),
                ::testing::AllOf(HasSubstr("modListviews.PrintListview"), HasSubstr("Paper torn")));
    EXPECT_THAT(tools.messages.Line(1), HasSubstr("modListviews.PrintListviewsSideBySide"));
}

}  // namespace
}  // namespace vantrel
