#include "platform/names/names.h"

#include <gtest/gtest.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>
#include <vector>

namespace vantrel {
namespace {

// What the engine relies on: valid UTF-8, no backslash, no control character.
bool IsEngineForm(const std::string& name) {
    const auto size = static_cast<std::int64_t>(name.size());
    for (std::int64_t at = 0; at < size;) {
        UChar32 point = 0;
        U8_NEXT(name.data(), at, size, point);
        if (point < 0x20 || point == '\\' || (point >= 0x7F && point < 0xA0)) return false;
    }
    return true;
}

// Bytes, pieces of characters and whole awkward characters, so that borders of all kinds come together.
std::string RandomBytes(std::mt19937& random) {
    static const std::vector<std::string> pieces{"a",
                                                 "Z",
                                                 "_",
                                                 "/",
                                                 "\\",
                                                 "\x01",
                                                 "\x1F",
                                                 "\x7F",
                                                 "\xC2\x80",
                                                 "\xC2\x9F",
                                                 "\xC2\xA0",
                                                 "\xC3\xA9",
                                                 "\xE2\x82\xAC",
                                                 "\xED\xA0\x80",
                                                 "\xC0",
                                                 "\xF4",
                                                 "\x8F",
                                                 "\xA0",
                                                 "\xF4\x8F\xA0",
                                                 "\xF4\x8F\xA3\xBF",
                                                 "\xF4\x8F\xA1\x9C",
                                                 "\xC2",
                                                 "\x9C",
                                                 "\xFF",
                                                 "\xE2\x82",
                                                 "\xF0\x9F\x98",
                                                 "\xF4\x8F\xA0\xAF",
                                                 "\xF4\x90\x80\x80"};
    std::string bytes;
    for (auto count = random() % 12; count > 0; --count) {
        if (random() % 3 == 0) {
            bytes.push_back(static_cast<char>(random() % 256));
        } else {
            bytes += pieces[random() % pieces.size()];
        }
    }
    return bytes;
}

TEST(NamesTest, AnyBytesGoThereAndBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 200'000; ++i) {
        const std::string bytes = RandomBytes(random);
        const std::string name = NameFromSystem(bytes);
        ASSERT_TRUE(IsEngineForm(name)) << ::testing::PrintToString(bytes);
        ASSERT_EQ(NameToSystem(name), bytes);
        ASSERT_EQ(IsPlainName(bytes), name == bytes);
        ASSERT_EQ(std::ranges::count(name, '/'), std::ranges::count(bytes, '/'));
    }
}

TEST(NamesTest, NoTwoShortNamesBecomeOne) {
    std::set<std::string> names;
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_TRUE(names.insert(NameFromSystem(bytes)).second) << first << ' ' << second;
        }
    }
}

TEST(NamesTest, WhatIsCarried) {
    EXPECT_EQ(NameFromSystem("a\\b"), "a\U0010F85Cb");
    EXPECT_EQ(NameFromSystem("\xE9t\xE9"), "\U0010F8E9t\U0010F8E9");
    EXPECT_EQ(NameFromSystem("/r\xC3\xA9/\n"), "/r\xC3\xA9/\U0010F80A");
    EXPECT_EQ(NameFromSystem("\U0010F82F"), "\U0010F8F4\U0010F88F\U0010F8A0\U0010F8AF");
    EXPECT_EQ(NameToSystem("a\U0010F82Fb"), "a\U0010F82Fb") << "a typed character must not become a \"/\"";
}

TEST(NamesTest, EachByteIsPlainOrNotWhereverItStands) {
    for (int byte = 1; byte < 256; ++byte) {
        const bool isPlain = byte >= 0x20 && byte < 0x7F && byte != '\\';
        for (std::size_t at = 0; at < 18; ++at) {
            std::string name(18, 'a');
            name[at] = static_cast<char>(byte);
            EXPECT_EQ(isPlain, IsPlainName(name)) << byte << " at " << at;
        }
    }
}

TEST(NamesTest, PathFromUser) {
    const char* home = std::getenv("HOME");
    const std::string saved = home != nullptr ? home : "";
    setenv("HOME", "/home/x\\y/", 1);
    EXPECT_EQ(PathFromUser("~/a"), "/home/x\U0010F85Cy/a");
    EXPECT_EQ(PathFromUser("~/"), "/home/x\U0010F85Cy/");
    EXPECT_EQ(PathFromUser("~a"), "~a");
    setenv("HOME", "", 1);
    EXPECT_EQ(PathFromUser("~/a"), "~/a");
    setenv("HOME", saved.c_str(), 1);
    EXPECT_EQ(PathFromUser("/a\U0010F8E9\\"), "/a\U0010F8E9\U0010F85C");
    EXPECT_EQ(PathFromUser(std::string_view("/a\0b", 4)), "/a");
}

TEST(NamesTest, DisplayNameHasNothingThatDisturbsALine) {
    EXPECT_EQ(DisplayName("plain r\xC3\xA9"), "plain r\xC3\xA9");
    EXPECT_EQ(DisplayName(NameFromSystem("a\\\n\x7F\xE9")), "a\\\u240A\u2421\uFFFD");
    EXPECT_EQ(DisplayName("x\u202Etxt.exe\u2028"), "x\uFFFDtxt.exe\uFFFD");
}

TEST(FoldTest, OneCharacterToOneByTheSimpleRule) {
    EXPECT_EQ(FoldCase("ABC_\u00C4\u03A3\u0416\u1E9E"), "abc_\u00E4\u03C3\u0436\u00DF");
    EXPECT_TRUE(EqualIgnoringCase("\u03C3", "\u03C2")) << "both sigmas are one letter";
    EXPECT_FALSE(EqualIgnoringCase("stra\u00DFe", "strasse")) << "as file systems have it";
    EXPECT_FALSE(EqualIgnoringCase("e\u0301", "\u00E9")) << "composed and not are two names";
    EXPECT_TRUE(EqualIgnoringCase("\u212A", "K")) << "the Kelvin sign is shorter when folded";
    EXPECT_EQ(FoldCase("\xFFz\xC3"), "\xFFz\xC3");
}

TEST(FoldTest, TheUnderscoreSortsBeforeLetters) {
    EXPECT_LT(CompareIgnoringCase("a_b", "aAb"), 0);
    EXPECT_LT(CompareIgnoringCase("a_b", "aab"), 0);
    EXPECT_GT(CompareIgnoringCase("a_b", "a1b"), 0);
}

TEST(FoldTest, ComparingIsComparingTheKeys) {
    std::mt19937 random(2);
    const std::vector<std::string> pieces{"a",      "A",      "b",          "_",      "Z",
                                          "[",      "\u00C4", "\u00E4",     "\u03A3", "\u03C2",
                                          "\u212A", "\uFFFD", "\U0001F600", "1"};
    const auto text = [&] {
        std::string made;
        for (auto count = random() % 5; count > 0; --count) made += pieces[random() % pieces.size()];
        return made;
    };
    for (int i = 0; i < 50'000; ++i) {
        const std::string a = text();
        const std::string b = text();
        const int keys = FoldCase(a).compare(FoldCase(b));
        const int direct = CompareIgnoringCase(a, b);
        ASSERT_EQ(keys < 0, direct < 0) << a << ' ' << b;
        ASSERT_EQ(keys > 0, direct > 0) << a << ' ' << b;
        ASSERT_EQ(keys == 0, EqualIgnoringCase(a, b));
    }
}

}  // namespace
}  // namespace vantrel
