#include "platform/names/like_pattern.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/names/names.h"

namespace vantrel {
namespace {

std::string RandomText(std::mt19937& random, const std::vector<std::string>& parts, std::size_t most) {
    std::string text;
    for (std::size_t left = random() % (most + 1); left > 0; --left) text += parts[random() % parts.size()];
    return text;
}

// The short way through ASCII names, and the long one, give what the rule itself gives.
TEST(LikePattern, MatchesWhatTheRuleMatches) {
    const std::vector<std::string> ofNames{"a", "A", "b", "B", "1", ".", "[", "]", "-", "!", "\\", "\u00E9"};
    const std::vector<std::string> ofPatterns{"a", "B",  "1", ".", "*",   "*",   "?",      "#",      "[",
                                              "]", "[]", "!", "-", "[a]", "[!b", "[A-b1]", "\u00C9", "\\"};
    std::mt19937 random(3);
    std::size_t matches = 0;
    for (int round = 0; round < 4'000; ++round) {
        const std::string pattern = RandomText(random, ofPatterns, 6);
        const LikePattern ready(pattern);
        for (int i = 0; i < 10; ++i) {
            const std::string name = RandomText(random, ofNames, 6);
            ASSERT_EQ(ready.Matches(name), Like(name, pattern)) << name << " like " << pattern;
            matches += ready.Matches(name);
        }
    }
    EXPECT_GT(matches, 2'000U);
}

TEST(LikePattern, EndsOfANameAreNotTakenTwice) {
    EXPECT_FALSE(LikePattern("ab*ba").Matches("aba"));
    EXPECT_TRUE(LikePattern("ab*ba").Matches("abba"));
    EXPECT_FALSE(LikePattern("*ab*ab").Matches("xab"));
    EXPECT_TRUE(LikePattern("*ab*a*b").Matches("ab_aab"));
}

}  // namespace
}  // namespace vantrel
