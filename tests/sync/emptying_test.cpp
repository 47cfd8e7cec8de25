#include "sync/emptying.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

#include "sync/sync_history.h"
#include "sync/synced_pairs.h"
#include "sync_support.h"

namespace vantrel {
namespace {

using testing::SyncWorld;
using Counts = std::array<std::uint64_t, 2>;

SyncPlan PlanOfDeletes(std::uint64_t alone, std::uint64_t inFolder, std::uint64_t left, std::uint64_t right) {
    SyncPlan plan;
    plan.folders = {{"/l/", "/r/"}};
    plan.objects = {{left, right}};
    PlannedAction action;
    action.side = Side::Right;
    action.action = SyncAction::Delete;
    plan.deletes[Side::Right].assign(alone, action);
    action.isWholeFolder = true;
    action.contents.objects = inFolder;
    if (inFolder != 0) plan.deletes[Side::Right].push_back(action);
    return plan;
}

// What lies in a folder that goes whole counts as what goes alone does.
TEST(Emptying, AsksWhereASideIsEmptiedOrMuchOfItGoes) {
    const struct {
        std::uint64_t alone, inFolder, left, right;
        std::optional<std::uint64_t> leftBefore;
        EmptyingPermits permits;
        bool emptied, manyDeletes;
    } cases[] = {
        {1, 0, 0, 100, {}, {}, true, false},
        {0, 0, 0, 100, {}, {}, false, false},  // nothing is deleted
        {1, 0, 0, 100, {}, {.emptied = true, .deletes = {}}, false, false},
        {90, 0, 0, 100, {}, {.emptied = true, .deletes = {}}, false, true},  // one permit is not the other
        {1, 0, 9, 100, 91, {}, true, false},
        {1, 0, 9, 100, 90, {}, false, false},
        {1, 0, 9, 100, {}, {}, false, false},
        {19, 0, 9, 19, {}, {}, false, false},
        {20, 0, 99, 40, {}, {}, false, false},
        {20, 0, 99, 39, {}, {}, false, true},
        {0, 19, 99, 39, {}, {}, false, true},
        {0, 18, 99, 39, {}, {}, false, false},
        {39, 0, 99, 39, {}, {.emptied = false, .deletes = {100, true}}, false, false},
        {39, 0, 99, 40, {}, {.emptied = false, .deletes = {97, true}}, false, true},
        {39, 0, 99, 40, {}, {.emptied = false, .deletes = {98, true}}, false, false},
        {4, 0, 99, 100, {}, {.emptied = false, .deletes = {3, false}}, false, true},
        {3, 0, 99, 3, {}, {.emptied = false, .deletes = {3, false}}, false, false},
        {1, 0, 99, 100, {}, {.emptied = false, .deletes = {0, false}}, false, true},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        std::optional<PerSide<std::uint64_t>> before;
        if (each.leftBefore) before = {{*each.leftBefore, 1'000'000}};
        const EmptyingRisk risk = RiskOfEmptying(
            PlanOfDeletes(each.alone, each.inFolder, each.left, each.right), before, each.permits);
        EXPECT_EQ(each.emptied, !risk.emptied.empty()) << risk.emptied;
        EXPECT_EQ(each.manyDeletes, !risk.manyDeletes.empty()) << risk.manyDeletes;
    }
    EXPECT_EQ(
        "The left folder \"/l/\" holds 3 objects; at the end of the last synchronization it held 50.  The "
        "synchronization would delete 6 objects of 10 in the right folder \"/r/\".",
        RiskOfEmptying(PlanOfDeletes(1, 4, 3, 10), PerSide<std::uint64_t>{{50, 10}}, {}).Text());
}

TEST(Emptying, ALimitIsANumberOrAShare) {
    for (const char* wrong : {"", "%", "-1", "x", "5 ", "101%", "1.5", "99999999999999999999"})
        EXPECT_FALSE(ParseDeleteLimit(wrong)) << wrong;
    EXPECT_TRUE(ParseDeleteLimit("100%")->isPercent);
    EXPECT_EQ(250U, ParseDeleteLimit("250")->number);
    EXPECT_FALSE(ParseDeleteLimit("250")->isPercent);
}

// From disk to question, with what the last run left behind.
TEST(Emptying, ASideThatLostWhatItHeldAtTheEndOfTheLastRunIsAskedAbout) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    for (int i = 0; i < 11; ++i) folder.Write("left/sub/" + std::to_string(i), "x", 1'600'000'000);
    folder.Write("left/.hidden", "x", 1'600'000'000);
    world.settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    world.Compare();
    world.AutoSync();
    EXPECT_TRUE(world.risks.empty());
    ASSERT_TRUE(folder.Exists("right/sub/10"));

    for (int i = 1; i < 11; ++i) std::filesystem::remove(folder / ("left/sub/" + std::to_string(i)));
    std::filesystem::remove_all(folder / "left/sub");
    world.mayEmpty = false;
    const testing::Tree before = testing::ReadTree(folder / "right/");
    world.Compare();
    EXPECT_FALSE(world.AutoSync(Confirm::Yes));
    ASSERT_EQ(1U, world.risks.size());
    EXPECT_NE(std::string::npos, world.risks[0].emptied.find("holds 1 object; at the end of the last "
                                                             "synchronization it held 13."));
    EXPECT_NE(std::string::npos, world.risks[0].emptied.find("would delete 12 objects of 13 in the right"));
    EXPECT_EQ(0, world.asked) << "before the plan is shown";
    EXPECT_EQ(before, testing::ReadTree(folder / "right/"));

    // What was taken in otherwise is another matter, and what was meant is the measure from then on.
    world.compare.ExcludeFilters = "*.tmp";
    world.Compare();
    EXPECT_FALSE(SyncedPairs(world.tools.files, folder.Path()).Find(world.results));
    world.compare.ExcludeFilters = "";
    world.mayEmpty = true;
    world.Compare();
    EXPECT_TRUE(world.AutoSync());
    EXPECT_FALSE(folder.Exists("right/sub"));
    EXPECT_EQ((Counts{1, 1}),
              SyncedPairs(world.tools.files, folder.Path()).Find(world.results).value().values);
}

TEST(Emptying, TheMessageHasNoAsItsDefault) {
    testing::ScriptedMessages messages;
    const EmptyingRisk risk{"a", "b"};
    EXPECT_FALSE(AskMayEmpty(messages, risk));
    EXPECT_EQ("Synchronization: a\r\n\r\nb\r\n\r\nDo you wish to continue?", messages.Line(0));
    EXPECT_EQ(MessageAnswer::No, messages.shown[0].defaultAnswer);
    messages.answers = {MessageAnswer::Yes};
    EXPECT_TRUE(AskMayEmpty(messages, risk));
}

ComparisonResults ResultsOf(const std::string& left, const std::string& right) {
    ComparisonResults results;
    results.folders = {{left, right}};
    return results;
}

TEST(SyncedPairs, KnowsTheLastNumbersOfAPairWhicheverSideWasLeft) {
    testing::TestToolbox tools;
    const SyncedPairs pairs(tools.files, tools.folder.Path());
    EXPECT_FALSE(pairs.Find(ResultsOf("/a/", "/b/")));
    EXPECT_FALSE(tools.folder.Exists("SyncPairs.Log"));
    ASSERT_TRUE(pairs.Remember(ResultsOf("/a/", "/b/"), {{1, 2}}).IsOk());
    ASSERT_TRUE(pairs.Remember(ResultsOf("/a/", "/c/"), {{3, 4}}).IsOk());
    ASSERT_TRUE(pairs.Remember(ResultsOf("/b/", "/a/"), {{5, 6}}).IsOk());
    EXPECT_EQ((Counts{6, 5}), pairs.Find(ResultsOf("/a/", "/b/")).value().values);
    EXPECT_EQ((Counts{3, 4}), pairs.Find(ResultsOf("/a/", "/c/")).value().values);
    ComparisonResults filtered = ResultsOf("/a/", "/b/");
    filtered.taken.includeFilters = "*.c";
    EXPECT_FALSE(pairs.Find(filtered));

    // Damaged lines are dropped, and the oldest pairs go.
    tools.folder.Write("SyncPairs.Log", tools.folder.Read("SyncPairs.Log") + "x\ty\n\t\t\t\t\t\t\ntorn\t1");
    for (std::size_t i = 0; i < SyncedPairs::kMostPairs; ++i)
        ASSERT_TRUE(pairs.Remember(ResultsOf("/x/", "/" + std::to_string(i) + "/"), {{i, i}}).IsOk());
    EXPECT_FALSE(pairs.Find(ResultsOf("/a/", "/b/")));
    EXPECT_EQ(0U, pairs.Find(ResultsOf("/x/", "/0/")).value()[Side::Left]);
    for (const char* another : {"/one/", "/two/"}) {
        const std::string content = tools.folder.Read("SyncPairs.Log");
        EXPECT_EQ(static_cast<std::ptrdiff_t>(SyncedPairs::kMostPairs),
                  std::count(content.begin(), content.end(), '\n'));
        ASSERT_TRUE(pairs.Remember(ResultsOf("/x/", another), {{1, 1}}).IsOk());
    }

    // One that cannot be read is not written over.
    std::filesystem::remove(tools.folder / "SyncPairs.Log");
    tools.folder.MakeFolder("SyncPairs.Log");
    EXPECT_FALSE(pairs.Remember(ResultsOf("/a/", "/b/"), {{1, 2}}).IsOk());
}

}  // namespace
}  // namespace vantrel
