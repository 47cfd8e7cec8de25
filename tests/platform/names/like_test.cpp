#include <gtest/gtest.h>

#include <random>

#include "platform/names/names.h"

namespace vantrel {
namespace {

// The rule told in the plainest way, for lower-case ASCII: slow, and written another way than the matcher.
bool Oracle(std::string_view name, std::string_view pattern) {
    if (pattern.empty()) return name.empty();
    const std::string_view rest = pattern.substr(1);
    if (pattern[0] == '*') return Oracle(name, rest) || (!name.empty() && Oracle(name.substr(1), pattern));
    const std::size_t close = pattern.find(']');
    if (pattern[0] == '[' && close != std::string_view::npos) {
        std::string_view set = pattern.substr(1, close - 1);
        const std::string_view behind = pattern.substr(close + 1);
        if (set.empty()) return Oracle(name, behind);
        if (name.empty()) return false;
        const bool negated = set[0] == '!' && set.size() > 1;
        if (negated) set = set.substr(1);
        bool found = false;
        while (!set.empty()) {
            const bool range = set.size() > 2 && set[1] == '-';
            found = found || (range ? name[0] >= set[0] && name[0] <= set[2] : name[0] == set[0]);
            set = set.substr(range ? 3 : 1);
        }
        return found != negated && Oracle(name.substr(1), behind);
    }
    if (name.empty()) return false;
    const bool digit = name[0] >= '0' && name[0] <= '9';
    const bool fits = pattern[0] == '?' || (pattern[0] == '#' ? digit : pattern[0] == name[0]);
    return fits && Oracle(name.substr(1), rest);
}

std::string RandomText(std::mt19937& random, std::string_view letters, std::size_t most) {
    std::string text;
    for (auto count = random() % (most + 1); count > 0; --count) {
        text.push_back(letters[random() % letters.size()]);
    }
    return text;
}

TEST(LikeTest, AgreesWithThePlainRule) {
    std::mt19937 random(3);
    std::size_t matches = 0;
    for (int i = 0; i < 400'000; ++i) {
        const std::string name = RandomText(random, "abc1-[]!.", 7);
        const std::string pattern = RandomText(random, "**??#abc1[[]]--!.", 9);
        const bool expected = Oracle(name, pattern);
        matches += expected ? 1 : 0;
        ASSERT_EQ(Like(name, pattern), expected) << name << " like " << pattern;
    }
    EXPECT_GT(matches, 10'000U);
}

TEST(LikeTest, CaseAndCharacters) {
    EXPECT_TRUE(Like("Report.TXT", "*.txt"));
    EXPECT_TRUE(Like("report.txt", "[A-Z]EPORT.*"));
    EXPECT_TRUE(Like("\u00E4\u20AC", "??")) << "a character is not a byte";
    EXPECT_TRUE(Like("\u00E4", "[!a-z]"));
    EXPECT_TRUE(Like("\u00C4", "[\u00E0-\u00FF]"));
    EXPECT_FALSE(Like("readme", "*.*"));
    EXPECT_FALSE(Like("\u0663", "#")) << "only the ten plain digits";
    EXPECT_TRUE(Like(NameFromSystem("a\xFFz"), "a?z"));
}

TEST(LikeTest, WorkIsBounded) {
    const std::string name(20'000, 'a');
    std::string pattern;
    for (int i = 0; i < 200; ++i) pattern += "*a";
    EXPECT_FALSE(Like(name, pattern + "b"));
    EXPECT_FALSE(Like(name, std::string(1000, '[') + "*b"));
    EXPECT_TRUE(Like(name, pattern + "*"));
}

}  // namespace
}  // namespace vantrel
