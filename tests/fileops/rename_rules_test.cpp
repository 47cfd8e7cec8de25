#include "fileops/rename_rules.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

#include "fileops/differing_parts.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;

using Verdict = RenameVerdict;

struct Folder {
    std::vector<std::string> batch, others{};
};

std::vector<RevisedName> Preview(const Folder& folder, const RenameRules& rules) {
    NamesInFolder names;
    std::vector<NameToChange> objects;
    for (const std::string& name : folder.batch) {
        names.Add(name);
        objects.push_back({name, {}});
    }
    for (const std::string& name : folder.others) names.Add(name);
    return PreviewRename(objects, rules, names);
}

// "new name" where it is free, with "!" for a conflict, "=" where it is unchanged and "?" where it cannot be.
std::vector<std::string> Texts(const Folder& folder, const RenameRules& rules) {
    std::vector<std::string> texts;
    for (const RevisedName& revised : Preview(folder, rules)) {
        const char* mark[]{"", "!", "=", "?"};
        texts.push_back(mark[static_cast<int>(revised.verdict)] + revised.name);
    }
    return texts;
}

TEST(RenameRules, RunInTheirOrder) {
    RenameRules rules;
    rules.shortFileName = rules.removeInternalSpaces = rules.removeExtension = true;
    rules.capitalization = Capitalization::UpperCase;
    rules.extension = ".x";
    rules.prefix = "<";
    rules.suffix = ">";
    EXPECT_EQ("<LONG~1>.x", ReviseName({"long name.text", "lo ng~1.tex"}, rules, 0));
    EXPECT_EQ("<LONGNAME>.x", ReviseName({"long name.text", ""}, rules, 0));
    rules.fileName = "new";
    rules.numbers = NumberSequence{NumberSequence::Place::Extension, 1, 1, 3};
    EXPECT_EQ("<new>.1000", ReviseName({"a", ""}, rules, 1000));
    rules.numbers->place = NumberSequence::Place::FileName;
    EXPECT_EQ("007.x", ReviseName({"a", ""}, rules, 7));
    rules.numbers->length = 2'000'000'000;
    EXPECT_LT(ReviseName({"a", ""}, rules, 7).size(), 1'000U);
}

TEST(RenameRules, ConflictsAreThoseOfTheWholeBatch) {
    RenameRules number;
    number.numbers = NumberSequence{NumberSequence::Place::FileName, 1, 1, 1};
    // A row of numbers moves up by one, and what is in its way at the end stops all of it.
    number.numbers->startsWith = 2;
    EXPECT_THAT(Texts({{"1", "2", "3"}}, number), ElementsAre("2", "3", "4"));
    EXPECT_THAT(Texts({{"1", "2", "3"}, {"4"}}, number), ElementsAre("!2", "!3", "!4"));
    number.numbers->incrementBy = 10;
    EXPECT_THAT(Texts({{"1", "12"}}, number), ElementsAre("2", "=12"));

    RenameRules one;
    one.fileName = "n";
    EXPECT_THAT(Texts({{"a.x", "b.x", "c.y"}}, one), ElementsAre("n.x", "!n.x", "n.y"));
    EXPECT_THAT(Texts({{"a.x", "b.x"}, {"N.X"}}, one), ElementsAre("!n.x", "!n.x"));

    RenameRules capital;
    capital.capitalization = Capitalization::UpperCase;
    EXPECT_THAT(Texts({{"a", "B"}}, capital), ElementsAre("A", "=B"));
    EXPECT_THAT(Texts({{"a"}, {"A"}}, capital), ElementsAre("!A"));
    EXPECT_THAT(Texts({{"a", "A"}}, capital), ElementsAre("!A", "=A"));

    RenameRules none;
    EXPECT_THAT(Texts({{"a", "b"}}, none), ElementsAre("=a", "=b"));
    none.fileName = "";
    EXPECT_THAT(Texts({{"a", "b.x"}}, none), ElementsAre("?", ".x"));
    none.fileName = "a/b";
    EXPECT_THAT(Texts({{"a"}}, none), ElementsAre("?a/b"));
}

TEST(RenameRules, NoTwoObjectsEndUnderOneName) {
    std::mt19937 random(7);
    std::size_t free = 0, conflicts = 0;
    for (int round = 0; round < 3'000; ++round) {
        Folder folder;
        std::set<std::string> used;
        for (int i = 0; i < 9; ++i) {
            std::string name = std::to_string(random() % 12);
            if (random() % 4 == 0) name += random() % 2 == 0 ? ".a" : ".A";
            if (!used.insert(name).second) continue;
            (random() % 3 == 0 ? folder.others : folder.batch).push_back(name);
        }
        RenameRules rules;
        if (random() % 3 == 0) rules.capitalization = Capitalization::ToggleCase;
        if (random() % 3 == 0) rules.removeExtension = true;
        rules.numbers = NumberSequence{
            random() % 4 == 0 ? NumberSequence::Place::Extension : NumberSequence::Place::FileName,
            static_cast<std::int64_t>(1 + random() % 10), static_cast<std::int64_t>(1 + random() % 3), 1};
        const std::vector<RevisedName> revised = Preview(folder, rules);
        std::multiset<std::string> kept, given;
        for (const std::string& name : folder.others) kept.insert(FoldCase(name));
        for (std::size_t i = 0; i < revised.size(); ++i) {
            const bool isFree = revised[i].verdict == Verdict::Free;
            (isFree ? given : kept).insert(FoldCase(isFree ? revised[i].name : folder.batch[i]));
            free += isFree ? 1 : 0;
            conflicts += revised[i].verdict == Verdict::Conflict ? 1 : 0;
            EXPECT_EQ(revised[i].verdict == Verdict::Unchanged, revised[i].name == folder.batch[i]);
        }
        for (const std::string& name : given) {
            ASSERT_EQ(1U, given.count(name)) << "round " << round;
            ASSERT_EQ(0U, kept.count(name)) << "round " << round;
        }
    }
    EXPECT_GT(free, 5'000U);
    EXPECT_GT(conflicts, 1'000U);
}

TEST(RenameRules, PositiveWholeNumbers) {
    for (const char* text : {"1", " 7 ", "2147483647", "2.9"}) EXPECT_TRUE(PositiveWholeNumber(text)) << text;
    for (const char* text : {"", "0", "-1", "x", "0.9", "2147483648", "1e300", "nan"})
        EXPECT_FALSE(PositiveWholeNumber(text)) << text;
    EXPECT_EQ(2, PositiveWholeNumber("2.9"));
}

TEST(DifferingParts, AreWhatTheOriginalHasNot) {
    using Parts = std::vector<TextPart>;
    EXPECT_EQ(Parts(), DifferingParts(u"same", u"same"));
    EXPECT_EQ(Parts(), DifferingParts(u"name.txt", u"name"));
    EXPECT_EQ((Parts{{0, 4}}), DifferingParts(u"name", u"new name"));
    EXPECT_EQ((Parts{{0, 1}, {5, 1}}), DifferingParts(u"the man.txt", u"The mAn.txt"));
    EXPECT_EQ((Parts{{0, 3}}), DifferingParts(u"", u"abc"));
    const std::u16string longText(400, u'x');
    EXPECT_EQ((Parts{{0, 402}}), DifferingParts(longText, u"a" + longText + u"b"));
}

}  // namespace
}  // namespace vantrel
