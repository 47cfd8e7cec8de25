#include "core/filter_patterns.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "core/filters.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr const char* kPieces[] = {"*", "?", "#", "[", "]",        "!", "-",  ",", " ",
                                   "a", "B", "1", ".", "\xC3\xA9", "+", "\"", "'", "\xF4\x8F\xA2\x80",
                                   "~"};

std::string RandomName(std::mt19937& random) {
    std::string name;
    for (std::size_t length = 1 + random() % 4; length > 0; --length)
        name += kPieces[random() % std::size(kPieces)];
    return name;
}

// What a comparison with this exclude filter leaves out, at the top and below the sub-folders.
bool IsLeftOut(const std::string& list, std::string_view text) {
    const bool isFolder = text.starts_with('\\');
    ScanOptions options;
    options.excludeFilters = list;
    const NameFilter scan = NameFilter::ForScan(options), walk = NameFilter::ForWalk(options);
    if (isFolder) return !scan.KeepsFolder(text, 0);
    EXPECT_EQ(scan.KeepsFile(text, 0), walk.KeepsFile(text, 0)) << list << " | " << text;
    return !scan.KeepsFile(text, 0);
}

TEST(FilterPatterns, ThePatternOfAnObjectIsForItAndForNoOther) {
    for (std::mt19937::result_type seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::string> texts;
        for (int i = 0; i < 12; ++i) {
            const std::string name = RandomName(random);
            texts.push_back(name);
            texts.push_back("\\" + name);
        }
        const std::string& one = texts[random() % texts.size()];
        const std::string& two = texts[random() % texts.size()];
        std::string list;
        AddPattern(list, PatternFor(one));
        AddPattern(list, PatternFor(two));
        for (const std::string& text : texts)
            ASSERT_EQ(IsLeftOut(list, text), EqualIgnoringCase(text, one) || EqualIgnoringCase(text, two))
                << "seed " << seed << ": " << list << " | " << text;
    }
}

TEST(FilterPatterns, ThePatternOfAnExtensionIsForAllThatHaveIt) {
    for (std::mt19937::result_type seed = 1; seed <= 200; ++seed) {
        std::mt19937 random(seed);
        const std::string name = "x." + RandomName(random), other = RandomName(random);
        const std::string_view extension = GetFilenameExtension(name);
        if (extension.empty()) continue;
        const std::string list = PatternForExtension(extension);
        EXPECT_TRUE(IsLeftOut(list, name)) << list << " | " << name;
        EXPECT_EQ(IsLeftOut(list, other), FoldCase(other).ends_with("." + FoldCase(extension)))
            << list << " | " << other;
    }
}

TEST(FilterPatterns, PlainNamesStandAsTheyAreWithOneCommaBetween) {
    EXPECT_EQ(PatternFor("read me.txt"), "read me.txt");
    EXPECT_EQ(PatternFor("\\Sub-Folder"), "\\Sub-Folder");
    EXPECT_EQ(PatternFor("a[1]#"), "a[[]1][#]");
    EXPECT_EQ(PatternForExtension("txt"), "*.txt");
    for (const auto& [before, after] : {std::pair{"", "b"}, {"a", "a,b"}, {"a,", "a,b"}, {",", ",b"}}) {
        std::string list = before;
        AddPattern(list, "b");
        EXPECT_EQ(list, after);
    }
}

}  // namespace
}  // namespace vantrel
