#include "filetools/line_diff.h"

#include <gtest/gtest.h>

#include <set>

#include "filetools/diff_output.h"
#include "filetools/token_box.h"
#include "platform/error.h"
#include "script_support.h"

namespace vantrel {
namespace {

using testing::Apply;
using testing::LengthOf;
using testing::LinesOf;
using testing::RandomTexts;
using testing::SlowLcs;
using testing::Views;

std::vector<Hunk> Diff(const PerSide<std::string>& texts, const LineLikeness& likeness = {},
                       const MatchLimits& limits = {}) {
    return DiffLines(Views(texts), likeness, {}, limits);
}

std::string Script(const PerSide<std::string>& texts, const LineLikeness& likeness = {}) {
    std::string script;
    WriteNormal(Diff(texts, likeness), Views(texts), [&](std::string_view piece) { script += piece; });
    return script;
}

// The search for a path, the chain over pairs and the table each find a shortest script when they are left
// alone with it.
TEST(LineDiff, ScriptsAreCorrectAndAsShortAsCanBe) {
    constexpr MatchLimits kChainOnly{.pathSteps = 4};
    constexpr MatchLimits kTableOnly{.pathSteps = 4, .chainPairs = 0};
    for (unsigned seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const PerSide<std::string> texts = RandomTexts(seed).Next();
        PerSide<std::vector<std::string_view>> lines;
        for (const Side side : kBothSides) lines[side] = LinesOf(texts[side]);
        const std::size_t shortest = lines[Side::Left].size() + lines[Side::Right].size() -
                                     2 * SlowLcs(lines[Side::Left], lines[Side::Right]);
        for (const MatchLimits& limits : {MatchLimits{}, kChainOnly, kTableOnly}) {
            const std::vector<Hunk> hunks = Diff(texts, {}, limits);
            ASSERT_EQ(texts[Side::Right], Apply(hunks, Views(texts)));
            ASSERT_EQ(shortest, LengthOf(hunks));
            // Equal lines stand between two hunks, as many on both sides.
            for (std::size_t index = 1; index < hunks.size(); ++index)
                for (const Side side : kBothSides)
                    ASSERT_GT(hunks[index].lines[side].first, hunks[index - 1].lines[side].End());
        }
    }
}

std::vector<std::uint32_t> Words(std::size_t count, std::uint32_t different, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::uint32_t> words(count);
    for (std::uint32_t& word : words) word = random() % different;
    return words;
}

std::string TextOf(const std::vector<std::uint32_t>& words) {
    std::string text;
    for (const std::uint32_t word : words) text += std::to_string(word) + "\n";
    return text;
}

// Tables that are halved before they fit find what a table of numbers finds; so do rows along either side.
TEST(LineDiff, LargeTablesAreExact) {
    for (const auto& [left, right] : {std::pair{3'000, 3'500}, {6'000, 1'500}, {1, 900}, {200, 64}}) {
        const auto one = Words(static_cast<std::size_t>(left), 40, 1);
        const auto two = Words(static_cast<std::size_t>(right), 40, 2);
        PacedCheck pace({}, 1'000'000);
        const std::vector<TokenPair> pairs = PairsByTable(one, two, pace);
        const std::string texts[] = {TextOf(one), TextOf(two)};
        EXPECT_EQ(SlowLcs(LinesOf(texts[0]), LinesOf(texts[1])), pairs.size());
        for (std::size_t index = 0; index < pairs.size(); ++index) {
            ASSERT_EQ(one[pairs[index][Side::Left]], two[pairs[index][Side::Right]]);
            for (const Side side : kBothSides)
                if (index > 0) {
                    ASSERT_LT(pairs[index - 1][side], pairs[index][side]);
                }
        }
    }
}

// With hardly any work allowed the script is longer, correct, and not much longer.
TEST(LineDiff, BeyondTheLimitsScriptsStayGood) {
    const MatchLimits poor{.pathSteps = 100, .tableWords = 0, .allTableWords = 0, .chainPairs = 0};
    const PerSide<std::string> random{{TextOf(Words(16'000, 30, 3)), TextOf(Words(12'000, 30, 4))}};
    const std::size_t best = LengthOf(Diff(random));
    const std::vector<Hunk> hunks = Diff(random, {}, poor);
    EXPECT_EQ(random[Side::Right], Apply(hunks, Views(random)));
    EXPECT_GE(LengthOf(hunks), best);
    EXPECT_LE(LengthOf(hunks), best + best / 20);
}

// Where lines that stand once each can be held on to, nothing is lost.
TEST(LineDiff, BeyondTheLimitsAnchorsKeepScriptsShort) {
    const MatchLimits poor{.pathSteps = 100, .tableWords = 0, .allTableWords = 0, .chainPairs = 0};
    std::vector<std::uint32_t> left = Words(20'000, 30, 5);
    for (std::uint32_t index = 0; index < left.size(); index += 3) left[index] = 1'000 + index;
    std::vector<std::uint32_t> right;
    std::mt19937 random(6);
    for (const std::uint32_t word : left) {
        const unsigned edit = static_cast<unsigned>(random() % 50);
        if (edit != 0) right.push_back(word);
        if (edit == 1) right.push_back(static_cast<std::uint32_t>(random() % 30));
    }
    const PerSide<std::string> texts{{TextOf(left), TextOf(right)}};
    const std::vector<Hunk> hunks = Diff(texts, {}, poor);
    EXPECT_EQ(texts[Side::Right], Apply(hunks, Views(texts)));
    EXPECT_EQ(LengthOf(Diff(texts)), LengthOf(hunks));
}

TEST(LineDiff, WhatIsIgnoredMakesLinesAlike) {
    constexpr LineLikeness kCase{.ignoreCase = true};
    constexpr LineLikeness kWhite{.ignoreWhitespace = true};
    const PerSide<std::string> letters{{"Straße ÄRGER\nsame\n", "strAße ärger\nsame\n"}};
    EXPECT_EQ("", Script(letters, kCase));
    EXPECT_EQ("1c1\n< Straße ÄRGER\n---\n> strAße ärger\n", Script(letters, kWhite));
    const PerSide<std::string> blanks{{"a  b\t\r\n\n  c", "ab\n \t\nc \n"}};
    EXPECT_EQ("", Script(blanks, kWhite));
    EXPECT_EQ(6U, LengthOf(Diff(blanks, kCase)));
    EXPECT_EQ("", Script({{"A B\n", "ab\n"}}, {.ignoreCase = true, .ignoreWhitespace = true}));
    // Letters of the Western code page beside the same in UTF-8.
    EXPECT_EQ("", Script({{"\xC4rger\n", "ärger\n"}}, {.ignoreCase = true, .western = {{true, false}}}));
    EXPECT_NE("", Script({{"\xC4rger\n", "\xE4rger\n"}}, kCase));
}

TEST(LineDiff, HunksStandWhereTheyReadBest) {
    // A function that was put between two others, not the end of one and the head of the next.
    EXPECT_EQ("4a5,8\n> int b() {\n>     return 1;\n> }\n> \n",
              Script({{"int a() {\n    return 1;\n}\n\nint c() {\n",
                       "int a() {\n    return 1;\n}\n\nint b() {\n    return 1;\n}\n\nint c() {\n"}}));
    // Where nothing speaks for another place, the last one.
    EXPECT_EQ("3d2\n< a\n5d3\n< b\n", Script({{"x\na\na\ny\nb\nz\n", "x\na\ny\nz\n"}}));
    EXPECT_EQ("4,5d3\n< a\n< b\n", Script({{"x\na\nb\na\nb\nz\n", "x\na\nb\nz\n"}}));
    // A line that went is shown beside the one that came in its place.
    EXPECT_EQ("3c3\n< a\n---\n> b\n", Script({{"1\na\na\n2\n", "1\na\nb\n2\n"}}));
}

TEST(LineDiff, ACancelIsHeardInEveryStage) {
    const PerSide<std::string> texts{{TextOf(Words(30'000, 200, 5)), TextOf(Words(30'000, 200, 6))}};
    std::size_t looks = 0;
    DiffLines(Views(texts), {}, [&] { ++looks; });
    ASSERT_GT(looks, 3U);
    for (std::size_t at = 1; at <= looks; at += std::max<std::size_t>(looks / 8, 1)) {
        std::size_t left = at;
        EXPECT_THROW(DiffLines(Views(texts), {},
                               [&] {
                                   if (--left == 0) throw Cancelled();
                               }),
                     Cancelled);
    }
}

TEST(LineDiff, HeadersAreReadBackAndNonsenseIsRefused) {
    for (unsigned seed = 1; seed <= 30; ++seed)
        for (const Hunk& hunk : Diff(RandomTexts(seed).Next())) {
            Hunk read;
            ASSERT_TRUE(ParseHunkHeader(HunkHeader(hunk), read)) << HunkHeader(hunk);
            EXPECT_EQ(HunkHeader(hunk), HunkHeader(read));
        }
    Hunk hunk;
    for (const auto* text : {"", "5", "a", "5a", "a5", "5x6", "2,1c3", "0c1", "1c0", "1,2a3", "3d1,2", "-1a1",
                             "1a1x", "99999999999a1", "1 a 2", "4294967297d0"})
        EXPECT_FALSE(ParseHunkHeader(text, hunk)) << text;
}

}  // namespace
}  // namespace vantrel
