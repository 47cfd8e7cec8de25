#include "filetools/mod_free_diff.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "support/test_toolbox.h"

namespace vantrel {
namespace {

struct Marks {
    std::int32_t length = 0;
    std::string one, two;  // "+" for what is common, "-" for a difference
    friend bool operator==(const Marks&, const Marks&) = default;
};

std::string Text(const std::vector<bool>& bits) {
    std::string text;
    for (const bool bit : bits) text += bit ? '+' : '-';
    return text;
}

Marks Compare(const std::string& one, const std::string& two, bool ignoreCase = false) {
    static testing::TestToolbox tools;
    std::vector<bool> resultOne, resultTwo;
    const std::int32_t length = StringDiffs(tools.reporter, one, two, ignoreCase, resultOne, resultTwo);
    return {length, Text(resultOne), Text(resultTwo)};
}

// The table of numbers with a direction in each cell.
Marks CompareSlowly(const std::string& one, const std::string& two) {
    struct Cell {
        int length = 0, direction = 0;
    };
    std::vector<std::vector<Cell>> table(one.size() + 1, std::vector<Cell>(two.size() + 1));
    for (std::size_t i = 1; i <= one.size(); ++i)
        for (std::size_t j = 1; j <= two.size(); ++j) {
            if (one[i - 1] == two[j - 1])
                table[i][j] = {table[i - 1][j - 1].length + 1, 3};
            else if (table[i - 1][j].length < table[i][j - 1].length)
                table[i][j] = {table[i][j - 1].length, 2};
            else
                table[i][j] = {table[i - 1][j].length, 1};
        }
    Marks marks{table[one.size()][two.size()].length, std::string(one.size(), '-'),
                std::string(two.size(), '-')};
    for (std::size_t i = one.size(), j = two.size(); i > 0 && j > 0;) {
        const int direction = table[i][j].direction;
        if (direction == 3) marks.one[i - 1] = marks.two[j - 1] = '+';
        if (direction != 2) --i;
        if (direction != 1) --j;
    }
    return marks;
}

std::ostream& operator<<(std::ostream& out, const Marks& marks) {
    return out << marks.length << ' ' << marks.one << ' ' << marks.two;
}

TEST(StringDiffs, ChoosesAmongEqualOnesAsTheTableDoes) {
    EXPECT_EQ((Marks{2, "++-", "+-+"}), Compare("abc", "acb"));
    EXPECT_EQ((Marks{2, "+-+-", "-+-+"}), Compare("abcd", "badc"));
    std::mt19937 random(1);
    for (int round = 0; round < 2'000; ++round) {
        std::string texts[2];
        for (std::string& text : texts) {
            text.resize(1 + random() % (round % 10 == 0 ? 200 : 12));
            for (char& letter : text) letter = static_cast<char>('a' + random() % (2 + round % 5));
        }
        ASSERT_EQ(CompareSlowly(texts[0], texts[1]), Compare(texts[0], texts[1]))
            << texts[0] << ' ' << texts[1];
    }
}

TEST(StringDiffs, CountsUnicodeCharacters) {
    EXPECT_EQ((Marks{3, "+-++", "+++"}), Compare("aäöz", "aöz"));
    EXPECT_EQ((Marks{2, "+-+", "+-+"}), Compare("a\U0001F600b", "a\U0001F601b"));
    EXPECT_EQ((Marks{2, "+-+", "++"}), Compare("a\xFF"
                                               "b",
                                               "ab"));
    EXPECT_EQ((Marks{3, "+++", "+++"}), Compare("ÄbC", "äBc", true));
    EXPECT_EQ(0, Compare("ÄB", "äb").length);
}

// The middle of lines too long for a table is marked whole, at once.
TEST(StringDiffs, IsBoundedOnLongLines) {
    const std::string one = "head" + std::string(40'000, 'x') + "tail";
    const std::string two = "head" + std::string(40'000, 'y') + "xtail";
    const Marks marks = Compare(one, two);
    EXPECT_EQ(9, marks.length);
    EXPECT_EQ("++++" + std::string(39'999, '-') + "+++++", marks.one);
    EXPECT_EQ("++++" + std::string(40'000, '-') + "+++++", marks.two);
    // One character in ten million.
    std::string line;
    line.resize(10'000'000, 'z');
    EXPECT_EQ(10'000'000, Compare(line, line + "!").length);
}

}  // namespace
}  // namespace vantrel
