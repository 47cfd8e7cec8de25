#include "views/list_lookup.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "platform/names/names.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;

ResultList ListOf(const std::vector<std::string>& names) {
    ResultList list;
    for (const std::string& name : names) {
        ResultRow row;
        row.text = name;
        row.kind = name.empty()               ? RowKind::Placeholder
                   : name[0] == kFolderMarker ? RowKind::Folder
                                              : RowKind::File;
        list.AddCopy(row);
    }
    return list;
}

TEST(ListLookup, FindsEveryRowOfASortedListAndNoOther) {
    std::vector<std::string> names;
    for (int i = 0; i < 57; ++i) names.push_back("Name" + std::to_string(i * 2) + "É");
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return CompareIgnoringCase(a, b) < 0; });
    const ResultList list = ListOf(names);
    std::vector<std::string> collection;
    for (std::size_t i = 0; i < names.size(); ++i)
        collection.push_back(names[i] + "~!@#" + std::to_string(i + 1));
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string wanted = FoldCase(names[i]);
        EXPECT_EQ(FindListItemInSortedListview(wanted, list), i);
        EXPECT_EQ(FindListItem(wanted, collection), static_cast<long>(i + 1));
    }
    for (const char* missing : {"", "Name1É", "zzz", "Name2"}) {
        EXPECT_EQ(FindListItemInSortedListview(missing, list), std::nullopt);
        EXPECT_EQ(FindListItem(missing, collection), std::nullopt);
    }
    EXPECT_EQ(FindListItemInSortedListview("a", ResultList()), std::nullopt);
    EXPECT_EQ(FindListItem("a", {"a"}), std::nullopt);
    EXPECT_EQ(FindListItem("a", {"a~!@#x"}), std::nullopt);
}

TEST(ListLookup, NumbersHeldAsTextsAreSortedByTheirValues) {
    std::vector<std::string> texts{"10", "9", "-3", "100", "x"};
    SortLongCollection(texts);
    EXPECT_THAT(texts, ElementsAre("-3", "x", "9", "10", "100"));

    std::mt19937 random(9);
    std::vector<long> values(5'000);
    for (long& value : values) value = static_cast<long>(random() % 4'000) - 2'000;
    texts.clear();
    for (long value : values) texts.push_back(std::to_string(value));
    SortLongCollection(texts);
    std::sort(values.begin(), values.end());
    for (std::size_t i = 0; i < values.size(); ++i) ASSERT_EQ(texts[i], std::to_string(values[i]));
}

TEST(ListLookup, TypedLettersFindNamesWithAnyCaseAndFoldersWithoutTheirMarker) {
    const ResultList list = ListOf({"alpha", "", "Ärger", "beta", "\\Sub", "alto"});
    EXPECT_EQ(FindRowByPrefix(list, 0, "AL"), 0U);
    EXPECT_EQ(FindRowByPrefix(list, 1, "al"), 5U);
    EXPECT_EQ(FindRowByPrefix(list, 6, "alp"), 0U);
    EXPECT_EQ(FindRowByPrefix(list, 0, "är"), 2U);
    EXPECT_EQ(FindRowByPrefix(list, 0, "su"), 4U);
    EXPECT_EQ(FindRowByPrefix(list, 0, "\\s"), 4U);
    EXPECT_EQ(FindRowByPrefix(list, 0, "betaa"), std::nullopt);
    EXPECT_EQ(FindRowByPrefix(ResultList(), 0, "a"), std::nullopt);
}

}  // namespace
}  // namespace vantrel
