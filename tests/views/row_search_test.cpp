#include "views/row_search.h"

#include <gmock/gmock.h>

#include <random>

#include "platform/names/names.h"
#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using testing::PanesStage;
using enum ResultType;

class RowSearchTest : public ::testing::Test {
  protected:
    void Show() {
        stage.panes.ApplyViewTypes();
        lists = {{&stage.Left(), &stage.Right()}};
    }
    std::vector<std::size_t> Matching(std::string_view text) {
        const RowSearch search(text);
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < stage.Left().Count(); ++row)
            if (search.Matches(lists, row)) rows.push_back(row);
        return rows;
    }
    PanesStage stage;
    PerSide<const PaneList*> lists;
};

TEST_F(RowSearchTest, NamesHoldATextOrFitAPatternOnEitherSide) {
    AddPair(stage.hold, "Readme.TXT", {Same}, {Same});
    AddPair(stage.hold, "notes.txt.old", {}, {Orphan});
    AddPair(stage.hold, "a[1].txt", {Orphan}, {});
    AddPair(stage.hold, "STRASSE \xC3\x84.doc", {Newer}, {Older});
    AddPair(stage.hold, "Texts", {IdenticalFolder}, {IdenticalFolder});
    stage.hold[Side::Right][3].realName = "strasse \xC3\xA4-2.doc";
    Show();
    using Rows = std::vector<std::size_t>;
    for (const auto& [text, rows] : std::initializer_list<std::pair<const char*, Rows>>{
             {"", {}},
             {"txt", {0, 1, 2}},
             {"*.txt", {0, 2}},
             {"[1]", {2}},  // as it is written, and not only as a set
             {"t?xts", {4}},
             {"\\te", {4}},
             {"\\*", {4}},
             {"\xC3\x84", {3}},
             {"\xC3\xA4-2", {3}},
             {"strasse*doc", {3}},
             {"absent", {}},
             {"No Comparison", {}}})
        EXPECT_EQ(Matching(text), rows) << text;
    stage.panes.RemoveListItemsAndShowNoCompareMsg();
    EXPECT_EQ(Matching("Results"), Rows());
}

// Against the plain way, over names with letters of one and of several bytes.
TEST_F(RowSearchTest, RandomNamesAreFoundAsByTheFoldedTexts) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<std::string> letters{"a", "A", "b", "B", ".", "\xC3\xA9", "\xC3\x89", "\xE2\x84\xAA",
                                           "k"};
    const auto text = [&](std::size_t length) {
        std::string made;
        for (std::size_t i = 0; i < length; ++i) made += letters[random() % letters.size()];
        return made;
    };
    for (int i = 0; i < 200; ++i) AddPair(stage.hold, text(1 + random() % 8), {Same}, {Same});
    Show();
    for (int i = 0; i < 200; ++i) {
        const std::string wanted = text(1 + random() % 3);
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < 200; ++row)
            if (FoldCase(stage.Left()[row].text).find(FoldCase(wanted)) != std::string::npos)
                rows.push_back(row);
        ASSERT_EQ(Matching(wanted), rows) << wanted;
    }
}

TEST_F(RowSearchTest, GoesOnceRoundInBothDirections) {
    for (const char* name : {"x1", "a", "x2", "b", "x3"}) AddPair(stage.hold, name, {Same}, {Same});
    Show();
    using enum RowSearch::Direction;
    const RowSearch search("X");
    const std::size_t forwards[] = {0, 2, 2, 4, 4}, backwards[] = {0, 0, 2, 2, 4};
    for (std::size_t start = 0; start < 5; ++start) {
        EXPECT_EQ(search.Find(lists, start, Forwards), forwards[start]);
        EXPECT_EQ(search.Find(lists, start, Backwards), backwards[start]);
    }
    EXPECT_EQ(search.Find(lists, 5, Forwards), 0U);
    EXPECT_EQ(search.Find(lists, 6, Backwards), 0U);
    EXPECT_EQ(RowSearch("y").Find(lists, 3, Forwards), std::nullopt);
    for (const Side side : kBothSides) stage.hold[side].Clear();
    stage.panes.ApplyViewTypes();
    EXPECT_EQ(search.Find(lists, 0, Backwards), std::nullopt);
}

}  // namespace
}  // namespace vantrel
