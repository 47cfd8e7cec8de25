#include "fileops/multiple_rename.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <map>

#include "support/faulty_system_calls.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using ::testing::HasSubstr;

class MultipleRenameTest : public ::testing::Test {
  protected:
    void Write(const std::vector<std::string>& names) {
        for (const std::string& name : names) work.Write(name, name);
    }
    RenameResult Run(MultipleRename& renames, const std::vector<std::pair<std::string, std::string>>& ways) {
        std::vector<RenameStep> steps;
        for (const auto& [from, to] : ways) steps.push_back({from, to});
        return renames.Rename({work.Path(), {}}, steps, {});
    }

    FaultySystemCalls calls;
    TestToolbox box{calls};
    TempFolder work;
};

TEST_F(MultipleRenameTest, WhatIsPreviewedComesOutAndCanBeUndone) {
    Write({"1.txt", "2.txt", "3.txt", "A", "keep"});
    MultipleRename renames(box.Get());
    EXPECT_FALSE(renames.UndoFolder());
    NamesInFolder names;
    ASSERT_TRUE(MultipleRename::ReadNames(box.files, work.Path(), names).IsOk());
    RenameRules rules;
    rules.numbers = NumberSequence{NumberSequence::Place::FileName, 2, 1, 1};
    const std::vector<NameToChange> objects{{"1.txt", ""}, {"2.txt", ""}, {"3.txt", ""}, {"A", ""}};
    std::vector<std::pair<std::string, std::string>> ways;
    for (const RevisedName& revised : PreviewRename(objects, rules, names)) {
        EXPECT_EQ(RenameVerdict::Free, revised.verdict);
        ways.emplace_back(objects[ways.size()].name, revised.name);
    }
    EXPECT_TRUE(Run(renames, ways).AllDone());
    EXPECT_EQ("1.txt", work.Read("2.txt"));
    EXPECT_EQ("3.txt", work.Read("4.txt"));
    EXPECT_EQ("A", work.Read("5"));

    EXPECT_EQ(work.Path(), renames.UndoFolder());
    // What stands under the name by now is another file, and stays.
    fs::remove(work / "5");
    work.Write("5", "another");
    const RenameResult undone = renames.Undo({});
    EXPECT_EQ(kChangedSinceSeen, undone.objects[3].error.Number());
    EXPECT_EQ("1.txt", work.Read("1.txt"));
    EXPECT_EQ("another", work.Read("5"));
    EXPECT_FALSE(work.Exists("4.txt"));
    // And forth again.
    EXPECT_TRUE(renames.Undo({}).AllDone());
    EXPECT_EQ("1.txt", work.Read("2.txt"));
}

TEST_F(MultipleRenameTest, ProblemsAreToldWithTheirReasons) {
    Write({"a", "b"});
    MultipleRename renames(box.Get());
    EXPECT_EQ("", DescribeProblems(Run(renames, {{"a", "c"}}), {"a"}));
    const RenameResult result = Run(renames, {{"b", "c"}, {"gone", "d"}});
    const std::string text = DescribeProblems(result, {"b", "gone"});
    EXPECT_TRUE(text.starts_with("There were problems.  Some objects' names were not changed.\r\n\r\nb: "))
        << text;
    EXPECT_THAT(text, HasSubstr("\r\ngone: "));
    std::vector<std::pair<std::string, std::string>> many;
    std::vector<std::string> names;
    for (int i = 0; i < 30; ++i) {
        names.push_back("none" + std::to_string(i));
        many.emplace_back(names.back(), "x" + names.back());
    }
    EXPECT_THAT(DescribeProblems(Run(renames, many), names), HasSubstr("\r\n... and 20 more"));
}

struct Killed {};

TEST_F(MultipleRenameTest, ABatchThatWasCutShortIsOfferedAtTheNextStart) {
    const auto cutShort = [this] {
        Write({"a", "b", "c"});
        int renamed = 0;
        calls.before = [&](const FaultySystemCalls::Record& next) {
            if (next.call == Call::Rename && ++renamed == 4) throw Killed{};
        };
        MultipleRename renames(box.Get());
        EXPECT_THROW(Run(renames, {{"c", "d"}, {"a", "b"}, {"b", "a"}}), Killed);
        calls.before = nullptr;
        EXPECT_FALSE(work.Exists("b"));
    };
    MultipleRename next(box.Get());
    next.OfferRepair();
    EXPECT_TRUE(box.messages.shown.empty());
    cutShort();
    // Cancel is the default: it is asked again.
    next.OfferRepair();
    ASSERT_EQ(1U, box.messages.shown.size());
    EXPECT_THAT(box.messages.Line(0),
                HasSubstr("Of 3 object(s) 2 have their new names, 0 their old ones, and 1 stand"));
    box.messages.answers = {MessageAnswer::No};
    next.OfferRepair();
    for (const char* name : {"a", "b", "c"}) EXPECT_EQ(name, work.Read(name));
    cutShort();
    box.messages.answers = {MessageAnswer::Yes};
    next.OfferRepair();
    EXPECT_EQ("b", work.Read("a"));
    EXPECT_EQ("a", work.Read("b"));
    EXPECT_EQ("c", work.Read("d"));
    next.OfferRepair();
    EXPECT_EQ(3U, box.messages.shown.size());
}

TEST_F(MultipleRenameTest, TenThousandObjects) {
    std::vector<std::pair<std::string, std::string>> ways;
    for (int i = 0; i < 10'000; ++i) {
        work.Write(std::to_string(i), "");
        ways.emplace_back(std::to_string(i), std::to_string((i + 1) % 10'000));
    }
    MultipleRename renames(box.Get());
    EXPECT_TRUE(Run(renames, ways).AllDone());
    EXPECT_EQ(10'000, std::distance(fs::directory_iterator(work.Path()), fs::directory_iterator()));
}

}  // namespace
}  // namespace vantrel::testing
