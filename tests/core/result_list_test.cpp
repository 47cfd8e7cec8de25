#include "core/result_list.h"

#include <gtest/gtest.h>

#include "core/row_texts.h"

namespace vantrel {
namespace {

ResultRow Row(std::string_view text, ResultType type, RowKind kind = RowKind::File) {
    ResultRow row;
    row.text = row.realName = text;
    row.type = type;
    row.kind = kind;
    return row;
}

HoldLists Pair(const ResultRow& left, const ResultRow& right) {
    HoldLists lists;
    lists[Side::Left].AddCopy(left);
    lists[Side::Right].AddCopy(right);
    return lists;
}

TEST(ResultList, CopiesOutliveTheirSource) {
    ResultList copy;
    {
        ResultList first;
        first.AddCopy(Row(std::string("a name that is long enough for the heap"), ResultType::Same));
        copy.ShareTexts(first);
        copy.Add(first[0]);
    }
    EXPECT_EQ(copy[0].text, "a name that is long enough for the heap");
    EXPECT_EQ(copy[0].realName, copy[0].text);
    EXPECT_GE(copy.MemoryUsed(), sizeof(ResultRow) + copy[0].text.size());
}

TEST(ResultList, TheSentinelIsAKindAndNotAText) {
    ResultList list;
    list.AddCopy(Row(kNoComparisonResults, ResultType::Orphan));
    EXPECT_FALSE(list.IsSentinel());
    list.SetToSentinel();
    EXPECT_TRUE(list.IsSentinel());
    list.AddPlaceholder();
    EXPECT_FALSE(list.IsSentinel());
}

// Every pair of types, as files and as folders: exactly the ten pairs of the table may stand together.
TEST(HoldLists, OnlyTheKnownPairsAreConsistent) {
    int good = 0;
    for (const RowKind kind : {RowKind::File, RowKind::Folder}) {
        const std::string_view name = kind == RowKind::Folder ? "\\n" : "n";
        for (int l = 0; l <= kResultTypeCount; ++l) {
            for (int r = 0; r <= kResultTypeCount; ++r) {
                const auto row = [&](int type) {
                    return type == 0 ? ResultRow() : Row(name, static_cast<ResultType>(type), kind);
                };
                if (IsConsistent(Pair(row(l), row(r)))) ++good;
            }
        }
    }
    EXPECT_EQ(good, 10);
}

TEST(HoldLists, FaultsAreNamed) {
    std::string why;
    HoldLists lists = Pair(Row("a", ResultType::Same), Row("A", ResultType::Same));
    EXPECT_FALSE(IsConsistent(lists, &why));
    EXPECT_EQ(why, "row 0: two names on one line");

    lists = Pair(Row("\\d", ResultType::OrphanFolder, RowKind::Folder), ResultRow());
    EXPECT_TRUE(IsConsistent(lists));
    lists[Side::Left].AddCopy(Row("a", ResultType::Orphan));
    EXPECT_FALSE(IsConsistent(lists, &why));
    EXPECT_EQ(why, "lists of unequal length");
    lists[Side::Right].AddPlaceholder();
    EXPECT_FALSE(IsConsistent(lists, &why));
    EXPECT_EQ(why, "row 1: a file behind folders");

    for (const Side side : kBothSides) lists[side].SetToSentinel();
    EXPECT_TRUE(IsConsistent(lists));
    lists[Side::Left][0].selected = true;
    lists[Side::Left].AddPlaceholder();
    lists[Side::Right].AddPlaceholder();
    EXPECT_FALSE(IsConsistent(lists));
}

TEST(RowTexts, SizesNotAboveZeroShowZero) {
    const LocaleFormats locale("en_US");
    ResultRow row = Row("a", ResultType::Same);
    row.size = Currency::FromWhole(1234567);
    EXPECT_EQ(SizeText(row, locale), "1,234,567");
    row.size = Currency::FromWhole(-5);
    EXPECT_EQ(SizeText(row, locale), "0");
    EXPECT_EQ(SizeText(ResultRow(), locale), "");
    EXPECT_EQ(DateText(ResultRow(), locale), "");
    EXPECT_FALSE(DateText(row, locale).empty());
    row.kind = RowKind::Folder;
    EXPECT_EQ(DateText(row, locale), "");
    row.realName = "Real";
    EXPECT_EQ(ObjectPath("/left/", row), "/left/Real");
}

}  // namespace
}  // namespace vantrel
