#include "filetools/text_encoding.h"

#include <gtest/gtest.h>

#include <random>

#include "filetools/line_diff.h"
#include "filetools/visible_text.h"
#include "platform/error.h"
#include "script_support.h"

namespace vantrel {
namespace {

using namespace std::string_literals;

EncodingGuess Guess(const std::string& bytes) {
    ByteScan scan;
    scan.Add(bytes);
    return GuessEncoding(bytes, scan, {});
}

std::string Wide(const std::u16string& text, bool big) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char parts[] = {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
        bytes += {parts[big ? 0 : 1], parts[big ? 1 : 0]};
    }
    return bytes;
}

TEST(TextEncoding, IsFoundByMarkThenByTheBytes) {
    const std::u16string words = u"A few words in a file, and 漢字.\r\n";
    const struct {
        std::string bytes;
        std::string_view encoding;
        std::size_t mark;
        bool binary;
    } cases[] = {
        {"", kUtf8, 0, false},
        {"plain\n", kUtf8, 0, false},
        {"\xEF\xBB\xBFplain", kUtf8, 3, false},
        {"\xEF\xBB\xBF", kUtf8, 3, false},
        {"gr\xC3\xBC\xC3\x9F", kUtf8, 0, false},
        {"gr\xFC\xDF", kWestern, 0, false},
        {"\xC3", kWestern, 0, false},
        {"\xED\xA0\x80", kWestern, 0, false},  // half of a pair
        {"\xC0\x80", kWestern, 0, false},      // too long
        {Wide(words, false), kUtf16Little, 0, false},
        {Wide(words, true), kUtf16Big, 0, false},
        {Wide(u"\xFEFF" + words, false), kUtf16Little, 2, false},
        {Wide(u"\xFEFF\xD83D\xDE00", true), kUtf16Big, 2, false},
        {"one\0two\n"s, kUtf8, 0, true},
        {"\0"s, kUtf8, 0, true},
        {"some/path\0another/path\0third\0"s, kUtf8, 0, true},
        {Wide(u"\x4E2D\x6587\x3000\x4E00\n", false), kUtf16Little, 0, false},
        {Wide(words, false) + "x", kUtf8, 0, true},                // half a character
        {Wide(words + u"\xD83D", false), kUtf8, 0, true},          // half a pair
        {Wide(u"\xFEFF" + words + u'\0', false), kUtf8, 0, true},  // a NUL of its own
        {"\x7F"s + "ELF\2\1\1\0\0\0\0\0\0\0\0\0\2\0\x3E\0\1\0\0\0"s, kUtf8, 0, true},
    };
    for (const auto& each : cases) {
        const EncodingGuess guess = Guess(each.bytes);
        EXPECT_EQ(each.encoding, guess.encoding) << each.bytes;
        EXPECT_EQ(each.mark, guess.markLength) << each.bytes;
        EXPECT_EQ(each.binary, guess.isBinary) << each.bytes;
    }
}

TEST(TextEncoding, NamesAreTakenInAnySpelling) {
    EXPECT_EQ(kUtf8, KnownEncoding("utf8"));
    EXPECT_EQ(kUtf16Big, KnownEncoding("utf-16be"));
    EXPECT_EQ("ISO-8859-1", KnownEncoding("latin1"));
    EXPECT_EQ("", KnownEncoding("no-such-encoding"));
    EXPECT_EQ("", KnownEncoding(""));
    // All that are offered can be opened.
    for (const std::string_view name : OfferedEncodings()) {
        EXPECT_EQ(name, KnownEncoding(name));
        EXPECT_EQ("", DecodeToUtf8("", std::string(name), {})) << name;
    }
    EXPECT_THROW(DecodeToUtf8("x", "no-such-encoding", {}), ErrorException);
}

TEST(TextEncoding, DecodingGoesOnOverThePieces) {
    std::string wide, expected;
    for (int index = 0; index < 200'000; ++index) {
        wide += Wide(u"a\xD83D\xDE00", false);
        expected += "a\U0001F600";
    }
    EXPECT_EQ(expected, DecodeToUtf8(wide, std::string(kUtf16Little), {}));
    EXPECT_EQ("grüß €", DecodeToUtf8("gr\xFC\xDF \x80", std::string(kWestern), {}));
    EXPECT_EQ("a\uFFFD", DecodeToUtf8("a\0\0\xD8"s, std::string(kUtf16Little), {}));
}

TEST(TextEncoding, ValidityIsStrictWhereverTheFaultStands) {
    std::string text(3'000'000, 'x');
    EXPECT_TRUE(IsValidUtf8(text, {}));
    for (const std::size_t at :
         {std::size_t{0}, std::size_t{7}, std::size_t{8}, std::size_t{1'048'577}, text.size() - 1}) {
        std::string broken = text;
        broken[at] = '\x80';
        EXPECT_FALSE(IsValidUtf8(broken, {})) << at;
    }
}

// Any bytes have an encoding, can be decoded in every one, give a correct script and can be shown.
TEST(TextEncoding, AnyBytesWillDo) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        PerSide<std::string> bytes;
        for (const Side side : kBothSides) {
            bytes[side].resize(random() % 200);
            const unsigned most = seed % 3 == 0 ? 256 : seed % 3 == 1 ? 16 : 0x90;
            for (char& byte : bytes[side]) byte = static_cast<char>(random() % most);
            const EncodingGuess guess = Guess(bytes[side]);
            ASSERT_LE(guess.markLength, bytes[side].size());
            const std::string& shown = VisibleText(bytes[side]);
            ASSERT_TRUE(IsValidUtf8(shown, {}));
            for (const char letter : shown)
                ASSERT_TRUE(letter == '\t' || static_cast<unsigned char>(letter) >= 0x20);
        }
        const std::string_view name = OfferedEncodings()[seed % OfferedEncodings().size()];
        if (name != kUtf8) {
            ASSERT_TRUE(IsValidUtf8(DecodeToUtf8(bytes[Side::Left], std::string(name), {}), {})) << name;
        }
        const LineLikeness likeness{.ignoreCase = seed % 2 == 0,
                                    .ignoreWhitespace = seed % 5 == 0,
                                    .western = {{seed % 7 == 0, seed % 7 == 0}}};
        const std::vector<Hunk> hunks = DiffLines(testing::Views(bytes), likeness, {});
        const std::string made = testing::Apply(hunks, testing::Views(bytes));
        if (!likeness.ignoreCase && !likeness.ignoreWhitespace) {
            ASSERT_EQ(bytes[Side::Right], made) << seed;
        }
    }
}

TEST(TextEncoding, ATerminalExecutesNothing) {
    EXPECT_EQ("a\tb", VisibleText("a\tb"));
    EXPECT_EQ("\u241B[31m\u240D\u2421", VisibleText("\x1B[31m\r\x7F"));
    EXPECT_EQ("\uFFFD\uFFFD\uFFFDa", VisibleText("\u202E\u009B\xFF"
                                                 "a"));
}

}  // namespace
}  // namespace vantrel
