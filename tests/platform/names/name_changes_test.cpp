#include "platform/names/name_changes.h"

#include <gtest/gtest.h>

namespace vantrel::names {
namespace {

struct Case {
    std::string (*change)(std::string_view);
    const char *name, *expected;
};

std::string Replaced(std::string_view name) {
    return ReplaceFileName(name, "New");
}
std::string Extended(std::string_view name) {
    return ReplaceExtension(name, "x");
}
std::string Bare(std::string_view name) {
    return ReplaceExtension(name, "");
}
std::string Suffixed(std::string_view name) {
    return AddSuffixToFileName(name, " (1)");
}

TEST(NameChanges, Table) {
    for (const Case& each : {
             Case{RemoveInternalSpaces,
                  " my  own\xC2\xA0"
                  "file .txt ",
                  " myownfile.txt "},
             Case{RemoveInternalSpaces, "  ", "  "},
             Case{RemoveFilenameExtension, "a.tar.gz", "a.tar"},
             Case{RemoveFilenameExtension, ".bashrc", ".bashrc"},
             Case{RemoveFilenameExtension, "..a", "..a"},
             Case{RemoveFilenameExtension, "name.", "name"},
             Case{Replaced, "old.txt", "New.txt"},
             Case{Replaced, ".bashrc", "New"},
             Case{Extended, "old.txt", "old.x"},
             Case{Extended, "old", "old.x"},
             Case{Bare, "old.txt", "old"},
             Case{Suffixed, "a.b.txt", "a.b (1).txt"},
             Case{Suffixed, "a", "a (1)"},
             Case{UpperCase,
                  "stra\xC3\x9F"
                  "e \xC3\xA9i",
                  "STRA\xC3\x9F"
                  "E \xC3\x89I"},
             Case{LowerCase, "\xC3\x89T\xC3\x89.TXT", "\xC3\xA9t\xC3\xA9.txt"},
             Case{ProperCase, "the 2ND man's-hat_IN \xC3\xA9t\xC3\xA9.TXT",
                  "The 2nd Man's-Hat_In \xC3\x89t\xC3\xA9.txt"},
             Case{ProperCase,
                  "\xC7\x86"
                  "a'b",
                  "\xC7\x85"
                  "a'b"},
             Case{ProperCase,
                  "e\xCC\x81"
                  "A",
                  "E\xCC\x81"
                  "a"},
             Case{ToggleCase, "aBc \xC3\xA9\xC3\x89 1 \xC7\x85", "AbC \xC3\x89\xC3\xA9 1 \xC7\x86"},
         })
        EXPECT_EQ(each.expected, each.change(each.name)) << each.name;
}

TEST(NameChanges, PossibleNames) {
    const std::string longest(255, 'x');
    for (const std::string& name : {std::string("a"), std::string("..."), std::string(" "), longest})
        EXPECT_TRUE(IsPossibleName(name)) << name;
    for (const std::string& name : {std::string(), std::string("."), std::string(".."), std::string("a/b"),
                                    std::string("a\0b", 3), longest + "x"})
        EXPECT_FALSE(IsPossibleName(name)) << name;
    // A byte that a name carries is one byte on the disk, and three here.
    EXPECT_TRUE(IsPossibleName(longest.substr(1) + "\xF4\x8F\xA3\xBF"));
}

}  // namespace
}  // namespace vantrel::names
